// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "ByteReader.h"
#include "CodecModule.h"

// The layered format that starts with "8BPS", in its small and its large form (version 2): the merged picture that
// stands behind the layers, as planes of 1, 8 or 16 bits, plain or in runs of bytes. Layers are not composed.

namespace {

// Goes through the sections of a file; nothing is taken that is not there.
class Sections {
  public:
    Sections(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}

    // The next bytes; null (and no more of anything) when the file has fewer.
    const std::uint8_t* Take(std::uint64_t count) {
        if (m_failed || count > m_size - m_at) {
            m_failed = true;
            return nullptr;
        }
        m_at += static_cast<std::size_t>(count);
        return m_data + m_at - count;
    }
    std::uint64_t Number(int bytes) {
        const std::uint8_t* p = Take(static_cast<std::uint64_t>(bytes));
        std::uint64_t value = 0;
        for (int i = 0; p && i < bytes; ++i) value = value << 8 | p[i];
        return value;
    }
    // A section with its length before it.
    Sections Section(int lengthBytes) {
        const std::uint64_t length = Number(lengthBytes);
        const std::uint8_t* p = Take(length);
        return {p, p ? static_cast<std::size_t>(length) : 0};
    }
    std::size_t Left() const { return m_failed ? 0 : m_size - m_at; }
    bool Failed() const { return m_failed; }

  private:
    const std::uint8_t* m_data;
    std::size_t m_size;
    std::size_t m_at = 0;
    bool m_failed = false;
};

enum class Mode { Bitmap = 0, Grey = 1, Indexed = 2, Rgb = 3, Ink = 4, Duotone = 8 };

struct PsdHeader {
    int lengthBytes = 4;  // of the numbers that the large form made longer
    int channels = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    int bits = 0;
    Mode mode = Mode::Rgb;

    int ColourChannels() const { return mode == Mode::Rgb ? 3 : mode == Mode::Ink ? 4 : 1; }
    std::size_t RowBytes() const { return (std::size_t{width} * bits + 7) / 8; }
};

bool TakeHeader(Sections& file, PsdHeader& header) {
    const std::uint8_t* p = file.Take(26);
    if (!p || (p[5] != 1 && p[5] != 2)) return false;
    header.lengthBytes = p[5] == 2 ? 8 : 4;
    header.channels = static_cast<int>(BigEndian16(p + 12));
    header.height = BigEndian32(p + 14);
    header.width = BigEndian32(p + 18);
    header.bits = static_cast<int>(BigEndian16(p + 22));
    header.mode = static_cast<Mode>(BigEndian16(p + 24));
    const bool sides = header.width > 0 && header.height > 0 && header.width <= 300000 && header.height <= 300000;
    if (!sides || header.channels < header.ColourChannels() || header.channels > 56) return false;
    switch (header.mode) {
        case Mode::Bitmap:
            return header.bits == 1;
        case Mode::Indexed:
            return header.bits == 8;
        case Mode::Grey:
        case Mode::Duotone:
        case Mode::Rgb:
        case Mode::Ink:
            return header.bits == 8 || header.bits == 16;
    }
    return false;
}

// Finds the ICC profile among the image's resources; true when there is one.
bool TakeProfile(Sections resources, PictureTarget& target) {
    constexpr std::uint64_t profileNumber = 1039;
    while (resources.Left() > 0) {
        resources.Take(4);
        const std::uint64_t number = resources.Number(2), nameLength = resources.Number(1);
        resources.Take(nameLength + (nameLength + 1) % 2);
        const std::uint64_t length = resources.Number(4);
        const std::uint8_t* content = resources.Take(length);
        if (content && number == profileNumber && length > 0) {
            target.SetProfile(content, static_cast<std::size_t>(length));
            return true;
        }
        resources.Take(length % 2);
    }
    return false;
}

// A negative number of layers says that the first channel behind the colours is the merged picture's transparency.
bool MergedIsTransparent(Sections layers, int lengthBytes) {
    if (layers.Number(lengthBytes) < 2) return false;
    const std::uint64_t count = layers.Number(2);
    return !layers.Failed() && (count & 0x8000);
}

// Unpacks a row of runs of bytes; false when it is not exactly full or runs out.
bool UnpackBits(const std::uint8_t* in, std::size_t size, std::uint8_t* out, std::size_t count) {
    std::size_t done = 0;
    for (std::size_t at = 0; at < size && done < count;) {
        const int code = in[at++];
        if (code == 128) continue;
        const std::size_t length = static_cast<std::size_t>(code < 128 ? code + 1 : 257 - code);
        if (length > count - done || (code < 128 ? length : 1) > size - at) return false;
        if (code < 128)
            std::memcpy(out + done, in + at, length);
        else
            std::memset(out + done, in[at], length);
        at += code < 128 ? length : 1;
        done += length;
    }
    return done == count;
}

// The rows of all planes, one plane after the other.
class Planes {
  public:
    // False when the file cannot hold the rows; nothing is allocated but the rows' places.
    bool Take(Sections& file, const PsdHeader& header, int wanted) {
        enum { Plain, Runs };
        const std::uint64_t packing = file.Number(2);
        const std::uint64_t rows = std::uint64_t{header.height} * static_cast<std::uint64_t>(header.channels);
        const std::uint64_t used = std::uint64_t{header.height} * static_cast<std::uint64_t>(wanted);
        m_rowBytes = header.RowBytes();
        m_height = header.height;
        m_runs = packing == Runs;
        const int countBytes = header.lengthBytes / 2;
        if (packing > Runs) return false;
        if (!m_runs) {
            m_plain = file.Take(used * m_rowBytes);
            return m_plain != nullptr;
        }
        if (rows * countBytes > file.Left()) return false;
        Sections counts(file.Take(rows * countBytes), static_cast<std::size_t>(rows * countBytes));
        m_packed.reserve(static_cast<std::size_t>(used));
        for (std::uint64_t i = 0; i < used; ++i) {
            const std::uint64_t length = counts.Number(countBytes);
            // Two bytes stand for at most 128.
            if (length < (m_rowBytes + 127) / 128 * 2) return false;
            const std::uint8_t* row = file.Take(length);
            if (!row) return false;
            m_packed.push_back({row, static_cast<std::size_t>(length)});
        }
        return true;
    }

