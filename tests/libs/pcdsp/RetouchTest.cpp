// SPDX-License-Identifier: GPL-3.0-or-later
// What the retouches of faces owe their callers beyond the contract of all operations.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <numeric>

#include "ColourDifference.h"
#include "Parallel.h"
#include "PC_Dsp.h"
#include "RangeGrid.h"
#include "Smile.h"
#include "TestPictures.h"
#include "WatchfulSink.h"

namespace {

Bitmap Smoothed(Bitmap picture, float sigma, const unsigned char* mask = nullptr) {
    EXPECT_NE(PC_Dsp::CannyDericheBlur(picture, sigma, sigma, mask, nullptr, 0, 100), 0);
    return picture;
}

// Grey levels given by level(x, y).
template <class Levels>
Bitmap Grey(int width, int height, Levels level) {
    Bitmap bitmap = Bitmap::Uninitialised(width, height);
    std::uint8_t* p = bitmap.MutablePixels();
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x, p += 4) {
            p[0] = p[1] = p[2] = static_cast<std::uint8_t>(level(x, y));
            p[3] = 255;
        }
    return bitmap;
}

// The mean of the grey levels of a part, and how far they stray from it.
struct Spread {
    double mean = 0.0, deviation = 0.0;
    Spread(const Bitmap& bitmap, int left, int top, int right, int bottom) {
        double sum = 0.0, squares = 0.0;
        for (int y = top; y < bottom; ++y)
            for (int x = left; x < right; ++x) {
                const double v = bitmap.Row(y)[4 * x];
                sum += v;
                squares += v * v;
            }
        const double count = double(right - left) * (bottom - top);
        mean = sum / count;
        deviation = std::sqrt(std::max(0.0, squares / count - mean * mean));
    }
};

Lab LabAt(const Bitmap& bitmap, int x, int y) {
    const std::uint8_t* p = bitmap.Row(y) + 4 * x;
    return LabOf(p[2], p[1], p[0]);
}

struct FaceRetouch {
    const char* name;
    int (*run)(unsigned char* pixels, int width, int height, CObjProgress* sink, int start, int end);
};

// The retouches that change faces only, on a picture of a mouth.
constexpr FaceRetouch FaceRetouches[] = {
    {"Tint", [](unsigned char* p, int w, int h, CObjProgress* s, int a,
                int b) { return PC_Dsp::CompositeColor(p, w, h, 203, 72, 90, s, a, b); }},
    {"Teeth", [](unsigned char* p, int w, int h, CObjProgress* s, int a,
                 int b) { return PC_Dsp::MeiBaiYaChi(p, w, h, s, a, b); }},
};

class EveryFaceRetouch : public testing::TestWithParam<FaceRetouch> {
  protected:
    void TearDown() override { SetWorkerCount(0); }
    int Run(Bitmap& bitmap, CObjProgress* sink = nullptr) const {
        return GetParam().run(bitmap.MutablePixels(), bitmap.Width(), bitmap.Height(), sink, 10, 90);
    }
};

}  // namespace

TEST_P(EveryFaceRetouch, ChangesAFaceAndLeavesAlpha) {
    const Bitmap source = Smile(421, 397, false);
    Bitmap result = source;
    ASSERT_NE(Run(result), 0);
    EXPECT_GT(TestPictures::LargestDifference(source, result), 8);
    for (std::size_t i = 3; i < source.ByteCount(); i += 4) ASSERT_EQ(result.Pixels()[i], source.Pixels()[i]);
}

TEST_P(EveryFaceRetouch, GivesTheSameBytesForAnyNumberOfThreads) {
    for (const auto& [width, height] : {std::pair(1, 1), std::pair(1, 31), std::pair(31, 1), std::pair(701, 397)}) {
        const Bitmap source = Smile(width, height);
        SetWorkerCount(1);
        Bitmap alone = source;
        ASSERT_NE(Run(alone), 0);
        for (const int threads : {2, 3, 16}) {
            SetWorkerCount(threads);
            Bitmap together = source;
            ASSERT_NE(Run(together), 0);
            EXPECT_TRUE(alone == together) << threads << " threads, " << width << " x " << height;
        }
    }
}

