// SPDX-License-Identifier: GPL-3.0-or-later
#include <jpeglib.h>
#include <png.h>

#include <QtGui/QImage>

#include "Parallel.h"
#include "PictureFolder.h"
#include "TestPictures.h"

using Saving = PictureFolder;

namespace {

struct JpegFacts {
    int horizontal, vertical, restart, components;
    bool baseline, srgb;
};

JpegFacts Examine(const Bytes& bytes) {
    jpeg_decompress_struct state = {};
    jpeg_error_mgr errors = {};
    state.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&state);
    jpeg_mem_src(&state, bytes.data(), bytes.size());
    jpeg_save_markers(&state, JPEG_APP0 + 2, 0xFFFF);
    jpeg_read_header(&state, TRUE);
    JOCTET* profile = nullptr;
    unsigned length = 0;
    const bool srgb = jpeg_read_icc_profile(&state, &profile, &length) && length > 128;
    std::free(profile);
    const JpegFacts facts{state.comp_info[0].h_samp_factor,
                          state.comp_info[0].v_samp_factor,
                          static_cast<int>(state.restart_interval),
                          state.num_components,
                          !state.progressive_mode && !state.arith_code,
                          srgb};
    jpeg_destroy_decompress(&state);
    return facts;
}

// Decodes with another decoder than the library's, which must find no fault.
QImage ByQt(const Bytes& bytes, const char* format) {
    return QImage::fromData(bytes.data(), static_cast<int>(bytes.size()), format)
        .convertToFormat(QImage::Format_ARGB32);
}

bool SamePixels(const QImage& image, const Bitmap& bitmap) {
    if (image.width() != bitmap.Width() || image.height() != bitmap.Height()) return false;
    for (int y = 0; y < bitmap.Height(); ++y)
        if (std::memcmp(image.constScanLine(y), bitmap.Row(y), bitmap.Stride()) != 0) return false;
    return true;
}

}  // namespace

TEST_F(Saving, PngGivesBackEveryByteOfOpaqueAndTranslucentPictures) {
    for (const bool opaque : {true, false})
        for (const auto& [width, height] : {std::pair{1, 1}, {1, 900}, {900, 1}, {701, 503}, {1300, 1200}}) {
            const Bitmap picture = TestPictures::Noise(width, height, 9, opaque);
            ASSERT_NE(files.OnSaveQuick(Wide("a.png").c_str(), picture, 2, 90), 0);
            EXPECT_TRUE(OpenPath("a.png") == picture);
            EXPECT_TRUE(SamePixels(ByQt(Get("a.png"), "png"), picture)) << width << "x" << height;
        }
}

TEST_F(Saving, PngHoldsAlphaOnlyWhenThePictureDoesAndSaysSrgb) {
    Bitmap picture = TestPictures::Ramp(50, 20);
    files.OnSaveQuick(Wide("a.png").c_str(), picture, 2, 90);
    Bytes bytes = Get("a.png");
    EXPECT_EQ(bytes[25], 2);
    EXPECT_EQ(std::string(bytes.begin() + 37, bytes.begin() + 41), "sRGB");
    picture.MutablePixels()[3] = 254;
    files.OnSaveQuick(Wide("a.png").c_str(), picture, 2, 90);
    EXPECT_EQ(Get("a.png")[25], 6);
}

TEST_F(Saving, PngOfDrawingsIsNoLargerThanLibpngAtLevelOne) {
    for (const Bitmap& picture :
         {TestPictures::Checker(1200, 900, 7, 0xFF203040u, 0xFFF0E0D0u), TestPictures::Face(900, 900),
          TestPictures::Ramp(1000, 700), TestPictures::Noise(500, 500, 1)}) {
        files.OnSaveQuick(Wide("a.png").c_str(), picture, 2, 90);
        const Bytes reference = MakePng(picture, 8, PNG_COLOR_TYPE_RGB, {}, 1);
        EXPECT_LE(Get("a.png").size(), reference.size() + reference.size() / 100 + 200);
    }
}

