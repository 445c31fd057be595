// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>
#include <cstring>
#include <random>

#include "CodecModule.h"
#include "PixelRow.h"
#include "RecordingTarget.h"
#include "TiffRaw.h"

using TiffSamples = PictureFolder;

namespace {

std::uint32_t Grey(std::uint32_t level) {
    return 0xFF000000u | level * 0x010101u;
}

// A row of grey samples.
RawTiff GreyFile(int bits, const std::vector<std::uint64_t>& values, RawTiff::Format format = RawTiff::Unsigned) {
    RawTiff file;
    file.width = static_cast<std::uint32_t>(values.size());
    file.bits = static_cast<std::uint32_t>(bits);
    file.format = format;
    file.blocks = {TiffRow(bits, values)};
    return file;
}

}  // namespace

TEST_F(TiffSamples, WholeNumbersOfEverySizeRoundToTheNearestLevel) {
    for (const int bits : {1, 2, 3, 4, 5, 6, 7, 8, 10, 12, 14, 16, 24, 32}) {
        const std::uint64_t most = (std::uint64_t{1} << bits) - 1;
        std::vector<std::uint64_t> values = {0, most, most / 2, most / 3, most - most / 7};
        for (std::uint64_t i = 0; i < 300 && i <= most; ++i)
            values.push_back(i * (most / std::min<std::uint64_t>(most, 299)));
        Pixels black, white;
        for (std::uint64_t& value : values) {
            value = std::min(value, most);
            const auto level =
                static_cast<std::uint32_t>(std::lround(static_cast<double>(value) / static_cast<double>(most) * 255));
            black.push_back(Grey(level));
            white.push_back(Grey(255 - level));
        }
        RawTiff file = GreyFile(bits, values);
        EXPECT_EQ(Row(Open(file.Write())), black) << bits;
        file.photometric = RawTiff::WhiteIsZero;
        EXPECT_EQ(Row(Open(file.Write())), white) << bits;
    }
}

TEST_F(TiffSamples, EveryLevelOfTwelveBitsInColour) {
    RawTiff file;
    file.bits = 12;
    file.samples = 3;
    file.photometric = RawTiff::Rgb;
    std::vector<std::uint64_t> values;
    Pixels expected;
    for (std::uint32_t i = 0; i < 4096; ++i) {
        const std::uint32_t rgb[3] = {i, 4095 - i, i * 7 % 4096};
        std::uint32_t pixel = 0xFF;
        for (const std::uint32_t value : rgb) {
            values.push_back(value);
            pixel = pixel << 8 | (value * 255 + 2047) / 4095;
        }
        expected.push_back(pixel);
    }
    file.width = 4096;
    file.blocks = {TiffRow(12, values)};
    EXPECT_EQ(Row(Open(file.Write())), expected);
}

TEST_F(TiffSamples, FloatingPointGoesFromBlackAtNoughtToWhiteAtOne) {
    RawTiff file = GreyFile(32, {0, 0, 0, 0, 0, 0, 0}, RawTiff::Float);
    file.blocks = {TiffFloats({0.0f, 1.0f, 0.5f, 0.2f, -3.0f, 7.5f, NAN})};
    const Pixels expected = {Grey(0), Grey(255), Grey(128), Grey(51), Grey(0), Grey(255), Grey(0)};
    EXPECT_EQ(Row(Open(file.Write())), expected);
    // The same in 16 and in 64 bits.
    RawTiff half = GreyFile(16, {0x0000, 0x3C00, 0x3800, 0x3266, 0xC200, 0x4780, 0x7E00}, RawTiff::Float);
    EXPECT_EQ(Row(Open(half.Write())), expected);
    std::vector<std::uint64_t> wide;
    for (const double value : {0.0, 1.0, 0.5, 0.2, -3.0, 7.5, static_cast<double>(NAN)}) {
        std::uint64_t bits;
        std::memcpy(&bits, &value, 8);
        wide.push_back(bits);
    }
    EXPECT_EQ(Row(Open(GreyFile(64, wide, RawTiff::Float).Write())), expected);
}

TEST_F(TiffSamples, SignedNumbersAreBlackAtTheirMostNegative) {
    EXPECT_EQ(Row(Open(GreyFile(32, {0x80000000, 0, 0x7FFFFFFF}, RawTiff::Signed).Write())),
              Pixels({Grey(0), Grey(128), Grey(255)}));
    EXPECT_EQ(Row(Open(GreyFile(8, {0x80, 0, 0x7F}, RawTiff::Signed).Write())),
              Pixels({Grey(0), Grey(128), Grey(255)}));
}

