// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <cstring>
#include <vector>

#include "ByteReader.h"
#include "Readers.h"

namespace {

// Passes over the file once; takes nothing that is not there.
struct Walker {
    const std::uint8_t* data;
    std::size_t size;
    std::size_t at = 0;

    // The next `count` bytes; null when the file has fewer.
    const std::uint8_t* Take(std::size_t count) {
        if (count > size - at) return nullptr;
        at += count;
        return data + at - count;
    }
};

// Adds the content of a chain of sub-blocks; false when it does not end in the file.
bool TakeBlocks(Walker& walk, std::vector<std::uint8_t>& content) {
    for (;;) {
        const std::uint8_t* length = walk.Take(1);
        const std::uint8_t* block = length ? walk.Take(*length) : nullptr;
        if (!block) return false;
        if (*length == 0) return true;
        content.insert(content.end(), block, block + *length);
    }
}

// Colours as opaque pixels (0xAARRGGBB); those that the file lacks are black.
using Palette = std::array<std::uint32_t, 256>;

// Takes the table that `flags` announce, if they do.
bool TakePalette(Walker& walk, int flags, Palette& palette) {
    if (!(flags & 0x80)) return true;
    const std::size_t count = std::size_t{2} << (flags & 7);
    const std::uint8_t* p = walk.Take(3 * count);
    if (!p) return false;
    palette.fill(0xFF000000u);
    for (std::size_t i = 0; i < count; ++i, p += 3) palette[i] = 0xFF000000u | BigEndian16(p) << 8 | p[2];
    return true;
}

struct Frame {
    std::uint32_t left, top, width, height;
    bool interlaced;
    Palette palette;
    int transparent = -1;  // the colour that is none
    int codeBits = 0;      // of a colour among the codes
    std::vector<std::uint8_t> codes;
};

// Everything up to the end of the first frame.
bool TakeFirstFrame(Walker& walk, Frame& frame) {
    std::vector<std::uint8_t> extension;
    while (const std::uint8_t* introducer = walk.Take(1)) {
        if (*introducer == 0x21) {
            const std::uint8_t* label = walk.Take(1);
            extension.clear();
            if (!label || !TakeBlocks(walk, extension)) return false;
            if (*label == 0xF9 && extension.size() >= 4) frame.transparent = extension[0] & 1 ? extension[3] : -1;
        } else if (*introducer == 0x2C) {
            const std::uint8_t* p = walk.Take(9);
            if (!p) return false;
            frame.left = LittleEndian16(p);
            frame.top = LittleEndian16(p + 2);
            frame.width = LittleEndian16(p + 4);
            frame.height = LittleEndian16(p + 6);
            frame.interlaced = p[8] & 0x40;
            if (!TakePalette(walk, p[8], frame.palette)) return false;
            const std::uint8_t* bits = walk.Take(1);
            if (!bits || *bits < 1 || *bits > 8) return false;
            frame.codeBits = *bits;
            return TakeBlocks(walk, frame.codes);
        } else {
            return false;
        }
    }
    return false;
}

// Puts the colours of a frame, which come row by row in the file's order, on the screen.
class Painter {
  public:
    Painter(const Frame& frame, std::uint8_t* screen, std::uint32_t width, std::uint32_t height)
        : m_frame(frame), m_screen(screen), m_width(width), m_height(height) {}

    bool Full() const { return m_frame.width == 0 || m_y >= m_frame.height; }

    void Put(int index) {
        if (Full()) return;
        const std::size_t x = m_frame.left + m_x, y = m_frame.top + m_y;
        if (x < m_width && y < m_height && index != m_frame.transparent)
            std::memcpy(m_screen + 4 * (y * m_width + x), &m_frame.palette[index], 4);
        if (++m_x == m_frame.width) NextRow();
    }

  private:
    void NextRow() {
        static constexpr std::uint32_t starts[] = {0, 4, 2, 1}, steps[] = {8, 8, 4, 2};
        m_x = 0;
        m_y += m_frame.interlaced ? steps[m_pass] : 1;
        while (m_frame.interlaced && m_y >= m_frame.height && m_pass < 3) m_y = starts[++m_pass];
    }

