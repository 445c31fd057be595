// SPDX-License-Identifier: GPL-3.0-or-later
#include "BmpPixels.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "ByteReader.h"

namespace {

constexpr std::uint32_t Opaque = 0xFF000000;

}  // namespace

BmpPalette ReadBmpPalette(const BmpHeader& header, const std::uint8_t* data, std::size_t size) {
    BmpPalette palette;
    palette.fill(Opaque);
    const std::size_t room = header.palette < size ? (size - header.palette) / header.entryBytes : 0;
    const std::size_t count = std::min({header.colours, room, palette.size()});
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint8_t* p = data + header.palette + i * header.entryBytes;
        palette[i] = Opaque | LittleEndian16(p) | static_cast<std::uint32_t>(p[2]) << 16;
    }
    return palette;
}

BmpRows::Channel::Channel(std::uint32_t bits, std::uint8_t without) : mask(bits) {
    if (mask == 0) {
        levels = {without};
        return;
    }
    // The lowest bits of a wide channel say nothing that eight bits could show.
    shift = std::max(std::countr_zero(mask), static_cast<int>(std::bit_width(mask)) - 16);
    const std::uint32_t most = mask >> shift;
    levels.resize(most + 1);
    for (std::uint32_t value = 0; value <= most; ++value)
        levels[value] = static_cast<std::uint8_t>((value * 255 + most / 2) / most);
}

BmpRows::BmpRows(const BmpHeader& header, const BmpPalette& palette) : m_header(header), m_palette(palette) {
    if (header.bits != 16 && header.bits != 32) return;
    const auto& masks = header.masks;
    m_asStored = header.bits == 32 && masks[0] == 0xFF0000 && masks[1] == 0x00FF00 && masks[2] == 0x0000FF &&
                 (masks[3] == 0 || masks[3] == Opaque);
    m_channels = {Channel(masks[2], 0), Channel(masks[1], 0), Channel(masks[0], 0), Channel(masks[3], 255)};
}

void BmpRows::ConvertIndexed(const std::uint8_t* in, std::uint8_t* out) const {
    const int bits = m_header.bits, mask = (1 << bits) - 1;
    for (std::int64_t x = 0, at = 0; x < m_header.width; ++x, at += bits) {
        const std::uint32_t colour = m_palette[in[at / 8] >> (8 - bits - at % 8) & mask];
        std::memcpy(out + 4 * x, &colour, 4);
    }
}

void BmpRows::ConvertMasked(const std::uint8_t* in, std::uint8_t* out) const {
    const int step = m_header.bits / 8;
    for (std::int64_t x = 0; x < m_header.width; ++x, in += step, out += 4) {
        const std::uint32_t pixel = step == 2 ? LittleEndian16(in) : LittleEndian32(in);
        for (int c = 0; c < 4; ++c) out[c] = m_channels[c].Level(pixel);
    }
}

void BmpRows::ConvertWords(const std::uint8_t* in, std::uint8_t* out) const {
    const std::uint32_t alpha = m_header.masks[3] == 0 ? Opaque : 0;
    for (std::int64_t x = 0; x < m_header.width; ++x) {
        const std::uint32_t pixel = LittleEndian32(in + 4 * x) | alpha;
        std::memcpy(out + 4 * x, &pixel, 4);
    }
}

void BmpRows::Convert(const std::uint8_t* in, std::uint8_t* out) const {
    if (m_header.bits <= 8) {
        ConvertIndexed(in, out);
    } else if (m_header.bits == 24) {
        for (std::int64_t x = 0; x < m_header.width; ++x, in += 3) {
            const std::uint32_t pixel = Opaque | LittleEndian16(in) | static_cast<std::uint32_t>(in[2]) << 16;
            std::memcpy(out + 4 * x, &pixel, 4);
        }
    } else if (m_asStored) {
        ConvertWords(in, out);
    } else {
        ConvertMasked(in, out);
    }
}
