// SPDX-License-Identifier: GPL-3.0-or-later
#include <dlfcn.h>

#include <filesystem>

#include "CodecModule.h"

namespace {

constexpr const char* ModuleName = "libquince_codecs.so";

// Beside the program, in the library folder of an installation, then wherever the loader looks.
void* LoadModule() {
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    for (const char* place : {"", "../lib/quince"}) {
        const std::filesystem::path path = folder / place / ModuleName;
        if (error || !std::filesystem::exists(path, error)) continue;
        if (void* module = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) return module;
    }
    return ::dlopen(ModuleName, RTLD_NOW | RTLD_LOCAL);
}

// The module is never unloaded: the libraries in it hold threads and thread-local data.
QuinceReadPictureFunction LoadEntry() {
    void* module = LoadModule();
    return module ? reinterpret_cast<QuinceReadPictureFunction>(::dlsym(module, CodecEntryName)) : nullptr;
}

}  // namespace

bool ReadByModule(PictureFormat format, const std::uint8_t* data, std::size_t size, PictureTarget& target) {
    static const QuinceReadPictureFunction entry = LoadEntry();
    return entry && entry(format, data, size, &target);
}
