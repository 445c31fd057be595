// SPDX-License-Identifier: GPL-3.0-or-later
#include <lcms2.h>

#include <cmath>

#include "CodecFiles.h"
#include "PictureFolder.h"
#include "TestPictures.h"

using Colours = PictureFolder;
using TestPictures::PixelAt;

namespace {

// What one colour of the profile is in sRGB, by the colour library alone.
std::uint32_t Expected(const Bytes& profile, std::uint32_t argb) {
    cmsHPROFILE from = cmsOpenProfileFromMem(profile.data(), static_cast<cmsUInt32Number>(profile.size()));
    cmsHPROFILE to = cmsCreate_sRGBProfile();
    cmsHTRANSFORM transform = cmsCreateTransform(from, TYPE_BGRA_8, to, TYPE_BGRA_8, INTENT_RELATIVE_COLORIMETRIC,
                                                 cmsFLAGS_NOOPTIMIZE | cmsFLAGS_COPY_ALPHA);
    std::uint32_t out = 0;
    cmsDoTransform(transform, &argb, &out, 1);
    cmsDeleteTransform(transform);
    cmsCloseProfile(from);
    cmsCloseProfile(to);
    return out;
}

void ExpectNear(std::uint32_t a, std::uint32_t b, int tolerance) {
    for (int shift = 0; shift < 32; shift += 8)
        EXPECT_NEAR(static_cast<int>(a >> shift & 255), static_cast<int>(b >> shift & 255), tolerance)
            << std::hex << a << " " << b;
}

}  // namespace

TEST_F(Colours, AWideProfileIsConvertedInJpegPngTiffAndJpegXl) {
    const Bytes profile = MakeRgbProfile(2.2);
    for (const std::uint32_t colour : {0xFF40C020u, 0xFFB04030u, 0xFF808080u}) {
        const Bitmap plain = TestPictures::Plain(32, 32, colour);
        const std::uint32_t right = Expected(profile, colour);
        ExpectNear(PixelAt(Open(MakePng(plain, 8, 2, profile)), 5, 5), right, 1);
        ExpectNear(PixelAt(Open(MakePng(plain, 16, 2, profile)), 5, 5), right, 1);
        ExpectNear(PixelAt(Open(MakeJpeg(plain, 100, JpegKind::Colour, profile)), 5, 5), right, 3);
        ExpectNear(PixelAt(Open(MakeTiff(plain, TiffKind::Rgb, 8, TiffPacking::None, false, 1, profile)), 5, 5), right,
                   1);
        ExpectNear(PixelAt(Open(MakeTiff(plain, TiffKind::Rgb, 16, TiffPacking::None, false, 1, profile)), 5, 5), right,
                   1);
        ExpectNear(PixelAt(Open(MakeJxl(plain, 8, profile)), 5, 5), right, 1);
    }
}

TEST_F(Colours, AnSrgbProfileLeavesEveryByte) {
    const Bitmap picture = TestPictures::Noise(64, 64, 4);
    EXPECT_TRUE(Open(MakePng(picture, 8, 2, MakeSrgbProfile())) == picture);
    // The one that saved files carry too.
    const Bitmap face = TestPictures::Face(200, 160);
    ASSERT_NE(files.OnSaveQuick(Wide("a.jpg").c_str(), face, 1, 95), 0);
    const Bitmap once = OpenPath("a.jpg");
    EXPECT_TRUE(once == Open(Get("a.jpg")));
    EXPECT_LT(Mean(once, face), 1.0);
}

TEST_F(Colours, ALinearSixteenBitPictureKeepsItsDarkSteps) {
    // Linear light: dark steps are less than a level of 8 bits apart and would fall together if narrowed first.
    Bitmap ramp(64, 1);
    const Bytes profile = MakeRgbProfile(1.0);
    Bytes png = MakePng(TestPictures::Ramp(256, 1), 16, 2, profile);
    const Bitmap picture = Open(png);
    ASSERT_FALSE(picture.IsNull());
    // Level 1 of 255 in linear light is 12.7 in sRGB.
    ExpectNear(PixelAt(picture, 1, 0), 0xFF0D0D0Du, 1);
    for (int x = 1; x < 256; ++x) EXPECT_GE(PixelAt(picture, x, 0) & 255, PixelAt(picture, x - 1, 0) & 255);
}

TEST_F(Colours, AGreyProfileIsConvertedAndStaysGrey) {
    const Bitmap ramp = TestPictures::Ramp(256, 8);
    for (const Bytes& bytes : {MakePng(ramp, 8, 0, MakeGreyProfile(1.0)), MakePng(ramp, 16, 0, MakeGreyProfile(1.0)),
                               MakeJpeg(ramp, 100, JpegKind::Grey, MakeGreyProfile(1.0))}) {
        const Bitmap picture = Open(bytes);
        ASSERT_FALSE(picture.IsNull());
        const std::uint32_t middle = PixelAt(picture, 55, 4);
        EXPECT_NEAR(static_cast<int>(middle & 255), 128, 4);  // 0.2157 in linear light
        EXPECT_EQ(middle & 255, middle >> 8 & 255);
        EXPECT_EQ(middle & 255, middle >> 16 & 255);
    }
}

TEST_F(Colours, AnInkProfileDecidesAboutInk) {
    // Its table says that colour does not matter, only the amount of ink.
    const Bitmap plain = TestPictures::Plain(32, 32, 0xFF00FF00u);  // full cyan and yellow: half of all ink
    const Bitmap with = Open(MakeJpeg(plain, 98, JpegKind::AdobeCmyk, MakeInkProfile()));
    ASSERT_FALSE(with.IsNull());
    const std::uint32_t colour = PixelAt(with, 9, 9);
    EXPECT_NEAR(static_cast<int>(colour & 255), static_cast<int>(colour >> 16 & 255), 4);
    EXPECT_EQ(colour >> 24, 255u);
    ExpectNear(PixelAt(Open(MakeJpeg(plain, 98, JpegKind::AdobeCmyk)), 9, 9), 0xFF00FF00u, 3);
}

TEST_F(Colours, ADamagedProfileOrOneOfAnotherModelIsPassedOver) {
    const Bitmap picture = TestPictures::Face(40, 40);
    const Bitmap plain = Open(MakeJpeg(picture, 95));
    Bytes broken = MakeRgbProfile(1.0);
    std::fill(broken.begin() + 128, broken.end(), std::uint8_t{0xA5});
    EXPECT_TRUE(Open(MakeJpeg(picture, 95, JpegKind::Colour, broken)) == plain);
    EXPECT_TRUE(Open(MakeJpeg(picture, 95, JpegKind::Colour, MakeInkProfile())) == plain);
}

TEST_F(Colours, AlphaIsNotTouchedByAProfile) {
    const Bitmap picture = TestPictures::Noise(32, 32, 6, false);
    const Bitmap read = Open(MakePng(picture, 8, 6, MakeRgbProfile(1.8)));
    ASSERT_FALSE(read.IsNull());
    for (int y = 0; y < 32; ++y)
        for (int x = 0; x < 32; ++x) EXPECT_EQ(PixelAt(read, x, y) >> 24, PixelAt(picture, x, y) >> 24);
}
