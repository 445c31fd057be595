// SPDX-License-Identifier: GPL-3.0-or-later
// The three kinds of frame files: what is read, and how a frame lies around and over a picture.
#include <gtest/gtest.h>

#include <random>

#include "CEffect.h"
#include "CNinePartFrame.h"
#include "CStripFrame.h"
#include "CXuanCaiFrame.h"
#include "FrameBuilder.h"
#include "Parallel.h"
#include "PC_Dsp.h"
#include "PlainFrames.h"
#include "TestPictures.h"
#include "WatchfulSink.h"

using FrameBuilder::Bytes;
using TestPictures::LargestDifference;
using TestPictures::PixelAt;

namespace {

// What rounding of the fast drawing may differ by: half a level of the exact value, and a level between instruction
// sets.
constexpr int Rounding = 1;

template <class Frame>
bool Load(Frame& frame, const Bytes& bytes) {
    return frame.Load(bytes.data(), bytes.size());
}

template <class Frame>
FrameFault FaultOf(const Bytes& bytes) {
    Frame frame;
    const bool loaded = Load(frame, bytes);
    EXPECT_EQ(loaded, frame.Fault() == FrameFault::None);
    return frame.Fault();
}

template <class Frame, class File>
Bitmap Composed(const File& file, const Bitmap& picture, float scale = 1.0f) {
    Frame frame;
    EXPECT_TRUE(Load(frame, file.File()));
    return frame.Compose(picture, scale);
}

// Colours of all alphas; clear pixels and opaque ones in good number, as frames have them.
Bitmap FramePixels(int width, int height, unsigned seed) {
    Bitmap pixels = TestPictures::Noise(width, height, seed, false);
    std::uint8_t* bytes = pixels.MutablePixels();
    for (std::size_t i = 3; i < pixels.ByteCount(); i += 4)
        bytes[i] = bytes[i] < 80 ? 0 : bytes[i] < 170 ? 255 : bytes[i];
    return pixels;
}

FrameBuilder::Strip PlainStrip(int corner, int tile) {
    FrameBuilder::Strip file;
    file.strip = TestPictures::Noise(2 * corner + tile, 2 * corner + tile, 4);
    file.extraWidth = file.extraHeight = 2 * corner;
    file.pictureX = file.pictureY = corner;
    file.pieces = {{{corner, corner},
                    {tile, corner},
                    {corner, corner},
                    {corner, tile},
                    {corner, tile},
                    {corner, corner},
                    {tile, corner},
                    {corner, corner}}};
    return file;
}

FrameBuilder::NinePart PlainNine(int corner, int tile) {
    FrameBuilder::NinePart file;
    for (std::size_t i = 0; i < 9; ++i)
        if (i != 4)
            file.parts[i] = TestPictures::Noise(i % 3 == 1 ? tile : corner, i / 3 == 1 ? tile : corner,
                                                static_cast<std::uint32_t>(i) + 1);
    file.extraWidth = file.extraHeight = 2 * corner;
    file.pictureX = file.pictureY = corner;
    return file;
}

}  // namespace

TEST(StripFrame, IsKnownByItsMagicInAnyCase) {
    Bytes file = PlainStrip(3, 2).File();
    EXPECT_EQ(FaultOf<CStripFrame>(file), FrameFault::None);
    FrameBuilder::PutText(file, 12, "luXus");
    EXPECT_EQ(FaultOf<CStripFrame>(file), FrameFault::None);
    FrameBuilder::PutText(file, 12, "LUXUR");
    EXPECT_EQ(FaultOf<CStripFrame>(file), FrameFault::OtherKind);
}

TEST(StripFrame, MustBeLongerThanItsHeader) {
    Bytes file = PlainStrip(3, 2).File();
    file.resize(117);
    EXPECT_EQ(FaultOf<CStripFrame>(file), FrameFault::TooShort);
    file.resize(118);
    EXPECT_EQ(FaultOf<CStripFrame>(file), FrameFault::Damaged) << "long enough, but there is no strip";
    EXPECT_EQ(FaultOf<CStripFrame>({}), FrameFault::TooShort);
}

TEST(StripFrame, SurroundsThePictureWhichKeepsItsBytes) {
    const Bitmap picture = TestPictures::Noise(37, 23, 9, false);
    const Bitmap result = Composed<CStripFrame>(PlainStrip(5, 4), picture);
    ASSERT_EQ(result.Width(), 47);
    ASSERT_EQ(result.Height(), 33);
    for (int y = 0; y < 23; ++y)
        for (int x = 0; x < 37; ++x) ASSERT_EQ(PixelAt(result, x + 5, y + 5), PixelAt(picture, x, y)) << x << ", " << y;
}

