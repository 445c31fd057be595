// SPDX-License-Identifier: GPL-3.0-or-later
#include <magick/api.h>

#include <cstring>

#include "CodecFiles.h"

Bytes MakeByMagick(const Bitmap& bitmap, const char* format) {
    ExceptionInfo exception;
    GetExceptionInfo(&exception);
    InitializeMagickEx(nullptr, MAGICK_OPT_NO_SIGNAL_HANDER, &exception);
    Image* image =
        ConstituteImage(static_cast<unsigned long>(bitmap.Width()), static_cast<unsigned long>(bitmap.Height()), "BGRA",
                        CharPixel, bitmap.Pixels(), &exception);
    Bytes bytes;
    if (image) {
        SetImageType(image, TrueColorType);
        ImageInfo* info = CloneImageInfo(nullptr);
        info->quality = 95;
        std::strncpy(image->magick, format, sizeof image->magick - 1);
        std::size_t count = 0;
        auto* blob = static_cast<std::uint8_t*>(ImageToBlob(info, image, &count, &exception));
        if (blob) bytes.assign(blob, blob + count);
        MagickFree(blob);
        DestroyImageInfo(info);
        DestroyImage(image);
    }
    DestroyExceptionInfo(&exception);
    return bytes;
}
