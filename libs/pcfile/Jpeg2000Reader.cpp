// SPDX-License-Identifier: GPL-3.0-or-later
#include "CodecModule.h"

#ifdef QUINCE_HAVE_OPENJPEG

#include <openjpeg.h>

#include <algorithm>
#include <cstring>
#include <memory>

namespace {

struct Source {
    const std::uint8_t* data;
    std::size_t size;
    std::size_t at = 0;
};

OPJ_SIZE_T ReadSource(void* out, OPJ_SIZE_T count, void* handle) {
    Source& source = *static_cast<Source*>(handle);
    const std::size_t taken = std::min<std::size_t>(count, source.size - source.at);
    if (taken == 0) return static_cast<OPJ_SIZE_T>(-1);
    std::memcpy(out, source.data + source.at, taken);
    source.at += taken;
    return taken;
}

OPJ_OFF_T SkipSource(OPJ_OFF_T count, void* handle) {
    Source& source = *static_cast<Source*>(handle);
    if (count < 0) return -1;
    const std::size_t taken = std::min<std::size_t>(static_cast<std::size_t>(count), source.size - source.at);
    source.at += taken;
    return static_cast<OPJ_OFF_T>(taken);
}

OPJ_BOOL SeekSource(OPJ_OFF_T place, void* handle) {
    Source& source = *static_cast<Source*>(handle);
    if (place < 0 || static_cast<std::size_t>(place) > source.size) return OPJ_FALSE;
    source.at = static_cast<std::size_t>(place);
    return OPJ_TRUE;
}

// The library's two handle types are one and the same to C++, so each has a deleter of its own.
struct DestroyCodec {
    void operator()(opj_codec_t* codec) const { opj_destroy_codec(codec); }
};
struct DestroyStream {
    void operator()(opj_stream_t* stream) const { opj_stream_destroy(stream); }
};
struct DestroyImage {
    void operator()(opj_image_t* image) const { opj_image_destroy(image); }
};

// A component's value at a pixel of the full picture, 0 to 255; components may be stored at a fraction of its size.
int Level(const opj_image_comp_t& part, std::uint32_t x, std::uint32_t y) {
    const std::uint32_t px = std::min(part.w - 1, x / std::max(1u, part.dx)),
                        py = std::min(part.h - 1, y / std::max(1u, part.dy));
    std::int64_t value = part.data[std::size_t{py} * part.w + px];
    if (part.sgnd) value += std::int64_t{1} << (part.prec - 1);
    const std::int64_t most = (std::int64_t{1} << part.prec) - 1;
    return static_cast<int>((std::clamp<std::int64_t>(value, 0, most) * 255 + most / 2) / most);
}

bool PartsAreUsable(const opj_image_t& image) {
    if (image.numcomps < 1) return false;
    for (std::uint32_t i = 0; i < std::min(image.numcomps, 4u); ++i) {
        const opj_image_comp_t& part = image.comps[i];
        if (!part.data || part.w == 0 || part.h == 0 || part.prec < 1 || part.prec > 31) return false;
    }
    return true;
}

// Luma and two colour differences (sYCC) to red, green, blue.
void FromYcc(int (&c)[3]) {
    const double y = c[0], cb = c[1] - 128, cr = c[2] - 128;
    const double rgb[3] = {y + 1.402 * cr, y - 0.344136 * cb - 0.714136 * cr, y + 1.772 * cb};
    for (int i = 0; i < 3; ++i) c[i] = static_cast<int>(std::clamp(rgb[i] + 0.5, 0.0, 255.0));
}

bool TakePixels(const opj_image_t& image, PictureTarget& target) {
    if (!PartsAreUsable(image) || image.x1 <= image.x0 || image.y1 <= image.y0) return false;
    const std::uint32_t width = image.x1 - image.x0, height = image.y1 - image.y0;
    std::uint8_t* out = target.Begin(width, height);
    if (!out) return false;
    const std::uint32_t parts = image.numcomps;
    const bool colour = parts >= 3, ink = image.color_space == OPJ_CLRSPC_CMYK && parts >= 4;
    const int alpha = ink ? -1 : colour && parts >= 4 ? 3 : parts == 2 ? 1 : -1;
    if (ink) target.SetModel(PictureTarget::Model::Cmyk);
    if (!colour) target.SetModel(PictureTarget::Model::Gray);
    for (std::uint32_t y = 0; y < height; ++y)
        for (std::uint32_t x = 0; x < width; ++x, out += 4) {
            int c[3];
            for (int i = 0; i < 3; ++i) c[i] = Level(image.comps[colour ? i : 0], x, y);
            if (image.color_space == OPJ_CLRSPC_SYCC && colour) FromYcc(c);
            for (int i = 0; i < 3; ++i) out[ink ? i : 2 - i] = static_cast<std::uint8_t>(c[i]);
            out[3] = ink || alpha >= 0 ? static_cast<std::uint8_t>(Level(image.comps[ink ? 3 : alpha], x, y)) : 255;
        }
    if (image.icc_profile_buf && image.icc_profile_len > 0 && image.color_space != OPJ_CLRSPC_SYCC)
        target.SetProfile(image.icc_profile_buf, image.icc_profile_len);
    return true;
}

}  // namespace

bool ReadJpeg2000(PictureFormat format, const std::uint8_t* data, std::size_t size, PictureTarget& target) {
    Source source{data, size};
    const std::unique_ptr<opj_stream_t, DestroyStream> stream(opj_stream_create(1 << 20, OPJ_TRUE));
    opj_stream_set_user_data(stream.get(), &source, nullptr);
    opj_stream_set_user_data_length(stream.get(), size);
    opj_stream_set_read_function(stream.get(), ReadSource);
    opj_stream_set_skip_function(stream.get(), SkipSource);
    opj_stream_set_seek_function(stream.get(), SeekSource);
    const std::unique_ptr<opj_codec_t, DestroyCodec> codec(
        opj_create_decompress(format == PictureFormat::Jp2 ? OPJ_CODEC_JP2 : OPJ_CODEC_J2K));
    opj_dparameters_t parameters;
    opj_set_default_decoder_parameters(&parameters);
    if (!opj_setup_decoder(codec.get(), &parameters)) return false;
    // A cut file is refused, not shown in part.
    opj_decoder_set_strict_mode(codec.get(), OPJ_TRUE);
    opj_codec_set_threads(codec.get(), opj_get_num_cpus());
    opj_image_t* made = nullptr;
    const bool header = opj_read_header(stream.get(), codec.get(), &made);
    const std::unique_ptr<opj_image_t, DestroyImage> image(made);
    // The size is looked at before the decoder takes memory for it: it needs four bytes a sample.
    if (!header || !target.Begin(std::int64_t{image->x1} - image->x0, std::int64_t{image->y1} - image->y0))
        return false;
    if (!opj_decode(codec.get(), stream.get(), image.get()) || !opj_end_decompress(codec.get(), stream.get()))
        return false;
    return TakePixels(*image, target) && target.Report(1);
}

#else

// Built without OpenJPEG: these files are refused.
bool ReadJpeg2000(PictureFormat, const std::uint8_t*, std::size_t, PictureTarget&) {
    return false;
}

#endif
