// SPDX-License-Identifier: GPL-3.0-or-later
#include "LookShelf.h"

#include <array>

#include "KeptLooks.h"

namespace {

constexpr std::array<const char*, LookShelf::Count> Stems{
#define QUINCE_EFFECT_STEM(function, stem) stem,
    QUINCE_EFFECTS(QUINCE_EFFECT_STEM)
#undef QUINCE_EFFECT_STEM
};

std::shared_ptr<const Look> Refuse(std::string* error, const std::string& why) {
    if (error) *error = why;
    return nullptr;
}

}  // namespace

std::string LookShelf::FileName(int index) {
    return index >= 0 && index < Count ? std::string(Stems[index]) + ".look" : std::string();
}

std::shared_ptr<const Look> LookShelf::Take(const std::filesystem::path& folder, int index, std::string* error) {
    if (index < 0 || index >= Count) return Refuse(error, "no such look");
    const std::filesystem::path program = KeptLooks::FolderOf(folder);
    if (program.empty()) return Refuse(error, "no folder of looks");
    const auto look = KeptLooks::Take(program / "Effects", FileName(index), error);
    if (look && !look->GetRecipe().face.IsNeutral())
        return Refuse(error, FileName(index) + ": [face] is for looks of beauty");
    return look;
}
