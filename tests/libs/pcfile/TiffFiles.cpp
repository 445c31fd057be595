// SPDX-License-Identifier: GPL-3.0-or-later
#include <tiffio.h>

#include <cstring>

#include "CodecFiles.h"

namespace {

struct Sink {
    Bytes bytes;
    std::size_t at = 0;
};

tmsize_t ReadSink(thandle_t handle, void* out, tmsize_t count) {
    Sink& sink = *static_cast<Sink*>(handle);
    const auto left = static_cast<tmsize_t>(sink.bytes.size() - std::min(sink.at, sink.bytes.size()));
    const tmsize_t taken = std::min(count, left);
    if (taken > 0) std::memcpy(out, sink.bytes.data() + sink.at, static_cast<std::size_t>(taken));
    sink.at += static_cast<std::size_t>(taken);
    return taken;
}

tmsize_t WriteSink(thandle_t handle, void* in, tmsize_t count) {
    Sink& sink = *static_cast<Sink*>(handle);
    const auto size = static_cast<std::size_t>(count);
    if (sink.bytes.size() < sink.at + size) sink.bytes.resize(sink.at + size);
    std::memcpy(sink.bytes.data() + sink.at, in, size);
    sink.at += size;
    return count;
}

toff_t SeekSink(thandle_t handle, toff_t offset, int whence) {
    Sink& sink = *static_cast<Sink*>(handle);
    sink.at = static_cast<std::size_t>(whence == SEEK_CUR   ? sink.at + offset
                                       : whence == SEEK_END ? sink.bytes.size() + offset
                                                            : offset);
    return sink.at;
}

TIFF* OpenSink(Sink& sink) {
    return TIFFClientOpen(
        "test", "wm", &sink, ReadSink, WriteSink, SeekSink, [](thandle_t) { return 0; },
        [](thandle_t handle) { return toff_t{static_cast<Sink*>(handle)->bytes.size()}; }, nullptr, nullptr);
}

int SamplesOf(TiffKind kind) {
    return kind == TiffKind::Rgb ? 3 : kind == TiffKind::Rgba || kind == TiffKind::Ink ? 4 : 1;
}

int PhotometricOf(TiffKind kind) {
    switch (kind) {
        case TiffKind::Rgb:
        case TiffKind::Rgba:
            return PHOTOMETRIC_RGB;
        case TiffKind::WhiteIsZero:
            return PHOTOMETRIC_MINISWHITE;
        case TiffKind::Palette:
            return PHOTOMETRIC_PALETTE;
        case TiffKind::Ink:
            return PHOTOMETRIC_SEPARATED;
        default:
            return PHOTOMETRIC_MINISBLACK;
    }
}

// The samples of a pixel, 0 to 255.
void SamplesAt(const std::uint8_t* bgra, TiffKind kind, int (&out)[4]) {
    switch (kind) {
        case TiffKind::Rgb:
        case TiffKind::Rgba:
            for (int c = 0; c < 3; ++c) out[c] = bgra[2 - c];
            out[3] = bgra[3];
            break;
        case TiffKind::Ink:
            for (int c = 0; c < 3; ++c) out[c] = 255 - bgra[2 - c];
            out[3] = 0;
            break;
        case TiffKind::WhiteIsZero:
            out[0] = 255 - bgra[1];
            break;
        case TiffKind::Palette:
            out[0] = 255 - bgra[1];
            break;  // the palette runs backwards
        default:
            out[0] = bgra[1];
    }
}

// A row of the block that starts at x and has `count` pixels; those outside the picture are 0.
Bytes PackRow(const Bitmap& bitmap, TiffKind kind, int bits, int x, int y, int count) {
    Bytes row;
    int packed = 0;
    for (int i = 0; i < count; ++i) {
        int samples[4] = {};
        if (x + i < bitmap.Width() && y < bitmap.Height()) SamplesAt(bitmap.Row(y) + 4 * (x + i), kind, samples);
        if (bits == 1) {
            packed = packed << 1 | (samples[0] >= 128);
            if (i % 8 == 7 || i == count - 1) row.push_back(static_cast<std::uint8_t>(packed << (7 - i % 8)));
            continue;
        }
        for (int c = 0; c < SamplesOf(kind); ++c)
            row.insert(row.end(), static_cast<std::size_t>(bits / 8), static_cast<std::uint8_t>(samples[c]));
    }
    return row;
}

void WritePixels(TIFF* tiff, const Bitmap& bitmap, TiffKind kind, int bits, bool tiled) {
    const int block = tiled ? 16 : 5;
    if (!tiled) TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, block);
    if (tiled) {
        TIFFSetField(tiff, TIFFTAG_TILEWIDTH, block);
        TIFFSetField(tiff, TIFFTAG_TILELENGTH, block);
    }
    const int across = tiled ? block : bitmap.Width();
    std::uint32_t index = 0;
    for (int y = 0; y < bitmap.Height(); y += block)
        for (int x = 0; x < bitmap.Width(); x += across) {
            Bytes bytes;
            const int rows = tiled ? block : std::min(block, bitmap.Height() - y);
            for (int i = 0; i < rows; ++i) {
                const Bytes row = PackRow(bitmap, kind, bits, x, y + i, across);
                bytes.insert(bytes.end(), row.begin(), row.end());
            }
            const auto size = static_cast<tmsize_t>(bytes.size());
            if (tiled)
                TIFFWriteEncodedTile(tiff, index++, bytes.data(), size);
            else
                TIFFWriteEncodedStrip(tiff, index++, bytes.data(), size);
        }
}

}  // namespace

