// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtCore/QBuffer>
#include <QtCore/QByteArray>
#include <QtGui/QImage>
#include <QtGui/QImageReader>

#include <cstring>
#include <mutex>

#include "Bitmap.h"
#include "ByteReader.h"
#include "Readers.h"

namespace {

// Passes a GIF's or another file's bytes once, counting what is there.
struct Walker {
    const std::uint8_t* data;
    std::size_t size;
    std::size_t at;

    bool Take(std::size_t count) {
        if (count > size - at) return false;
        at += count;
        return true;
    }
    int Byte() const { return data[at]; }
};

// Past a chain of sub-blocks; false when it does not end in the file.
bool PassBlocks(Walker& walk) {
    for (;;) {
        if (walk.at >= walk.size) return false;
        const std::size_t length = walk.data[walk.at];
        if (!walk.Take(length + 1)) return false;
        if (length == 0) return true;
    }
}

std::size_t ColourTableBytes(int flags) {
    return flags & 0x80 ? std::size_t{3} << ((flags & 7) + 1) : 0;
}

// True when the first picture of the file ends inside it.
bool GifIsWhole(const std::uint8_t* data, std::size_t size) {
    Walker walk{data, size, 0};
    if (!walk.Take(13) || !walk.Take(ColourTableBytes(data[10]))) return false;
    while (walk.at < size) {
        const int introducer = walk.Byte();
        if (introducer == 0x21) {
            if (!walk.Take(2) || !PassBlocks(walk)) return false;
        } else if (introducer == 0x2C) {
            const std::size_t start = walk.at;
            return walk.Take(10) && walk.Take(ColourTableBytes(data[start + 9])) && walk.Take(1) && PassBlocks(walk);
        } else {
            return false;
        }
    }
    return false;
}

struct BmpHeader {
    std::uint32_t offset, headerSize, compression;
    std::int64_t width, height;
    int bits;
};

bool ParseBmp(const std::uint8_t* data, std::size_t size, BmpHeader& header) {
    if (size < 26) return false;
    header.offset = LittleEndian32(data + 10);
    header.headerSize = LittleEndian32(data + 14);
    if (header.headerSize == 12) {
        header.width = LittleEndian16(data + 18);
        header.height = LittleEndian16(data + 20);
        header.bits = static_cast<int>(LittleEndian16(data + 24));
        header.compression = 0;
        return true;
    }
    if (header.headerSize < 40 || size < 54) return false;
    header.width = static_cast<std::int32_t>(LittleEndian32(data + 18));
    header.height = static_cast<std::int32_t>(LittleEndian32(data + 22));
    if (header.height < 0) header.height = -header.height;
    header.bits = static_cast<int>(LittleEndian16(data + 28));
    header.compression = LittleEndian32(data + 30);
    return true;
}

// True when all rows are inside the file. Run-length forms must reach their end mark.
bool BmpIsWhole(const std::uint8_t* data, std::size_t size) {
    BmpHeader header;
    if (!ParseBmp(data, size, header) || !Bitmap::Allowed(header.width, header.height) || header.offset >= size)
        return false;
    if (header.compression == 1 || header.compression == 2) return data[size - 1] <= 1 || size >= header.offset + 2;
    const std::uint64_t row = (header.width * header.bits + 31) / 32 * 4;
    return header.bits > 0 && header.offset + row * header.height <= size;
}

// A version 5 header may hold an ICC profile.
void ReadBmpProfile(const std::uint8_t* data, std::size_t size, PictureTarget& target) {
    if (size < 14 + 124 || LittleEndian32(data + 14) < 124 || LittleEndian32(data + 14 + 56) != 0x4D424544u) return;
    const std::uint64_t start = 14ull + LittleEndian32(data + 14 + 112), length = LittleEndian32(data + 14 + 116);
    if (start + length <= size) target.SetProfile(data + start, length);
}

const char* QtName(PictureFormat format) {
    switch (format) {
        case PictureFormat::Bmp:
            return "bmp";
        case PictureFormat::Gif:
            return "gif";
        case PictureFormat::Ico:
            return "ico";
        case PictureFormat::Wbmp:
            return "wbmp";
        default:
            return nullptr;
    }
}

bool IsWhole(PictureFormat format, const std::uint8_t* data, std::size_t size) {
    switch (format) {
        case PictureFormat::Bmp:
            return BmpIsWhole(data, size);
        case PictureFormat::Gif:
            return GifIsWhole(data, size);
        default:
            return true;
    }
}

// Qt has one limit for the process; sizes are checked here before anything is decoded.
void LiftQtLimit() {
    static std::once_flag once;
    std::call_once(once, [] { QImageReader::setAllocationLimit(0); });
}

}  // namespace

bool ReadByQt(PictureFormat format, const std::uint8_t* data, std::size_t size, PictureTarget& target) {
    const char* name = QtName(format);
    if (!name || !IsWhole(format, data, size)) return false;
    LiftQtLimit();
    QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, name);
    const QSize stated = reader.size();
    if (!Bitmap::Allowed(stated.width(), stated.height())) return false;
    QImage image;
    if (!reader.read(&image) || image.isNull()) return false;
    image.convertTo(QImage::Format_ARGB32);
    std::uint8_t* out = target.Begin(image.width(), image.height());
    if (!out) return false;
    const std::size_t stride = std::size_t{4} * image.width();
    for (int y = 0; y < image.height(); ++y) std::memcpy(out + y * stride, image.constScanLine(y), stride);
    if (format == PictureFormat::Bmp) ReadBmpProfile(data, size, target);
    return target.Report(1);
}
