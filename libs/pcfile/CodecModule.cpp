// SPDX-License-Identifier: GPL-3.0-or-later
#include "CodecModule.h"

extern "C" __attribute__((visibility("default"))) bool QuinceReadPicture(PictureFormat format, const std::uint8_t* data,
                                                                         std::size_t size, PictureTarget* target) {
    switch (format) {
        case PictureFormat::Heif:
            return ReadHeif(data, size, *target);
        case PictureFormat::Jxl:
            return ReadJxl(data, size, *target);
        case PictureFormat::Webp:
            return ReadWebp(data, size, *target);
        case PictureFormat::Tiff:
            return ReadTiff(data, size, *target);
        case PictureFormat::Raw:
            return ReadRaw(data, size, *target);
        case PictureFormat::Jp2:
        case PictureFormat::J2k:
            return ReadJpeg2000(format, data, size, *target);
        case PictureFormat::Jbig:
            return ReadJbig(data, size, *target);
        case PictureFormat::Pgx:
            return ReadPgx(data, size, *target);
        case PictureFormat::Tga:
            return ReadTga(data, size, *target);
        case PictureFormat::Psd:
            return ReadPsd(data, size, *target);
        default:
            return ReadByMagick(format, data, size, *target);
    }
}
