// SPDX-License-Identifier: GPL-3.0-or-later
#include "TiffRaw.h"

#include <cstring>

#include "HandMade.h"

namespace {

using HandMade::Put16;
using HandMade::Put32;

constexpr std::uint32_t Short = 3, Long = 4;

// The directory, and the values that are too long for it.
class Directory {
  public:
    explicit Directory(Bytes& file) : m_file(file) {}

    void Add(std::uint32_t tag, std::uint32_t type, const std::vector<std::uint32_t>& values) {
        Put16(m_entries, tag);
        Put16(m_entries, type);
        Put32(m_entries, static_cast<std::uint32_t>(values.size()));
        Bytes content;
        for (const std::uint32_t value : values) type == Short ? Put16(content, value) : Put32(content, value);
        if (content.size() > 4) {
            Put32(m_entries, static_cast<std::uint32_t>(m_file.size()));
            m_file.insert(m_file.end(), content.begin(), content.end());
        } else {
            content.resize(4);
            m_entries.insert(m_entries.end(), content.begin(), content.end());
        }
        ++m_count;
    }

    // Writes the directory and its place into the file's header.
    void Finish() {
        if (m_file.size() % 2) m_file.push_back(0);
        for (std::size_t i = 0; i < 4; ++i) m_file[4 + i] = static_cast<std::uint8_t>(m_file.size() >> 8 * i);
        Put16(m_file, m_count);
        m_file.insert(m_file.end(), m_entries.begin(), m_entries.end());
        Put32(m_file, 0);
    }

  private:
    Bytes& m_file;
    Bytes m_entries;
    std::uint32_t m_count = 0;
};

}  // namespace

Bytes RawTiff::Write() const {
    Bytes file = {'I', 'I', 42, 0, 0, 0, 0, 0};
    std::vector<std::uint32_t> places, lengths;
    for (const Bytes& block : blocks) {
        places.push_back(static_cast<std::uint32_t>(file.size()));
        lengths.push_back(static_cast<std::uint32_t>(block.size()));
        file.insert(file.end(), block.begin(), block.end());
    }
    Directory directory(file);
    directory.Add(256, Long, {width});
    directory.Add(257, Long, {height});
    directory.Add(258, Short, std::vector<std::uint32_t>(samples, bits));
    directory.Add(259, Short, {1});
    directory.Add(262, Short, {static_cast<std::uint32_t>(photometric)});
    if (tile == 0) directory.Add(273, Long, places);
    directory.Add(277, Short, {samples});
    if (tile == 0) directory.Add(278, Long, {height});
    if (tile == 0) directory.Add(279, Long, lengths);
    directory.Add(284, Short, {planes ? 2u : 1u});
    if (!colours.empty()) directory.Add(320, Short, colours);
    if (tile > 0) {
        directory.Add(322, Long, {tile});
        directory.Add(323, Long, {tile});
        directory.Add(324, Long, places);
        directory.Add(325, Long, lengths);
    }
    directory.Add(339, Short, std::vector<std::uint32_t>(samples, static_cast<std::uint32_t>(format)));
    directory.Finish();
    return file;
}

Bytes TiffRow(int bits, const std::vector<std::uint64_t>& values) {
    Bytes row;
    if (bits % 8 == 0) {
        for (const std::uint64_t value : values)
            for (int shift = 0; shift < bits; shift += 8) row.push_back(static_cast<std::uint8_t>(value >> shift));
        return row;
    }
    std::size_t at = 0;
    for (const std::uint64_t value : values)
        for (int bit = bits - 1; bit >= 0; --bit, ++at) {
            if (at % 8 == 0) row.push_back(0);
            row.back() |= static_cast<std::uint8_t>((value >> bit & 1) << (7 - at % 8));
        }
    return row;
}

Bytes TiffFloats(const std::vector<float>& values) {
    Bytes bytes(4 * values.size());
    std::memcpy(bytes.data(), values.data(), bytes.size());
    return bytes;
}
