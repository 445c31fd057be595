// SPDX-License-Identifier: GPL-3.0-or-later
#include "LoadModule.h"

#include <dlfcn.h>

#include <filesystem>

namespace {

void* Load(const char* module) {
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    for (const char* place : {"", "../lib/quince"}) {
        const std::filesystem::path path = folder / place / module;
        if (error || !std::filesystem::exists(path, error)) continue;
        if (void* loaded = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) return loaded;
    }
    return ::dlopen(module, RTLD_NOW | RTLD_LOCAL);
}

}  // namespace

void* FindInModule(const char* module, const char* function) {
    void* loaded = Load(module);
    return loaded ? ::dlsym(loaded, function) : nullptr;
}