TEST_P(EveryFaceRetouch, CancelledEveryRowIsEitherDoneOrAsItWas) {
    const Bitmap source = Smile(331, 1200);
    Bitmap done = source;
    Run(done);
    bool partly = false;
    for (const int allowed : {0, 1, 4, 8, 12, 13, 16}) {
        Bitmap picture = source;
        WatchfulSink sink(allowed);
        if (Run(picture, &sink) != 0) continue;
        EXPECT_LT(sink.GetValue(), 90.0f);
        int changed = 0, left = 0;
        for (int y = 0; y < source.Height(); ++y) {
            const bool isDone = std::equal(picture.Row(y), picture.Row(y) + picture.Stride(), done.Row(y));
            const bool isSource = std::equal(picture.Row(y), picture.Row(y) + picture.Stride(), source.Row(y));
            ASSERT_TRUE(isDone || isSource) << "row " << y << " after " << allowed;
            changed += isDone && !isSource;
            left += isSource && !isDone;
        }
        partly = partly || (changed > 0 && left > 0);
    }
    EXPECT_TRUE(partly) << "no cancel came in the middle";
}

TEST_P(EveryFaceRetouch, ReportsForwardToItsEnd) {
    Bitmap picture = Smile(301, 403);
    WatchfulSink sink;
    ASSERT_NE(Run(picture, &sink), 0);
    EXPECT_FALSE(sink.ranBackwards);
    EXPECT_FLOAT_EQ(sink.GetValue(), 90.0f);
}

TEST_P(EveryFaceRetouch, RefusesNoPixelsAndBadSizes) {
    Bitmap picture = Smile(8, 8);
    const Bitmap before = picture.Clone();
    EXPECT_EQ(GetParam().run(nullptr, 8, 8, nullptr, 0, 100), 0);
    for (const auto& [width, height] : {std::pair(0, 8), std::pair(8, -1), std::pair(INT_MAX, INT_MAX)})
        EXPECT_EQ(GetParam().run(picture.MutablePixels(), width, height, nullptr, 0, 100), 0);
    EXPECT_TRUE(picture == before);
}

INSTANTIATE_TEST_SUITE_P(PcDsp, EveryFaceRetouch, testing::ValuesIn(FaceRetouches),
                         [](const auto& entry) { return std::string(entry.param.name); });

TEST(Smoothing, LeavesAFlatPictureAlone) {
    for (const std::uint32_t colour : {0xFF000000u, 0xFFFFFFFFu, 0xFFD9A184u, 0xFF553526u}) {
        const Bitmap plain = TestPictures::Plain(211, 199, colour);
        EXPECT_TRUE(Smoothed(plain, 3.0f) == plain);
    }
}

TEST(Smoothing, AStrongEdgeKeepsItsHeightAndPlace) {
    const Bitmap step = Grey(600, 400, [](int x, int) { return x < 300 ? 60 : 190; });
    EXPECT_LE(TestPictures::LargestDifference(Smoothed(step, 5.0f), step), 1);
}

TEST(Smoothing, AThinDarkLineStays) {
    const Bitmap lash = Grey(600, 400, [](int x, int) { return std::abs(x - 300) < 2 ? 40 : 190; });
    const Bitmap result = Smoothed(lash, 3.0f);
    EXPECT_LE(result.Row(200)[4 * 300], 50);
    EXPECT_NEAR(result.Row(200)[4 * 306], 190, 4);
}