TEST(StripFrame, APictureThatDoesNotLieUnderReplacesTheFrame) {
    FrameBuilder::Strip file = PlainStrip(6, 4);
    file.pictureX = 2;
    file.pictureY = 3;
    const Bitmap picture = TestPictures::Noise(30, 20, 2, false);
    for (const int under : {1, 200, 0}) {
        file.pictureUnder = under;
        const Bitmap result = Composed<CStripFrame>(file, picture);
        EXPECT_EQ(PixelAt(result, 2, 3) == PixelAt(picture, 0, 0), under == 0);
        EXPECT_LE(LargestDifference(result, PlainFrames::Compose(file, picture, 1.0f)), Rounding);
    }
}

TEST(StripFrame, AWholeNumberOfTilesLeavesTheSurplusUnderTheCorner) {
    const FrameBuilder::Strip file = PlainStrip(6, 4);
    const Bitmap result = Composed<CStripFrame>(file, TestPictures::Plain(20, 20, 0xFF102030));
    EXPECT_EQ(PixelAt(result, 26, 0), PixelAt(file.strip, 10, 0)) << "the corner is drawn after the tiles";
}

TEST(StripFrame, ComposesAsThePlainTwinDoes) {
    std::mt19937 random(11);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    int composed = 0;
    for (int round = 0; round < 400; ++round) {
        SCOPED_TRACE(round);
        FrameBuilder::Strip file;
        file.strip = FramePixels(8 + below(30), 8 + below(30), random());
        const int w = file.strip.Width(), h = file.strip.Height();
        for (auto& piece : file.pieces) piece = {below(w / 2 + 1), below(h / 2 + 1)};
        file.extraWidth = below(50) - 8;
        file.extraHeight = below(50) - 8;
        file.pictureX = below(40) - 10;
        file.pictureY = below(40) - 10;
        file.pictureUnder = below(3);
        const Bitmap picture = TestPictures::Noise(1 + below(60), 1 + below(60), random(), below(2) == 0);
        const float scales[] = {1.0f, 1.0f, 0.5f, 1.7f, 3.0f, 0.31f};
        const float scale = scales[below(6)];
        const Bitmap result = Composed<CStripFrame>(file, picture, scale);
        const Bitmap plain = PlainFrames::Compose(file, picture, scale);
        ASSERT_EQ(result.IsNull(), plain.IsNull());
        if (!plain) continue;
        ++composed;
        ASSERT_LE(LargestDifference(result, plain), Rounding);
    }
    EXPECT_GT(composed, 200);
}

TEST(NinePartFrame, OfExactlyItsHeaderIsRefusedAndOneByteMorePassesThatTest) {
    Bytes file = PlainNine(3, 2).File();
    file.resize(96);
    EXPECT_EQ(FaultOf<CNinePartFrame>(file), FrameFault::TooShort);
    file.resize(97);
    EXPECT_EQ(FaultOf<CNinePartFrame>(file), FrameFault::Damaged) << "its parts are missing";
}

TEST(NinePartFrame, IsKnownByItsMagicInAnyCaseAndItsKind) {
    Bytes file = PlainNine(3, 2).File();
    FrameBuilder::PutText(file, 0, "vnbk");
    EXPECT_EQ(FaultOf<CNinePartFrame>(file), FrameFault::None);
    FrameBuilder::PutInt(file, 8, 1);
    EXPECT_EQ(FaultOf<CNinePartFrame>(file), FrameFault::OtherKind);
    FrameBuilder::PutInt(file, 8, 0);
    FrameBuilder::PutText(file, 0, "VNBX");
    EXPECT_EQ(FaultOf<CNinePartFrame>(file), FrameFault::OtherKind);
}

TEST(NinePartFrame, NamesAreSteppedOverFromTheirFixedPlace) {
    FrameBuilder::NinePart file = PlainNine(4, 3);
    const Bitmap picture = TestPictures::Face(40, 30);
    const Bitmap result = Composed<CNinePartFrame>(file, picture);
    file.nameLengths = {3, 0, 200, 7};
    EXPECT_EQ(Composed<CNinePartFrame>(file, picture), result);
    file.nameLengths.assign(22, 1);
    EXPECT_EQ(Composed<CNinePartFrame>(file, picture), result);
}

