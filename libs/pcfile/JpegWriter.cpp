// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>
#include <cstring>

#include "HuffmanTable.h"
#include "JpegError.h"
#include "Parallel.h"
#include "Writers.h"

namespace {

// Below this many pixels one piece with exact tables is fast enough.
constexpr std::int64_t StripsFrom = 1 << 20;
// Rows of a strip, about; a multiple of every unit height.
constexpr int StripRows = 128;
// The tables are made from one row of units in up to so many, but from this many pixels at least.
constexpr int LargestSampleStep = 16;
constexpr std::int64_t SamplePixels = 1 << 19;

struct Settings {
    int quality;
    Chroma chroma;
    bool opaque;

    int UnitSide() const { return chroma == Chroma::Full ? 8 : 16; }
};

struct Tables {
    std::array<HuffmanTable, 2> dc, ac;
};

// One compression into memory of libjpeg's own.
struct Encoder {
    jpeg_compress_struct state = {};
    JpegErrorManager errors;
    unsigned char* bytes = nullptr;
    unsigned long count = 0;

    Encoder() { state.err = errors.Attach(); }
    ~Encoder() {
        jpeg_destroy_compress(&state);
        std::free(bytes);
    }
};

// Lays a row of straight alpha on white.
void FlattenRow(const std::uint8_t* in, int width, std::uint8_t* out) {
    for (int i = 0; i < 4 * width; i += 4) {
        const int alpha = in[i + 3];
        for (int c = 0; c < 3; ++c)
            out[i + c] = static_cast<std::uint8_t>((in[i + c] * alpha + 255 * (255 - alpha) + 127) / 255);
        out[i + 3] = 255;
    }
}

// The rows of a bitmap that go into one compression: those of [first, last) whose row of units is a multiple of `step`.
struct RowRange {
    int first, last, step;
};

int RowsIn(const RowRange& range, int unit) {
    int rows = 0;
    for (int y = range.first; y < range.last; y += unit * range.step) rows += std::min(unit, range.last - y);
    return rows;
}

void PutTable(jpeg_compress_struct& state, JHUFF_TBL*& slot, const HuffmanTable& table) {
    if (!slot) slot = jpeg_alloc_huff_table(reinterpret_cast<j_common_ptr>(&state));
    std::memcpy(slot->bits, table.bits.data(), sizeof slot->bits);
    std::memcpy(slot->huffval, table.values.data(), sizeof slot->huffval);
    slot->sent_table = FALSE;
}

void Configure(Encoder& encoder, const Bitmap& bitmap, const Settings& settings, int rows, unsigned restart,
               const Tables* tables) {
    jpeg_compress_struct& state = encoder.state;
    jpeg_create_compress(&state);
    jpeg_mem_dest(&state, &encoder.bytes, &encoder.count);
    state.image_width = bitmap.Width();
    state.image_height = rows;
    state.input_components = 4;
    state.in_color_space = JCS_EXT_BGRX;
    jpeg_set_defaults(&state);
    jpeg_set_quality(&state, settings.quality, TRUE);
    const int factor = settings.chroma == Chroma::Full ? 1 : 2;
    state.comp_info[0].h_samp_factor = state.comp_info[0].v_samp_factor = factor;
    state.restart_interval = restart;
    state.optimize_coding = tables ? FALSE : TRUE;
    if (!tables) return;
    for (int i = 0; i < 2; ++i) {
        PutTable(state, state.dc_huff_tbl_ptrs[i], tables->dc[i]);
        PutTable(state, state.ac_huff_tbl_ptrs[i], tables->ac[i]);
    }
}

// Everything that libjpeg may leave by a jump. No object with a destructor lives in here; `row` has room for one row.
bool Compress(Encoder& encoder, const Bitmap& bitmap, const Settings& settings, const RowRange& range, unsigned restart,
              const Tables* tables, const ByteVector* segments, std::uint8_t* row) {
    if (setjmp(encoder.errors.jump)) return false;
    const int unit = settings.UnitSide();
    Configure(encoder, bitmap, settings, RowsIn(range, unit), restart, tables);
    jpeg_compress_struct& state = encoder.state;
    jpeg_start_compress(&state, TRUE);
    if (segments && !segments->empty()) {
        for (std::size_t at = 0; at + 4 <= segments->size();) {
            const std::uint8_t* s = segments->data() + at;
            const unsigned length = s[2] << 8 | s[3];
            jpeg_write_marker(&state, s[1], s + 4, length - 2);
            at += 2 + length;
        }
    }
    for (int top = range.first; top < range.last; top += unit * range.step)
        for (int y = top; y < std::min(range.last, top + unit); ++y) {
            const std::uint8_t* source = bitmap.Row(y);
            if (!settings.opaque) {
                FlattenRow(source, bitmap.Width(), row);
                source = row;
            }
            JSAMPROW line = const_cast<std::uint8_t*>(source);
            jpeg_write_scanlines(&state, &line, 1);
        }
    jpeg_finish_compress(&state);
    return true;
}

HuffmanTable TakeTable(const JHUFF_TBL& table, HuffmanTable::Kind kind) {
    HuffmanTable taken;
    std::memcpy(taken.bits.data(), table.bits, taken.bits.size());
    std::memcpy(taken.values.data(), table.huffval, taken.values.size());
    return taken.WithAllSymbols(kind);
}

// Tables that are right for a sample of the picture's rows and can code everything else too.
bool SampleTables(const Bitmap& bitmap, const Settings& settings, std::uint8_t* row, Tables& tables) {
    Encoder encoder;
    const std::int64_t pixels = std::int64_t{bitmap.Width()} * bitmap.Height();
    const int step = static_cast<int>(std::clamp<std::int64_t>(pixels / SamplePixels, 1, LargestSampleStep));
    const RowRange range{step / 2 * settings.UnitSide(), bitmap.Height(), step};
    if (!Compress(encoder, bitmap, settings, range, 0, nullptr, nullptr, row)) return false;
    for (int i = 0; i < 2; ++i) {
        tables.dc[i] = TakeTable(*encoder.state.dc_huff_tbl_ptrs[i], HuffmanTable::Kind::Dc);
        tables.ac[i] = TakeTable(*encoder.state.ac_huff_tbl_ptrs[i], HuffmanTable::Kind::Ac);
    }
    return true;
}

// Offset of the first byte after the header of the (only) scan; 0 when there is none. `height` gets the place of the
// picture's height in the frame header.
std::size_t FindScan(const unsigned char* bytes, std::size_t count, std::size_t& height) {
    std::size_t at = 2;
    while (at + 4 <= count && bytes[at] == 0xFF) {
        const int marker = bytes[at + 1];
        const std::size_t length = bytes[at + 2] << 8 | bytes[at + 3];
        if (marker == 0xC0) height = at + 5;
        at += 2 + length;
        if (marker == JPEG_APP0 - 6) return at;  // 0xDA, start of scan
    }
    return 0;
}

bool EncodeWhole(const Bitmap& bitmap, const Settings& settings, const ByteVector& segments, ByteVector& file) {
    Encoder encoder;
    ByteVector row(bitmap.Stride());
    if (!Compress(encoder, bitmap, settings, {0, bitmap.Height(), 1}, 0, nullptr, &segments, row.data())) return false;
    file.assign(encoder.bytes, encoder.bytes + encoder.count);
    return true;
}

// The strips' scans one after the other behind the first one's header.
bool JoinStrips(const std::vector<Encoder>& strips, int height, ByteVector& file) {
    std::size_t total = 0, place = 0;
    for (const Encoder& strip : strips) total += strip.count;
    file.clear();
    file.reserve(total);
    for (std::size_t i = 0; i < strips.size(); ++i) {
        const Encoder& strip = strips[i];
        std::size_t heightAt = 0;
        const std::size_t scan = FindScan(strip.bytes, strip.count, heightAt);
        if (scan == 0 || heightAt == 0) return false;
        if (i == 0)
            place = heightAt;
        else
            file.insert(file.end(), {0xFF, static_cast<std::uint8_t>(JPEG_RST0 + (i - 1) % 8)});
        file.insert(file.end(), strip.bytes + (i == 0 ? 0 : scan), strip.bytes + strip.count - 2);
    }
    file.insert(file.end(), {0xFF, JPEG_EOI});
    file[place] = static_cast<std::uint8_t>(height >> 8);
    file[place + 1] = static_cast<std::uint8_t>(height);
    return true;
}

bool EncodeStrips(const Bitmap& bitmap, const Settings& settings, const ByteVector& segments, const ProgressSpan& span,
                  ByteVector& file) {
    const int unit = settings.UnitSide();
    const int unitsAcross = (bitmap.Width() + unit - 1) / unit;
    // The restart interval is a 16-bit number of units.
    const int stripRows = std::min(StripRows, 65535 / unitsAcross * unit) / unit * unit;
    const int count = (bitmap.Height() + stripRows - 1) / stripRows;
    Tables tables;
    ByteVector sampleRow(bitmap.Stride());
    if (!SampleTables(bitmap, settings, sampleRow.data(), tables)) return false;
    span.Report(1, 8);
    const unsigned restart = static_cast<unsigned>(stripRows / unit) * unitsAcross;
    std::vector<Encoder> strips(count);
    std::atomic<bool> good{true};
    ForEachBand(count, 1, [&](int first, int last) {
        ByteVector row(bitmap.Stride());
        for (int i = first; i < last && good; ++i) {
            const RowRange range{i * stripRows, std::min(bitmap.Height(), (i + 1) * stripRows), 1};
            if (!Compress(strips[i], bitmap, settings, range, restart, &tables, i == 0 ? &segments : nullptr,
                          row.data()))
                good = false;
        }
    });
    return good && span.CanContinue() && JoinStrips(strips, bitmap.Height(), file);
}

}  // namespace

