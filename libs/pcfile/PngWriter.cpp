// SPDX-License-Identifier: GPL-3.0-or-later
#include <isa-l/igzip_lib.h>
#include <zlib.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <memory>

#include "Parallel.h"
#include "PngFilter.h"
#include "Writers.h"

namespace {

// Pixel bytes of a strip, about: enough for the compressor to settle, and many strips for a few cores.
constexpr std::size_t StripBytes = 512 * 1024;
// Bytes of a strip on which the ways of deflating are compared.
constexpr std::size_t TrialBytes = 32 * 1024;
// Room for what begins and ends a strip, beyond its bytes.
constexpr std::size_t DeflateSlack = 1024;

struct Strip {
    ByteVector chunk;  // a whole IDAT chunk
    uLong adler = 1;
    std::size_t rawBytes = 0;
    bool good = false;
};

void Append32(ByteVector& bytes, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) bytes.push_back(static_cast<std::uint8_t>(value >> shift));
}

void AppendChunk(ByteVector& file, const char* type, const ByteVector& content) {
    Append32(file, static_cast<std::uint32_t>(content.size()));
    const std::size_t start = file.size();
    file.insert(file.end(), type, type + 4);
    file.insert(file.end(), content.begin(), content.end());
    Append32(file, static_cast<std::uint32_t>(crc32(0, file.data() + start, static_cast<uInt>(file.size() - start))));
}

// Bytes that PackRow may write past the row.
constexpr std::size_t PackSlack = 4;

// One row of the bitmap as PNG bytes: red first, alpha only where it is kept. Whole words are moved, each over the rest
// of the one before, so the row's memory has PackSlack bytes more.
template <std::size_t pixelBytes>
void PackPixels(const std::uint8_t* in, int width, std::uint8_t* out) {
    for (int x = 0; x < width; ++x, in += 4, out += pixelBytes) {
        std::uint32_t argb;
        std::memcpy(&argb, in, 4);
        const std::uint32_t packed = (argb & 0xFF00FF00u) | (argb & 0xFFu) << 16 | (argb >> 16 & 0xFFu);
        std::memcpy(out, &packed, 4);
    }
}

void PackRow(const std::uint8_t* in, int width, std::size_t pixelBytes, std::uint8_t* out) {
    pixelBytes == 3 ? PackPixels<3>(in, width, out) : PackPixels<4>(in, width, out);
}

// The filtered bytes of rows [first, last).
ByteVector FilterRows(const Bitmap& bitmap, int first, int last, std::size_t pixelBytes) {
    const std::size_t count = pixelBytes * bitmap.Width();
    // Two rows, each with zeros before it, which a packed row before them must not reach.
    const std::size_t room = pixelBytes + count + PackSlack;
    ByteVector rows(2 * room), scratch(count), filtered((count + 1) * (last - first));
    std::uint8_t* above = rows.data() + pixelBytes;
    std::uint8_t* row = above + room;
    if (first > 0) PackRow(bitmap.Row(first - 1), bitmap.Width(), pixelBytes, above);
    for (int y = first; y < last; ++y) {
        PackRow(bitmap.Row(y), bitmap.Width(), pixelBytes, row);
        FilterPngRow(row, above, count, pixelBytes, filtered.data() + (count + 1) * (y - first), scratch.data());
        std::swap(row, above);
    }
    return filtered;
}

// Both deflate without header and append to `out`; a strip that is not the last ends on a byte and can be followed by
// another. False, and nothing is appended, without memory or room.

bool DeflateFast(const std::uint8_t* bytes, std::size_t count, bool last, ByteVector& out) {
    const auto stream = std::make_unique<isal_zstream>();
    ByteVector work(ISAL_DEF_LVL1_DEFAULT);
    isal_deflate_init(stream.get());
    stream->level = 1;
    stream->level_buf = work.data();
    stream->level_buf_size = static_cast<std::uint32_t>(work.size());
    stream->flush = SYNC_FLUSH;
    stream->end_of_stream = last;
    const std::size_t before = out.size();
    out.resize(before + count + count / 8 + DeflateSlack);
    stream->next_in = const_cast<std::uint8_t*>(bytes);
    stream->avail_in = static_cast<std::uint32_t>(count);
    stream->next_out = out.data() + before;
    stream->avail_out = static_cast<std::uint32_t>(out.size() - before);
    const bool good = isal_deflate(stream.get()) == COMP_OK && stream->avail_in == 0 && stream->avail_out > 0;
    out.resize(before + (good ? stream->total_out : 0));
    return good;
}

