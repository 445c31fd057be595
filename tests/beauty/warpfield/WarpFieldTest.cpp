// SPDX-License-Identifier: GPL-3.0-or-later
// The displacement field against its plain twin, and what every step owes the picture.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "InstructionSets.h"
#include "Parallel.h"
#include "TestPictures.h"
#include "WarpTwins.h"

namespace {

constexpr int Modes[] = {CWarpField::Grow,   CWarpField::Shrink,    CWarpField::Move,
                         CWarpField::Remove, CWarpField::SwirlLeft, CWarpField::SwirlRight};

class Warp : public testing::Test {
  protected:
    void TearDown() override {
        SetWorkerCount(0);
        SelectKernelSet(-1);
    }
};

class EveryWarpMode : public Warp, public testing::WithParamInterface<int> {};

bool IsUntouched(const CWarpField& field) {
    if (!(field.Output() == field.Source())) return false;
    for (int y = 0; y < field.Height(); ++y)
        for (int x = 0; x < field.Width(); ++x)
            if (field.FieldAt(x, y)[0] != 0.0f || field.FieldAt(x, y)[1] != 0.0f) return false;
    return true;
}

}  // namespace

TEST_P(EveryWarpMode, IsTheFormulaBitForBitWithEveryInstructionSet) {
    for (int set = 0; set < KernelSetCount(); ++set) {
        SelectKernelSet(set);
        std::mt19937 random(7 + GetParam());
        const auto within = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
        // Larger than two tiles, so that brushes lie across their borders.
        WarpTwins twins(TestPictures::Noise(311, 277, 5), 40, 0.8);
        for (int stroke = 0; stroke < 14; ++stroke) {
            // Something is pushed first, so that a mode has a field to work on.
            const int mode = stroke % 2 ? GetParam() : CWarpField::Move;
            twins.SetBrush(3 + within(90), 0.05 + 0.01 * within(120));
            const int x = within(311), y = within(277);
            ASSERT_TRUE(twins.Deform(x, y, std::clamp(x + within(81) - 40, 0, 310),
                                     std::clamp(y + within(81) - 40, 0, 276), mode));
            ASSERT_TRUE(twins.Agree()) << WarpKernelsInUse().name << ", stroke " << stroke;
        }
    }
}

TEST_P(EveryWarpMode, IsTheFormulaInEveryCornerAndForEveryBrush) {
    for (const auto& [width, height] : {std::pair(1, 1), std::pair(1, 40), std::pair(40, 1), std::pair(2, 2),
                                        std::pair(37, 53), std::pair(129, 257)}) {
        WarpTwins twins(TestPictures::Noise(width, height, 3), 20, 1.0);
        for (const int radius : {-5, 0, 1, 2, 3, 7, 20, 64, 1500}) {
            twins.SetBrush(radius, 0.9);
            for (const auto& [x, y] : {std::pair(0, 0), std::pair(width - 1, 0), std::pair(0, height - 1),
                                       std::pair(width - 1, height - 1), std::pair(width / 2, height / 2)}) {
                twins.Deform(x, y, width / 2, height / 3, GetParam());
                ASSERT_TRUE(twins.Agree())
                    << width << " x " << height << ", radius " << radius << " at " << x << ", " << y;
            }
        }
    }
}

TEST_P(EveryWarpMode, GivesTheSameBytesForAnyNumberOfThreads) {
    const Bitmap picture = TestPictures::Noise(701, 597, 4);
    const auto after = [&](int threads) {
        SetWorkerCount(threads);
        CWarpField field;
        field.SetImage(&picture, nullptr);
        field.SetRadius(260);
        field.SetAmount(0.7);
        field.Deform(330, 300, 200, 280, CWarpField::Move);
        field.Deform(340, 310, 330, 300, GetParam());
        return field.Output();
    };
    const Bitmap alone = after(1);
    EXPECT_GT(TestPictures::LargestDifference(alone, picture), 0);
    for (const int threads : {2, 3, 16}) EXPECT_TRUE(after(threads) == alone) << threads;
}