TEST(Smoothing, BlotchesFallAndGrainStaysMoreWithEverySigma) {
    // Blotches forty pixels across under grain of one pixel, on a picture whose face would be 420 wide.
    const Bitmap noise = TestPictures::Noise(1000, 1000, 9);
    const auto blotch = [](int x, int y) { return 6.0 * std::sin(x * 0.157) * std::sin(y * 0.157); };
    const Bitmap blotched = Grey(1000, 1000, [&](int x, int y) { return std::lround(170.0 + blotch(x, y)); });
    const Bitmap grained = Grey(1000, 1000, [&](int x, int y) { return 160 + noise.Row(y)[4 * x] % 21; });
    const double height = Spread(blotched, 200, 200, 800, 800).deviation;
    const double grain = Spread(grained, 200, 200, 800, 800).deviation;
    double before = height;
    for (const float sigma : {0.5f, 1.0f, 2.0f, 3.0f, 5.0f}) {
        const double now = Spread(Smoothed(blotched, sigma), 200, 200, 800, 800).deviation;
        // What is nearly gone may come back a little with the opposite sign.
        EXPECT_LT(now, std::max(before, 0.4 * height)) << sigma;
        before = now;
        if (sigma >= 1.0f) {
            EXPECT_LT(now, 0.45 * height) << sigma;
        }
        EXPECT_GT(Spread(Smoothed(grained, sigma), 200, 200, 800, 800).deviation, 0.6 * grain) << sigma;
    }
}

TEST(Smoothing, ARampStaysARamp) {
    const Bitmap ramp = TestPictures::Ramp(1024, 256), result = Smoothed(ramp, 3.0f);
    // At the ends a mean has only one side to look at.
    for (int x = 60; x < 964; ++x) {
        ASSERT_GE(result.Row(128)[4 * x], result.Row(128)[4 * (x - 1)]) << x;
        ASSERT_NEAR(result.Row(128)[4 * x], ramp.Row(128)[4 * x], 2) << x;
    }
}

TEST(Smoothing, ALittleMoreSigmaChangesLittle) {
    const Bitmap face = TestPictures::Face(400, 500);
    Bitmap before = Smoothed(face, 0.1f);
    EXPECT_LE(TestPictures::LargestDifference(face, before), 6);
    for (float sigma = 0.2f; sigma < 5.05f; sigma += 0.1f) {
        const Bitmap now = Smoothed(face, sigma);
        EXPECT_LE(TestPictures::LargestDifference(before, now), 6) << sigma;
        before = now;
    }
}

TEST(Smoothing, AReducedPictureLooksLikeTheReducedResult) {
    const Bitmap face = TestPictures::Face(1200, 1500);
    const Bitmap large = PC_Dsp::Resample(Smoothed(face, 3.0f), 400, 500);
    const Bitmap small = Smoothed(PC_Dsp::Resample(face, 400, 500), 3.0f);
    EXPECT_LT(MeanDeltaE(large, small), 1.0);
}

TEST(Smoothing, AMaskTellsHowMuchOfIt) {
    const Bitmap face = TestPictures::Face(211, 307);
    const Bitmap whole = Smoothed(face, 3.0f);
    std::vector<unsigned char> mask(211 * 307, 0);
    EXPECT_TRUE(Smoothed(face, 3.0f, mask.data()) == face);
    std::fill(mask.begin(), mask.end(), 255);
    EXPECT_TRUE(Smoothed(face, 3.0f, mask.data()) == whole);
    std::fill(mask.begin(), mask.begin() + 211 * 100, 0);
    const Bitmap part = Smoothed(face, 3.0f, mask.data());
    EXPECT_TRUE(std::equal(part.Pixels(), part.Row(100), face.Pixels()));
    EXPECT_TRUE(std::equal(part.Row(100), part.Pixels() + part.ByteCount(), whole.Row(100)));
}

