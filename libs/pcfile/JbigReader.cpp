// SPDX-License-Identifier: GPL-3.0-or-later
// The header says nothing of C++.
extern "C" {
#include <jbig.h>
}

#include <algorithm>

#include "ByteReader.h"
#include "CodecModule.h"

namespace {

constexpr std::int64_t MostBits = std::int64_t{1} << 29;
// Up to so many bits whatever the file's size; above, so many for each of its bytes, which only empty pages reach.
constexpr std::int64_t FreeBits = std::int64_t{1} << 24;
constexpr std::int64_t BitsPerByte = 65536;

// The decoder makes up the pixels of a cut file: 25 bytes could keep it busy for half a minute. Its work is a bit for
// each pixel of each plane.
bool IsTooMuch(const std::uint8_t* header, std::size_t size) {
    const std::int64_t pixels = std::int64_t{BigEndian32(header + 4)} * BigEndian32(header + 8);
    const std::int64_t most = std::min(MostBits, FreeBits + BitsPerByte * static_cast<std::int64_t>(size));
    return pixels > most / header[2];
}

struct Decoder {
    jbg_dec_state state;

    Decoder() { jbg_dec_init(&state); }
    ~Decoder() { jbg_dec_free(&state); }
};

}  // namespace

// Read with the format's own library: the general one takes pixels from a decoder that has none yet when the file is
// damaged, and looks at the size only after decoding.
bool ReadJbig(const std::uint8_t* data, std::size_t size, PictureTarget& target) {
    if (size < 20 || data[2] == 0 || IsTooMuch(data, size)) return false;
    Decoder decoder;
    // The library reads the bytes only. JBG_EOK alone means that every stripe of every plane is there.
    if (jbg_dec_in(&decoder.state, const_cast<unsigned char*>(data), size, nullptr) != JBG_EOK) return false;
    const unsigned char* plane = jbg_dec_getimage(&decoder.state, 0);
    const auto width = static_cast<std::int64_t>(jbg_dec_getwidth(&decoder.state));
    const auto height = static_cast<std::int64_t>(jbg_dec_getheight(&decoder.state));
    const std::int64_t stride = (width + 7) / 8;
    if (!plane || jbg_dec_getsize(&decoder.state) != static_cast<unsigned long>(stride * height)) return false;
    std::uint8_t* out = target.Begin(width, height);
    if (!out) return false;
    for (std::int64_t y = 0; y < height; ++y, plane += stride)
        for (std::int64_t x = 0; x < width; ++x, out += 4) {
            const bool isInk = plane[x / 8] >> (7 - x % 8) & 1;
            out[0] = out[1] = out[2] = isInk ? 0 : 255;
            out[3] = 255;
        }
    return target.Report(1);
}