TEST_P(EveryWarpMode, MovesNothingOutsideOfTheDiscAndNothingOnTheBorder) {
    const Bitmap picture = TestPictures::Noise(200, 150, 8);
    CWarpField field;
    field.SetImage(&picture, nullptr);
    field.SetAmount(1.0);
    field.SetRadius(40);
    field.Deform(100, 75, 90, 70, CWarpField::Move);
    field.Deform(100, 75, 90, 70, GetParam());
    for (int y = 0; y < 150; ++y)
        for (int x = 0; x < 200; ++x)
            if (std::hypot(x - 100, y - 75) >= 40 && std::hypot(x - 95, y - 72) >= 46) {
                ASSERT_EQ(field.FieldAt(x, y)[0], 0.0f) << x << ", " << y;
                ASSERT_EQ(field.FieldAt(x, y)[1], 0.0f) << x << ", " << y;
                ASSERT_EQ(TestPictures::PixelAt(field.Output(), x, y), TestPictures::PixelAt(picture, x, y));
            }
    for (const auto& [x, y] : {std::pair(0, 0), std::pair(199, 75), std::pair(100, 149), std::pair(0, 149)})
        field.Deform(x, y, 100, 75, GetParam());
    for (int x = 0; x < 200; ++x)
        for (const int y : {0, 149}) {
            ASSERT_EQ(field.FieldAt(x, y)[0], 0.0f) << x << ", " << y;
            ASSERT_EQ(field.FieldAt(x, y)[1], 0.0f) << x << ", " << y;
            ASSERT_EQ(TestPictures::PixelAt(field.Output(), x, y), TestPictures::PixelAt(picture, x, y));
        }
}

TEST_P(EveryWarpMode, NoEntryPointsOutsideOfThePicture) {
    std::mt19937 random(11);
    const Bitmap picture = TestPictures::Noise(90, 70, 2);
    CWarpField field;
    field.SetImage(&picture, nullptr);
    for (int stroke = 0; stroke < 60; ++stroke) {
        field.SetRadius(5 + static_cast<int>(random() % 80));
        field.SetAmount(1.0);
        const int mode = stroke % 3 ? GetParam() : CWarpField::Move;
        field.Deform(static_cast<int>(random() % 90), static_cast<int>(random() % 70), static_cast<int>(random() % 90),
                     static_cast<int>(random() % 70), mode);
        for (int y = 0; y < 70; ++y)
            for (int x = 0; x < 90; ++x) {
                const float* const at = field.FieldAt(x, y);
                ASSERT_TRUE(x + double(at[0]) >= 0 && x + double(at[0]) <= 89) << x << ": " << at[0];
                ASSERT_TRUE(y + double(at[1]) >= 0 && y + double(at[1]) <= 69) << y << ": " << at[1];
            }
    }
}

INSTANTIATE_TEST_SUITE_P(Modes, EveryWarpMode, testing::ValuesIn(Modes));

