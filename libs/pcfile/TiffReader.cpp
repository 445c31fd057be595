// SPDX-License-Identifier: GPL-3.0-or-later
#include <tiffio.h>

#include <algorithm>
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

bool FindSampleKind(TIFF* tiff, TiffLayout& layout) {
    switch (Field<std::uint16_t>(tiff, TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_UINT)) {
        case SAMPLEFORMAT_UINT:
        case SAMPLEFORMAT_VOID:
            layout.sample = layout.IsPalette() ? TiffSample::Index : TiffSample::Unsigned;
            return true;
        case SAMPLEFORMAT_INT:
            layout.sample = TiffSample::Signed;
            return !layout.IsPalette();
        case SAMPLEFORMAT_IEEEFP:
            layout.sample = TiffSample::Float;
            return !layout.IsPalette();
        default:
            return false;
    }
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
    layout.planes = layout.samples > 1 &&
                    Field<std::uint16_t>(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) == PLANARCONFIG_SEPARATE;
    layout.direct = FindSampleKind(tiff, layout) && layout.Understood();
    if (layout.photometric == PHOTOMETRIC_PALETTE)
        layout.direct = layout.direct && TIFFGetField(tiff, TIFFTAG_COLORMAP, &layout.red, &layout.green, &layout.blue);
    return layout;
}

// True when the bytes of the file can hold so many under its compression.
bool BytesArePlausible(TIFF* tiff, const TiffLayout& layout, std::uint64_t bytes, std::uint64_t fileSize) {
    switch (Field<std::uint16_t>(tiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE)) {
        case COMPRESSION_NONE:
            return bytes <= fileSize || layout.photometric == PHOTOMETRIC_YCBCR;
        case COMPRESSION_PACKBITS:
            return bytes / 64 <= fileSize;
        default:
            return bytes / 16384 <= fileSize;
    }
}

// The same for all pixels, and for those of one tile, which may be larger than the picture.
bool SizeIsPlausible(TIFF* tiff, const TiffLayout& layout, std::uint64_t fileSize) {
    const std::uint64_t bytes = (std::uint64_t{layout.width} * layout.bits * layout.samples + 7) / 8 * layout.height;
    return BytesArePlausible(tiff, layout, bytes, fileSize) &&
           (!TIFFIsTiled(tiff) || BytesArePlausible(tiff, layout, TIFFTileSize64(tiff), fileSize));
}

// The pixels that libtiff converts itself: YCbCr, Lab and others.
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

// A strip or tile: a part of the picture and its bytes, plane after plane when there are planes.
struct Block {
    std::uint32_t x = 0;
    std::uint32_t y = 0;
    std::uint32_t columns = 0;
    std::uint32_t rows = 0;
    std::size_t rowBytes = 0;
    std::size_t planeBytes = 0;
    std::vector<std::uint8_t> bytes;

    const std::uint8_t* Row(std::size_t row, std::size_t plane = 0) const {
        return bytes.data() + plane * planeBytes + row * rowBytes;
    }
};

std::uint16_t PlanesOf(const TiffLayout& layout) {
    return static_cast<std::uint16_t>(layout.planes ? layout.UsedSamples() : 1);
}

// True when the file has a strip or tile of this number. The library itself takes the bytes of an uncompressed one that
// is missing from the start of the file.
bool HasBlock(TIFF* tiff, std::uint32_t number) {
    return TIFFGetStrileByteCount(tiff, number) > 0;
}

// Calls place(block) for every tile; false when one is cut or damaged.
template <class Place>
bool ForEachTile(TIFF* tiff, const TiffLayout& layout, const Place& place) {
    const auto width = Field<std::uint32_t>(tiff, TIFFTAG_TILEWIDTH, 0);
    const auto height = Field<std::uint32_t>(tiff, TIFFTAG_TILELENGTH, 0);
    const tmsize_t size = TIFFTileSize(tiff);
    Block block;
    block.rowBytes = layout.RowBytes(width);
    block.planeBytes = block.rowBytes * height;
    if (size <= 0 || width == 0 || height == 0 || size != static_cast<tmsize_t>(block.planeBytes)) return false;
    block.bytes.resize(block.planeBytes * PlanesOf(layout));
    for (block.y = 0; block.y < layout.height; block.y += height)
        for (block.x = 0; block.x < layout.width; block.x += width) {
            for (std::uint16_t plane = 0; plane < PlanesOf(layout); ++plane) {
                const std::uint32_t tile = TIFFComputeTile(tiff, block.x, block.y, 0, plane);
                std::uint8_t* into = block.bytes.data() + plane * block.planeBytes;
                if (!HasBlock(tiff, tile) || TIFFReadEncodedTile(tiff, tile, into, size) != size) return false;
            }
            block.columns = std::min(width, layout.width - block.x);
            block.rows = std::min(height, layout.height - block.y);
            place(block);
        }
    return true;
}

