// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "PC_File.h"

// What the fuzz targets of the picture readers do with their bytes; the ordinary tests call the same functions over
// seeded damage. Whatever the bytes are, the readers must return; a picture that comes back must be one.
namespace PictureFuzz {

inline void Check(const Bitmap& picture) {
    if (!picture) return;
    if (!Bitmap::Allowed(picture.Width(), picture.Height()) || !picture.Pixels()) std::abort();
    // Reading both ends shows memory that is not there.
    volatile std::uint8_t seen = picture.Pixels()[0];
    seen = picture.Pixels()[picture.ByteCount() - 1];
    static_cast<void>(seen);
}

inline void FromMemory(const std::uint8_t* data, std::size_t size) {
    PC_File files;
    const Bitmap picture = files.OnLoadImage(data, static_cast<int>(size), 0, nullptr, 0, 100);
    Check(picture);
    if (!picture.IsNull() && !files.GetImageInfo()) std::abort();
}

// The file that a run's bytes go to, in the folder for temporary files.
inline std::string ScratchName() {
    const char* folder = std::getenv("TMPDIR");
    return std::string(folder ? folder : "/tmp") + "/quince-fuzz-" + std::to_string(::getpid());
}

inline void WriteScratch(const std::string& name, const std::uint8_t* data, std::size_t size) {
    std::FILE* file = std::fopen(name.c_str(), "wb");
    if (!file) std::abort();
    if (size > 0) std::fwrite(data, 1, size, file);
    std::fclose(file);
}

inline void FromPath(const std::uint8_t* data, std::size_t size) {
    const std::string name = ScratchName();
    WriteScratch(name, data, size);
    const std::wstring wide(name.begin(), name.end());
    PC_File files;
    Check(files.OnLoadImage(wide.c_str(), nullptr, 0, 100, nullptr));
    // The first byte chooses where an inner picture is looked for.
    Check(files.OnLoadImage(wide.c_str(), size > 0 ? data[0] : 117L, 0, nullptr, 0, 100));
    ::unlink(name.c_str());
}

inline void Snapshot(const std::uint8_t* data, std::size_t size) {
    const std::string name = ScratchName();
    WriteScratch(name, data, size);
    const std::wstring wide(name.begin(), name.end());
    Check(PC_File::ImageReadFrombinary(wide));
    ::unlink(name.c_str());
}

}  // namespace PictureFuzz
