// SPDX-License-Identifier: GPL-3.0-or-later
#include <chrono>

#include "CodecFiles.h"
#include "CodecModule.h"
#include "PictureFolder.h"
#include "RecordingTarget.h"
#include "TestPictures.h"

using Codecs = PictureFolder;
using TestPictures::PixelAt;

TEST_F(Codecs, WebpExactWithAlphaAndLossy) {
    const Bitmap picture = TestPictures::Noise(41, 23, 8, false);
    Bitmap seen = picture;
    // Where nothing shows, the format may keep or drop the colour.
    std::uint8_t* p = seen.MutablePixels();
    for (std::size_t i = 3; i < seen.ByteCount(); i += 4)
        if (p[i] == 0) p[i] = 1;
    EXPECT_TRUE(Open(MakeWebp(seen, true)) == seen);
    EXPECT_EQ(files.GetImageInfo()->Format, L"WebP");
    const Bitmap face = TestPictures::Face(120, 90);
    EXPECT_LT(Mean(Open(MakeWebp(face, false)), face), 5);
}

TEST_F(Codecs, WebpFirstFrameOfAnAnimation) {
    EXPECT_TRUE(
        Open(MakeWebpAnimation(TestPictures::Plain(20, 10, 0xFFFF0000u), TestPictures::Plain(20, 10, 0xFF00FF00u))) ==
        TestPictures::Plain(20, 10, 0xFFFF0000u));
}

TEST_F(Codecs, HeicAndAvif) {
    const Bitmap face = TestPictures::Face(128, 96);
    for (const HeifKind kind : {HeifKind::Hevc, HeifKind::Av1}) {
        const Bytes bytes = MakeHeif(face, kind);
        ASSERT_FALSE(bytes.empty());
        EXPECT_LT(Mean(Open(bytes), face), 5);
        EXPECT_EQ(files.GetImageInfo()->Format, L"HEIF");
    }
}

TEST_F(Codecs, JpegXlExactWithAlphaAndAtSixteenBits) {
    const Bitmap picture = TestPictures::Noise(41, 23, 8, false);
    EXPECT_TRUE(Open(MakeJxl(picture, 8)) == picture);
    EXPECT_TRUE(Open(MakeJxl(picture, 16)) == picture);
    EXPECT_EQ(files.GetImageInfo()->Format, L"JPEG XL");
}

TEST_F(Codecs, TiffOfEveryKind) {
    const Bitmap picture = TestPictures::Noise(41, 23, 8);
    const Bitmap grey = TestPictures::Ramp(64, 9);
    for (const TiffPacking packing : {TiffPacking::None, TiffPacking::Lzw, TiffPacking::Deflate, TiffPacking::PackBits})
        for (const bool tiled : {false, true}) {
            for (const int bits : {8, 16}) {
                EXPECT_TRUE(Open(MakeTiff(picture, TiffKind::Rgb, bits, packing, tiled)) == picture) << bits << tiled;
                EXPECT_TRUE(Open(MakeTiff(grey, TiffKind::Grey, bits, packing, tiled)) == grey) << bits << tiled;
                EXPECT_TRUE(Open(MakeTiff(grey, TiffKind::WhiteIsZero, bits, packing, tiled)) == grey) << bits << tiled;
            }
            EXPECT_TRUE(Open(MakeTiff(grey, TiffKind::Palette, 8, packing, tiled)) == grey) << tiled;
        }
    const Bitmap alpha = TestPictures::Noise(41, 23, 8, false);
    EXPECT_TRUE(Open(MakeTiff(alpha, TiffKind::Rgba, 8, TiffPacking::None, false)) == alpha);
    EXPECT_TRUE(Open(MakeTiff(alpha, TiffKind::Rgba, 16, TiffPacking::None, false)) == alpha);
    EXPECT_EQ(files.GetImageInfo()->Format, L"TIFF");
}

TEST_F(Codecs, TiffInInkAndInTwoLevels) {
    const Bitmap face = TestPictures::Face(60, 50);
    EXPECT_LE(Largest(Open(MakeTiff(face, TiffKind::Ink, 8, TiffPacking::None, false)), face), 2);
    const Bitmap stripes = TestPictures::Checker(40, 20, 4, 0xFF000000u, 0xFFFFFFFFu);
    EXPECT_TRUE(Open(MakeTiff(stripes, TiffKind::Bilevel, 1, TiffPacking::None, false)) == stripes);
}

