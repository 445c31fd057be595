// SPDX-License-Identifier: GPL-3.0-or-later
#include "RotateState.h"

#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <random>
#include <string_view>

#include "PC_Dsp.h"
#include "TestPictures.h"

namespace {

// L and R turn, X flips left-right, Y top-bottom.
RotateState After(std::string_view operations) {
    RotateState state;
    for (const char operation : operations) {
        if (operation == 'L') state.TurnLeft();
        if (operation == 'R') state.TurnRight();
        if (operation == 'X') state.FlipLeftRight();
        if (operation == 'Y') state.FlipTopBottom();
    }
    return state;
}

Bitmap PictureAfter(std::string_view operations, Bitmap picture) {
    for (const char operation : operations)
        PC_Dsp::SingleRotate(picture, operation == 'L'   ? Rotate270FlipNone
                                      : operation == 'R' ? Rotate90FlipNone
                                      : operation == 'X' ? RotateNoneFlipX
                                                         : RotateNoneFlipY);
    return picture;
}

}  // namespace

TEST(RotateState, BeginsUnchanged) {
    EXPECT_TRUE(RotateState().IsUnchanged());
    EXPECT_EQ(RotateState().FlipX(), 1);
    EXPECT_EQ(RotateState().FlipY(), 1);
}

TEST(RotateState, FourTurnsEitherWayAreUnchanged) {
    EXPECT_TRUE(After("RRRR").IsUnchanged());
    EXPECT_TRUE(After("LLLL").IsUnchanged());
    EXPECT_EQ(After("RRRR").QuarterTurns(), 4);
    EXPECT_EQ(After("LLLL").QuarterTurns(), -4);
    EXPECT_TRUE(After("RL").IsUnchanged());
    for (const char* some : {"R", "RR", "RRR", "L", "RRRRR"}) EXPECT_FALSE(After(some).IsUnchanged()) << some;
}

TEST(RotateState, AFlipTwiceIsUnchanged) {
    EXPECT_EQ(After("X").FlipX(), -1);
    EXPECT_EQ(After("XX").FlipX(), 1);
    EXPECT_TRUE(After("XX").IsUnchanged());
    EXPECT_EQ(After("Y").FlipY(), -1);
    EXPECT_EQ(After("YY").FlipY(), 1);
    EXPECT_TRUE(After("YY").IsUnchanged());
}

TEST(RotateState, FlippingBothWaysIsAChangeAndSoIsAHalfTurn) {
    EXPECT_FALSE(After("XY").IsUnchanged());
    EXPECT_FALSE(After("RR").IsUnchanged());
    // The picture is upright again, but operations are counted.
    EXPECT_FALSE(After("XYRR").IsUnchanged());
}

TEST(RotateState, CountsAloneDoNotMakeItUnchanged) {
    EXPECT_EQ(After("XRXRRR").QuarterTurns() % 4, 0);
    EXPECT_EQ(After("XRXRRR").FlipX(), 1);
    EXPECT_FALSE(After("XRXRRR").IsUnchanged());
}

TEST(RotateState, IsNeverUnchangedWhileThePictureIsTurned) {
    const Bitmap picture = TestPictures::Noise(4, 3, 7);
    std::mt19937 random(5);
    int unchanged = 0;
    for (int run = 0; run < 3000; ++run) {
        std::string operations;
        for (auto length = random() % 9; operations.size() < length;) operations += "LRXY"[random() % 4];
        const RotateState state = After(operations);
        const bool upright = PictureAfter(operations, picture) == picture;
        const bool counted = state.QuarterTurns() % 4 == 0 && state.FlipX() == 1 && state.FlipY() == 1;
        EXPECT_EQ(state.IsUnchanged(), upright && counted) << operations;
        unchanged += state.IsUnchanged();
    }
    EXPECT_GT(unchanged, 100);
}

TEST(RotateState, AnAngleIsAChangeAndAMirrorTurnsItRound) {
    RotateState state;
    state.SetAngle(15);
    EXPECT_FALSE(state.IsUnchanged());
    state.TurnRight();
    EXPECT_EQ(state.Angle(), 15);
    state.FlipLeftRight();
    EXPECT_EQ(state.Angle(), -15);
    state.FlipTopBottom();
    EXPECT_EQ(state.Angle(), 15);
    state.SetAngle(INT_MIN);
    state.FlipLeftRight();
    EXPECT_EQ(state.Angle(), INT_MAX);
}

TEST(RotateState, IsLikeWhatWasRecordedOnlyWithTheSameOperations) {
    EXPECT_TRUE(After("RX").IsLike(After("RRRRRX")));
    EXPECT_FALSE(After("RX").IsLike(After("XR")));
    EXPECT_FALSE(After("RX").IsUnchanged());
}
