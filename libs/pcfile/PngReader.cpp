// SPDX-License-Identifier: GPL-3.0-or-later
#include <png.h>
#include <setjmp.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "Bitmap.h"
#include "Readers.h"

namespace {

constexpr png_uint_32 ReportRows = 64;

struct Reader {
    png_structp png = nullptr;
    png_infop info = nullptr;
    const std::uint8_t* next = nullptr;
    std::size_t left = 0;
    std::size_t size = 0;

    ~Reader() { png_destroy_read_struct(&png, &info, nullptr); }
};

void ReadBytes(png_structp png, png_bytep out, std::size_t count) {
    Reader& reader = *static_cast<Reader*>(png_get_io_ptr(png));
    if (count > reader.left) png_error(png, "cut");
    std::memcpy(out, reader.next, count);
    reader.next += count;
    reader.left -= count;
}

[[noreturn]] void Fail(png_structp png, png_const_charp) {
    longjmp(*static_cast<jmp_buf*>(png_get_error_ptr(png)), 1);
}

// The gamma and primaries of files that have no profile. A file that says the values every PC picture has is sRGB.
void ReadGamma(png_structp png, png_infop info, PictureTarget& target) {
    double fileGamma = 0;
    int intent = 0;
    if (png_get_sRGB(png, info, &intent) || !png_get_gAMA(png, info, &fileGamma) || fileGamma < 0.05 || fileGamma > 5)
        return;
    double xy[8] = {0.3127, 0.3290, 0.64, 0.33, 0.30, 0.60, 0.15, 0.06};
    const bool usual = std::abs(fileGamma - 0.45455) < 0.01;
    const bool primaries = png_get_cHRM(png, info, &xy[0], &xy[1], &xy[2], &xy[3], &xy[4], &xy[5], &xy[6], &xy[7]);
    if (!usual || primaries) target.SetChromaticities(xy, usual ? 0 : 1 / fileGamma);
}

// Reads what the header says about colour; true when the picture deserves 16 bits a channel on its way to sRGB.
bool ReadColour(png_structp png, png_infop info, PictureTarget& target) {
    const int type = png_get_color_type(png, info);
    if (!(type & PNG_COLOR_MASK_COLOR)) target.SetModel(PictureTarget::Model::Gray);
    png_charp name = nullptr;
    png_bytep profile = nullptr;
    png_uint_32 length = 0;
    int compression = 0;
    const bool embedded = png_get_iCCP(png, info, &name, &compression, &profile, &length) != 0;
    if (embedded)
        target.SetProfile(profile, length);
    else
        ReadGamma(png, info, target);
    png_uint_32 exifSize = 0;
    png_bytep exif = nullptr;
    if (png_get_eXIf_1(png, info, &exifSize, &exif)) target.SetExif(exif, exifSize);
    int intent = 0;
    return png_get_bit_depth(png, info) == 16 &&
           (embedded || (png_get_valid(png, info, PNG_INFO_gAMA) && !png_get_sRGB(png, info, &intent)));
}

// Everything to four channels: blue, green, red, alpha of 8 bits, or red, green, blue, alpha of 16.
void SetTransforms(png_structp png, bool deep) {
    png_set_expand(png);
    png_set_gray_to_rgb(png);
    png_set_add_alpha(png, 0xFFFF, PNG_FILLER_AFTER);
    if (deep) {
        png_set_swap(png);
    } else {
        png_set_scale_16(png);
        png_set_bgr(png);
    }
}

// Deflate shrinks by at most 1032, so fewer bytes than that cannot hold the stated size.
bool SizeIsPlausible(png_structp png, png_infop info, std::size_t size) {
    const std::uint64_t bits = std::uint64_t{png_get_channels(png, info)} * png_get_bit_depth(png, info);
    return (png_get_image_width(png, info) * bits + 7) / 8 * png_get_image_height(png, info) / 1032 <= size;
}

// Everything that libpng may leave by a jump. No object with a destructor lives in here.
bool Decode(Reader& reader, jmp_buf& jump, PictureTarget& target) {
    if (setjmp(jump)) return false;
    png_structp png = reader.png;
    png_infop info = reader.info;
    png_set_read_fn(png, &reader, ReadBytes);
    png_set_user_limits(png, Bitmap::MaxSide, Bitmap::MaxSide);
    png_set_benign_errors(png, 1);
    png_read_info(png, info);
    if (!SizeIsPlausible(png, info, reader.size)) return false;
    const bool deep = ReadColour(png, info, target);
    const png_uint_32 width = png_get_image_width(png, info), height = png_get_image_height(png, info);
    SetTransforms(png, deep);
    const int passes = png_set_interlace_handling(png);
    png_read_update_info(png, info);
    auto* out = deep ? reinterpret_cast<std::uint8_t*>(target.BeginDeep(width, height)) : target.Begin(width, height);
    const std::size_t stride = std::size_t{width} * (deep ? 8 : 4);
    if (!out || png_get_rowbytes(png, info) != stride) return false;
    for (int pass = 0; pass < passes; ++pass)
        for (png_uint_32 y = 0; y < height; ++y) {
            png_read_row(png, out + y * stride, nullptr);
            if (y % ReportRows == 0 && !target.Report((pass + double(y) / height) / passes)) return false;
        }
    return true;
}

}  // namespace

bool ReadPng(const std::uint8_t* data, std::size_t size, PictureTarget& target) {
    jmp_buf jump;
    Reader reader;
    reader.next = data;
    reader.left = reader.size = size;
    reader.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &jump, Fail, [](png_structp, png_const_charp) {});
    reader.info = reader.png ? png_create_info_struct(reader.png) : nullptr;
    return reader.info && Decode(reader, jump, target);
}