TEST_F(Codecs, CameraRawFromADngWithAFlatMosaic) {
    const Bitmap picture = Open(MakeDng(96, 64));
    ASSERT_FALSE(picture.IsNull());
    EXPECT_GE(picture.Width(), 80);
    EXPECT_GE(picture.Height(), 50);
    // A sensor lit evenly gives one colour everywhere but at the rim.
    const std::uint32_t middle = PixelAt(picture, picture.Width() / 2, picture.Height() / 2);
    EXPECT_EQ(PixelAt(picture, 20, 20), middle);
    EXPECT_EQ(middle >> 24, 255u);
}

TEST_F(Codecs, JbigOfTwoLevels) {
    const Bitmap stripes = TestPictures::Checker(48, 24, 4, 0xFF000000u, 0xFFFFFFFFu);
    const Bytes bytes = MakeJbig(stripes);
    EXPECT_TRUE(Open(bytes) == stripes);
    EXPECT_EQ(files.GetImageInfo()->Format, L"JBIG");
}

TEST_F(Codecs, JbigThatDeclaresFourThousandMillionPixelsInItsHeaderIsRefusedAtOnce) {
    const Bytes bytes = {0, 0,    1, 0,    0,    0, 0xF7, 0x11, 0,    1, 0,    0x80, 0,
                         0, 0x4F, 0, 0x0B, 0xFF, 2, 0x25, 2,    0xFF, 2, 0xFF, 3};
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(Open(bytes).IsNull());
    // Decoding it takes several seconds on any machine, and many times that under a sanitizer.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
}

TEST_F(Codecs, JbigOfManyPixelsInAFewBytesIsRefusedBeforeItIsDecoded) {
    const Bytes bytes = MakeJbig(TestPictures::Plain(6000, 6000, 0xFFFFFFFFu));
    ASSERT_LT(bytes.size(), 300u);
    RecordingTarget target;
    EXPECT_FALSE(ReadByModule(PictureFormat::Jbig, bytes.data(), bytes.size(), target));
    EXPECT_EQ(target.most, 0);
}

TEST_F(Codecs, JngAndMng) {
    const Bitmap face = TestPictures::Face(64, 48);
    EXPECT_LT(Mean(Open(MakeByMagick(face, "JNG")), face), 6);
    EXPECT_EQ(files.GetImageInfo()->Format, L"JNG");
    EXPECT_TRUE(Open(MakeByMagick(face, "MNG")) == face);
    EXPECT_EQ(files.GetImageInfo()->Format, L"MNG");
}

TEST_F(Codecs, Jpeg2000FilesAndStreams) {
    const Bytes file = MakeJpeg2000(TestPictures::Face(64, 48), false),
                stream = MakeJpeg2000(TestPictures::Face(64, 48), true);
    if (file.empty()) GTEST_SKIP() << "built without OpenJPEG";
    for (const Bytes& bytes : {file, stream}) {
        EXPECT_TRUE(Open(bytes) == TestPictures::Face(64, 48));
        EXPECT_TRUE(Open(Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(bytes.size() / 2))).IsNull());
    }
}

TEST_F(Codecs, FilesCutInTheirPixelsAreRefused) {
    const Bitmap face = TestPictures::Face(128, 96);
    const std::pair<const char*, Bytes> whole[] = {
        {"webp", MakeWebp(face, false)},
        {"webp exact", MakeWebp(face, true)},
        {"heic", MakeHeif(face, HeifKind::Hevc)},
        {"avif", MakeHeif(face, HeifKind::Av1)},
        {"jxl", MakeJxl(face, 8)},
        {"tiff", MakeTiff(face, TiffKind::Rgb, 8, TiffPacking::None, false)},
        {"tiff lzw", MakeTiff(face, TiffKind::Rgb, 8, TiffPacking::Lzw, false)},
        {"dng", MakeDng(96, 64)}};
    for (const auto& [name, bytes] : whole) {
        ASSERT_FALSE(OpenMemory(bytes).IsNull()) << name;
        for (const double part : {0.1, 0.3, 0.5, 0.7, 0.9}) {
            const auto length = static_cast<std::ptrdiff_t>(static_cast<double>(bytes.size()) * part);
            EXPECT_TRUE(OpenMemory(Bytes(bytes.begin(), bytes.begin() + length)).IsNull())
                << name << " cut at " << part;
        }
    }
}
