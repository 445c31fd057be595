// SPDX-License-Identifier: GPL-3.0-or-later
#include "BmpFiles.h"

#include <algorithm>

#include "HandMade.h"

namespace {

using HandMade::Put16;
using HandMade::Put32;

// The second header: all fields as the longest has them, then cut to its length.
Bytes Header(const BmpFile& file) {
    Bytes header;
    Put32(header, file.headerBytes);
    if (file.headerBytes == 12) {
        for (const int value : {file.width, file.height, 1, file.bits})
            Put16(header, static_cast<std::uint32_t>(value));
        return header;
    }
    Put32(header, static_cast<std::uint32_t>(file.width));
    Put32(header, static_cast<std::uint32_t>(file.height));
    Put16(header, 1);
    Put16(header, static_cast<std::uint32_t>(file.bits));
    Put32(header, static_cast<std::uint32_t>(file.kind));
    Put32(header, static_cast<std::uint32_t>(file.pixels.size()));
    Put32(header, 2835);
    Put32(header, 2835);
    Put32(header, file.coloursCounted ? static_cast<std::uint32_t>(file.palette.size()) : 0);
    Put32(header, 0);
    for (const std::uint32_t mask : file.masks) Put32(header, mask);
    header.resize(std::max<std::size_t>(file.headerBytes, file.masks.empty() ? 0 : header.size()));
    return header;
}

}  // namespace

Bytes BmpFile::Write() const {
    Bytes rest = Header(*this);
    for (const std::uint32_t colour : palette) {
        Put16(rest, colour & 0xFFFF);
        rest.push_back(static_cast<std::uint8_t>(colour >> 16));
        if (headerBytes != 12) rest.push_back(0);
    }
    Bytes bytes = {'B', 'M'};
    Put32(bytes, static_cast<std::uint32_t>(14 + rest.size() + pixels.size()));
    Put32(bytes, 0);
    Put32(bytes, static_cast<std::uint32_t>(14 + rest.size()));
    bytes.insert(bytes.end(), rest.begin(), rest.end());
    bytes.insert(bytes.end(), pixels.begin(), pixels.end());
    return bytes;
}

Bytes BmpRow(int bits, const std::vector<std::uint32_t>& values) {
    Bytes row;
    int packed = 0, filled = 0;
    for (const std::uint32_t value : values) {
        if (bits >= 8) {
            for (int shift = 0; shift < bits; shift += 8) row.push_back(static_cast<std::uint8_t>(value >> shift));
            continue;
        }
        packed = packed << bits | static_cast<int>(value);
        filled += bits;
        if (filled == 8) {
            row.push_back(static_cast<std::uint8_t>(packed));
            packed = filled = 0;
        }
    }
    if (filled > 0) row.push_back(static_cast<std::uint8_t>(packed << (8 - filled)));
    row.resize((row.size() + 3) / 4 * 4);
    return row;
}

Bytes BmpRowsDownwards(const std::vector<Bytes>& rowsFromTop) {
    Bytes bytes;
    for (const Bytes& row : rowsFromTop) bytes.insert(bytes.end(), row.begin(), row.end());
    return bytes;
}

Bytes BmpRowsUpwards(const std::vector<Bytes>& rowsFromTop) {
    return BmpRowsDownwards({rowsFromTop.rbegin(), rowsFromTop.rend()});
}