TEST(Smoothing, AShadowOnSkinGivesUpItsDarknessNotItsWarmth) {
    // A dark circle with the white of an eye above it, which is as light as the shadow's rim.
    Bitmap face = TestPictures::Plain(600, 600, 0xFFE6B89C);
    const auto disc = [&](double cx, double cy, double r, double soft, int red, int green, int blue) {
        std::uint8_t* p = face.MutablePixels();
        for (int y = 0; y < 600; ++y)
            for (int x = 0; x < 600; ++x, p += 4) {
                const double share = std::clamp((r - std::hypot(x - cx, 2.5 * (y - cy))) / soft, 0.0, 1.0);
                p[2] = static_cast<std::uint8_t>(std::lround(p[2] + (red - p[2]) * share));
                p[1] = static_cast<std::uint8_t>(std::lround(p[1] + (green - p[1]) * share));
                p[0] = static_cast<std::uint8_t>(std::lround(p[0] + (blue - p[0]) * share));
            }
    };
    disc(300, 300, 60, 30, 176, 126, 108);
    disc(300, 270, 50, 3, 178, 178, 182);
    const Bitmap result = Smoothed(face, 3.0f);
    const Lab skin = LabAt(face, 100, 500), was = LabAt(face, 300, 305), is = LabAt(result, 300, 305);
    EXPECT_GT(is.l, was.l + 2.0);
    // No less warm than a straight way to the skin's colour has it.
    const double way = (is.l - was.l) / (skin.l - was.l);
    EXPECT_GT(ChromaOf(is), ChromaOf(was) + way * (ChromaOf(skin) - ChromaOf(was)) - 2.5);
    EXPECT_LT(DeltaE2000(LabAt(face, 300, 270), LabAt(result, 300, 270)), 2.0) << "the white of the eye";
}

TEST(Smoothing, APictureWithoutColourIsSmoothedAsWell) {
    Bitmap grey = TestPictures::Face(500, 500);
    std::uint8_t* p = grey.MutablePixels();
    for (int i = 0; i < 500 * 500; ++i, p += 4) p[0] = p[2] = p[1];
    EXPECT_GT(TestPictures::LargestDifference(grey, Smoothed(grey, 3.0f)), 4);
}

