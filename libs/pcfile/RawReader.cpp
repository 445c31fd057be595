// SPDX-License-Identifier: GPL-3.0-or-later
#include <libraw/libraw.h>

#include <memory>

#include "CodecModule.h"
#include "PixelRows.h"

namespace {

struct FreeImage {
    void operator()(libraw_processed_image_t* image) const { LibRaw::dcraw_clear_mem(image); }
};
using Processed = std::unique_ptr<libraw_processed_image_t, FreeImage>;

// LibRaw's turn of the sensor as an Exif orientation.
int OrientationOf(int flip) {
    switch (flip) {
        case 3:
            return 3;
        case 5:
            return 8;
        case 6:
            return 6;
        default:
            return 1;
    }
}

bool TakePixels(const libraw_processed_image_t& image, PictureTarget& target) {
    if (image.type != LIBRAW_IMAGE_BITMAP || image.bits != 8 || (image.colors != 3 && image.colors != 1)) return false;
    std::uint8_t* out = target.Begin(image.width, image.height);
    if (!out) return false;
    for (std::size_t y = 0; y < image.height; ++y) {
        const std::uint8_t* in = image.data + y * image.width * image.colors;
        std::uint8_t* row = out + y * image.width * 4;
        if (image.colors == 3) {
            RgbToBgra(in, image.width, row);
            continue;
        }
        for (int x = 0; x < image.width; ++x) {
            row[4 * x] = row[4 * x + 1] = row[4 * x + 2] = in[x];
            row[4 * x + 3] = 255;
        }
    }
    return true;
}

// The preview that cameras put beside the sensor's data, for sensors that this LibRaw does not know.
bool ReadPreview(LibRaw& raw, PictureTarget& target) {
    if (raw.unpack_thumb() != LIBRAW_SUCCESS) return false;
    const libraw_thumbnail_t& preview = raw.imgdata.thumbnail;
    target.SetOrientation(OrientationOf(raw.imgdata.sizes.flip));
    if (preview.tformat == LIBRAW_THUMBNAIL_JPEG)
        return target.DecodeEmbeddedJpeg(reinterpret_cast<const std::uint8_t*>(preview.thumb), preview.tlength);
    int error = 0;
    const Processed image(raw.dcraw_make_mem_thumb(&error));
    return image && TakePixels(*image, target);
}

}  // namespace

bool ReadRaw(const std::uint8_t* data, std::size_t size, PictureTarget& target) {
    const auto raw = std::make_unique<LibRaw>();
    bool damaged = false;
    raw->set_dataerror_handler([](void* flag, const char*, const int) { *static_cast<bool*>(flag) = true; }, &damaged);
    raw->imgdata.params.use_camera_wb = 1;
    raw->imgdata.params.output_color = 1;  // sRGB
    raw->imgdata.params.output_bps = 8;
    if (raw->open_buffer(const_cast<std::uint8_t*>(data), size) != LIBRAW_SUCCESS) return false;
    const int unpacked = raw->unpack();
    if (damaged) return false;
    if (unpacked != LIBRAW_SUCCESS) return ReadPreview(*raw, target);
    if (!target.Report(0.3) || raw->dcraw_process() != LIBRAW_SUCCESS || damaged) return false;
    int error = 0;
    const Processed image(raw->dcraw_make_mem_image(&error));
    return image && TakePixels(*image, target) && target.Report(1);
}
