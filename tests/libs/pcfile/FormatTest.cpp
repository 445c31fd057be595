// SPDX-License-Identifier: GPL-3.0-or-later
#include "HandMade.h"
#include "PictureFolder.h"
#include "TestPictures.h"

using Formats = PictureFolder;
using TestPictures::PixelAt;

namespace {

// A picture of two by two blocks: red, green, blue and a given fourth colour.
Bitmap FourBlocks(int side, std::uint32_t fourth = 0xFFFFFFFFu) {
    Bitmap bitmap(2 * side, 2 * side);
    auto* words = reinterpret_cast<std::uint32_t*>(bitmap.MutablePixels());
    const std::uint32_t colours[4] = {0xFFFF0000u, 0xFF00FF00u, 0xFF0000FFu, fourth};
    for (int y = 0; y < 2 * side; ++y)
        for (int x = 0; x < 2 * side; ++x) *words++ = colours[y / side * 2 + x / side];
    return bitmap;
}

// Grey of two levels in stripes, so that it survives formats of one bit.
Bitmap Stripes(int width, int height) {
    return TestPictures::Checker(width, height, 4, 0xFF000000u, 0xFFFFFFFFu);
}

}  // namespace

TEST_F(Formats, WhatQtReadsArrivesExactly) {
    const Bitmap picture = TestPictures::Noise(33, 21, 4);
    for (const char* format : {"bmp", "png", "ppm"}) {
        const Bytes bytes = MakeByQt(picture, format);
        ASSERT_FALSE(bytes.empty()) << format;
        EXPECT_TRUE(Open(bytes) == picture) << format;
    }
}

TEST_F(Formats, PngOfEveryKind) {
    const Bitmap picture = TestPictures::Noise(33, 21, 4, false);
    EXPECT_TRUE(Open(MakePng(picture, 8, 6)) == picture);
    EXPECT_TRUE(Open(MakePng(picture, 16, 6)) == picture);
    const Bitmap opaque = TestPictures::Noise(33, 21, 4);
    EXPECT_TRUE(Open(MakePng(opaque, 8, 2)) == opaque);
    EXPECT_TRUE(Open(MakePng(opaque, 16, 2)) == opaque);
    const Bitmap grey = TestPictures::Ramp(64, 5);
    EXPECT_TRUE(Open(MakePng(grey, 8, 0)) == grey);
    EXPECT_TRUE(Open(MakePng(grey, 16, 0)) == grey);
    EXPECT_TRUE(Open(MakePng(grey, 8, 4)) == grey);
}

TEST_F(Formats, PngWithAPaletteAndATransparentColour) {
    EXPECT_EQ(PixelAt(Open(HandMade::PalettePng()), 0, 0), 0xFF112233u);
    EXPECT_EQ(PixelAt(Open(HandMade::PalettePng()), 1, 0), 0x80445566u);
}

TEST_F(Formats, JpegInColourGreyProgressiveAndInk) {
    const Bitmap picture = TestPictures::Face(120, 90);
    EXPECT_LT(Mean(Open(MakeJpeg(picture)), picture), 2);
    EXPECT_LT(Mean(Open(MakeJpeg(picture, 95, JpegKind::Progressive)), picture), 2);
    const Bitmap grey = TestPictures::Ramp(128, 16);
    EXPECT_LE(Largest(Open(MakeJpeg(grey, 98, JpegKind::Grey)), grey), 3);
    EXPECT_LT(Mean(Open(MakeJpeg(picture, 95, JpegKind::Cmyk)), picture), 3);
    EXPECT_LT(Mean(Open(MakeJpeg(picture, 95, JpegKind::AdobeCmyk)), picture), 3);
}

TEST_F(Formats, GifFirstFrameOnItsCanvas) {
    const Bitmap picture = Open(HandMade::TwoFrameGif());
    ASSERT_EQ(picture.Width(), 4);
    ASSERT_EQ(picture.Height(), 2);
    EXPECT_EQ(PixelAt(picture, 1, 0), 0xFFFF0000u);
    EXPECT_EQ(files.GetImageInfo()->Format, L"GIF");
    const Bytes whole = HandMade::TwoFrameGif();
    for (std::size_t length = 1; length < HandMade::GifFirstFrameEnd; ++length)
        EXPECT_TRUE(OpenMemory(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length))).IsNull())
            << length;
}

