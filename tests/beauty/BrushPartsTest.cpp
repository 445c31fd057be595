// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QtCore/QFile>

#include "BrushKernels.h"
#include "BrushMask.h"
#include "BrushMix.h"
#include "BrushPlace.h"
#include "PC_Dsp.h"
#include "PlainBrush.h"
#include "TestHome.h"
#include "TestPictures.h"

TEST(BrushTip, TheRadiusIsHalfThePenInPicturePixelsAndNeverBelowTwo) {
    EXPECT_EQ(BrushTip::RadiusOf(40, 1.0), 20);
    EXPECT_EQ(BrushTip::RadiusOf(40, 0.2), 100);
    EXPECT_EQ(BrushTip::RadiusOf(41, 1.0), 20) << "cut off, not rounded";
    EXPECT_EQ(BrushTip::RadiusOf(2, 1.0), 2);
    EXPECT_EQ(BrushTip::RadiusOf(8, 4.0), 2);
}

TEST(BrushTip, ARadiusOfOneLeavesTheDiscAsItWas) {
    BrushTip tip(PC_Dsp::Circle_Gradient_Alpha);
    tip.Rebuild(10);
    tip.Rebuild(1);
    EXPECT_EQ(tip.Side(), 20);
}

TEST(BrushPlace, TheStampsCornerIsTheBrushsCornerInPicturePixels) {
    EXPECT_EQ(StampPlace({100, 80}, 40, 1.0, {400, 300}), QPoint(80, 60));
    EXPECT_EQ(StampPlace({100, 80}, 40, 0.5, {400, 300}), QPoint(160, 120));
    EXPECT_EQ(StampPlace({101, 83}, 41, 2.0, {400, 300}), QPoint(40, 31)) << "cut off towards zero";
}

TEST(BrushPlace, AStampThatWouldBeginAtColumnOrRowZeroBeginsFivePixelsBefore) {
    EXPECT_EQ(StampPlace({20, 80}, 40, 1.0, {400, 300}), QPoint(-5, 60));
    EXPECT_EQ(StampPlace({100, 20}, 40, 1.0, {400, 300}), QPoint(80, -5));
    EXPECT_EQ(StampPlace({20, 20}, 40, 1.0, {400, 300}), QPoint(-5, -5));
    EXPECT_EQ(StampPlace({21, 80}, 40, 2.0, {400, 300}), QPoint(-5, 30)) << "a place that is cut off to 0 counts too";
    EXPECT_EQ(StampPlace({17, 80}, 40, 1.0, {400, 300}), QPoint(-3, 60));
}

TEST(BrushPlace, TheMarginIsOnePenToTheLeftAndAboveAndNothingOnTheOtherSides) {
    EXPECT_EQ(StampPlace({-40, 80}, 40, 1.0, {400, 300}), QPoint(-40, 60)) << "held at a pen before the edge";
    EXPECT_EQ(StampPlace({-60, 80}, 40, 1.0, {400, 300}), std::nullopt);
    EXPECT_EQ(StampPlace({419, 80}, 40, 1.0, {400, 300}), QPoint(399, 60));
    EXPECT_EQ(StampPlace({420, 80}, 40, 1.0, {400, 300}), std::nullopt);
    EXPECT_EQ(StampPlace({100, 320}, 40, 1.0, {400, 300}), std::nullopt);
}

TEST(BrushPlace, AClickTakesWhatOfThePenLiesInThePictureAndInTheMargin) {
    EXPECT_EQ(PenPlace({100, 80}, 40, 1.0, {400, 300}), QRect(80, 60, 40, 40));
    EXPECT_EQ(PenPlace({100, 80}, 40, 0.5, {400, 300}), QRect(160, 120, 80, 80));
    EXPECT_EQ(PenPlace({390, 295}, 40, 1.0, {400, 300}), QRect(370, 275, 30, 25)) << "it ends with the picture";
    EXPECT_EQ(PenPlace({20, 20}, 40, 1.0, {400, 300}), QRect(-5, -5, 45, 45));
    EXPECT_EQ(PenPlace({5, 9}, 40, 2.0, {400, 300}), QRect(-7, -5, 19, 19)) << "cut off towards zero";
    EXPECT_EQ(PenPlace({100, 80}, 0, 1.0, {400, 300}), std::nullopt);
    EXPECT_EQ(PenPlace({100, 80}, 1, 1.0, {400, 300}), std::nullopt);
}

