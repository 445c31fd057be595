// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cstring>

#include "ByteReader.h"
#include "CodecModule.h"
#include "PixelRows.h"

// Truevision TGA: colour maps that may start at any number, true colour of 15 to 32 bits and grey with or without
// alpha, each plain or in runs, in any of the four orders of rows and columns.

namespace {

constexpr std::size_t HeaderBytes = 18;

struct TgaHeader {
    int type, mapBits, bits;
    std::uint32_t mapFirst, mapCount, width, height;
    bool leftward, downward;
    std::size_t map;     // where the colour map starts
    std::size_t pixels;  // where the pixels start

    bool Indexed() const { return (type & 7) == 1; }
    bool Grey() const { return (type & 7) == 3; }
    bool Runs() const { return type & 8; }
    std::size_t PixelBytes() const { return static_cast<std::size_t>((bits + 7) / 8); }
    std::size_t EntryBytes() const { return static_cast<std::size_t>((mapBits + 7) / 8); }
};

bool ParseHeader(const std::uint8_t* data, std::size_t size, TgaHeader& header) {
    if (size < HeaderBytes) return false;
    const bool hasMap = data[1] == 1;
    header.type = data[2];
    header.mapFirst = LittleEndian16(data + 3);
    header.mapCount = hasMap ? LittleEndian16(data + 5) : 0;
    header.mapBits = data[7];
    header.width = LittleEndian16(data + 12);
    header.height = LittleEndian16(data + 14);
    header.bits = data[16];
    header.leftward = data[17] & 0x10;
    header.downward = data[17] & 0x20;
    header.map = HeaderBytes + data[0];
    header.pixels = header.map + header.mapCount * header.EntryBytes();
    return header.pixels < size;
}

// A packet of a byte and a pixel stands for up to 128 pixels.
bool SizeIsPlausible(const TgaHeader& header, std::size_t size) {
    const std::uint64_t pixels = std::uint64_t{header.width} * header.height;
    const std::uint64_t packets = header.Runs() ? (pixels + 127) / 128 : pixels;
    return packets * (header.PixelBytes() + header.Runs()) <= size - header.pixels;
}

// What the alpha of a pixel means. The extension at the end of newer files says so; without one it is straight.
enum class Alpha { None, Straight, Multiplied };

Alpha AlphaOf(const std::uint8_t* data, std::size_t size) {
    static const char signature[] = "TRUEVISION-XFILE.";
    constexpr std::size_t footer = 26, extensionBytes = 495, kindAt = 494;
    if (size < footer || std::memcmp(data + size - footer + 8, signature, sizeof signature) != 0)
        return Alpha::Straight;
    const std::uint64_t extension = LittleEndian32(data + size - footer);
    if (extension == 0 || extension + extensionBytes > size) return Alpha::Straight;
    const int kind = data[extension + kindAt];
    return kind == 3 ? Alpha::Straight : kind == 4 ? Alpha::Multiplied : Alpha::None;
}

std::uint8_t FromFiveBits(std::uint32_t value) {
    return static_cast<std::uint8_t>(((value & 31) * 255 + 15) / 31);
}

// A colour of so many bits as blue, green, red, alpha. The sixteenth bit is alpha.
void PutColour(const std::uint8_t* in, int bits, std::uint8_t* out) {
    if (bits <= 16) {
        const std::uint32_t value = LittleEndian16(in);
        for (int c = 0; c < 3; ++c) out[c] = FromFiveBits(value >> 5 * c);
        out[3] = bits == 15 || value & 0x8000 ? 255 : 0;
    } else {
        std::memcpy(out, in, 3);
        out[3] = bits == 32 ? in[3] : 255;
    }
}

class Pixels {
  public:
    Pixels(const TgaHeader& header, const std::uint8_t* data) : m_header(header), m_map(data + header.map) {}