TEST_F(Formats, Wbmp) {
    // 10 × 3: white, black, white rows.
    const Bytes bytes = {0, 0, 10, 3, 0xFF, 0xC0, 0x00, 0x00, 0xFF, 0xC0};
    const Bitmap picture = Open(bytes);
    ASSERT_EQ(picture.Width(), 10);
    ASSERT_EQ(picture.Height(), 3);
    EXPECT_EQ(PixelAt(picture, 9, 0), 0xFFFFFFFFu);
    EXPECT_EQ(PixelAt(picture, 5, 1), 0xFF000000u);
    EXPECT_TRUE(Open(Bytes(bytes.begin(), bytes.end() - 1)).IsNull());
}

TEST_F(Formats, Ico) {
    const Bytes png = MakePng(FourBlocks(8));
    Bytes ico = {0, 0, 1, 0, 1, 0, 16, 16, 0, 0, 1, 0, 32, 0};
    HandMade::Put32(ico, static_cast<std::uint32_t>(png.size()));
    HandMade::Put32(ico, 22);
    ico.insert(ico.end(), png.begin(), png.end());
    EXPECT_TRUE(Open(ico) == FourBlocks(8));
}

TEST_F(Formats, PcxWithRuns) {
    EXPECT_TRUE(Open(HandMade::Pcx(FourBlocks(8))) == FourBlocks(8));
    EXPECT_EQ(files.GetImageInfo()->Format, L"PCX");
}

TEST_F(Formats, SunRaster) {
    EXPECT_TRUE(Open(HandMade::Ras(FourBlocks(7))) == FourBlocks(7));
}

TEST_F(Formats, TgaPlainAndInRuns) {
    for (const bool runs : {false, true})
        for (const int bits : {24, 32})
            EXPECT_TRUE(Open(HandMade::Tga(FourBlocks(8), bits, runs)) == FourBlocks(8)) << bits;
}

TEST_F(Formats, PnmOfEveryKind) {
    const Bitmap picture = FourBlocks(4);
    for (const int kind : {3, 6}) EXPECT_TRUE(Open(HandMade::Pnm(picture, kind, 255)) == picture) << kind;
    EXPECT_TRUE(Open(HandMade::Pnm(picture, 6, 65535)) == picture);
    const Bitmap grey = TestPictures::Ramp(64, 3);
    for (const int kind : {2, 5}) EXPECT_TRUE(Open(HandMade::Pnm(grey, kind, 255)) == grey) << kind;
    EXPECT_TRUE(Open(HandMade::Pnm(grey, 5, 65535)) == grey);
    const Bitmap stripes = Stripes(24, 9);
    for (const int kind : {1, 4}) EXPECT_TRUE(Open(HandMade::Pnm(stripes, kind, 1)) == stripes) << kind;
}

TEST_F(Formats, PgxInBothOrdersSignedAndDeep) {
    const Bitmap grey = TestPictures::Ramp(64, 3);
    for (const bool big : {true, false})
        for (const bool sign : {true, false})
            for (const int bits : {8, 16})
                EXPECT_TRUE(Open(HandMade::Pgx(grey, bits, sign, big)) == grey) << bits << sign << big;
    Bytes cut = HandMade::Pgx(grey, 8, false, true);
    cut.pop_back();
    EXPECT_TRUE(Open(cut).IsNull());
}

TEST_F(Formats, Wmf) {
    // A placeable file of 100 × 50 units that fills itself with a blue rectangle.
    const Bitmap picture = Open(HandMade::Wmf());
    ASSERT_FALSE(picture.IsNull());
    EXPECT_EQ(PixelAt(picture, picture.Width() / 2, picture.Height() / 2), 0xFF0000FFu);
    EXPECT_NEAR(double(picture.Width()) / picture.Height(), 2.0, 0.1);
}

TEST_F(Formats, FilesOfHandMadeFormatsCutInTheirPixelsAreRefused) {
    const Bitmap picture = TestPictures::Noise(40, 30, 3);
    const std::pair<const char*, Bytes> whole[] = {{"ras", HandMade::Ras(picture)},
                                                   {"tga", HandMade::Tga(picture, 24, false)},
                                                   {"ppm", HandMade::Pnm(picture, 6, 255)},
                                                   {"pgx", HandMade::Pgx(picture, 8, false, true)},
                                                   {"pcx", HandMade::Pcx(picture)}};
    for (const auto& [name, bytes] : whole) {
        ASSERT_FALSE(OpenMemory(bytes).IsNull()) << name;
        for (std::size_t length = 1; length + 8 < bytes.size(); length += 1 + length / 20)
            EXPECT_TRUE(OpenMemory(Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length))).IsNull())
                << name << " cut at " << length << " of " << bytes.size();
    }
}
