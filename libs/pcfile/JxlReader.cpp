// SPDX-License-Identifier: GPL-3.0-or-later
#include <jxl/color_encoding.h>
#include <jxl/decode.h>
#include <jxl/decode_cxx.h>
#include <jxl/encode.h>
#include <jxl/thread_parallel_runner.h>
#include <jxl/thread_parallel_runner_cxx.h>

#include <vector>

#include "CodecModule.h"
#include "PixelRows.h"

namespace {

bool IsSrgb(const JxlDecoder* decoder, const JxlPixelFormat& format) {
    JxlColorEncoding encoding;
    return JxlDecoderGetColorAsEncodedProfile(decoder, &format, JXL_COLOR_PROFILE_TARGET_DATA, &encoding) ==
               JXL_DEC_SUCCESS &&
           (encoding.color_space == JXL_COLOR_SPACE_RGB || encoding.color_space == JXL_COLOR_SPACE_GRAY) &&
           encoding.white_point == JXL_WHITE_POINT_D65 && encoding.transfer_function == JXL_TRANSFER_FUNCTION_SRGB &&
           (encoding.color_space == JXL_COLOR_SPACE_GRAY || encoding.primaries == JXL_PRIMARIES_SRGB);
}

// One decoding, event by event.
struct Reader {
    PictureTarget& target;
    JxlDecoderPtr decoder = JxlDecoderMake(nullptr);
    JxlThreadParallelRunnerPtr runner =
        JxlThreadParallelRunnerMake(nullptr, JxlThreadParallelRunnerDefaultNumWorkerThreads());
    JxlBasicInfo info = {};
    JxlPixelFormat format = {4, JXL_TYPE_UINT8, JXL_NATIVE_ENDIAN, 0};
    std::uint8_t* out = nullptr;

    bool Start(const std::uint8_t* data, std::size_t size) {
        JxlDecoder* d = decoder.get();
        const int events = JXL_DEC_BASIC_INFO | JXL_DEC_COLOR_ENCODING | JXL_DEC_FULL_IMAGE;
        if (!d || JxlDecoderSetParallelRunner(d, JxlThreadParallelRunner, runner.get()) != JXL_DEC_SUCCESS ||
            JxlDecoderSubscribeEvents(d, events) != JXL_DEC_SUCCESS ||
            JxlDecoderSetUnpremultiplyAlpha(d, JXL_TRUE) != JXL_DEC_SUCCESS ||
            JxlDecoderSetInput(d, data, size) != JXL_DEC_SUCCESS)
            return false;
        JxlDecoderCloseInput(d);
        return true;
    }

    void ReadColours() {
        JxlDecoder* d = decoder.get();
        if (!info.uses_original_profile) {
            // Lossy files are coded free of any space and can be asked for in ours.
            JxlColorEncoding srgb;
            JxlColorEncodingSetToSRGB(&srgb, info.num_color_channels == 1);
            JxlDecoderSetPreferredColorProfile(d, &srgb);
        }
        std::size_t size = 0;
        if (IsSrgb(d, format) ||
            JxlDecoderGetICCProfileSize(d, &format, JXL_COLOR_PROFILE_TARGET_DATA, &size) != JXL_DEC_SUCCESS ||
            size == 0 || size > (1u << 28))
            return;
        std::vector<std::uint8_t> profile(size);
        if (JxlDecoderGetColorAsICCProfile(d, &format, JXL_COLOR_PROFILE_TARGET_DATA, profile.data(), size) !=
            JXL_DEC_SUCCESS)
            return;
        target.SetProfile(profile.data(), size);
        if (info.bits_per_sample > 8) format.data_type = JXL_TYPE_UINT16;
    }

    bool ProvideMemory() {
        const bool deep = format.data_type == JXL_TYPE_UINT16;
        out = deep ? reinterpret_cast<std::uint8_t*>(target.BeginDeep(info.xsize, info.ysize))
                   : target.Begin(info.xsize, info.ysize);
        std::size_t needed = 0;
        return out && JxlDecoderImageOutBufferSize(decoder.get(), &format, &needed) == JXL_DEC_SUCCESS &&
               needed == std::size_t{info.xsize} * info.ysize * (deep ? 8 : 4) &&
               JxlDecoderSetImageOutBuffer(decoder.get(), &format, out, needed) == JXL_DEC_SUCCESS;
    }

    // True when the first frame is there.
    bool Run() {
        for (;;) {
            switch (JxlDecoderProcessInput(decoder.get())) {
                case JXL_DEC_BASIC_INFO:
                    if (JxlDecoderGetBasicInfo(decoder.get(), &info) != JXL_DEC_SUCCESS) return false;
                    if (info.num_color_channels == 1) target.SetModel(PictureTarget::Model::Gray);
                    break;
                case JXL_DEC_COLOR_ENCODING:
                    ReadColours();
                    break;
                case JXL_DEC_NEED_IMAGE_OUT_BUFFER:
                    if (!ProvideMemory()) return false;
                    break;
                case JXL_DEC_FULL_IMAGE:
                    return out != nullptr;
                default:
                    return false;
            }
        }
    }
};

}  // namespace

bool ReadJxl(const std::uint8_t* data, std::size_t size, PictureTarget& target) {
    Reader reader{target};
    // The decoder turns the picture upright itself.
    if (!reader.Start(data, size) || !reader.Run()) return false;
    const std::size_t stride = std::size_t{4} * reader.info.xsize;
    if (reader.format.data_type == JXL_TYPE_UINT8)
        for (std::size_t y = 0; y < reader.info.ysize; ++y)
            RgbaToBgra(reader.out + y * stride, static_cast<int>(reader.info.xsize), reader.out + y * stride);
    return target.Report(1);
}