    const Frame& m_frame;
    std::uint8_t* m_screen;
    std::uint32_t m_width, m_height;
    std::uint32_t m_x = 0, m_y = 0;
    int m_pass = 0;
};

// LZW with codes that grow from `codeBits` + 1 to 12 bits, lowest bit first.
class Lzw {
  public:
    explicit Lzw(const Frame& frame) : m_codes(frame.codes), m_codeBits(frame.codeBits) {
        for (int i = 0; i < Clear(); ++i) m_entries[i] = {0, static_cast<std::uint8_t>(i), 1};
        Restart();
    }

    // False for a code that was not made yet. Codes that end before the frame is full leave its rest as it is.
    bool Draw(Painter& painter) {
        for (int code = Next(); code >= 0 && code != Clear() + 1 && !painter.Full(); code = Next()) {
            if (code == Clear()) {
                Restart();
                continue;
            }
            if (code > m_count || (code == m_count && m_last < 0)) return false;
            // A code that is just being made stands for the last string and its own first colour.
            const int known = code == m_count ? m_last : code;
            const std::uint8_t first = Expand(known);
            for (int i = 0; i < m_entries[known].length; ++i) painter.Put(m_string[i]);
            if (code == m_count) painter.Put(first);
            if (m_last >= 0 && m_count < MostCodes) Add(first);
            m_last = code;
        }
        return true;
    }

  private:
    static constexpr int MostCodes = 4096;

    // A string: that of `before` and one colour more.
    struct Entry {
        std::uint16_t before;
        std::uint8_t colour;
        std::uint16_t length;
    };

    int Clear() const { return 1 << m_codeBits; }

    void Restart() {
        m_count = Clear() + 2;
        m_width = m_codeBits + 1;
        m_last = -1;
    }

    void Add(std::uint8_t first) {
        m_entries[m_count] = {static_cast<std::uint16_t>(m_last), first,
                              static_cast<std::uint16_t>(m_entries[m_last].length + 1)};
        if (++m_count == 1 << m_width && m_width < 12) ++m_width;
    }

    // Writes the string of a code out and gives its first colour.
    std::uint8_t Expand(int code) {
        for (int i = m_entries[code].length - 1; i >= 0; --i, code = m_entries[code].before)
            m_string[i] = m_entries[code].colour;
        return m_string[0];
    }

    // The next code; -1 after the last whole one.
    int Next() {
        while (m_bitCount < m_width) {
            if (m_at == m_codes.size()) return -1;
            m_bits |= static_cast<std::uint32_t>(m_codes[m_at++]) << m_bitCount;
            m_bitCount += 8;
        }
        const int code = static_cast<int>(m_bits & ((1u << m_width) - 1));
        m_bits >>= m_width;
        m_bitCount -= m_width;
        return code;
    }

    const std::vector<std::uint8_t>& m_codes;
    const int m_codeBits;
    std::size_t m_at = 0;
    std::uint32_t m_bits = 0;
    int m_bitCount = 0;
    int m_width = 0;
    int m_count = 0;
    int m_last = -1;
    std::array<Entry, MostCodes> m_entries = {};
    std::array<std::uint8_t, MostCodes> m_string;
};

// A byte of codes stands for at most 2730 pixels; small screens need not be filled by their first frame.
bool SizeIsPlausible(std::uint64_t pixels, std::size_t size) {
    constexpr std::uint64_t pixelsPerByte = 2730, anyway = 1 << 20;
    return pixels <= anyway || pixels / pixelsPerByte <= size;
}

}  // namespace

bool ReadGif(const std::uint8_t* data, std::size_t size, PictureTarget& target) {
    Walker walk{data, size};
    const std::uint8_t* screen = walk.Take(13);
    Frame frame = {};
    frame.transparent = -1;
    frame.palette.fill(0xFF000000u);
    if (!screen || !TakePalette(walk, screen[10], frame.palette) || !TakeFirstFrame(walk, frame)) return false;
    std::uint32_t width = LittleEndian16(screen + 6), height = LittleEndian16(screen + 8);
    // A file without a screen is as large as its frame.
    if (width == 0) width = frame.left + frame.width;
    if (height == 0) height = frame.top + frame.height;
    if (!SizeIsPlausible(std::uint64_t{width} * height, size)) return false;
    std::uint8_t* out = target.Begin(width, height);
    if (!out) return false;
    std::memset(out, 0, std::size_t{4} * width * height);
    Painter painter(frame, out, width, height);
    return Lzw(frame).Draw(painter) && target.Report(1);
}
