// SPDX-License-Identifier: GPL-3.0-or-later
#include "BmpHeader.h"

#include <algorithm>

#include "Bitmap.h"
#include "ByteReader.h"

namespace {

using Packing = BmpHeader::Packing;

constexpr std::size_t FileHeaderBytes = 14;
constexpr std::size_t MasksAt = FileHeaderBytes + 40;

// The second header, whose length is its first field. What lies past its end is 0.
struct Fields {
    const std::uint8_t* data;
    std::size_t size;

    std::uint32_t Two(std::size_t at) const { return at + 2 <= size ? LittleEndian16(data + at) : 0; }
    std::uint32_t Four(std::size_t at) const { return at + 4 <= size ? LittleEndian32(data + at) : 0; }
};

void ReadOldSizes(const Fields& fields, BmpHeader& header) {
    header.width = fields.Two(4);
    header.height = fields.Two(6);
    header.bits = static_cast<int>(fields.Two(10));
    header.entryBytes = 3;
}

void ReadSizes(const Fields& fields, BmpHeader& header) {
    header.width = static_cast<std::int32_t>(fields.Four(4));
    header.height = static_cast<std::int32_t>(fields.Four(8));
    header.topDown = header.height < 0;
    if (header.topDown) header.height = -header.height;
    header.bits = static_cast<int>(fields.Two(14));
}

// The numbers of `compression`. 4 is a JPEG in Windows' headers and runs of 24 bits in those of OS/2.
constexpr std::uint32_t Runs8 = 1, Runs4 = 2, BitFields = 3, JpegOrRuns24 = 4, Png = 5, AlphaBitFields = 6;

bool ReadPacking(std::uint32_t compression, BmpHeader& header) {
    const int bits = header.bits;
    switch (compression) {
        case 0:
            header.packing = Packing::Plain;
            return bits == 1 || bits == 2 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
        case Runs8:
            header.packing = Packing::Runs8;
            return bits == 8;
        case Runs4:
            header.packing = Packing::Runs4;
            return bits == 4;
        case BitFields:
        case AlphaBitFields:
            header.packing = Packing::Plain;
            return bits == 16 || bits == 32;
        case JpegOrRuns24:
            header.packing = bits == 24 ? Packing::Runs24 : Packing::Jpeg;
            return bits == 24 || bits == 0;
        case Png:
            header.packing = Packing::Png;
            return true;
        default:
            return false;
    }
}

// The masks of the plain forms: 5 bits a channel, or 8 with a byte that says nothing.
void SetPlainMasks(BmpHeader& header) {
    header.masks = header.bits == 16 ? std::array<std::uint32_t, 4>{0x7C00, 0x03E0, 0x001F, 0}
                                     : std::array<std::uint32_t, 4>{0xFF0000, 0x00FF00, 0x0000FF, 0};
}

// The masks in the file, and where they end.
bool ReadMasks(const std::uint8_t* data, std::size_t size, bool alpha, BmpHeader& header, std::size_t& end) {
    const std::size_t count = alpha ? 4 : 3;
    end = MasksAt + 4 * count;
    if (size < end) return false;
    std::array<std::uint32_t, 4> masks = {};
    for (std::size_t i = 0; i < count; ++i) {
        masks[i] = LittleEndian32(data + MasksAt + 4 * i);
        if (header.bits == 16) masks[i] &= 0xFFFF;
    }
    if (masks[0] | masks[1] | masks[2]) header.masks = masks;
    return true;
}

// A version 5 header may point to an ICC profile in the file.
void FindProfile(const Fields& fields, std::size_t size, BmpHeader& header) {
    constexpr std::uint32_t embedded = 0x4D424544;
    if (fields.size < 124 || fields.Four(56) != embedded) return;
    const std::uint64_t start = FileHeaderBytes + std::uint64_t{fields.Four(112)}, length = fields.Four(116);
    if (start + length > size) return;
    header.profile = static_cast<std::size_t>(start);
    header.profileBytes = static_cast<std::size_t>(length);
}

// Where palette and pixels start. A stated start that lies inside the headers is none: the pixels then follow the
// palette. The palette never reaches into the pixels.
void FindPalette(const Fields& fields, std::size_t stated, std::size_t start, BmpHeader& header) {
    header.palette = start;
    const std::size_t most = header.Indexed() && header.bits > 0 ? std::size_t{1} << header.bits : 0;
    const std::size_t used = fields.Four(32);
    header.colours = used > 0 && used < most ? used : most;
    const std::size_t end = start + header.colours * header.entryBytes;
    header.pixels = stated < start ? end : stated;
    if (header.pixels < end) header.colours = header.pixels > start ? (header.pixels - start) / header.entryBytes : 0;
}

}  // namespace

bool ParseBmpHeader(const std::uint8_t* data, std::size_t size, BmpHeader& header) {
    if (size < FileHeaderBytes + 12) return false;
    const std::size_t length = LittleEndian32(data + FileHeaderBytes);
    if ((length != 12 && length < 16) || length > size - FileHeaderBytes) return false;
    const Fields fields{data + FileHeaderBytes, length};
    length == 12 ? ReadOldSizes(fields, header) : ReadSizes(fields, header);
    const std::uint32_t compression = length == 12 ? 0 : fields.Four(16);
    if (!Bitmap::Allowed(header.width, header.height) || !ReadPacking(compression, header)) return false;
    std::size_t end = FileHeaderBytes + length;
    SetPlainMasks(header);
    if (compression == BitFields || compression == AlphaBitFields) {
        std::size_t masksEnd = 0;
        const bool alpha = compression == AlphaBitFields || length >= 56;
        if (!ReadMasks(data, size, alpha, header, masksEnd)) return false;
        end = std::max(end, masksEnd);
    }
    FindPalette(fields, LittleEndian32(data + 10), end, header);
    FindProfile(fields, size, header);
    return header.pixels < size;
}