TEST(NinePartFrame, AnEmptyPartIsSkippedWithoutMovingItsNeighbours) {
    FrameBuilder::NinePart file = PlainNine(5, 4);
    const Bitmap picture = TestPictures::Plain(40, 40, 0xFF405060);
    const Bitmap whole = Composed<CNinePartFrame>(file, picture);
    file.parts[5] = {};
    const Bitmap lacking = Composed<CNinePartFrame>(file, picture);
    ASSERT_EQ(lacking.Width(), whole.Width());
    EXPECT_EQ(PixelAt(lacking, 45, 20), 0u) << "nothing lies beside the picture";
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 50; ++x) {
            ASSERT_EQ(PixelAt(lacking, x, y), PixelAt(whole, x, y));
            ASSERT_EQ(PixelAt(lacking, x, 45 + y), PixelAt(whole, x, 45 + y));
        }
}

TEST(NinePartFrame, ShrinksToAWholeNumberOfTiles) {
    const FrameBuilder::NinePart file = PlainNine(5, 7);
    for (const int width : {42, 43, 48, 49}) {
        const Bitmap result = Composed<CNinePartFrame>(file, TestPictures::Face(width, 70));
        EXPECT_EQ(result.Width(), width - width % 7 + 10) << "nothing is trimmed from a whole number of tiles";
        EXPECT_EQ(result.Height(), 80);
    }
}

TEST(NinePartFrame, APictureSmallerThanItsCornersHasNoTilesAndLosesNothing) {
    FrameBuilder::NinePart file = PlainNine(30, 7);
    file.extraWidth = file.extraHeight = 20;
    const Bitmap picture = TestPictures::Face(11, 13);
    const Bitmap result = Composed<CNinePartFrame>(file, picture);
    EXPECT_EQ(result.Width(), 31);
    EXPECT_EQ(result.Height(), 33);
    EXPECT_LE(LargestDifference(result, PlainFrames::Compose(file, picture, 1.0f)), Rounding);
}

TEST(NinePartFrame, TheCentreIsATextureOverTheWholeGround) {
    FrameBuilder::NinePart file;
    file.extraWidth = 10;
    file.extraHeight = 6;
    file.pictureX = 5;
    file.pictureY = 3;
    file.parts[4] = TestPictures::Noise(4, 3, 5);
    const Bitmap picture = TestPictures::Plain(9, 9, 0xFF808080);
    const Bitmap result = Composed<CNinePartFrame>(file, picture);
    for (const auto& [x, y] : {std::pair(0, 0), std::pair(18, 14), std::pair(4, 12)})
        EXPECT_EQ(PixelAt(result, x, y), PixelAt(file.parts[4], x % 4, y % 3));
    EXPECT_EQ(PixelAt(result, 5, 3), 0xFF808080);
}

TEST(NinePartFrame, ComposesAsThePlainTwinDoes) {
    std::mt19937 random(12);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    int composed = 0;
    for (int round = 0; round < 400; ++round) {
        SCOPED_TRACE(round);
        FrameBuilder::NinePart file;
        for (std::size_t i = 0; i < 9; ++i)
            if (below(i == 4 ? 4 : 8) != 0) file.parts[i] = FramePixels(1 + below(17), 1 + below(17), random());
        if (below(2)) file.parts[4] = {};
        file.extraWidth = below(60) - 8;
        file.extraHeight = below(60) - 8;
        file.pictureX = below(40) - 10;
        file.pictureY = below(40) - 10;
        const Bitmap picture = TestPictures::Noise(1 + below(60), 1 + below(60), random(), below(2) == 0);
        const float scales[] = {1.0f, 1.0f, 0.5f, 1.7f, 3.0f, 0.31f};
        const float scale = scales[below(6)];
        const Bitmap result = Composed<CNinePartFrame>(file, picture, scale);
        const Bitmap plain = PlainFrames::Compose(file, picture, scale);
        ASSERT_EQ(result.IsNull(), plain.IsNull());
        if (!plain) continue;
        ++composed;
        ASSERT_LE(LargestDifference(result, plain), Rounding);
    }
    EXPECT_GT(composed, 200);
}

TEST(OverlayFrame, IsKnownByItsMagicAsItStands) {
    FrameBuilder::Overlay file;
    file.picture = TestPictures::Face(20, 10);
    Bytes bytes = file.File();
    EXPECT_EQ(FaultOf<CXuanCaiFrame>(bytes), FrameFault::None);
    FrameBuilder::PutText(bytes, 12, "xcbk1");
    EXPECT_EQ(FaultOf<CXuanCaiFrame>(bytes), FrameFault::OtherKind);
    bytes.resize(182);
    FrameBuilder::PutText(bytes, 12, "XCBK1");
    EXPECT_EQ(FaultOf<CXuanCaiFrame>(bytes), FrameFault::TooShort);
}