bool DeflateSmall(const std::uint8_t* bytes, std::size_t count, bool last, ByteVector& out) {
    z_stream stream = {};
    if (deflateInit2(&stream, 1, Z_DEFLATED, -15, MAX_MEM_LEVEL, Z_DEFAULT_STRATEGY) != Z_OK) return false;
    const std::size_t before = out.size();
    out.resize(before + deflateBound(&stream, count) + DeflateSlack);
    stream.next_in = const_cast<Bytef*>(bytes);
    stream.avail_in = static_cast<uInt>(count);
    stream.next_out = out.data() + before;
    stream.avail_out = static_cast<uInt>(out.size() - before);
    const int result = deflate(&stream, last ? Z_FINISH : Z_SYNC_FLUSH);
    const bool good = last ? result == Z_STREAM_END : result == Z_OK && stream.avail_in == 0;
    out.resize(before + (good ? stream.total_out : 0));
    deflateEnd(&stream);
    return good;
}

// The fast way makes photographs smaller than zlib's fastest search does, in a quarter of the time; of some drawings it
// makes more. A piece from the strip's middle tells which this is.
bool IsFastSmall(const ByteVector& filtered) {
    const std::size_t count = std::min(filtered.size(), TrialBytes);
    const std::uint8_t* piece = filtered.data() + (filtered.size() - count) / 2;
    ByteVector fast, small;
    return DeflateFast(piece, count, true, fast) &&
           (!DeflateSmall(piece, count, true, small) || fast.size() <= small.size());
}

Strip MakeStrip(const Bitmap& bitmap, int first, int last, std::size_t pixelBytes) {
    Strip strip;
    const ByteVector filtered = FilterRows(bitmap, first, last, pixelBytes);
    strip.rawBytes = filtered.size();
    strip.adler = adler32(1, filtered.data(), static_cast<uInt>(filtered.size()));
    strip.chunk = {0, 0, 0, 0, 'I', 'D', 'A', 'T'};
    if (first == 0) strip.chunk.insert(strip.chunk.end(), {0x78, 0x01});  // zlib header: 32 KiB window, fastest
    const bool end = last == bitmap.Height();
    strip.good = (IsFastSmall(filtered) && DeflateFast(filtered.data(), filtered.size(), end, strip.chunk)) ||
                 DeflateSmall(filtered.data(), filtered.size(), end, strip.chunk);
    return strip;
}

void FinishChunk(ByteVector& chunk) {
    const auto size = static_cast<std::uint32_t>(chunk.size() - 8);
    for (int i = 0; i < 4; ++i) chunk[i] = static_cast<std::uint8_t>(size >> (24 - 8 * i));
    Append32(chunk, static_cast<std::uint32_t>(crc32(0, chunk.data() + 4, size + 4)));
}

ByteVector HeaderContent(const Bitmap& bitmap, bool alpha) {
    ByteVector content;
    Append32(content, bitmap.Width());
    Append32(content, bitmap.Height());
    content.insert(content.end(), {8, static_cast<std::uint8_t>(alpha ? 6 : 2), 0, 0, 0});
    return content;
}

}  // namespace

bool EncodePng(const Bitmap& bitmap, const ByteVector& chunks, const ProgressSpan& span, ByteVector& file) {
    if (!bitmap) return false;
    const bool alpha = !bitmap.IsOpaque();
    const std::size_t pixelBytes = alpha ? 4 : 3;
    const int rows = static_cast<int>(std::max<std::size_t>(1, StripBytes / (pixelBytes * bitmap.Width())));
    const int count = (bitmap.Height() + rows - 1) / rows;
    std::vector<Strip> strips(count);
    ForEachBand(count, 1, [&](int first, int last) {
        for (int i = first; i < last; ++i) {
            strips[i] = MakeStrip(bitmap, i * rows, std::min(bitmap.Height(), (i + 1) * rows), pixelBytes);
            if (i + 1 < count) FinishChunk(strips[i].chunk);
        }
    });
    uLong adler = 1;
    std::size_t total = chunks.size() + 128;
    for (const Strip& strip : strips) {
        if (!strip.good) return false;
        adler = adler32_combine(adler, strip.adler, static_cast<z_off_t>(strip.rawBytes));
        total += strip.chunk.size();
    }
    Append32(strips.back().chunk, static_cast<std::uint32_t>(adler));
    FinishChunk(strips.back().chunk);
    file = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    file.reserve(total);
    AppendChunk(file, "IHDR", HeaderContent(bitmap, alpha));
    AppendChunk(file, "sRGB", {1});  // relative colorimetric
    file.insert(file.end(), chunks.begin(), chunks.end());
    for (const Strip& strip : strips) file.insert(file.end(), strip.chunk.begin(), strip.chunk.end());
    AppendChunk(file, "IEND", {});
    span.Report(1, 1);
    return span.CanContinue();
}