    // Row y of a plane into `out`.
    bool Row(int plane, std::uint32_t y, std::uint8_t* out) const {
        const std::size_t index = std::size_t{m_height} * static_cast<std::size_t>(plane) + y;
        if (m_runs) return UnpackBits(m_packed[index].first, m_packed[index].second, out, m_rowBytes);
        std::memcpy(out, m_plain + index * m_rowBytes, m_rowBytes);
        return true;
    }

  private:
    std::size_t m_rowBytes = 0;
    std::uint32_t m_height = 0;
    bool m_runs = false;
    const std::uint8_t* m_plain = nullptr;
    std::vector<std::pair<const std::uint8_t*, std::size_t>> m_packed;
};

// Sample x of a row as 16 bits; ink is stored the other way round, as light, and so is the ink of a bitmap.
std::uint16_t Sample(const PsdHeader& header, const std::uint8_t* row, std::size_t x) {
    switch (header.bits) {
        case 1:
            return row[x / 8] >> (7 - x % 8) & 1 ? 0 : 65535;
        case 8:
            return static_cast<std::uint16_t>(row[x] * 257);
        default:
            return static_cast<std::uint16_t>(BigEndian16(row + 2 * x));
    }
}

// The merged picture is laid on white: takes the white out of a colour again.
std::uint16_t WithoutWhite(std::uint32_t value, std::uint32_t alpha) {
    if (alpha == 0) return 65535;
    const std::uint32_t white = 65535 - alpha;
    const std::uint64_t part = value > white ? value - white : 0;
    return static_cast<std::uint16_t>(std::min<std::uint64_t>(65535, (part * 65535 + alpha / 2) / alpha));
}

std::uint8_t ToByte(std::uint32_t value) {
    return static_cast<std::uint8_t>((value * 255u + 32767u) / 65535u);
}

class PsdPicture {
  public:
    PsdPicture(const PsdHeader& header, const Planes& planes, const std::uint8_t* palette, bool transparent)
        : m_header(header), m_planes(planes), m_palette(palette), m_transparent(transparent) {
        for (auto& row : m_rows) row.resize(header.RowBytes());
    }