TEST(OverlayFrame, WithoutAPictureLeavesTheUsersAlone) {
    for (const int size : {0, -1, -2147483647}) {
        Bytes bytes = FrameBuilder::Overlay().File();
        FrameBuilder::PutInt(bytes, 166, size);
        CXuanCaiFrame frame;
        ASSERT_TRUE(Load(frame, bytes));
        const Bitmap picture = TestPictures::Face(30, 20);
        Bitmap framed = picture;
        EXPECT_TRUE(frame.Compose(framed));
        EXPECT_EQ(framed, picture);
        EXPECT_EQ(frame.After(), picture);
    }
}

TEST(OverlayFrame, KeepsThePictureBeforeAndAfter) {
    FrameBuilder::Overlay file;
    file.picture = TestPictures::Noise(20, 10, 3, false);
    CXuanCaiFrame frame;
    ASSERT_TRUE(Load(frame, file.File()));
    EXPECT_TRUE(frame.Before().IsNull());
    const Bitmap picture = TestPictures::Face(30, 20);
    Bitmap framed = picture;
    ASSERT_TRUE(frame.Compose(framed));
    EXPECT_EQ(frame.Before(), picture);
    EXPECT_EQ(frame.After(), framed);
    EXPECT_FALSE(framed == picture);
    Bitmap other = TestPictures::Face(12, 12);
    ASSERT_TRUE(frame.Compose(other));
    EXPECT_EQ(frame.Before(), picture) << "those of the first composition";
}

TEST(OverlayFrame, TheExtensionOnlyNamesWhatTheBytesSay) {
    FrameBuilder::Overlay file;
    file.picture = TestPictures::Noise(20, 10, 3, false);
    const Bitmap picture = TestPictures::Face(30, 20);
    const Bitmap expected = PlainFrames::Compose(file, picture);
    for (const char* extension : {"png", "JPG", "bmp", "", "anything"}) {
        file.extension = extension;
        CXuanCaiFrame frame;
        ASSERT_TRUE(Load(frame, file.File())) << extension;
        Bitmap framed = picture;
        ASSERT_TRUE(frame.Compose(framed));
        EXPECT_LE(LargestDifference(framed, expected), 2) << extension;
    }
}

TEST(OverlayFrame, TurnsUnlessBothAreLandscapes) {
    // Four colours say how it lies.
    FrameBuilder::Overlay file;
    file.mayRotate = '1';
    const auto corners = [](int width, int height) {
        Bitmap overlay = TestPictures::Plain(width, height, 0xFF00FF00);
        std::uint8_t* red = overlay.MutablePixels();
        for (int y = 0; y < height / 2; ++y)
            for (int x = 0; x < width / 2; ++x) {
                std::uint8_t* p = red + y * overlay.Stride() + 4 * x;
                p[1] = 0;
                p[2] = 255;
            }
        return overlay;
    };
    constexpr std::uint32_t Red = 0xFFFF0000;
    const struct {
        int overlayWidth, overlayHeight, width, height;
        int redX, redY;                     // of the corner that the red one comes to
    } cases[] = {{40, 20, 60, 40, 0, 0},    // two landscapes
                 {40, 20, 40, 40, 0, 0},    // a square is none that is tall
                 {40, 20, 40, 60, 39, 0},   // a landscape on a portrait
                 {20, 40, 40, 60, 39, 0},   // a portrait on a portrait turns as well
                 {20, 40, 60, 40, 59, 0}};  // a portrait on a landscape
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.overlayWidth << 'x' << c.overlayHeight << " on " << c.width << 'x'
                                        << c.height);
        file.picture = corners(c.overlayWidth, c.overlayHeight);
        CXuanCaiFrame frame;
        ASSERT_TRUE(Load(frame, file.File()));
        Bitmap framed = TestPictures::Plain(c.width, c.height, 0xFF000000);
        ASSERT_TRUE(frame.Compose(framed));
        EXPECT_EQ(PixelAt(framed, c.redX, c.redY), Red);
        EXPECT_NE(PixelAt(framed, c.width - 1 - c.redX, c.redY), Red);
    }
}