TEST(BrushPlace, TheNextStampComesAfterAQuarterOfTheSide) {
    EXPECT_FALSE(IsFarEnough({0, 0}, {4, 5}, 40));
    EXPECT_TRUE(IsFarEnough({0, 0}, {4, 6}, 40));
    EXPECT_TRUE(IsFarEnough({0, 0}, {-10, 0}, 40));
    EXPECT_FALSE(IsFarEnough({3, 3}, {3, 3}, 4));
    EXPECT_TRUE(IsFarEnough({3, 3}, {3, 4}, 4)) << "the smallest disc stamps at every pixel";
    EXPECT_TRUE(IsFarEnough({3, 3}, {3, 4}, 7)) << "the quarter is cut off";
}

TEST(BrushPlace, AStampCoversWhatOfItLiesInThePicture) {
    EXPECT_EQ(StampedPart({-5, -5}, 40, {400, 300}), QRect(0, 0, 35, 35));
    EXPECT_EQ(StampedPart({390, 290}, 40, {400, 300}), QRect(390, 290, 10, 10));
    EXPECT_TRUE(StampedPart({-5, 10}, 4, {400, 300}).isEmpty());
}

TEST(BrushMask, KeepsItsBytesInAFileAndRefusesOthers) {
    const QString path = TestHome::Path() + QStringLiteral("/mask.bin");
    BrushMask mask({33, 20});
    mask.MutableBytes()[5 * mask.Stride() + 32] = 200;
    ASSERT_TRUE(mask.Save(path));
    EXPECT_TRUE(BrushMask::Read(path, {33, 20}) == mask);
    EXPECT_TRUE(BrushMask::Read(path, {60, 20}).IsNull());
    EXPECT_TRUE(BrushMask::Read(path, {33, 21}).IsNull());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.resize(file.size() / 2);
    EXPECT_TRUE(BrushMask::Read(path, {33, 20}).IsNull());
    QFile::remove(path);
    EXPECT_TRUE(BrushMask::Read(path, {33, 20}).IsNull());
}

TEST(BrushMask, ItsPictureIsGreyAndOpaque) {
    BrushMask mask({5, 3});
    mask.MutableBytes()[1 * mask.Stride() + 4] = 77;
    const Bitmap picture = mask.Picture();
    EXPECT_EQ(TestPictures::PixelAt(picture, 4, 1), 0xFF4D4D4Du);
    EXPECT_EQ(TestPictures::PixelAt(picture, 3, 1), 0xFF000000u);
}

namespace {

// Every row of a stamp and every pixel of a composition against the twin, at all places around the picture's edge.
void ExpectPlainTwin() {
    const Bitmap picture = TestPictures::Noise(61, 47, 1), effect = TestPictures::Noise(61, 47, 2);
    for (const auto shape : {PC_Dsp::Circle_Gradient_Alpha, PC_Dsp::Circle_Gradient_Alpha2Eye}) {
        PlainBrush plain;
        plain.Take(picture, effect);
        Bitmap working = picture;
        BrushMask mask({61, 47});
        BrushTip tip(shape);
        int n = 0;
        for (const QPoint place : {QPoint(-5, -5), QPoint(20, 10), QPoint(50, 40), QPoint(58, -9), QPoint(-30, 20),
                                   QPoint(22, 14), QPoint(10, 44)}) {
            const int radius = 2 + 5 * (n % 4);
            const bool erase = n++ % 3 == 2;
            const double weight = erase ? 0.0 : 255 * (0.37 / 255.0);
            tip.Rebuild(radius);
            const Stamp stamp{tip, place, StampedPart(place, tip.Side(), {61, 47})};
            if (!stamp.part.isEmpty()) {
                LayStamp(stamp, picture, effect, weight, working);
                LayStamp(stamp, !erase, mask);
            }
            plain.Stamp(shape, radius, place.x(), place.y(), erase, weight, true);
            ASSERT_TRUE(working == plain.working) << n;
        }
        for (int y = 0; y < 47; ++y)
            for (int x = 0; x < 61; ++x) ASSERT_EQ(mask.Row(y)[x], plain.mask[std::size_t(y) * 61 + x]);
        for (const double strength : {0.0, 0.29, 0.5, 1.0}) {
            Bitmap composed = picture;
            MixByMask(picture, effect, mask, strength, composed);
            EXPECT_TRUE(composed == plain.Composed(strength)) << strength;
            Bitmap viewed = picture;
            MixByMask(picture, effect, mask.Picture(), strength, viewed);
            EXPECT_TRUE(viewed == composed) << strength;
        }
    }
}

}  // namespace

TEST(BrushMix, EqualsThePlainTwinInEveryInstructionSet) {
    for (int set = 0; set < KernelSetCount(); ++set) {
        SCOPED_TRACE(BrushKernelSet(set).name);
        SelectKernelSet(set);
        ExpectPlainTwin();
    }
    SelectKernelSet(-1);
}