    void Put(const std::uint8_t* in, std::uint8_t* out) const {
        if (m_header.Grey()) {
            out[0] = out[1] = out[2] = in[0];
            out[3] = m_header.bits == 16 ? in[1] : 255;
        } else if (m_header.Indexed()) {
            PutIndexed(in[0], out);
        } else {
            PutColour(in, m_header.bits, out);
        }
    }

  private:
    // Numbers that the map does not have are black.
    void PutIndexed(std::uint32_t number, std::uint8_t* out) const {
        static const std::uint8_t black[4] = {0, 0, 0, 255};
        const std::uint32_t entry = number - m_header.mapFirst;
        if (number < m_header.mapFirst || entry >= m_header.mapCount)
            std::memcpy(out, black, 4);
        else
            PutColour(m_map + entry * m_header.EntryBytes(), m_header.mapBits, out);
    }

    const TgaHeader& m_header;
    const std::uint8_t* m_map;
};

// Draws `count` pixels in the order of the file. False when the bytes end before.
bool DrawRuns(const TgaHeader& header, const Pixels& pixels, const std::uint8_t* data, std::size_t size,
              std::uint8_t* out, std::size_t count) {
    const std::size_t bytes = header.PixelBytes();
    std::size_t at = header.pixels;
    for (std::size_t done = 0; done < count;) {
        if (at >= size) return false;
        const std::size_t length = std::min<std::size_t>((data[at] & 127) + 1, count - done);
        const bool run = data[at++] & 128;
        if ((run ? bytes : length * bytes) > size - at) return false;
        for (std::size_t i = 0; i < length; ++i, ++done) {
            pixels.Put(data + at, out + 4 * done);
            if (!run) at += bytes;
        }
        if (run) at += bytes;
    }
    return true;
}

bool Draw(const TgaHeader& header, const std::uint8_t* data, std::size_t size, std::uint8_t* out) {
    const Pixels pixels(header, data);
    const std::size_t count = std::size_t{header.width} * header.height;
    if (header.Runs()) return DrawRuns(header, pixels, data, size, out, count);
    const std::uint8_t* in = data + header.pixels;
    for (std::size_t i = 0; i < count; ++i, in += header.PixelBytes()) pixels.Put(in, out + 4 * i);
    return true;
}

// Turns the rows of the file's order into those of a picture.
void Reorder(const TgaHeader& header, std::uint8_t* out) {
    const std::size_t stride = std::size_t{4} * header.width;
    if (!header.downward)
        for (std::size_t y = 0; y < header.height / 2; ++y)
            std::swap_ranges(out + y * stride, out + (y + 1) * stride, out + (header.height - 1 - y) * stride);
    if (!header.leftward) return;
    for (std::size_t y = 0; y < header.height; ++y) {
        auto* row = reinterpret_cast<std::uint32_t*>(out + y * stride);
        std::reverse(row, row + header.width);
    }
}

// An empty alpha channel would hide the whole picture: it is then opaque.
void SettleAlpha(const TgaHeader& header, Alpha alpha, std::uint8_t* out) {
    const std::size_t bytes = std::size_t{4} * header.width * header.height;
    bool empty = true;
    for (std::size_t i = 3; empty && i < bytes; i += 4) empty = out[i] == 0;
    if (empty || alpha == Alpha::None) {
        for (std::size_t i = 3; i < bytes; i += 4) out[i] = 255;
    } else if (alpha == Alpha::Multiplied) {
        for (std::size_t y = 0; y < header.height; ++y)
            Unpremultiply(out + y * std::size_t{4} * header.width, static_cast<int>(header.width));
    }
}

}  // namespace

bool ReadTga(const std::uint8_t* data, std::size_t size, PictureTarget& target) {
    TgaHeader header;
    if (!ParseHeader(data, size, header) || !SizeIsPlausible(header, size)) return false;
    std::uint8_t* out = target.Begin(header.width, header.height);
    if (!out || !Draw(header, data, size, out)) return false;
    Reorder(header, out);
    SettleAlpha(header, AlphaOf(data, size), out);
    return target.Report(1);
}