TEST_F(TiffSamples, ColourInThirtyTwoBitsSideBySideAndInPlanes) {
    RawTiff file;
    file.width = 2;
    file.samples = 3;
    file.photometric = RawTiff::Rgb;
    file.bits = 32;
    file.blocks = {TiffRow(32, {0xFFFFFFFF, 0x80000000, 0, 0, 0x33333333, 0xFFFFFFFF})};
    const Pixels expected = {0xFFFF8000, 0xFF0033FF};
    EXPECT_EQ(Row(Open(file.Write())), expected);
    file.planes = true;
    file.blocks = {TiffRow(32, {0xFFFFFFFF, 0}), TiffRow(32, {0x80000000, 0x33333333}), TiffRow(32, {0, 0xFFFFFFFF})};
    EXPECT_EQ(Row(Open(file.Write())), expected);
    file.format = RawTiff::Float;
    file.blocks = {TiffFloats({1, 0}), TiffFloats({0.5f, 0.2f}), TiffFloats({0, 1})};
    EXPECT_EQ(Row(Open(file.Write())), expected);
}

TEST_F(TiffSamples, InkInPlanesOfEightAndSixteenBits) {
    for (const int bits : {8, 16}) {
        RawTiff file;
        file.width = 3;
        file.height = 2;
        file.samples = 4;
        file.photometric = RawTiff::Ink;
        file.bits = static_cast<std::uint32_t>(bits);
        file.planes = true;
        const std::vector<std::vector<std::uint64_t>> ink = {
            {0, 255, 0, 0, 0, 51}, {0, 0, 255, 0, 0, 0}, {0, 0, 0, 255, 0, 0}, {0, 0, 0, 0, 255, 127}};
        for (auto plane : ink) {
            for (std::uint64_t& value : plane) value *= bits == 16 ? 257 : 1;
            file.blocks.push_back(TiffRow(bits, plane));
        }
        EXPECT_EQ(Row(Open(file.Write())),
                  Pixels({0xFFFFFFFF, 0xFF00FFFF, 0xFFFF00FF, 0xFFFFFF00, 0xFF000000, 0xFF668080}))
            << bits;
    }
}

TEST_F(TiffSamples, TwoLevelsAndPalettesInTiles) {
    std::mt19937 random(9);
    for (const int bits : {1, 4, 8}) {
        RawTiff file;
        file.width = 40;
        file.height = 21;
        file.bits = static_cast<std::uint32_t>(bits);
        file.tile = 16;
        if (bits > 1) {
            file.photometric = RawTiff::Palette;
            for (const std::uint32_t first : {0u, 0x1000u, 0x2000u})
                for (std::uint32_t i = 0; i < 1u << bits; ++i) file.colours.push_back((first + i * 4099) & 0xFFFF);
        }
        std::vector<std::uint64_t> values(48 * 32);
        for (std::uint64_t& value : values) value = random() % (1u << bits);
        for (std::size_t top = 0; top < 32; top += 16)
            for (std::size_t left = 0; left < 48; left += 16) {
                Bytes tile;
                for (std::size_t y = 0; y < 16; ++y) {
                    const auto first = values.begin() + std::ptrdiff_t((top + y) * 48 + left);
                    const Bytes row = TiffRow(bits, {first, first + 16});
                    tile.insert(tile.end(), row.begin(), row.end());
                }
                file.blocks.push_back(tile);
            }
        Pixels expected;
        for (std::size_t y = 0; y < 21; ++y)
            for (std::size_t x = 0; x < 40; ++x) {
                const std::size_t value = values[y * 48 + x], entries = std::size_t{1} << bits;
                std::uint32_t pixel = bits == 1 ? Grey(value ? 255 : 0) : 0xFF;
                if (bits > 1)
                    for (std::size_t c = 0; c < 3; ++c)
                        pixel = pixel << 8 | (file.colours[c * entries + value] * 255 + 32767) / 65535;
                expected.push_back(pixel);
            }
        EXPECT_EQ(Row(Open(file.Write())), expected) << bits;
    }
}

TEST_F(TiffSamples, MissingBytesAreRefusedWithoutTakingMemory) {
    for (const std::uint32_t tile : {0u, 16u, 60000u}) {
        RawTiff file;
        file.width = file.height = tile == 60000 ? 3 : 20000;
        file.bits = 32;
        file.tile = tile;
        file.blocks = {Bytes(64)};
        const Bytes bytes = file.Write();
        RecordingTarget target;
        EXPECT_FALSE(ReadByModule(PictureFormat::Tiff, bytes.data(), bytes.size(), target));
        EXPECT_EQ(target.most, 0) << tile;
    }
    RawTiff planes;
    planes.width = 4;
    planes.samples = 4;
    planes.photometric = RawTiff::Ink;
    planes.planes = true;
    planes.blocks = {Bytes(4), Bytes(4), Bytes(4)};
    EXPECT_TRUE(Open(planes.Write()).IsNull());
}
