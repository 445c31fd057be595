// SPDX-License-Identifier: GPL-3.0-or-later
#include <tiffio.h>

#include <cstring>
#include <memory>
#include <vector>

#include "CodecModule.h"
#include "PixelRows.h"
#include "TiffPixels.h"

namespace {

struct Source {
    const std::uint8_t* data;
    std::uint64_t size;
    std::uint64_t at = 0;
};

tmsize_t ReadSource(thandle_t handle, void* out, tmsize_t count) {
    Source& source = *static_cast<Source*>(handle);
    const std::uint64_t left = source.at < source.size ? source.size - source.at : 0;
    const tmsize_t taken = std::min<tmsize_t>(count, static_cast<tmsize_t>(left));
    if (taken > 0) std::memcpy(out, source.data + source.at, static_cast<std::size_t>(taken));
    source.at += static_cast<std::uint64_t>(taken);
    return taken;
}

toff_t SeekSource(thandle_t handle, toff_t offset, int whence) {
    Source& source = *static_cast<Source*>(handle);
    source.at = whence == SEEK_CUR ? source.at + offset : whence == SEEK_END ? source.size + offset : offset;
    return source.at;
}

struct CloseTiff {
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using File = std::unique_ptr<TIFF, CloseTiff>;

// Opens the file in memory, with messages swallowed and no single block above what a picture may take.
File OpenTiff(Source& source) {
    TIFFOpenOptions* options = TIFFOpenOptionsAlloc();
    TIFFOpenOptionsSetMaxSingleMemAlloc(options, tmsize_t{1} << 31);
    const auto silent = [](TIFF*, void*, const char*, const char*, va_list) { return 1; };
    TIFFOpenOptionsSetErrorHandlerExtR(options, silent, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options, silent, nullptr);
    TIFF* tiff = TIFFClientOpenExt(
        "picture", "rm", &source, ReadSource, [](thandle_t, void*, tmsize_t) { return tmsize_t{0}; }, SeekSource,
        [](thandle_t) { return 0; }, [](thandle_t handle) { return toff_t{static_cast<Source*>(handle)->size}; },
        nullptr, nullptr, options);
    TIFFOpenOptionsFree(options);
    return File(tiff);
}

template <class T>
T Field(TIFF* tiff, std::uint32_t tag, T otherwise) {
    T value = otherwise;
    return TIFFGetFieldDefaulted(tiff, tag, &value) ? value : otherwise;
}

// Camera raw in TIFF clothes: DNG says so, the others show a sensor's mosaic, a maker's own compression, or a mere
// preview as their first picture.
bool IsCameraRaw(TIFF* tiff, const std::uint8_t* data, std::size_t size) {
    std::uint16_t count = 0;
    const void* version = nullptr;
    if (TIFFGetField(tiff, TIFFTAG_DNGVERSION, &version)) return true;
    if (size > 12 && std::memcmp(data + 8, "CR", 2) == 0) return true;
    const std::uint16_t photometric = Field<std::uint16_t>(tiff, TIFFTAG_PHOTOMETRIC, 0);
    const std::uint16_t compression = Field<std::uint16_t>(tiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    if (photometric == PHOTOMETRIC_CFA || compression == 34713 || compression == 32767 || compression == 65535)
        return true;
    const char* maker = nullptr;
    void* directories = nullptr;
    return TIFFGetField(tiff, TIFFTAG_MAKE, &maker) && TIFFGetField(tiff, TIFFTAG_SUBIFD, &count, &directories) &&
           count > 0 && (Field<std::uint32_t>(tiff, TIFFTAG_SUBFILETYPE, 0) & FILETYPE_REDUCEDIMAGE);
}

void ReadTags(TIFF* tiff, PictureTarget& target) {
    target.SetOrientation(Field<std::uint16_t>(tiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT));
    std::uint32_t size = 0;
    const void* profile = nullptr;
    if (TIFFGetField(tiff, TIFFTAG_ICCPROFILE, &size, &profile) && size > 0) target.SetProfile(profile, size);
}

TiffLayout LayoutOf(TIFF* tiff) {
    TiffLayout layout;
    layout.width = Field<std::uint32_t>(tiff, TIFFTAG_IMAGEWIDTH, 0);
    layout.height = Field<std::uint32_t>(tiff, TIFFTAG_IMAGELENGTH, 0);
    layout.bits = Field<std::uint16_t>(tiff, TIFFTAG_BITSPERSAMPLE, 1);
    layout.samples = Field<std::uint16_t>(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
    layout.photometric = Field<std::uint16_t>(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
    layout.inkSet = Field<std::uint16_t>(tiff, TIFFTAG_INKSET, INKSET_CMYK);
    std::uint16_t extras = 0;
    const std::uint16_t* kinds = nullptr;
    if (TIFFGetFieldDefaulted(tiff, TIFFTAG_EXTRASAMPLES, &extras, &kinds) && extras > 0)
        layout.alpha = kinds[0] == EXTRASAMPLE_ASSOCALPHA   ? TiffAlpha::Multiplied
                       : kinds[0] == EXTRASAMPLE_UNASSALPHA ? TiffAlpha::Straight
                                                            : TiffAlpha::None;
    const bool contiguous =
        Field<std::uint16_t>(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) == PLANARCONFIG_CONTIG;
    const bool whole = Field<std::uint16_t>(tiff, TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_UINT) == SAMPLEFORMAT_UINT;
    layout.direct = contiguous && whole && layout.Understood();
    if (layout.photometric == PHOTOMETRIC_PALETTE)
        layout.direct = layout.direct && TIFFGetField(tiff, TIFFTAG_COLORMAP, &layout.red, &layout.green, &layout.blue);
    return layout;
}

// True when the bytes of the file can hold so many pixels under its compression.
bool SizeIsPlausible(TIFF* tiff, const TiffLayout& layout, std::uint64_t fileSize) {
    const std::uint64_t bytes = (std::uint64_t{layout.width} * layout.bits * layout.samples + 7) / 8 * layout.height;
    switch (Field<std::uint16_t>(tiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE)) {
        case COMPRESSION_NONE:
            return bytes <= fileSize || layout.photometric == PHOTOMETRIC_YCBCR;
        case COMPRESSION_PACKBITS:
            return bytes / 64 <= fileSize;
        default:
            return bytes / 16384 <= fileSize;
    }
}

// The pixels that libtiff converts itself: bilevel, YCbCr, Lab, separate planes and others.
bool ReadConverted(TIFF* tiff, const TiffLayout& layout, PictureTarget& target) {
    std::uint8_t* out = target.Begin(layout.width, layout.height);
    if (!out) return false;
    // Asked for in the file's own orientation, nothing is turned, and all eight are treated in one place.
    const int orientation = Field<std::uint16_t>(tiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    if (!TIFFReadRGBAImageOriented(tiff, layout.width, layout.height, reinterpret_cast<std::uint32_t*>(out),
                                   orientation, 1))
        return false;
    for (std::size_t y = 0; y < layout.height; ++y) {
        std::uint8_t* row = out + y * layout.width * 4;
        RgbaToBgra(row, static_cast<int>(layout.width), row);
        Unpremultiply(row, static_cast<int>(layout.width));
    }
    return true;
}

// Calls place(x, y, width, height, bytes, bytes in a row) for every strip or tile; false when one is cut or damaged.
template <class Place>
bool ForEachBlock(TIFF* tiff, const TiffLayout& layout, const Place& place) {
    const std::size_t pixel = layout.PixelBytes();
    if (TIFFIsTiled(tiff)) {
        const auto tileWidth = Field<std::uint32_t>(tiff, TIFFTAG_TILEWIDTH, 0);
        const auto tileHeight = Field<std::uint32_t>(tiff, TIFFTAG_TILELENGTH, 0);
        const tmsize_t size = TIFFTileSize(tiff);
        if (tileWidth == 0 || tileHeight == 0 || size != static_cast<tmsize_t>(tileWidth * pixel * tileHeight))
            return false;
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size));
        for (std::uint32_t y = 0; y < layout.height; y += tileHeight)
            for (std::uint32_t x = 0; x < layout.width; x += tileWidth) {
                if (TIFFReadEncodedTile(tiff, TIFFComputeTile(tiff, x, y, 0, 0), bytes.data(), size) != size)
                    return false;
                place(x, y, std::min(tileWidth, layout.width - x), std::min(tileHeight, layout.height - y),
                      bytes.data(), tileWidth * pixel);
            }
        return true;
    }
    const std::uint32_t rows = std::min(layout.height, Field<std::uint32_t>(tiff, TIFFTAG_ROWSPERSTRIP, layout.height));
    const std::size_t stride = layout.width * pixel;
    if (rows == 0 || TIFFScanlineSize(tiff) != static_cast<tmsize_t>(stride)) return false;
    std::vector<std::uint8_t> bytes(stride * rows);
    for (std::uint32_t y = 0; y < layout.height; y += rows) {
        const std::uint32_t count = std::min(rows, layout.height - y);
        const auto size = static_cast<tmsize_t>(stride * count);
        if (TIFFReadEncodedStrip(tiff, TIFFComputeStrip(tiff, y, 0), bytes.data(), size) != size) return false;
        place(0, y, layout.width, count, bytes.data(), stride);
    }
    return true;
}

bool ReadDirect(TIFF* tiff, const TiffLayout& layout, bool deep, PictureTarget& target) {
    const std::size_t width = layout.width;
    if (layout.IsInk()) target.SetModel(PictureTarget::Model::Cmyk);
    if (layout.IsGrey()) target.SetModel(PictureTarget::Model::Gray);
    std::uint16_t* wide = deep ? target.BeginDeep(layout.width, layout.height) : nullptr;
    std::uint8_t* out = deep ? nullptr : target.Begin(layout.width, layout.height);
    if (!wide && !out) return false;
    return ForEachBlock(tiff, layout,
                        [&](std::uint32_t x, std::uint32_t y, std::uint32_t columns, std::uint32_t rows,
                            const std::uint8_t* bytes, std::size_t stride) {
                            for (std::uint32_t i = 0; i < rows; ++i) {
                                const std::size_t at = 4 * ((y + i) * width + x);
                                if (deep)
                                    ConvertTiffRowDeep(layout, bytes + i * stride, columns, wide + at);
                                else
                                    ConvertTiffRow(layout, bytes + i * stride, columns, out + at);
                            }
                        });
}

}  // namespace

bool ReadTiff(const std::uint8_t* data, std::size_t size, PictureTarget& target) {
    Source source{data, size};
    const File file = OpenTiff(source);
    if (!file) return ReadRaw(data, size, target);
    if (IsCameraRaw(file.get(), data, size) && ReadRaw(data, size, target)) return true;
    const TiffLayout layout = LayoutOf(file.get());
    if (!SizeIsPlausible(file.get(), layout, size)) return false;
    ReadTags(file.get(), target);
    std::uint32_t profileSize = 0;
    const void* profile = nullptr;
    const bool deep = layout.bits == 16 && !layout.IsInk() && !layout.IsPalette() &&
                      TIFFGetField(file.get(), TIFFTAG_ICCPROFILE, &profileSize, &profile);
    const bool read =
        layout.direct ? ReadDirect(file.get(), layout, deep, target) : ReadConverted(file.get(), layout, target);
    return read && target.Report(1);
}