TEST_F(Saving, BmpGivesBackEveryByteWith24Or32Bits) {
    for (const bool opaque : {true, false})
        for (const int width : {1, 2, 3, 4, 5, 333}) {
            const Bitmap picture = TestPictures::Noise(width, 41, width, opaque);
            ASSERT_NE(files.OnSaveQuick(Wide("a.bmp").c_str(), picture, 3, 90), 0);
            const Bytes bytes = Get("a.bmp");
            EXPECT_EQ(bytes[28], opaque ? 24 : 32);
            EXPECT_EQ(std::string(bytes.begin() + 70, bytes.begin() + 74), "BGRs");
            EXPECT_TRUE(OpenPath("a.bmp") == picture) << width;
            EXPECT_TRUE(SamePixels(ByQt(bytes, "bmp"), picture)) << width;
        }
}

TEST_F(Saving, JpegHasFullChromaFromNinetyOnAndHalfBelow) {
    const Bitmap picture = TestPictures::Face(400, 300);
    for (const auto& [quality, factor] : {std::pair{100, 1}, {90, 1}, {89, 2}, {1, 2}}) {
        ASSERT_NE(files.OnSaveQuick(Wide("a.jpg").c_str(), picture, 1, quality), 0);
        const JpegFacts facts = Examine(Get("a.jpg"));
        EXPECT_EQ(facts.horizontal, factor) << quality;
        EXPECT_EQ(facts.vertical, factor) << quality;
        EXPECT_TRUE(facts.baseline);
        EXPECT_TRUE(facts.srgb);
        EXPECT_EQ(facts.components, 3);
    }
    ASSERT_NE(files.OnSaveHDJpeg(Wide("a.jpg").c_str(), picture, 50, 0, NULL, 0, 100), 0);
    EXPECT_EQ(Examine(Get("a.jpg")).horizontal, 1);
    EXPECT_TRUE(Examine(Get("a.jpg")).srgb);
}

TEST_F(Saving, JpegIsCloseAndGetsBetterAndLargerWithQuality) {
    const Bitmap picture = TestPictures::Face(500, 400);
    double before = 256;
    std::size_t size = 0;
    for (const int quality : {20, 60, 90, 98}) {
        files.OnSaveQuick(Wide("a.jpg").c_str(), picture, 1, quality);
        const double mean = Mean(OpenPath("a.jpg"), picture);
        EXPECT_LT(mean, before);
        EXPECT_GT(Get("a.jpg").size(), size);
        before = mean;
        size = Get("a.jpg").size();
    }
    EXPECT_LT(before, 1.0);
}

TEST_F(Saving, ALargeJpegInStripsHasThePixelsOfOnePieceAndAboutItsSize) {
    for (const int quality : {92, 80})
        for (const auto& [width, height] : {std::pair{1501, 1203}, {5000, 257}, {1024, 1024}}) {
            const Bitmap picture = TestPictures::Face(width, height);
            ASSERT_NE(files.OnSaveQuick(Wide("a.jpg").c_str(), picture, 1, quality), 0);
            const Bytes strips = Get("a.jpg");
            EXPECT_GT(Examine(strips).restart, 0);
            jpeg_compress_struct state = {};
            jpeg_error_mgr errors = {};
            state.err = jpeg_std_error(&errors);
            jpeg_create_compress(&state);
            unsigned char* memory = nullptr;
            unsigned long count = 0;
            jpeg_mem_dest(&state, &memory, &count);
            state.image_width = width;
            state.image_height = height;
            state.input_components = 4;
            state.in_color_space = JCS_EXT_BGRX;
            jpeg_set_defaults(&state);
            jpeg_set_quality(&state, quality, TRUE);
            if (quality >= 90) state.comp_info[0].h_samp_factor = state.comp_info[0].v_samp_factor = 1;
            state.optimize_coding = TRUE;
            jpeg_start_compress(&state, TRUE);
            for (int y = 0; y < height; ++y) {
                JSAMPROW row = const_cast<std::uint8_t*>(picture.Row(y));
                jpeg_write_scanlines(&state, &row, 1);
            }
            jpeg_finish_compress(&state);
            const Bytes piece(memory, memory + count);
            jpeg_destroy_compress(&state);
            std::free(memory);
            EXPECT_TRUE(OpenMemory(strips) == OpenMemory(piece)) << width << " at " << quality;
            EXPECT_LT(strips.size(), piece.size() * 1.01 + 1500);
        }
}

