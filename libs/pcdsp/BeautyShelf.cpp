// SPDX-License-Identifier: GPL-3.0-or-later
#include "BeautyShelf.h"

#include <array>

#include "KeptLooks.h"

namespace {

// By type: natural, warm, fair, dreamy, fresh, rosy, cool, clear.
constexpr std::array<const char*, BeautyShelf::Count> Stems{"Ziran",   "Nuannuan", "Baixi",   "Menghuan",
                                                            "Qingxin", "Hongrun",  "Lengyan", "Qingxi"};

std::shared_ptr<const Look> Refuse(std::string* error, const std::string& why) {
    if (error) *error = why;
    return nullptr;
}

}  // namespace

std::string BeautyShelf::FileName(int type) {
    return type >= 1 && type <= Count ? std::string(Stems[type - 1]) + ".look" : std::string();
}

std::shared_ptr<const Look> BeautyShelf::Take(const std::filesystem::path& folder, int type, std::string* error) {
    if (type < 1 || type > Count) return Refuse(error, "no such look of beauty");
    const std::filesystem::path program = KeptLooks::FolderOf(folder);
    if (program.empty()) return Refuse(error, "no folder of looks");
    return KeptLooks::Take(program / "Beauty", FileName(type), error);
}
