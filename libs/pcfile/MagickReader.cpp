// SPDX-License-Identifier: GPL-3.0-or-later
#include <magick/api.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <mutex>

#include "CodecModule.h"

// Removes the temporary files that the library still knows of. Exported by it, but in none of its installed headers;
// what they offer instead would end the library.
extern "C" void PurgeTemporaryFiles(void);

namespace {

// The library keeps eight bytes for a pixel.
constexpr std::int64_t MostPixels = std::int64_t{1} << 27;

const char* MagickName(PictureFormat format) {
    switch (format) {
        case PictureFormat::Pcx:
            return "PCX";
        case PictureFormat::Ras:
            return "SUN";
        case PictureFormat::Pnm:
            return "PNM";
        case PictureFormat::Jng:
            return "JNG";
        case PictureFormat::Mng:
            return "MNG";
        case PictureFormat::Wmf:
            return "WMF";
        default:
            return nullptr;
    }
}

// Starts the library without its signal handlers.
void StartMagick() {
    static std::once_flag once;
    std::call_once(once, [] {
        ExceptionInfo exception;
        GetExceptionInfo(&exception);
        InitializeMagickEx(nullptr, MAGICK_OPT_NO_SIGNAL_HANDER, &exception);
        DestroyExceptionInfo(&exception);
    });
}

// Everything in memory, and bounded. Set anew for each read: the limits are global, and the library's JNG reader
// narrows them for the picture inside and leaves them so when that is damaged.
void SetLimits() {
    SetMagickResourceLimit(PixelsResource, MostPixels);
    SetMagickResourceLimit(WidthResource, 1 << 20);
    SetMagickResourceLimit(HeightResource, 1 << 20);
    SetMagickResourceLimit(DiskResource, 0);
    SetMagickResourceLimit(MapResource, 0);
    // The formats that come here need no second thread, and a damaged file then fails the same way each time.
    SetMagickResourceLimit(ThreadsResource, 1);
}

struct Call {
    ExceptionInfo exception;
    ImageInfo* info = CloneImageInfo(nullptr);
    Image* image = nullptr;

    Call() { GetExceptionInfo(&exception); }
    ~Call() {
        if (image) DestroyImageList(image);
        DestroyImageInfo(info);
        DestroyExceptionInfo(&exception);
        // The JNG reader puts the picture inside into files of its own and forgets them when that is damaged.
        PurgeTemporaryFiles();
    }
};

// Errors, and the warnings that mean missing pixels.
bool IsDamaged(const ExceptionInfo& exception) {
    return exception.severity >= ErrorException || exception.severity == CorruptImageWarning;
}

}  // namespace

bool ReadByMagick(PictureFormat format, const std::uint8_t* data, std::size_t size, PictureTarget& target) {
    const char* name = MagickName(format);
    if (!name) return false;
    StartMagick();
    // The limits make the library's reads one at a time.
    static std::mutex oneAtATime;
    const std::lock_guard guard(oneAtATime);
    SetLimits();
    Call call;
    std::strncpy(call.info->magick, name, sizeof call.info->magick - 1);
    std::snprintf(call.info->filename, sizeof call.info->filename, "%s:", name);
    call.info->subimage = 0;
    call.info->subrange = 1;
    call.image = BlobToImage(call.info, data, size, &call.exception);
    if (!call.image || IsDamaged(call.exception) || IsDamaged(call.image->exception)) return false;
    const Image& image = *call.image;
    std::uint8_t* out = target.Begin(static_cast<std::int64_t>(image.columns), static_cast<std::int64_t>(image.rows));
    if (!out) return false;
    if (DispatchImage(&image, 0, 0, image.columns, image.rows, "BGRA", CharPixel, out, &call.exception) != MagickPass)
        return false;
    if (!image.matte)
        for (std::size_t i = 3; i < std::size_t{4} * image.columns * image.rows; i += 4) out[i] = 255;
    std::size_t length = 0;
    const unsigned char* profile = GetImageProfile(&image, "ICM", &length);
    if (profile && length > 0) target.SetProfile(profile, length);
    return target.Report(1);
}
