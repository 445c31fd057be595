// SPDX-License-Identifier: GPL-3.0-or-later
#include "PictureFolder.h"

#include <jpeglib.h>
#include <lcms2.h>
#include <png.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <QtCore/QBuffer>
#include <QtCore/QString>
#include <QtGui/QImage>

#include "TestHome.h"

namespace fs = std::filesystem;

void PictureFolder::SetUp() {
    folder = fs::path(TestHome::Path().toStdString()) / "pictures";
    fs::remove_all(folder);
    fs::create_directories(folder);
}

std::wstring PictureFolder::Wide(const std::string& name) const {
    return QString::fromStdString(At(name).string()).toStdWString();
}

void PictureFolder::Put(const std::string& name, const Bytes& bytes) const {
    std::ofstream out(At(name), std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

Bytes PictureFolder::Get(const std::string& name) const {
    std::ifstream in(At(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

Bitmap PictureFolder::Open(const Bytes& bytes) {
    Put("picture.data", bytes);
    return OpenPath("picture.data");
}

Bitmap PictureFolder::OpenPath(const std::string& name) {
    return files.OnLoadImage(Wide(name).c_str(), nullptr, 0, 100, nullptr);
}

Bitmap PictureFolder::OpenMemory(const Bytes& bytes, int hint) {
    return files.OnLoadImage(bytes.data(), static_cast<int>(bytes.size()), hint, nullptr, 0, 100);
}

int Largest(const Bitmap& a, const Bitmap& b) {
    if (a.Width() != b.Width() || a.Height() != b.Height() || !a) return 256;
    int largest = 0;
    for (std::size_t i = 0; i < a.ByteCount(); ++i)
        largest = std::max(largest, std::abs(a.Pixels()[i] - b.Pixels()[i]));
    return largest;
}

double Mean(const Bitmap& a, const Bitmap& b) {
    if (a.Width() != b.Width() || a.Height() != b.Height() || !a) return 256;
    double total = 0;
    for (std::size_t i = 0; i < a.ByteCount(); ++i) total += std::abs(a.Pixels()[i] - b.Pixels()[i]);
    return total / static_cast<double>(a.ByteCount());
}

namespace {

// The four bytes of a pixel as this kind of JPEG stores them.
void PackPixel(const std::uint8_t* bgra, JpegKind kind, std::uint8_t* out) {
    const int red = bgra[2], green = bgra[1], blue = bgra[0];
    if (kind == JpegKind::Grey) {
        out[0] = bgra[1];
    } else if (kind == JpegKind::Cmyk || kind == JpegKind::AdobeCmyk) {
        // All black goes into the black ink, the rest into colour.
        const int light = std::max({red, green, blue, 1});
        const int ink[4] = {255 - red * 255 / light, 255 - green * 255 / light, 255 - blue * 255 / light, 255 - light};
        for (int i = 0; i < 4; ++i)
            out[i] = static_cast<std::uint8_t>(kind == JpegKind::AdobeCmyk ? 255 - ink[i] : ink[i]);
    } else {
        out[0] = bgra[2];
        out[1] = bgra[1];
        out[2] = bgra[0];
    }
}

}  // namespace

Bytes MakeJpeg(const Bitmap& bitmap, int quality, JpegKind kind, const Bytes& profile, const Bytes& exif) {
    jpeg_compress_struct state = {};
    jpeg_error_mgr errors = {};
    state.err = jpeg_std_error(&errors);
    jpeg_create_compress(&state);
    unsigned char* memory = nullptr;
    unsigned long count = 0;
    jpeg_mem_dest(&state, &memory, &count);
    const bool ink = kind == JpegKind::Cmyk || kind == JpegKind::AdobeCmyk;
    state.image_width = bitmap.Width();
    state.image_height = bitmap.Height();
    state.input_components = kind == JpegKind::Grey ? 1 : ink ? 4 : 3;
    state.in_color_space = kind == JpegKind::Grey ? JCS_GRAYSCALE : ink ? JCS_CMYK : JCS_RGB;
    jpeg_set_defaults(&state);
    if (!ink && kind != JpegKind::Grey) state.comp_info[0].h_samp_factor = state.comp_info[0].v_samp_factor = 1;
    jpeg_set_quality(&state, quality, TRUE);
    if (kind == JpegKind::Progressive) jpeg_simple_progression(&state);
    if (ink) state.write_Adobe_marker = kind == JpegKind::AdobeCmyk;
    jpeg_start_compress(&state, TRUE);
    if (!exif.empty()) jpeg_write_marker(&state, JPEG_APP0 + 1, exif.data(), static_cast<unsigned>(exif.size()));
    if (!profile.empty()) jpeg_write_icc_profile(&state, profile.data(), static_cast<unsigned>(profile.size()));
    Bytes row(std::size_t{4} * bitmap.Width());
    for (int y = 0; y < bitmap.Height(); ++y) {
        for (int x = 0; x < bitmap.Width(); ++x)
            PackPixel(bitmap.Row(y) + 4 * x, kind, row.data() + std::size_t(state.input_components) * x);
        JSAMPROW line = row.data();
        jpeg_write_scanlines(&state, &line, 1);
    }
    jpeg_finish_compress(&state);
    jpeg_destroy_compress(&state);
    const Bytes bytes(memory, memory + count);
    std::free(memory);
    return bytes;
}

Bytes MakePng(const Bitmap& bitmap, int bits, int type, const Bytes& profile, int level) {
    Bytes bytes;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(
        png, &bytes,
        [](png_structp p, png_bytep data, std::size_t count) {
            auto& out = *static_cast<Bytes*>(png_get_io_ptr(p));
            out.insert(out.end(), data, data + count);
        },
        nullptr);
    png_set_IHDR(png, info, bitmap.Width(), bitmap.Height(), bits, type, PNG_INTERLACE_NONE, 0, 0);
    png_set_compression_level(png, level);
    if (!profile.empty()) png_set_iCCP(png, info, "test", 0, profile.data(), static_cast<png_uint_32>(profile.size()));
    png_write_info(png, info);
    const bool colour = type & 2, alpha = type & 4;
    for (int y = 0; y < bitmap.Height(); ++y) {
        Bytes row;
        const auto put = [&](int value) {
            row.push_back(static_cast<std::uint8_t>(value));
            // 16 bits: the same value in both bytes is exactly value × 257.
            if (bits == 16) row.push_back(static_cast<std::uint8_t>(value));
        };
        for (int x = 0; x < bitmap.Width(); ++x) {
            const std::uint8_t* p = bitmap.Row(y) + 4 * x;
            if (colour) put(p[2]);
            put(p[1]);
            if (colour) put(p[0]);
            if (alpha) put(p[3]);
        }
        png_write_row(png, row.data());
    }
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return bytes;
}

Bytes MakeOrientationExif(int orientation) {
    return {'E', 'x', 'i', 'f', 0,    0, 'M', 'M', 0, 42, 0, 0, 0,
            8,   0,   1,   1,   0x12, 0, 3,   0,   0, 0,  1, 0, static_cast<std::uint8_t>(orientation),
            0,   0,   0,   0,   0,    0};
}

Bytes MakeByQt(const Bitmap& bitmap, const char* format) {
    const QImage image(bitmap.Pixels(), bitmap.Width(), bitmap.Height(), bitmap.Stride(), QImage::Format_ARGB32);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, format)) return {};
    return Bytes(buffer.data().begin(), buffer.data().end());
}

namespace {

Bytes ProfileBytes(cmsHPROFILE profile) {
    cmsUInt32Number size = 0;
    cmsSaveProfileToMem(profile, nullptr, &size);
    Bytes bytes(size);
    cmsSaveProfileToMem(profile, bytes.data(), &size);
    cmsCloseProfile(profile);
    return bytes;
}

}  // namespace

Bytes MakeRgbProfile(double gamma) {
    const cmsCIExyY white = {0.3127, 0.3290, 1};
    const cmsCIExyYTRIPLE primaries = {{0.64, 0.33, 1}, {0.21, 0.71, 1}, {0.15, 0.06, 1}};
    cmsToneCurve* curve = cmsBuildGamma(nullptr, gamma);
    cmsToneCurve* curves[3] = {curve, curve, curve};
    const Bytes bytes = ProfileBytes(cmsCreateRGBProfile(&white, &primaries, curves));
    cmsFreeToneCurve(curve);
    return bytes;
}

Bytes MakeGreyProfile(double gamma) {
    const cmsCIExyY white = {0.3457, 0.3585, 1};
    cmsToneCurve* curve = cmsBuildGamma(nullptr, gamma);
    const Bytes bytes = ProfileBytes(cmsCreateGrayProfile(&white, curve));
    cmsFreeToneCurve(curve);
    return bytes;
}

Bytes MakeSrgbProfile() {
    return ProfileBytes(cmsCreate_sRGBProfile());
}

Bytes MakeInkProfile() {
    cmsHPROFILE profile = cmsCreateProfilePlaceholder(nullptr);
    cmsSetProfileVersion(profile, 2.1);
    cmsSetDeviceClass(profile, cmsSigOutputClass);
    cmsSetColorSpace(profile, cmsSigCmykData);
    cmsSetPCS(profile, cmsSigLabData);
    cmsPipeline* pipeline = cmsPipelineAlloc(nullptr, 4, 3);
    cmsStage* table = cmsStageAllocCLut16bit(nullptr, 5, 4, 3, nullptr);
    // Lightness falls with the sum of the inks and there is no colour, so that the profile's work is easy to tell.
    cmsStageSampleCLut16bit(
        table,
        [](const cmsUInt16Number in[], cmsUInt16Number out[], void*) -> cmsInt32Number {
            const unsigned ink = (in[0] + in[1] + in[2] + in[3]) / 4u;
            out[0] = static_cast<cmsUInt16Number>((65535u - ink) * 0xFF00u / 65535u);
            out[1] = out[2] = 0x8000;
            return TRUE;
        },
        nullptr, 0);
    cmsPipelineInsertStage(pipeline, cmsAT_END, table);
    cmsWriteTag(profile, cmsSigAToB0Tag, pipeline);
    cmsWriteTag(profile, cmsSigAToB1Tag, pipeline);
    cmsPipelineFree(pipeline);
    return ProfileBytes(profile);
}
