// SPDX-License-Identifier: GPL-3.0-or-later
#include "JpegError.h"
// jerror.h needs the codec's header before it.
#include <jerror.h>

#include <algorithm>
#include <cstdlib>

#include "Parallel.h"
#include "Readers.h"

namespace {

// Rows between two progress reports.
constexpr int ReportRows = 64;
// A progressive file may repeat scans without end at no cost in bytes; real ones have about ten.
constexpr int MaxScans = 200;

struct Decoder {
    jpeg_decompress_struct state = {};
    JpegErrorManager errors;
    jpeg_source_mgr source = {};
    jpeg_progress_mgr progress = {};
    bool ended = false;  // the bytes ran out and an end marker was made up

    Decoder() {
        state.err = errors.Attach();
        state.client_data = this;
    }
    ~Decoder() { jpeg_destroy_decompress(&state); }
};

boolean FillInput(j_decompress_ptr state) {
    static const JOCTET end[] = {0xFF, JPEG_EOI};
    static_cast<Decoder*>(state->client_data)->ended = true;
    state->src->next_input_byte = end;
    state->src->bytes_in_buffer = sizeof end;
    return TRUE;
}

void SkipInput(j_decompress_ptr state, long count) {
    if (count <= 0) return;
    if (static_cast<std::size_t>(count) > state->src->bytes_in_buffer) {
        FillInput(state);
        return;
    }
    state->src->next_input_byte += count;
    state->src->bytes_in_buffer -= count;
}

void LimitScans(j_common_ptr common) {
    if (reinterpret_cast<j_decompress_ptr>(common)->input_scan_number > MaxScans) ERREXIT(common, JERR_BAD_PROGRESSION);
}

void Attach(Decoder& decoder, const std::uint8_t* data, std::size_t size) {
    jpeg_create_decompress(&decoder.state);
    decoder.source.next_input_byte = data;
    decoder.source.bytes_in_buffer = size;
    decoder.source.init_source = [](j_decompress_ptr) {};
    decoder.source.fill_input_buffer = FillInput;
    decoder.source.skip_input_data = SkipInput;
    decoder.source.resync_to_restart = jpeg_resync_to_restart;
    decoder.source.term_source = [](j_decompress_ptr) {};
    decoder.state.src = &decoder.source;
    decoder.progress.progress_monitor = LimitScans;
    decoder.state.progress = &decoder.progress;
}

// Each unit of the scan takes at least one bit, so fewer bits than that cannot hold the stated size. Arithmetic coding
// has no such floor.
bool SizeIsPlausible(const jpeg_decompress_struct& state, std::size_t size) {
    const std::uint64_t across = 8u * state.max_h_samp_factor, down = 8u * state.max_v_samp_factor;
    const std::uint64_t units = ((state.image_width + across - 1) / across) * ((state.image_height + down - 1) / down);
    return state.arith_code || size * 8 >= units;
}

void ReadMarkers(jpeg_decompress_struct& state, PictureTarget& target) {
    for (const jpeg_marker_struct* m = state.marker_list; m; m = m->next)
        if (m->marker == JPEG_APP0 + 1 && m->data_length >= 6 && std::equal(m->data, m->data + 6, "Exif\0")) {
            target.SetExif(m->data, m->data_length);
            break;
        }
    JOCTET* profile = nullptr;
    unsigned length = 0;
    if (jpeg_read_icc_profile(&state, &profile, &length)) {
        target.SetProfile(profile, length);
        std::free(profile);
    }
}

// What the pixels shall be decoded to; false for colours that libjpeg cannot give.
bool ChooseOutput(jpeg_decompress_struct& state, PictureTarget& target) {
    switch (state.jpeg_color_space) {
        case JCS_CMYK:
        case JCS_YCCK:
            state.out_color_space = JCS_CMYK;
            target.SetModel(PictureTarget::Model::Cmyk);
            return state.num_components == 4;
        case JCS_GRAYSCALE:
            target.SetModel(PictureTarget::Model::Gray);
            [[fallthrough]];
        case JCS_YCbCr:
        case JCS_RGB:
            // The A forms write 255 into the fourth byte.
            state.out_color_space = JCS_EXT_BGRA;
            return true;
        default:
            return false;
    }
}

// Adobe's programs store ink inverted, and say so only by their marker.
void InvertInk(std::uint8_t* pixels, std::size_t count) {
    ForEachBand(static_cast<int>(count / 4096 + 1), 16, [&](int first, int last) {
        const std::size_t end = std::min(count, std::size_t(last) * 4096);
        for (std::size_t i = std::size_t(first) * 4096; i < end; ++i) pixels[i] = 255 - pixels[i];
    });
}

// Everything that libjpeg may leave by a jump. No object with a destructor lives in here.
bool Decode(Decoder& decoder, const std::uint8_t* data, std::size_t size, PictureTarget& target,
            std::uint8_t*& pixels) {
    if (setjmp(decoder.errors.jump)) return false;
    jpeg_decompress_struct& state = decoder.state;
    Attach(decoder, data, size);
    jpeg_save_markers(&state, JPEG_APP0 + 1, 0xFFFF);
    jpeg_save_markers(&state, JPEG_APP0 + 2, 0xFFFF);
    if (jpeg_read_header(&state, TRUE) != JPEG_HEADER_OK || !SizeIsPlausible(state, size)) return false;
    if (!ChooseOutput(state, target)) return false;
    ReadMarkers(state, target);
    pixels = target.Begin(state.image_width, state.image_height);
    if (!pixels) return false;
    jpeg_start_decompress(&state);
    const std::size_t stride = std::size_t{4} * state.image_width;
    const bool scans = jpeg_has_multiple_scans(&state);
    while (state.output_scanline < state.output_height) {
        JSAMPROW rows[16];
        const JDIMENSION top = state.output_scanline;
        const JDIMENSION count = std::min<JDIMENSION>(16, state.output_height - top);
        for (JDIMENSION i = 0; i < count; ++i) rows[i] = pixels + (top + i) * stride;
        jpeg_read_scanlines(&state, rows, count);
        if (decoder.errors.missingData) return false;
        if (state.output_scanline / ReportRows != top / ReportRows &&
            !target.Report(double(state.output_scanline) / state.output_height))
            return false;
    }
    // Between two scans a cut leaves no trace in the data.
    return !(scans && decoder.ended);
}

}  // namespace

bool ReadJpeg(const std::uint8_t* data, std::size_t size, PictureTarget& target) {
    Decoder decoder;
    std::uint8_t* pixels = nullptr;
    if (!Decode(decoder, data, size, target, pixels)) return false;
    if (decoder.state.out_color_space == JCS_CMYK && decoder.state.saw_Adobe_marker)
        InvertInk(pixels, std::size_t{4} * decoder.state.image_width * decoder.state.image_height);
    return true;
}