TEST(OverlayFrame, KeepsItsProportionsByCuttingTheMiddle) {
    FrameBuilder::Overlay file;
    file.keepRatio = '1';
    file.picture = TestPictures::Ramp(90, 30);  // black to white from left to right
    CXuanCaiFrame frame;
    ASSERT_TRUE(Load(frame, file.File()));
    Bitmap framed = TestPictures::Plain(30, 30, 0xFF0000FF);
    ASSERT_TRUE(frame.Compose(framed));
    for (const int x : {0, 15, 29}) EXPECT_EQ(PixelAt(framed, x, 4), PixelAt(file.picture, x + 30, 4));
}

TEST(OverlayFrame, ABlendModeIsThatOfTheLibrary) {
    FrameBuilder::Overlay file;
    file.picture = TestPictures::Noise(24, 31, 3, false);
    file.stretch = '1';
    const Bitmap picture = TestPictures::Noise(50, 70, 8, false);
    for (int mode = 1; mode < BlendModeCount; ++mode) {
        file.blendMode = mode;
        CXuanCaiFrame frame;
        ASSERT_TRUE(Load(frame, file.File()));
        Bitmap framed = picture;
        ASSERT_TRUE(frame.Compose(framed));
        Bitmap expected = picture, layer = PlainFrames::Stretched(file, 50, 70);
        CEffect::ChannelBlend_X(expected.MutablePixels(), layer.MutablePixels(), 50, 70, mode, nullptr, 0, 100);
        // A slab of the stretched overlay may differ from the whole by a level, which a mode may multiply at its steps;
        // nearly all pixels are the same.
        std::size_t different = 0;
        for (std::size_t i = 0; i < framed.ByteCount(); ++i)
            different += std::abs(framed.Pixels()[i] - expected.Pixels()[i]) > 2;
        EXPECT_LT(different, framed.ByteCount() / 200) << mode;
    }
}

TEST(OverlayFrame, ComposesAsThePlainTwinDoes) {
    std::mt19937 random(13);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    for (int round = 0; round < 200; ++round) {
        SCOPED_TRACE(round);
        FrameBuilder::Overlay file;
        // Soft shapes: where alphas of 0 and 255 alternate by the pixel, overshoots are beyond any room for them.
        file.picture =
            PC_Dsp::Resample(FramePixels(1 + below(8), 1 + below(8), random()), 32 + below(60), 32 + below(60));
        file.mayRotate = below(2) ? '1' : '0';
        file.keepRatio = below(2) ? '1' : '0';
        file.stretch = below(3) == 0 ? '1' : '0';
        const Bitmap picture = TestPictures::Noise(1 + below(90), 1 + below(160), random(), below(2) == 0);
        CXuanCaiFrame frame;
        ASSERT_TRUE(Load(frame, file.File()));
        Bitmap framed = picture;
        ASSERT_TRUE(frame.Compose(framed));
        // Rounding to 240 steps before stretching, and after it. A translucent pixel's colour may differ by what its
        // alpha hides.
        const Bitmap expected = PlainFrames::Compose(file, picture);
        ASSERT_EQ(framed.Width(), expected.Width());
        for (std::size_t i = 0; i < framed.ByteCount(); i += 4) {
            const int alpha = expected.Pixels()[i + 3];
            ASSERT_LE(std::abs(framed.Pixels()[i + 3] - alpha), 2);
            for (std::size_t c = 0; c < 3; ++c)
                ASSERT_LE(std::abs(framed.Pixels()[i + c] - expected.Pixels()[i + c]) * alpha, 4 * 255);
        }
    }
}

// Stretched, alphas of 0 and 255 side by side overshoot beyond what a byte holds, and are cut before the colours are
// divided by them, not after: an eighth of the range at single pixels, nothing in the mean.
TEST(OverlayFrame, NoiseOfFullContrastDiffersOnlyInItsOvershoots) {
    std::mt19937 random(29);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    double sum = 0.0;
    std::size_t bytes = 0;
    int largest = 0;
    for (int round = 0; round < 100; ++round) {
        FrameBuilder::Overlay file;
        file.picture = FramePixels(1 + below(60), 1 + below(60), random());
        file.stretch = '1';
        const Bitmap picture = TestPictures::Noise(1 + below(90), 1 + below(160), random(), true);
        CXuanCaiFrame frame;
        ASSERT_TRUE(Load(frame, file.File()));
        Bitmap framed = picture;
        ASSERT_TRUE(frame.Compose(framed));
        const Bitmap expected = PlainFrames::Compose(file, picture);
        for (std::size_t i = 0; i < framed.ByteCount(); ++i) {
            const int difference = std::abs(framed.Pixels()[i] - expected.Pixels()[i]);
            sum += difference;
            largest = std::max(largest, difference);
        }
        bytes += framed.ByteCount();
    }
    EXPECT_LT(sum / static_cast<double>(bytes), 0.5);
    EXPECT_LE(largest, 40);
}

