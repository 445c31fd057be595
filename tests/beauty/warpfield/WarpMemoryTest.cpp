// SPDX-License-Identifier: GPL-3.0-or-later
// Memory of the displacement field: no more than what was pushed, and calm where there is none.
#include <gtest/gtest.h>

#include <atomic>
#include <new>

#include "BlockAllocator.h"
#include "TestPictures.h"
#include "WarpTwins.h"

namespace {

// The n-th block of pixels, field or scratch from here on fails.
std::atomic<int> g_untilFailure{0};

bool MayTake(std::size_t) {
    return --g_untilFailure != 0;
}

struct FailingBlocks {
    explicit FailingBlocks(int nth) {
        g_untilFailure = nth;
        BlockAllocator::SetGuard(MayTake);
    }
    ~FailingBlocks() { BlockAllocator::SetGuard(nullptr); }
    static bool Failed() { return g_untilFailure <= 0; }
};

}  // namespace

TEST(WarpMemory, GrowsWithWhatWasPushed) {
    const Bitmap picture = TestPictures::Ramp(3000, 2000);
    CWarpField field;
    field.SetImage(&picture, nullptr);
    EXPECT_EQ(field.FieldBytes(), 0u);
    field.SetRadius(100);
    field.SetAmount(0.5);
    field.Deform(600, 600, 590, 600, CWarpField::Move);
    const std::size_t one = field.FieldBytes();
    EXPECT_GT(one, std::size_t{8} * 31400);
    EXPECT_LE(one, std::size_t{8} * 512 * 512);
    field.Deform(600, 600, 590, 600, CWarpField::Move);
    EXPECT_EQ(field.FieldBytes(), one) << "the same place again";
    field.Deform(2600, 1600, 2590, 1600, CWarpField::Move);
    EXPECT_GT(field.FieldBytes(), one);
    EXPECT_LT(field.FieldBytes(), std::size_t{8} * 3000 * 2000 / 10);
    field.SetImage(&picture, nullptr);
    EXPECT_EQ(field.FieldBytes(), 0u);
}

TEST(WarpMemory, RadiiBeyondAnyPictureAreHeld) {
    const Bitmap picture = TestPictures::Noise(50, 40, 1);
    CWarpField field;
    field.SetImage(&picture, nullptr);
    field.SetAmount(1.0);
    for (const int radius : {1025, 5000, CWarpField::MaxRadius}) {
        WarpTwins twins(picture, radius, 1.0);
        twins.Deform(40, 30, 10, 10, CWarpField::Move);
        twins.Deform(40, 30, 10, 10, CWarpField::Grow);
        EXPECT_TRUE(twins.Agree()) << radius;
    }
    field.SetRadius(2000000000);
    EXPECT_EQ(field.Radius(), CWarpField::MaxRadius);
}

TEST(WarpMemory, APictureThatFindsNoRoomLeavesTheOldOne) {
    const Bitmap first = TestPictures::Noise(300, 200, 1);
    Bitmap second = TestPictures::Noise(400, 300, 2, false);
    for (int nth = 1; nth <= 2; ++nth) {
        CWarpField field;
        field.SetImage(&first, nullptr);
        field.SetRadius(40);
        field.SetAmount(0.5);
        field.Deform(100, 100, 90, 90, CWarpField::Move);
        const Bitmap before = field.Output();
        {
            const FailingBlocks failing(nth);
            EXPECT_THROW(field.SetImage(&second, nullptr), std::bad_alloc);
            EXPECT_TRUE(FailingBlocks::Failed());
        }
        EXPECT_TRUE(field.Output() == before);
        EXPECT_NE(field.FieldAt(100, 100)[0], 0.0f);
        EXPECT_TRUE(field.Deform(100, 100, 90, 90, CWarpField::Move));
    }
}

TEST(WarpMemory, AnObjectThatNeverGotAPictureStaysCalm) {
    const Bitmap picture = TestPictures::Noise(300, 200, 1);
    CWarpField field;
    field.SetRadius(40);
    field.SetAmount(0.5);
    {
        const FailingBlocks failing(1);
        EXPECT_THROW(field.SetImage(&picture, nullptr), std::bad_alloc);
    }
    EXPECT_TRUE(field.Output().IsNull());
    EXPECT_FALSE(field.Deform(10, 10, 5, 5, CWarpField::Move));
    double dx = 1.0, dy = 1.0;
    field.SampleField(3.0, 3.0, &dx, &dy);
    EXPECT_EQ(dx, 0.0);
    Bitmap other = picture;
    field.ApplyAt(other, 10, 10, 1.0, 1.0);
    EXPECT_TRUE(other == picture);
}

TEST(WarpMemory, AStepThatFindsNoRoomIsNotHalfDone) {
    // Tiles of the field, the scratch, and the output when somebody else holds it: each fails in turn.
    int failures = 0;
    for (int nth = 1;; ++nth) {
        WarpTwins twins(TestPictures::Noise(300, 270, 1), 120, 0.7);
        const Bitmap held = twins.field.Output();
        bool failed = false;
        {
            const FailingBlocks failing(nth);
            try {
                twins.field.Deform(128, 130, 120, 130, CWarpField::Move);
            } catch (const std::bad_alloc&) {
                failed = true;
            }
        }
        if (!failed) break;
        ++failures;
        ASSERT_TRUE(twins.Agree()) << "block " << nth;
        // With room it goes on as if nothing had been.
        twins.Deform(128, 130, 120, 130, CWarpField::Move);
        ASSERT_TRUE(twins.Agree()) << "block " << nth;
    }
    EXPECT_GE(failures, 4);
}