Bytes MakeTiff(const Bitmap& bitmap, TiffKind kind, int bits, TiffPacking packing, bool tiled, int orientation,
               const Bytes& profile) {
    Sink sink;
    TIFF* tiff = OpenSink(sink);
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, bitmap.Width());
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, bitmap.Height());
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, bits);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, SamplesOf(kind));
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PhotometricOf(kind));
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_ORIENTATION, orientation);
    static const int packings[] = {COMPRESSION_NONE, COMPRESSION_LZW, COMPRESSION_ADOBE_DEFLATE, COMPRESSION_PACKBITS};
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, packings[static_cast<int>(packing)]);
    if (kind == TiffKind::Rgba) {
        const std::uint16_t straight = EXTRASAMPLE_UNASSALPHA;
        TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &straight);
    }
    if (!profile.empty())
        TIFFSetField(tiff, TIFFTAG_ICCPROFILE, static_cast<std::uint32_t>(profile.size()), profile.data());
    std::uint16_t map[256];
    for (int i = 0; i < 256; ++i) map[i] = static_cast<std::uint16_t>((255 - i) * 257);
    if (kind == TiffKind::Palette) TIFFSetField(tiff, TIFFTAG_COLORMAP, map, map, map);
    WritePixels(tiff, bitmap, kind, bits, tiled);
    TIFFClose(tiff);
    return sink.bytes;
}

Bytes MakeDng(int width, int height) {
    Sink sink;
    TIFF* tiff = OpenSink(sink);
    TIFFSetField(tiff, TIFFTAG_SUBFILETYPE, 0);
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, width);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, height);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 16);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_CFA);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, height);
    TIFFSetField(tiff, TIFFTAG_MAKE, "Test");
    TIFFSetField(tiff, TIFFTAG_MODEL, "Camera");
    TIFFSetField(tiff, TIFFTAG_UNIQUECAMERAMODEL, "Test Camera");
    TIFFSetField(tiff, TIFFTAG_DNGVERSION, "\01\04\00\00");
    TIFFSetField(tiff, TIFFTAG_DNGBACKWARDVERSION, "\01\02\00\00");
    const std::uint16_t repeat[2] = {2, 2};
    TIFFSetField(tiff, TIFFTAG_CFAREPEATPATTERNDIM, repeat);
    TIFFSetField(tiff, TIFFTAG_CFAPATTERN, 4, "\00\01\01\02");
    const float matrix[9] = {0.7f, -0.1f, -0.1f, -0.4f, 1.2f, 0.2f, -0.1f, 0.2f, 0.6f};
    TIFFSetField(tiff, TIFFTAG_COLORMATRIX1, 9, matrix);
    const float neutral[3] = {0.5f, 1.0f, 0.6f};
    TIFFSetField(tiff, TIFFTAG_ASSHOTNEUTRAL, 3, neutral);
    const std::uint32_t white = 65535;
    TIFFSetField(tiff, TIFFTAG_WHITELEVEL, 1, &white);
    std::vector<std::uint16_t> mosaic(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            mosaic[static_cast<std::size_t>(y * width + x)] = static_cast<std::uint16_t>((x + y) % 2 ? 20000
                                                                                         : y % 2     ? 12000
                                                                                                     : 10000);
    TIFFWriteEncodedStrip(tiff, 0, mosaic.data(), static_cast<tmsize_t>(mosaic.size() * 2));
    TIFFClose(tiff);
    return sink.bytes;
}
