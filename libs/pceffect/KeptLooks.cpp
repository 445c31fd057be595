// SPDX-License-Identifier: GPL-3.0-or-later
#include "KeptLooks.h"

#include <map>

#include "RecipeReader.h"

namespace {

struct Kept {
    std::filesystem::file_time_type time;
    std::uintmax_t size = 0;
    std::shared_ptr<const Look> look;
    std::string error;
};

std::mutex g_lock;

std::map<std::filesystem::path, Kept>& AllKept() {
    static std::map<std::filesystem::path, Kept> kept;
    return kept;
}

std::shared_ptr<const Look> Refuse(std::string* error, const std::string& why) {
    if (error) *error = why;
    return nullptr;
}

}  // namespace

std::filesystem::path KeptLooks::FolderOf(const std::filesystem::path& wanted) {
    static std::filesystem::path last;
    const std::lock_guard guard(g_lock);
    if (!wanted.empty()) last = wanted;
    return last;
}

std::shared_ptr<const Look> KeptLooks::Take(const std::filesystem::path& folder, const std::string& name,
                                            std::string* error) {
    const std::lock_guard guard(g_lock);
    const std::filesystem::path file = folder / name;
    std::error_code failed;
    const auto time = std::filesystem::last_write_time(file, failed);
    const auto size = failed ? 0 : std::filesystem::file_size(file, failed);
    if (failed) return Refuse(error, name + ": cannot be read");
    Kept& kept = AllKept()[file];
    if ((!kept.look && kept.error.empty()) || kept.time != time || kept.size != size) {
        RecipeResult result = ReadRecipe(file);
        kept = {time, size, nullptr, result.error};
        if (result.recipe) kept.look = std::make_shared<const Look>(*result.recipe);
    }
    return kept.look ? kept.look : Refuse(error, kept.error);
}
