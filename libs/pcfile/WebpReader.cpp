// SPDX-License-Identifier: GPL-3.0-or-later
#include <webp/decode.h>
#include <webp/demux.h>

#include <cstring>
#include <memory>

#include "CodecModule.h"

namespace {

struct DeleteDemuxer {
    void operator()(WebPDemuxer* demuxer) const { WebPDemuxDelete(demuxer); }
};
struct DeleteDecoder {
    void operator()(WebPAnimDecoder* decoder) const { WebPAnimDecoderDelete(decoder); }
};

template <class Use>
void WithChunk(const WebPDemuxer* demuxer, const char* name, Use use) {
    WebPChunkIterator chunk;
    if (WebPDemuxGetChunk(demuxer, name, 1, &chunk)) use(chunk.chunk.bytes, chunk.chunk.size);
    WebPDemuxReleaseChunkIterator(&chunk);
}

bool ReadStill(const WebPData& file, std::uint8_t* out, int width, int height) {
    const std::size_t stride = std::size_t{4} * width;
    return WebPDecodeBGRAInto(file.bytes, file.size, out, stride * height, static_cast<int>(stride)) != nullptr;
}

bool ReadFirstFrame(const WebPData& file, std::uint8_t* out, int width, int height) {
    WebPAnimDecoderOptions options;
    if (!WebPAnimDecoderOptionsInit(&options)) return false;
    options.color_mode = MODE_BGRA;
    const std::unique_ptr<WebPAnimDecoder, DeleteDecoder> decoder(WebPAnimDecoderNew(&file, &options));
    std::uint8_t* canvas = nullptr;
    int time = 0;
    if (!decoder || !WebPAnimDecoderGetNext(decoder.get(), &canvas, &time)) return false;
    std::memcpy(out, canvas, std::size_t{4} * width * height);
    return true;
}

}  // namespace

bool ReadWebp(const std::uint8_t* data, std::size_t size, PictureTarget& target) {
    const WebPData file{data, size};
    const std::unique_ptr<WebPDemuxer, DeleteDemuxer> demuxer(WebPDemux(&file));
    if (!demuxer) return false;
    const int width = static_cast<int>(WebPDemuxGetI(demuxer.get(), WEBP_FF_CANVAS_WIDTH));
    const int height = static_cast<int>(WebPDemuxGetI(demuxer.get(), WEBP_FF_CANVAS_HEIGHT));
    std::uint8_t* out = target.Begin(width, height);
    if (!out) return false;
    const bool animated = WebPDemuxGetI(demuxer.get(), WEBP_FF_FORMAT_FLAGS) & ANIMATION_FLAG;
    if (!(animated ? ReadFirstFrame : ReadStill)(file, out, width, height)) return false;
    WithChunk(demuxer.get(), "ICCP", [&](const void* bytes, std::size_t count) { target.SetProfile(bytes, count); });
    WithChunk(demuxer.get(), "EXIF",
              [&](const std::uint8_t* bytes, std::size_t count) { target.SetExif(bytes, count); });
    return target.Report(1);
}