bool EncodeJpeg(const Bitmap& bitmap, int quality, Chroma chroma, const ByteVector& segments, const ProgressSpan& span,
                ByteVector& file) {
    if (!bitmap || bitmap.Width() > JPEG_MAX_DIMENSION || bitmap.Height() > JPEG_MAX_DIMENSION) return false;
    const Settings settings{std::clamp(quality, 1, 100), chroma, bitmap.IsOpaque()};
    const bool strips = std::int64_t{bitmap.Width()} * bitmap.Height() >= StripsFrom && bitmap.Height() > StripRows;
    const bool done =
        strips ? EncodeStrips(bitmap, settings, segments, span, file) : EncodeWhole(bitmap, settings, segments, file);
    span.Report(1, 1);
    return done;
}

void AppendProfileSegments(const ByteVector& profile, ByteVector& segments) {
    constexpr std::size_t room = 65533 - 14;
    const std::size_t count = (profile.size() + room - 1) / room;
    for (std::size_t i = 0; i < count && count < 256; ++i) {
        const std::size_t start = i * room, length = std::min(room, profile.size() - start);
        const std::size_t size = length + 16;
        segments.insert(segments.end(), {0xFF, 0xE2, std::uint8_t(size >> 8), std::uint8_t(size)});
        static const char name[] = "ICC_PROFILE";
        segments.insert(segments.end(), name, name + sizeof name);
        segments.insert(segments.end(), {std::uint8_t(i + 1), std::uint8_t(count)});
        segments.insert(segments.end(), profile.begin() + start, profile.begin() + start + length);
    }
}