    // Reads row y of all planes; then the pixels of that row can be asked for.
    bool Load(std::uint32_t y) {
        for (int plane = 0; plane < m_header.ColourChannels() + m_transparent; ++plane)
            if (!m_planes.Row(plane, y, m_rows[plane].data())) return false;
        return true;
    }

    // Red, green, blue and alpha of a pixel, or its four inks, in 16 bits.
    std::array<std::uint16_t, 4> At(std::size_t x) const {
        const auto sample = [&](int plane) { return Sample(m_header, m_rows[plane].data(), x); };
        if (m_header.mode == Mode::Ink) {
            std::array<std::uint16_t, 4> ink;
            for (int c = 0; c < 4; ++c) ink[c] = static_cast<std::uint16_t>(65535 - sample(c));
            return ink;
        }
        const int colours = m_header.ColourChannels();
        std::array<std::uint16_t, 4> pixel;
        pixel[3] = m_transparent ? sample(colours) : 65535;
        for (int c = 0; c < 3; ++c) {
            pixel[c] = m_palette ? static_cast<std::uint16_t>(m_palette[256 * c + m_rows[0][x]] * 257)
                                 : sample(colours == 3 ? c : 0);
            if (m_transparent) pixel[c] = WithoutWhite(pixel[c], pixel[3]);
        }
        return pixel;
    }

  private:
    const PsdHeader& m_header;
    const Planes& m_planes;
    const std::uint8_t* m_palette;
    int m_transparent;
    std::array<std::vector<std::uint8_t>, 5> m_rows;
};

bool Fill(PsdPicture& picture, const PsdHeader& header, bool deep, PictureTarget& target) {
    std::uint16_t* wide = deep ? target.BeginDeep(header.width, header.height) : nullptr;
    std::uint8_t* out = deep ? nullptr : target.Begin(header.width, header.height);
    if (!wide && !out) return false;
    const bool ink = header.mode == Mode::Ink;
    for (std::uint32_t y = 0; y < header.height; ++y) {
        if (!picture.Load(y)) return false;
        for (std::size_t x = 0; x < header.width; ++x) {
            const auto pixel = picture.At(x);
            const std::size_t at = 4 * (std::size_t{y} * header.width + x);
            for (std::size_t c = 0; c < 4; ++c)
                if (deep)
                    wide[at + c] = pixel[c];
                else
                    out[at + c] = ToByte(pixel[ink || c == 3 ? c : 2 - c]);
        }
    }
    return true;
}

}  // namespace

bool ReadPsd(const std::uint8_t* data, std::size_t size, PictureTarget& target) {
    Sections file(data, size);
    PsdHeader header;
    if (!TakeHeader(file, header)) return false;
    Sections colours = file.Section(4);
    const std::uint8_t* palette = header.mode == Mode::Indexed ? colours.Take(768) : nullptr;
    if (header.mode == Mode::Indexed && !palette) return false;
    const Sections resources = file.Section(4);
    const bool transparent = MergedIsTransparent(file.Section(header.lengthBytes), header.lengthBytes) &&
                             header.mode != Mode::Ink && header.channels > header.ColourChannels();
    Planes planes;
    if (!planes.Take(file, header, header.ColourChannels() + transparent)) return false;
    if (header.mode == Mode::Ink) target.SetModel(PictureTarget::Model::Cmyk);
    if (header.mode == Mode::Grey) target.SetModel(PictureTarget::Model::Gray);
    const bool profile = header.mode != Mode::Bitmap && header.mode != Mode::Duotone && TakeProfile(resources, target);
    PsdPicture picture(header, planes, palette, transparent);
    return Fill(picture, header, profile && header.bits == 16 && header.mode != Mode::Ink, target) && target.Report(1);
}