// The same for strips.
template <class Place>
bool ForEachStrip(TIFF* tiff, const TiffLayout& layout, const Place& place) {
    const std::uint32_t rows = std::min(layout.height, Field<std::uint32_t>(tiff, TIFFTAG_ROWSPERSTRIP, layout.height));
    Block block;
    block.columns = layout.width;
    block.rowBytes = layout.RowBytes(layout.width);
    block.planeBytes = block.rowBytes * rows;
    if (rows == 0 || TIFFScanlineSize(tiff) != static_cast<tmsize_t>(block.rowBytes)) return false;
    block.bytes.resize(block.planeBytes * PlanesOf(layout));
    for (; block.y < layout.height; block.y += rows) {
        block.rows = std::min(rows, layout.height - block.y);
        const auto size = static_cast<tmsize_t>(block.rowBytes * block.rows);
        for (std::uint16_t plane = 0; plane < PlanesOf(layout); ++plane) {
            const std::uint32_t strip = TIFFComputeStrip(tiff, block.y, plane);
            std::uint8_t* into = block.bytes.data() + plane * block.planeBytes;
            if (!HasBlock(tiff, strip) || TIFFReadEncodedStrip(tiff, strip, into, size) != size) return false;
        }
        place(block);
    }
    return true;
}

// Gives the rows of blocks in a layout that Converts.
class Rows {
  public:
    explicit Rows(const TiffLayout& file) : m_file(file), m_layout(file.Converts() ? file : file.Unpacked()) {}

    const TiffLayout& Layout() const { return m_layout; }

    const std::uint8_t* Get(const Block& block, std::size_t row) {
        if (m_file.Converts()) return block.Row(row);
        const std::size_t samples = static_cast<std::size_t>(m_layout.samples), columns = block.columns;
        m_samples.resize(columns * samples);
        if (m_file.planes)
            for (std::size_t plane = 0; plane < samples; ++plane)
                UnpackTiff(m_file.sample, m_file.bits, block.Row(row, plane), columns, &m_samples[plane], samples);
        else
            UnpackTiff(m_file.sample, m_file.bits, block.Row(row), columns * samples, m_samples.data(), 1);
        return reinterpret_cast<const std::uint8_t*>(m_samples.data());
    }

  private:
    TiffLayout m_file, m_layout;
    std::vector<std::uint16_t> m_samples;
};

bool ReadDirect(TIFF* tiff, const TiffLayout& layout, bool deep, PictureTarget& target) {
    const std::size_t width = layout.width;
    if (layout.IsInk()) target.SetModel(PictureTarget::Model::Cmyk);
    if (layout.IsGrey()) target.SetModel(PictureTarget::Model::Gray);
    std::uint16_t* wide = deep ? target.BeginDeep(layout.width, layout.height) : nullptr;
    std::uint8_t* out = deep ? nullptr : target.Begin(layout.width, layout.height);
    if (!wide && !out) return false;
    Rows rows(layout);
    const auto place = [&](const Block& block) {
        for (std::size_t i = 0; i < block.rows; ++i) {
            const std::uint8_t* in = rows.Get(block, i);
            const std::size_t at = 4 * ((block.y + i) * width + block.x);
            if (deep)
                ConvertTiffRowDeep(rows.Layout(), in, block.columns, wide + at);
            else
                ConvertTiffRow(rows.Layout(), in, block.columns, out + at);
        }
    };
    return TIFFIsTiled(tiff) ? ForEachTile(tiff, layout, place) : ForEachStrip(tiff, layout, place);
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
    const bool deep = layout.direct && layout.bits > 8 && !layout.IsInk() && !layout.IsPalette() &&
                      TIFFGetField(file.get(), TIFFTAG_ICCPROFILE, &profileSize, &profile);
    const bool read =
        layout.direct ? ReadDirect(file.get(), layout, deep, target) : ReadConverted(file.get(), layout, target);
    return read && target.Report(1);
}