TEST_F(Saving, BytesDoNotDependOnTheNumberOfThreads) {
    const Bitmap picture = TestPictures::Face(1300, 1100);
    for (const int format : {1, 2, 3}) {
        SetWorkerCount(1);
        files.OnSaveQuick(Wide("one").c_str(), picture, format, 92);
        SetWorkerCount(5);
        files.OnSaveQuick(Wide("five").c_str(), picture, format, 92);
        SetWorkerCount(0);
        EXPECT_EQ(Get("one"), Get("five")) << format;
    }
}

TEST_F(Saving, ATranslucentPictureIsLaidOnWhiteInAJpeg) {
    Bitmap picture = TestPictures::Plain(64, 64, 0x00123456u);
    files.OnSaveQuick(Wide("a.jpg").c_str(), picture, 1, 95);
    EXPECT_LE(Largest(OpenPath("a.jpg"), TestPictures::Plain(64, 64, 0xFFFFFFFFu)), 1);
    picture.Fill(0x80000000u);
    files.OnSaveQuick(Wide("a.jpg").c_str(), picture, 1, 95);
    EXPECT_LE(Largest(OpenPath("a.jpg"), TestPictures::Plain(64, 64, 0xFF7F7F7Fu)), 1);
}

TEST_F(Saving, TheSizedFormScalesFirst) {
    const Bitmap picture = TestPictures::Face(400, 300);
    ASSERT_NE(files.OnSaveQuick(Wide("t").c_str(), picture, 180, 135, 2, 90), 0);
    const Bitmap small = OpenPath("t");
    EXPECT_EQ(small.Width(), 180);
    EXPECT_EQ(small.Height(), 135);
    ASSERT_NE(files.OnSaveQuick(Wide("t").c_str(), picture, 0, 0, 2, 90), 0);
    EXPECT_TRUE(OpenPath("t") == picture);
}

TEST_F(Saving, FailuresAreZeroAndLeaveTheOldFile) {
    Put("a", {1, 2, 3});
    const Bitmap picture = TestPictures::Ramp(9, 9);
    EXPECT_EQ(files.OnSaveQuick(Wide("a").c_str(), {}, 1, 90), 0);
    EXPECT_EQ(files.OnSaveQuick(Wide("a").c_str(), picture, 0, 90), 0);
    EXPECT_EQ(files.OnSaveQuick(Wide("a").c_str(), picture, 4, 90), 0);
    EXPECT_EQ(files.OnSaveQuick(Wide("a").c_str(), Bitmap(70000, 1), 1, 90), 0);
    EXPECT_EQ(files.OnSaveQuick(Wide("none/a").c_str(), picture, 1, 90), 0);
    EXPECT_EQ(files.OnSaveQuick(folder.wstring().c_str(), picture, 1, 90), 0);
    EXPECT_EQ(files.OnSaveQuick(L"", picture, 1, 90), 0);
    EXPECT_EQ(files.OnSaveQuick(nullptr, picture, 1, 90), 0);
    EXPECT_EQ(files.OnSaveHDJpeg(Wide("none/a").c_str(), picture, 90, 0, NULL, 0, 100), 0);
    EXPECT_EQ(Get("a"), (Bytes{1, 2, 3}));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
}

TEST_F(Saving, QualityOutsideItsRangeIsHeldAtTheEnds) {
    const Bitmap picture = TestPictures::Face(80, 60);
    files.OnSaveQuick(Wide("low").c_str(), picture, 1, -20);
    files.OnSaveQuick(Wide("one").c_str(), picture, 1, 1);
    files.OnSaveQuick(Wide("high").c_str(), picture, 1, 500);
    files.OnSaveQuick(Wide("hundred").c_str(), picture, 1, 100);
    EXPECT_EQ(Get("low"), Get("one"));
    EXPECT_EQ(Get("high"), Get("hundred"));
}
