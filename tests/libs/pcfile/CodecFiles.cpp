// SPDX-License-Identifier: GPL-3.0-or-later
#include "CodecFiles.h"

extern "C" {
#include <jbig.h>
}
#include <jxl/encode.h>
#include <libheif/heif.h>
#include <webp/encode.h>
#include <webp/mux.h>

#include <cstring>

Bytes MakeWebp(const Bitmap& bitmap, bool exact) {
    std::uint8_t* out = nullptr;
    const int width = bitmap.Width(), height = bitmap.Height(), stride = static_cast<int>(bitmap.Stride());
    const std::size_t count = exact ? WebPEncodeLosslessBGRA(bitmap.Pixels(), width, height, stride, &out)
                                    : WebPEncodeBGRA(bitmap.Pixels(), width, height, stride, 95, &out);
    const Bytes bytes(out, out + count);
    WebPFree(out);
    return bytes;
}

Bytes MakeWebpAnimation(const Bitmap& first, const Bitmap& second) {
    WebPMux* mux = WebPMuxNew();
    for (const Bitmap& bitmap : {first, second}) {
        const Bytes still = MakeWebp(bitmap, true);
        WebPMuxFrameInfo frame = {};
        frame.bitstream = {still.data(), still.size()};
        frame.id = WEBP_CHUNK_ANMF;
        frame.duration = 100;
        WebPMuxPushFrame(mux, &frame, 1);
    }
    const WebPMuxAnimParams parameters = {0xFFFFFFFFu, 0};
    WebPMuxSetAnimationParams(mux, &parameters);
    WebPData data;
    WebPDataInit(&data);
    WebPMuxAssemble(mux, &data);
    const Bytes bytes(data.bytes, data.bytes + data.size);
    WebPDataClear(&data);
    WebPMuxDelete(mux);
    return bytes;
}

Bytes MakeHeif(const Bitmap& bitmap, HeifKind kind) {
    heif_context* context = heif_context_alloc();
    heif_encoder* encoder = nullptr;
    Bytes bytes;
    const auto format = kind == HeifKind::Hevc ? heif_compression_HEVC : heif_compression_AV1;
    if (heif_context_get_encoder_for_format(context, format, &encoder).code == heif_error_Ok) {
        heif_encoder_set_lossy_quality(encoder, 90);
        heif_image* image = nullptr;
        heif_image_create(bitmap.Width(), bitmap.Height(), heif_colorspace_RGB, heif_chroma_interleaved_RGB, &image);
        heif_image_add_plane(image, heif_channel_interleaved, bitmap.Width(), bitmap.Height(), 8);
        int stride = 0;
        std::uint8_t* plane = heif_image_get_plane(image, heif_channel_interleaved, &stride);
        for (int y = 0; y < bitmap.Height(); ++y)
            for (int x = 0; x < bitmap.Width(); ++x)
                for (int c = 0; c < 3; ++c) plane[y * stride + 3 * x + c] = bitmap.Row(y)[4 * x + 2 - c];
        heif_image_handle* handle = nullptr;
        heif_context_encode_image(context, image, encoder, nullptr, &handle);
        heif_writer writer = {1, [](heif_context*, const void* data, std::size_t size, void* out) {
                                  const auto* first = static_cast<const std::uint8_t*>(data);
                                  static_cast<Bytes*>(out)->insert(static_cast<Bytes*>(out)->end(), first,
                                                                   first + size);
                                  return heif_error{heif_error_Ok, heif_suberror_Unspecified, ""};
                              }};
        heif_context_write(context, &writer, &bytes);
        heif_image_handle_release(handle);
        heif_image_release(image);
        heif_encoder_release(encoder);
    }
    heif_context_free(context);
    return bytes;
}

Bytes MakeJxl(const Bitmap& bitmap, int bits, const Bytes& profile) {
    JxlEncoder* encoder = JxlEncoderCreate(nullptr);
    JxlBasicInfo info;
    JxlEncoderInitBasicInfo(&info);
    info.xsize = static_cast<std::uint32_t>(bitmap.Width());
    info.ysize = static_cast<std::uint32_t>(bitmap.Height());
    info.bits_per_sample = info.alpha_bits = static_cast<std::uint32_t>(bits);
    info.num_extra_channels = 1;
    info.uses_original_profile = JXL_TRUE;
    JxlEncoderSetBasicInfo(encoder, &info);
    if (profile.empty()) {
        JxlColorEncoding srgb;
        JxlColorEncodingSetToSRGB(&srgb, JXL_FALSE);
        JxlEncoderSetColorEncoding(encoder, &srgb);
    } else {
        JxlEncoderSetICCProfile(encoder, profile.data(), profile.size());
    }
    JxlEncoderFrameSettings* settings = JxlEncoderFrameSettingsCreate(encoder, nullptr);
    JxlEncoderSetFrameLossless(settings, JXL_TRUE);
    const JxlPixelFormat format = {4, bits == 8 ? JXL_TYPE_UINT8 : JXL_TYPE_UINT16, JXL_BIG_ENDIAN, 0};
    Bytes pixels;
    for (std::size_t i = 0; i < bitmap.ByteCount(); i += 4)
        for (const int c : {2, 1, 0, 3})
            pixels.insert(pixels.end(), static_cast<std::size_t>(bits / 8),
                          bitmap.Pixels()[i + static_cast<std::size_t>(c)]);
    JxlEncoderAddImageFrame(settings, &format, pixels.data(), pixels.size());
    JxlEncoderCloseInput(encoder);
    Bytes bytes(1 << 20);
    std::uint8_t* next = bytes.data();
    std::size_t left = bytes.size();
    const bool done = JxlEncoderProcessOutput(encoder, &next, &left) == JXL_ENC_SUCCESS;
    bytes.resize(done ? bytes.size() - left : 0);
    JxlEncoderDestroy(encoder);
    return bytes;
}

Bytes MakeJbig(const Bitmap& bitmap) {
    const unsigned long width = static_cast<unsigned long>(bitmap.Width()),
                        height = static_cast<unsigned long>(bitmap.Height());
    const std::size_t stride = (width + 7) / 8;
    Bytes plane(stride * height), bytes;
    for (int y = 0; y < bitmap.Height(); ++y)
        for (int x = 0; x < bitmap.Width(); ++x)
            if (bitmap.Row(y)[4 * x] < 128)
                plane[static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x) / 8] |=
                    static_cast<std::uint8_t>(0x80 >> (x % 8));
    unsigned char* planes[1] = {plane.data()};
    jbg_enc_state state;
    jbg_enc_init(
        &state, width, height, 1, planes,
        [](unsigned char* data, std::size_t count, void* out) {
            static_cast<Bytes*>(out)->insert(static_cast<Bytes*>(out)->end(), data, data + count);
        },
        &bytes);
    jbg_enc_out(&state);
    jbg_enc_free(&state);
    return bytes;
}
