// SPDX-License-Identifier: GPL-3.0-or-later
#include "MetadataCarrier.h"

#include <cstring>

#include "ByteReader.h"

namespace {

Bitmap OnePixel() {
    Bitmap pixel(1, 1);
    pixel.Fill(0xFF808080u);
    return pixel;
}

// The carrier with the metadata in it; one kind that does not fit is left out rather than all of them.
ByteVector WriteInto(const ByteVector& carrier, const Exiv2::ExifData& exif, const Exiv2::XmpData& xmp,
                     const Exiv2::IptcData& iptc) {
    ByteVector file = carrier;
    for (int kind = 0; kind < 3; ++kind) {
        try {
            const Exiv2::Image::AutoPtr image = Exiv2::ImageFactory::open(file.data(), static_cast<long>(file.size()));
            image->readMetadata();
            if (kind == 0) image->setExifData(exif);
            if (kind == 1) image->setXmpData(xmp);
            if (kind == 2) image->setIptcData(iptc);
            image->writeMetadata();
            Exiv2::BasicIo& io = image->io();
            ByteVector written(io.size());
            io.seek(0, Exiv2::BasicIo::beg);
            if (io.read(written.data(), static_cast<long>(written.size())) == static_cast<long>(written.size()))
                file = std::move(written);
        } catch (const Exiv2::AnyError&) {
            // This kind stays behind.
        }
    }
    return file;
}

}  // namespace

ByteVector CarryInJpeg(const Exiv2::ExifData& exif, const Exiv2::XmpData& xmp, const Exiv2::IptcData& iptc) {
    ByteVector carrier, segments;
    if (!EncodeJpeg(OnePixel(), 90, Chroma::Full, {}, {}, carrier)) return {};
    const ByteVector file = WriteInto(carrier, exif, xmp, iptc);
    for (std::size_t at = 2; at + 4 <= file.size() && file[at] == 0xFF && file[at + 1] != 0xDA;) {
        const std::size_t length = 2 + BigEndian16(&file[at + 2]);
        if (at + length > file.size()) break;
        const int marker = file[at + 1];
        if (marker == 0xE1 || marker == 0xED) segments.insert(segments.end(), &file[at], &file[at] + length);
        at += length;
    }
    return segments;
}

ByteVector CarryInPng(const Exiv2::ExifData& exif, const Exiv2::XmpData& xmp, const Exiv2::IptcData& iptc) {
    ByteVector carrier, chunks;
    if (!EncodePng(OnePixel(), {}, {}, carrier)) return {};
    const ByteVector file = WriteInto(carrier, exif, xmp, iptc);
    for (std::size_t at = 8; at + 12 <= file.size();) {
        const std::size_t length = 12 + std::size_t{BigEndian32(&file[at])};
        if (length > file.size() - at) break;
        const char* type = reinterpret_cast<const char*>(&file[at + 4]);
        for (const char* carried : {"eXIf", "iTXt", "zTXt", "tEXt"})
            if (std::memcmp(type, carried, 4) == 0) chunks.insert(chunks.end(), &file[at], &file[at] + length);
        at += length;
    }
    return chunks;
}
