// SPDX-License-Identifier: GPL-3.0-or-later
#include "BmpRuns.h"

#include <algorithm>

#include "ByteReader.h"

namespace {

using Packing = BmpHeader::Packing;

// Draws into rows in the order of the file; nothing outside the picture.
class Pen {
  public:
    Pen(const BmpHeader& header, std::uint8_t* out) : m_header(header), m_out(reinterpret_cast<std::uint32_t*>(out)) {}

    bool BelowPicture() const { return m_y >= m_header.height; }
    bool AtEnd() const { return BelowPicture() || (m_y == m_header.height - 1 && m_x >= m_header.width); }
    void NextRow() {
        m_x = 0;
        ++m_y;
    }
    void Move(int right, int rows) {
        m_x = std::min(m_header.width, m_x + right);
        m_y += rows;
    }
    void Put(std::uint32_t colour) {
        if (m_x < m_header.width) m_out[m_header.PictureRow(m_y) * m_header.width + m_x++] = colour;
    }

  private:
    const BmpHeader& m_header;
    std::uint32_t* m_out;
    std::int64_t m_x = 0;
    std::int64_t m_y = 0;
};

// The colours of a run or of a stretch without runs: how many bytes they take and what each is.
struct Colours {
    Packing packing;
    const BmpPalette& palette;

    std::size_t StretchBytes(int count) const {
        const std::size_t n = static_cast<std::size_t>(count);
        return packing == Packing::Runs4 ? (n + 1) / 2 : packing == Packing::Runs8 ? n : 3 * n;
    }
    std::size_t RunBytes() const { return packing == Packing::Runs24 ? 3 : 1; }
    std::uint32_t At(const std::uint8_t* p, int i) const {
        switch (packing) {
            case Packing::Runs4:
                return palette[p[i / 2] >> (i % 2 ? 0 : 4) & 15];
            case Packing::Runs8:
                return palette[p[i]];
            default:
                return 0xFF000000u | LittleEndian16(p + 3 * i) | static_cast<std::uint32_t>(p[3 * i + 2]) << 16;
        }
    }
    // A run of four bits alternates between the two colours of its byte.
    std::uint32_t OfRun(const std::uint8_t* p, int i) const { return At(p, packing == Packing::Runs4 ? i % 2 : 0); }
};

}  // namespace

bool DrawBmpRuns(const BmpHeader& header, const BmpPalette& palette, const std::uint8_t* data, std::size_t size,
                 std::uint8_t* out) {
    const Colours colours{header.packing, palette};
    const std::uint32_t first = header.packing == Packing::Runs24 ? 0xFF000000u : palette[0];
    std::fill_n(reinterpret_cast<std::uint32_t*>(out), header.width * header.height, first);
    Pen pen(header, out);
    std::size_t at = header.pixels;
    const auto has = [&](std::size_t count) { return count <= size - at; };
    while (!pen.BelowPicture() && has(2)) {
        const int count = data[at], code = data[at + 1];
        if (count > 0) {
            const std::uint8_t* run = data + at + 1;
            if (!has(1 + colours.RunBytes())) return false;
            for (int i = 0; i < count; ++i) pen.Put(colours.OfRun(run, i));
            at += 1 + colours.RunBytes();
            continue;
        }
        at += 2;
        if (code == 0) {
            pen.NextRow();
        } else if (code == 1) {
            return true;
        } else if (code == 2) {
            if (!has(2)) return false;
            pen.Move(data[at], data[at + 1]);
            at += 2;
        } else {
            const std::size_t bytes = colours.StretchBytes(code);
            if (!has(bytes)) return false;
            for (int i = 0; i < code; ++i) pen.Put(colours.At(data + at, i));
            at += std::min(size - at, (bytes + 1) / 2 * 2);
        }
    }
    return pen.AtEnd();
}