TEST(Frames, AreTheSameForAnyNumberOfThreads) {
    const Bitmap picture = TestPictures::Noise(331, 517, 6, false);
    const FrameBuilder::Strip strip = PlainStrip(21, 13);
    const FrameBuilder::NinePart nine = PlainNine(19, 11);
    FrameBuilder::Overlay overlay;
    overlay.picture = TestPictures::Noise(120, 90, 7, false);
    overlay.blendMode = BlendScreen;
    const auto all = [&] {
        CXuanCaiFrame frame;
        EXPECT_TRUE(Load(frame, overlay.File()));
        Bitmap framed = picture;
        EXPECT_TRUE(frame.Compose(framed));
        return std::vector<Bitmap>{Composed<CStripFrame>(strip, picture), Composed<CNinePartFrame>(nine, picture),
                                   Composed<CStripFrame>(strip, picture, 1.3f), framed};
    };
    SetWorkerCount(1);
    const std::vector<Bitmap> expected = all();
    for (const int threads : {2, 3, 16}) {
        SetWorkerCount(threads);
        EXPECT_EQ(all(), expected) << threads;
    }
    SetWorkerCount(0);
}

TEST(Frames, StopWhenTheyAreAskedToAndReportUpToTheEnd) {
    class Sink : public CObjProgress {
      public:
        explicit Sink(float stopAt) : m_stopAt(stopAt) {}
        int CanContinue() override { return m_fValue < m_stopAt; }

      private:
        float m_stopAt;
    };
    const Bitmap picture = TestPictures::Face(300, 800);
    CStripFrame strip;
    CXuanCaiFrame overlay;
    FrameBuilder::Overlay file;
    file.picture = TestPictures::Noise(20, 30, 2, false);
    ASSERT_TRUE(Load(strip, PlainStrip(9, 4).File()));
    ASSERT_TRUE(Load(overlay, file.File()));
    for (const float stopAt : {30.0f, 1000.0f}) {
        Sink first(stopAt), second(stopAt);
        const bool stops = stopAt < 100;
        EXPECT_EQ(strip.Compose(picture, 1.0f, {&first, 10, 80}).IsNull(), stops);
        Bitmap framed = picture;
        EXPECT_EQ(overlay.Compose(framed, {&second, 10, 80}), !stops);
        EXPECT_EQ(framed == picture, stops);
        if (!stops) {
            EXPECT_EQ(first.GetValue(), 80);
            EXPECT_EQ(second.GetValue(), 80);
        }
    }
}

TEST(Frames, AScaleThatIsNoneIsRefused) {
    CStripFrame strip;
    CNinePartFrame nine;
    ASSERT_TRUE(Load(strip, PlainStrip(5, 4).File()));
    ASSERT_TRUE(Load(nine, PlainNine(5, 4).File()));
    const Bitmap picture = TestPictures::Face(20, 20);
    for (const float scale : {0.0f, -1.0f, std::numeric_limits<float>::quiet_NaN(),
                              std::numeric_limits<float>::infinity(), 1e-30f, 1e30f}) {
        EXPECT_TRUE(strip.Compose(picture, scale).IsNull()) << scale;
        EXPECT_TRUE(nine.Compose(picture, scale).IsNull()) << scale;
    }
    EXPECT_TRUE(strip.Compose({}, 1.0f).IsNull());
    EXPECT_TRUE(CStripFrame().Compose(picture, 1.0f).IsNull());
    EXPECT_TRUE(CNinePartFrame().Compose(picture, 1.0f).IsNull());
    Bitmap untouched = picture;
    EXPECT_FALSE(CXuanCaiFrame().Compose(untouched));
    EXPECT_EQ(untouched, picture);
}

TEST(Frames, AFailedLoadHoldsNoFrame) {
    CStripFrame strip;
    ASSERT_TRUE(Load(strip, PlainStrip(5, 4).File()));
    EXPECT_FALSE(strip.Load(QStringLiteral("/no/such/file.nlf")));
    EXPECT_EQ(strip.Fault(), FrameFault::Unreadable);
    EXPECT_TRUE(strip.Compose(TestPictures::Face(9, 9), 1.0f).IsNull());
}
