// SPDX-License-Identifier: GPL-3.0-or-later
#include "CodecModule.h"
#include "LoadModule.h"

bool ReadByModule(PictureFormat format, const std::uint8_t* data, std::size_t size, PictureTarget& target) {
    static const auto entry =
        reinterpret_cast<QuinceReadPictureFunction>(FindInModule("libquince_codecs.so", CodecEntryName));
    return entry && entry(format, data, size, &target);
}