TEST_F(Warp, AmountZeroAndNoNumberAreRefusedAndChangeNothing) {
    const Bitmap picture = TestPictures::Noise(60, 60, 1);
    CWarpField field;
    field.SetImage(&picture, nullptr);
    field.SetRadius(20);
    for (const double amount :
         {0.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        field.SetAmount(amount);
        EXPECT_FALSE(field.Deform(30, 30, 20, 20, CWarpField::Move));
    }
    EXPECT_TRUE(IsUntouched(field));
}

TEST_F(Warp, PointsOutsideAndUnknownModesAreRefused) {
    const Bitmap picture = TestPictures::Noise(60, 40, 1);
    CWarpField field;
    EXPECT_FALSE(field.Deform(0, 0, 0, 0, CWarpField::Move)) << "no picture";
    field.SetImage(&picture, nullptr);
    field.SetAmount(1.0);
    EXPECT_FALSE(field.Deform(30, 30, 20, 20, CWarpField::Move)) << "no radius";
    field.SetRadius(20);
    for (const auto& [x, y] : {std::pair(-1, 5), std::pair(60, 5), std::pair(5, -1), std::pair(5, 40)}) {
        EXPECT_FALSE(field.Deform(x, y, 20, 20, CWarpField::Grow));
        EXPECT_FALSE(field.Deform(20, 20, x, y, CWarpField::Grow));
    }
    for (const int mode : {-1, 6, 1000}) EXPECT_FALSE(field.Deform(30, 30, 20, 20, mode));
    EXPECT_TRUE(IsUntouched(field));
    EXPECT_TRUE(field.Deform(59, 39, 0, 0, CWarpField::Grow)) << "the last row and column are inside";
}

TEST_F(Warp, ADragThatDoesNotMoveIsOneStepWithoutMotion) {
    WarpTwins twins(TestPictures::Noise(80, 80, 6), 30, 0.5);
    EXPECT_TRUE(twins.Deform(40, 40, 40, 40, CWarpField::Move));
    EXPECT_TRUE(IsUntouched(twins.field));
    EXPECT_TRUE(twins.Agree());
}

TEST_F(Warp, ANegativeAmountShrinksWhateverWasAsked) {
    for (const int mode : Modes) {
        WarpTwins shrunk(TestPictures::Noise(100, 90, 6), 30, 0.6), negative(TestPictures::Noise(100, 90, 6), 30, -0.6);
        shrunk.Deform(50, 40, 30, 30, CWarpField::Shrink);
        negative.Deform(50, 40, 30, 30, mode);
        EXPECT_TRUE(negative.Agree());
        EXPECT_TRUE(negative.field.Output() == shrunk.field.Output()) << mode;
    }
}

TEST_F(Warp, TheLastRowAndColumnAreNeverWritten) {
    const Bitmap picture = TestPictures::Noise(64, 48, 9);
    CWarpField field;
    field.SetImage(&picture, nullptr);
    field.SetRadius(30);
    field.SetAmount(1.0);
    field.Deform(60, 44, 40, 30, CWarpField::Move);
    for (int x = 0; x < 64; ++x)
        ASSERT_EQ(TestPictures::PixelAt(field.Output(), x, 47), TestPictures::PixelAt(picture, x, 47));
    for (int y = 0; y < 48; ++y)
        ASSERT_EQ(TestPictures::PixelAt(field.Output(), 63, y), TestPictures::PixelAt(picture, 63, y));
    EXPECT_FALSE(field.Output() == picture);
}

TEST_F(Warp, APushedDotGoesWhereTheArithmeticSays) {
    // Ten pixels to the right at full strength, from the middle of the brush.
    Bitmap picture = TestPictures::Plain(200, 100, 0xFF000000);
    picture.MutablePixels()[picture.Stride() * 50 + 4 * 100 + 1] = 200;
    CWarpField field;
    field.SetImage(&picture, nullptr);
    field.SetRadius(60);
    field.SetAmount(1.0);
    field.Deform(110, 50, 100, 50, CWarpField::Move);
    EXPECT_FLOAT_EQ(field.FieldAt(110, 50)[0], -10.0f);
    EXPECT_EQ(field.Output().Row(50)[4 * 110 + 1], 200);
    EXPECT_EQ(field.Output().Row(50)[4 * 100 + 1], 0);
}

TEST_F(Warp, NearestSamplesCopyWholePixels) {
    WarpTwins twins(TestPictures::Noise(120, 110, 6), 40, 0.8);
    twins.field.SetBilinear(false);
    twins.plain.bilinear = false;
    twins.Deform(60, 50, 40, 52, CWarpField::Move);
    EXPECT_TRUE(twins.Agree());
}

TEST_F(Warp, TranslucentPicturesLieOnWhite) {
    Bitmap picture = TestPictures::Plain(8, 8, 0x80FF0000);
    std::uint8_t* const p = picture.MutablePixels();
    p[3] = 0;
    p[7] = 255;
    CWarpField field;
    field.SetImage(&picture, nullptr);
    EXPECT_EQ(TestPictures::PixelAt(field.Output(), 0, 0), 0xFFFFFFFFu);
    EXPECT_EQ(TestPictures::PixelAt(field.Output(), 1, 0), 0xFFFF0000u);
    EXPECT_EQ(TestPictures::PixelAt(field.Output(), 2, 0), 0xFFFF7F7Fu);
    EXPECT_TRUE(field.Output() == field.Source());
}

TEST_F(Warp, ANewPictureHasNothingPushedAndTheOldBrush) {
    const Bitmap first = TestPictures::Noise(100, 80, 1), second = TestPictures::Noise(70, 90, 2);
    std::mutex lock;
    CWarpField field;
    EXPECT_FALSE(field.SetImage(nullptr, &lock));
    const Bitmap none;
    EXPECT_FALSE(field.SetImage(&none, &lock));
    field.SetImage(&first, &lock);
    EXPECT_TRUE(lock.try_lock()) << "the lock is given back";
    lock.unlock();
    field.SetRadius(25);
    field.SetAmount(0.5);
    field.Deform(50, 40, 40, 40, CWarpField::Move);
    EXPECT_FALSE(field.SetImage(&none, &lock));
    EXPECT_EQ(field.Width(), 100) << "a null picture changes nothing";
    EXPECT_TRUE(field.SetImage(&second, nullptr));
    EXPECT_TRUE(IsUntouched(field));
    EXPECT_TRUE(field.Output() == second);
    EXPECT_EQ(field.Radius(), 25);
    EXPECT_TRUE(field.Deform(30, 30, 20, 30, CWarpField::Move));
}

TEST_F(Warp, DeferredStepsLeaveTheOutputUntilTheyAreSettled) {
    const Bitmap picture = TestPictures::Noise(300, 200, 1);
    CWarpField field;
    field.Settle();
    field.SetImage(&picture, nullptr);
    field.SetRadius(50);
    field.SetAmount(1.0);
    EXPECT_TRUE(field.DeformLater(150, 100, 130, 100, CWarpField::Move));
    EXPECT_TRUE(field.Output() == picture);
    EXPECT_NE(field.FieldAt(150, 100)[0], 0.0f);
    field.Settle();
    EXPECT_FALSE(field.Output() == picture);
    field.DeformLater(160, 100, 150, 100, CWarpField::Move);
    EXPECT_TRUE(field.SetImage(&picture, nullptr)) << "a new picture forgets what waits";
    field.Settle();
    EXPECT_TRUE(IsUntouched(field));
}

TEST_F(Warp, TheCallersPictureIsNeverWritten) {
    Bitmap picture = TestPictures::Noise(90, 80, 1);
    const Bitmap before = picture.Clone();
    CWarpField field;
    field.SetImage(&picture, nullptr);
    field.SetRadius(30);
    field.SetAmount(1.0);
    const Bitmap shown = field.Output();
    field.Deform(40, 40, 30, 30, CWarpField::Move);
    EXPECT_TRUE(picture == before);
    EXPECT_TRUE(shown == before) << "nor one that was handed out";
    EXPECT_TRUE(field.Source() == before);
}

TEST_F(Warp, TheFieldIsReadBetweenItsPixels) {
    WarpTwins twins(TestPictures::Noise(300, 200, 6), 60, 0.9);
    twins.Deform(130, 120, 110, 100, CWarpField::Move);
    double dx = 1.0, dy = 1.0;
    for (const auto& [x, y] :
         {std::pair(-0.1, 5.0), std::pair(299.0, 5.0), std::pair(5.0, -0.1), std::pair(5.0, 199.0)}) {
        dx = dy = 1.0;
        twins.field.SampleField(x, y, &dx, &dy);
        EXPECT_EQ(dx, 0.0);
        EXPECT_EQ(dy, 0.0);
    }
    // Across the border of two tiles.
    twins.field.SampleField(127.25, 127.5, &dx, &dy);
    const auto pair = [&](int x, int y) { return twins.field.FieldAt(x, y); };
    EXPECT_NEAR(dx,
                0.5 * (0.75 * pair(127, 127)[0] + 0.25 * pair(128, 127)[0]) +
                    0.5 * (0.75 * pair(127, 128)[0] + 0.25 * pair(128, 128)[0]),
                1e-6);
    EXPECT_NE(dx, 0.0);
}

// Deferred or not, and with other steps in between: once settled there is no difference, whatever is pushed over the
// border, where pixels lose what they point to and keep the colour that they had.
TEST_P(EveryWarpMode, StepsThatAreSampledLaterGiveTheSameBytes) {
    for (int set = 0; set < KernelSetCount(); ++set) {
        SelectKernelSet(set);
        std::mt19937 random(40 + GetParam());
        const auto within = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
        const Bitmap picture = TestPictures::Noise(311, 277, 5);
        CWarpField later, atOnce;
        later.SetImage(&picture, nullptr);
        atOnce.SetImage(&picture, nullptr);
        for (int act = 1; act <= 120; ++act) {
            const int radius = 3 + within(90), x = within(311), y = within(277);
            const int toX = std::clamp(x + within(121) - 40, 0, 310), toY = std::clamp(y + within(121) - 40, 0, 276);
            for (CWarpField* const field : {&later, &atOnce}) {
                field->SetRadius(radius);
                field->SetAmount(1.0);
            }
            const int mode = act % 2 ? GetParam() : CWarpField::Move;
            atOnce.Deform(toX, toY, x, y, mode);
            if (act % 11 == 0)
                later.Deform(toX, toY, x, y, mode);
            else
                later.DeformLater(toX, toY, x, y, mode);
            if (act % 30 != 0) continue;
            later.Settle();
            ASSERT_TRUE(later.Output() == atOnce.Output()) << WarpKernelsInUse().name << ", act " << act;
        }
    }
}

// Random drags, clicks, brushes and new pictures: whatever is done, both stay the same.
TEST_F(Warp, ALongRunOfRandomActsStaysTheFormula) {
    for (const unsigned seed : {1u, 2u, 3u}) {
        std::mt19937 random(seed);
        const auto within = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
        WarpTwins twins(TestPictures::Face(230, 190), 30, 0.3);
        int x = 100, y = 90;
        for (int act = 0; act < 150; ++act) {
            const int kind = within(12);
            if (kind == 0) twins.SetBrush(1 + within(120), 0.01 * (within(140) - 20));
            if (kind == 1) {
                x = within(250) - 10;
                y = within(210) - 10;
            }
            const int oldX = x, oldY = y;
            x += within(31) - 15;
            y += within(31) - 15;
            twins.Deform(x, y, oldX, oldY, kind < 8 ? CWarpField::Move : within(6));
        }
        EXPECT_TRUE(twins.Agree()) << "seed " << seed;
    }
}