TEST(Smoothing, RefusesSenselessStrengths) {
    Bitmap face = TestPictures::Face(64, 64);
    const Bitmap before = face.Clone();
    for (const float bad : {-1.0f, std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        EXPECT_EQ(PC_Dsp::CannyDericheBlur(face, bad, 1.0f, nullptr, nullptr, 0, 100), 0);
        EXPECT_EQ(PC_Dsp::CannyDericheBlur(face, 1.0f, bad, nullptr, nullptr, 0, 100), 0);
    }
    Bitmap none;
    EXPECT_EQ(PC_Dsp::CannyDericheBlur(none, 1.0f, 1.0f, nullptr, nullptr, 0, 100), 0);
    EXPECT_TRUE(face == before);
    EXPECT_TRUE(Smoothed(face, 3e38f) == Smoothed(face, 10.0f));
}

TEST(RangeGridMeans, CountLikeValuesOnly) {
    // Two colours side by side, far apart in the guide: each side's mean is its own colour, right up to the border.
    constexpr int side = 60;
    RangeGrid grid(side, side, 6.0f, 10.0f);
    std::vector<float> once(side, 1.0f), guide(side), red(side), green(side, 100.0f), blue(side, 50.0f);
    for (int x = 0; x < side; ++x) {
        guide[x] = x < side / 2 ? 1.0f : 9.0f;
        red[x] = x < side / 2 ? 40.0f : 200.0f;
    }
    for (int cells = 0; cells < grid.CellRows(); ++cells)
        for (int y = grid.FirstRowOf(cells); y < grid.FirstRowOf(cells + 1); ++y)
            grid.Add(cells, once.data(), guide.data(), red.data(), green.data(), blue.data());
    grid.Blur();
    RangeGrid::Row row(grid);
    for (int y = 0; y < side; ++y) {
        row.MoveTo(y);
        for (int x = 0; x < side; ++x) {
            const RangeGrid::Cell mean = row.Read(x, guide[x]);
            ASSERT_GT(mean[0], 0.0f);
            ASSERT_NEAR(mean[1] / mean[0], red[x], 1e-2);
            ASSERT_NEAR(mean[2] / mean[0], 100.0f, 1e-2);
        }
    }
}

TEST(RangeGridMeans, CountEachPixelByItsWeight) {
    constexpr int side = 40;
    RangeGrid grid(side, side, 8.0f, 0.0f);
    std::vector<float> weight(side), guide(side), red(side), green(side, 7.0f), blue(side, 9.0f);
    for (int x = 0; x < side; ++x) {
        weight[x] = x % 2 ? 3.0f : 1.0f;
        red[x] = x % 2 ? 100.0f : 20.0f;
    }
    for (int cells = 0; cells < grid.CellRows(); ++cells)
        for (int y = grid.FirstRowOf(cells); y < grid.FirstRowOf(cells + 1); ++y)
            grid.Add(cells, weight.data(), guide.data(), red.data(), green.data(), blue.data());
    grid.Blur();
    RangeGrid::Row row(grid);
    row.MoveTo(side / 2);
    const RangeGrid::Cell mean = row.Read(side / 2, 0.0f);
    EXPECT_NEAR(mean[1] / mean[0], 80.0f, 0.5);
    EXPECT_NEAR(mean[2] / mean[0], 7.0f, 1e-3);
}

TEST(RangeGridMeans, EveryRowOfThePictureFallsIntoOneRowOfCells) {
    for (const float side : {1.0f, 2.3f, 7.0f, 1000.0f})
        for (const int height : {1, 2, 31, 127}) {
            const RangeGrid grid(5, height, side, 0.0f);
            EXPECT_EQ(grid.FirstRowOf(0), 0);
            for (int r = 0; r < grid.CellRows(); ++r) EXPECT_LE(grid.FirstRowOf(r), grid.FirstRowOf(r + 1));
            EXPECT_EQ(grid.FirstRowOf(grid.CellRows()), height);
        }
}

TEST(Recolouring, GreysTakeTheHueOfTheColourAndKeepTheirOrder) {
    const Bitmap ramp = TestPictures::Ramp(256, 1);
    const unsigned char colours[][3] = {{208, 66, 64}, {255, 196, 70}, {44, 138, 255}, {89, 205, 54}, {156, 61, 67}};
    for (const auto& c : colours) {
        Bitmap picture = ramp;
        ASSERT_NE(PC_Dsp::Color_Channel_Composite(picture, c[0], c[1], c[2], nullptr, 0, 100), 0);
        EXPECT_EQ(TestPictures::PixelAt(picture, 0, 0), 0xFF000000u);
        EXPECT_EQ(TestPictures::PixelAt(picture, 255, 0), 0xFFFFFFFFu);
        const double hue = HueOf(LabOf(c[0], c[1], c[2]));
        for (int x = 1; x < 256; ++x) {
            const Lab before = LabAt(picture, x - 1, 0), now = LabAt(picture, x, 0);
            ASSERT_GE(now.l, before.l - 0.3) << x;
            ASSERT_LE(now.l - before.l, 2.5) << x;
            // Of a few levels of colour rounding leaves no hue.
            if (ChromaOf(now) > 12.0) {
                const double turn = std::abs(std::remainder(HueOf(now) - hue, 360.0));
                ASSERT_LT(turn, 6.0) << x;
            }
        }
    }
}

TEST(Tint, SkinGoesToTheToneAndTheSeaStays) {
    Bitmap skin = TestPictures::Plain(200, 200, 0xFFDCB096), sea = TestPictures::Plain(200, 200, 0xFF2E6E9E);
    const Bitmap before = sea.Clone();
    ASSERT_NE(PC_Dsp::CompositeColor(skin, 203, 72, 90, nullptr, 0, 100), 0);
    ASSERT_NE(PC_Dsp::CompositeColor(sea, 203, 72, 90, nullptr, 0, 100), 0);
    EXPECT_TRUE(sea == before);
    const Lab was = LabOf(0xDC, 0xB0, 0x96), is = LabAt(skin, 100, 100), tone = LabOf(203, 72, 90);
    EXPECT_LT(std::abs(std::remainder(HueOf(is) - HueOf(tone), 360.0)),
              0.6 * std::abs(std::remainder(HueOf(was) - HueOf(tone), 360.0)));
    EXPECT_NEAR(is.l, was.l, 8.0);
}

TEST(Tint, APaleToneOnDeepSkinIsNoPowder) {
    Bitmap skin = TestPictures::Plain(200, 200, 0xFF5C3A2B);
    ASSERT_NE(PC_Dsp::CompositeColor(skin, 240, 225, 201, nullptr, 0, 100), 0);
    const Lab was = LabOf(0x5C, 0x3A, 0x2B), is = LabAt(skin, 100, 100);
    EXPECT_GE(is.l, was.l);
    EXPECT_LT(is.l, was.l + 5.0);
    EXPECT_GT(ChromaOf(is), 0.75 * ChromaOf(was));
}

TEST(Teeth, LoseTheirYellowAndNothingElseMoves) {
    const Bitmap source = Smile(500, 400);
    Bitmap result = source;
    ASSERT_NE(PC_Dsp::MeiBaiYaChi(result.MutablePixels(), 500, 400, nullptr, 0, 100), 0);
    const Lab was = LabAt(source, 250, 200), is = LabAt(result, 250, 200);
    EXPECT_LT(is.b - 2.0, 0.4 * (was.b - 2.0));
    EXPECT_GE(is.b, -0.5);
    EXPECT_GT(is.l, was.l + 3.0);
    EXPECT_LT(is.l, was.l + 10.0);
    for (const auto& [x, y] : {std::pair(250, 175), std::pair(250, 230), std::pair(60, 60), std::pair(250, 300)})
        EXPECT_LT(DeltaE2000(LabAt(source, x, y), LabAt(result, x, y)), 1.0) << x << ", " << y;
}

TEST(Teeth, GlossAboveTheMouthAndOnPaintedLipsIsNone) {
    Bitmap source = Smile(500, 400);
    const auto put = [&](int left, int top, int right, int bottom, int red, int green, int blue) {
        for (int y = top; y < bottom; ++y)
            for (int x = left; x < right; ++x) {
                std::uint8_t* const to = source.MutablePixels() + 4 * (500 * y + x);
                to[0] = static_cast<std::uint8_t>(blue), to[1] = static_cast<std::uint8_t>(green);
                to[2] = static_cast<std::uint8_t>(red);
            }
    };
    put(230, 110, 270, 118, 196, 113, 104);  // the shadow under the nose, red as a lip
    put(243, 128, 257, 144, 236, 206, 190);  // gloss between nose and lip
    put(180, 224, 230, 236, 241, 166, 190);  // gloss on painted lips
    Bitmap result = source;
    ASSERT_NE(PC_Dsp::MeiBaiYaChi(result.MutablePixels(), 500, 400, nullptr, 0, 100), 0);
    EXPECT_GT(LabAt(result, 250, 200).l, LabAt(source, 250, 200).l + 3.0) << "teeth";
    EXPECT_LT(DeltaE2000(LabAt(source, 250, 136), LabAt(result, 250, 136)), 0.5);
    EXPECT_LT(DeltaE2000(LabAt(source, 200, 230), LabAt(result, 200, 230)), 0.5);
}

TEST(Teeth, WithoutLipsThereAreNone) {
    // A light wall beside skin.
    Bitmap wall = TestPictures::Plain(400, 300, 0xFFDEB096);
    std::uint8_t* p = wall.MutablePixels();
    for (int i = 0; i < 400 * 150; ++i, p += 4) p[0] = 178, p[1] = 210, p[2] = 226;
    Bitmap result = wall;
    ASSERT_NE(PC_Dsp::MeiBaiYaChi(result.MutablePixels(), 400, 300, nullptr, 0, 100), 0);
    EXPECT_TRUE(result == wall);
}
