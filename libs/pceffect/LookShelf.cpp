// SPDX-License-Identifier: GPL-3.0-or-later
#include "LookShelf.h"

#include <array>
#include <map>

#include "RecipeReader.h"

namespace {

constexpr std::array<const char*, LookShelf::Count> Stems{
#define QUINCE_EFFECT_STEM(function, stem) stem,
    QUINCE_EFFECTS(QUINCE_EFFECT_STEM)
#undef QUINCE_EFFECT_STEM
};

struct Kept {
    std::filesystem::file_time_type time;
    std::uintmax_t size = 0;
    std::shared_ptr<const Look> look;
    std::string error;
};

class Shelf {
  public:
    static Shelf& Instance() {
        static Shelf shelf;
        return shelf;
    }

    std::shared_ptr<const Look> Take(const std::filesystem::path& folder, int index, std::string* error) {
        const std::lock_guard guard(m_lock);
        if (!folder.empty()) m_folder = folder;
        if (m_folder.empty()) return Refuse(error, "no folder of looks");
        const std::filesystem::path file = m_folder / "Effects" / LookShelf::FileName(index);
        std::error_code failed;
        const auto time = std::filesystem::last_write_time(file, failed);
        const auto size = failed ? 0 : std::filesystem::file_size(file, failed);
        if (failed) return Refuse(error, LookShelf::FileName(index) + ": cannot be read");
        Kept& kept = m_kept[file];
        if ((!kept.look && kept.error.empty()) || kept.time != time || kept.size != size) {
            RecipeResult result = ReadRecipe(file);
            kept = {time, size, nullptr, result.error};
            if (result.recipe) kept.look = std::make_shared<const Look>(*result.recipe);
        }
        return kept.look ? kept.look : Refuse(error, kept.error);
    }

  private:
    static std::shared_ptr<const Look> Refuse(std::string* error, const std::string& why) {
        if (error) *error = why;
        return nullptr;
    }

    std::mutex m_lock;
    std::filesystem::path m_folder;
    std::map<std::filesystem::path, Kept> m_kept;
};

}  // namespace

std::string LookShelf::FileName(int index) {
    return index >= 0 && index < Count ? std::string(Stems[index]) + ".look" : std::string();
}

std::shared_ptr<const Look> LookShelf::Take(const std::filesystem::path& folder, int index, std::string* error) {
    if (index < 0 || index >= Count) {
        if (error) *error = "no such look";
        return nullptr;
    }
    return Shelf::Instance().Take(folder, index, error);
}
