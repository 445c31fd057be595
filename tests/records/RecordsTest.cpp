// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <set>

#include "AdjustParams.h"
#include "CHistoryStep.h"
#include "EffectParams.h"
#include "FrameParams.h"
#include "ImageParams.h"
#include "TestPictures.h"

namespace {

// A record whose every field is other than its default.
template <class Record>
Record Filled();

template <>
AutoOptimizeParams Filled() {
    AutoOptimizeParams r;
    r.ScenarioIndex = 3;
    r.path = QStringLiteral("scene.bin");
    return r;
}

template <>
BasicAdjustParams Filled() {
    BasicAdjustParams r;
    r.Brightness = 1;
    r.Contrast = 2;
    r.Saturation = 3;
    r.Sharpness = -4;
    r.Unused = 5;
    return r;
}

template <>
AdvanceAdjustParams Filled() {
    AdvanceAdjustParams r;
    r.Pairs = {{1, 2}, {-3, 4}};
    r.Exposure = 1;
    r.Hue = 2;
    r.Red = 3;
    r.Green = 4;
    r.Blue = 5;
    r.First = 6;
    r.Second = 7;
    r.Unused = 8;
    return r;
}

template <>
EffectParams Filled() {
    EffectParams r;
    r.EffectIndex = 17;
    r.Alpha = 40;
    r.path = QStringLiteral("effect.bin");
    return r;
}

template <class Record>
class RecordTest : public testing::Test {};

template <>
FrameParams Filled() {
    FrameParams r;
    r.FramePath = QStringLiteral("frame.nlf");
    r.FrameType = FrameOrnate;
    r.Alpha = 30;
    return r;
}

using Records = testing::Types<AutoOptimizeParams, BasicAdjustParams, AdvanceAdjustParams, EffectParams, FrameParams>;
TYPED_TEST_SUITE(RecordTest, Records);

TYPED_TEST(RecordTest, CloneIsOfTheSameClassWithOrderAndEveryField) {
    TypeParam record = Filled<TypeParam>();
    record.order = 9;
    ASSERT_FALSE(record == TypeParam());
    const std::unique_ptr<CUndoRedoParams> clone = record.Clone();
    EXPECT_EQ(clone->GetType(), TypeParam::Type);
    ASSERT_TRUE(RecordAs<TypeParam>(*clone));
    EXPECT_TRUE(*RecordAs<TypeParam>(*clone) == record);
}

TYPED_TEST(RecordTest, OrderCountsInEquality) {
    TypeParam a = Filled<TypeParam>(), b = a;
    EXPECT_TRUE(a == b);
    b.order = 1;
    EXPECT_FALSE(a == b);
}

TEST(Records, TypeNumbersAreTheKnownOnes) {
    EXPECT_EQ(AutoOptimizeParams().GetType(), 1);
    EXPECT_EQ(BasicAdjustParams().GetType(), 2);
    EXPECT_EQ(AdvanceAdjustParams().GetType(), 3);
    EXPECT_EQ(EffectParams().GetType(), 4);
    EXPECT_EQ(FrameParams().GetType(), 6);
    EXPECT_EQ(ImageParams().GetType(), 8);
}

TEST(Records, DefaultsAreTheKnownOnes) {
    EXPECT_EQ(AutoOptimizeParams().ScenarioIndex, 0);
    const BasicAdjustParams basic;
    EXPECT_EQ(std::set({basic.Brightness, basic.Contrast, basic.Saturation, basic.Sharpness, basic.Unused}),
              std::set({0}));
    const AdvanceAdjustParams advance;
    EXPECT_TRUE(advance.Pairs.empty());
    EXPECT_EQ(std::set({advance.Exposure, advance.Hue, advance.Red, advance.Green, advance.Blue, advance.First,
                        advance.Second, advance.Unused}),
              std::set({0}));
    EXPECT_EQ(EffectParams().EffectIndex, -1);
    EXPECT_EQ(EffectParams().Alpha, 100);
    EXPECT_TRUE(FrameParams().FramePath.isEmpty());
    EXPECT_EQ(FrameParams().FrameType, FrameNone);
    EXPECT_EQ(FrameParams().Alpha, 100);
    EXPECT_TRUE(ImageParams().path.isEmpty());
    EXPECT_TRUE(ImageParams().image.IsNull());
    EXPECT_FALSE(ImageParams().save);
}

TEST(Records, RecordAsRefusesAnotherClassAlsoADerivedOne) {
    EXPECT_FALSE(RecordAs<BasicAdjustParams>(AutoOptimizeParams()));
    struct Faded : ParamsOf<Faded, 44, EffectParams> {};
    EXPECT_FALSE(RecordAs<EffectParams>(Faded()));
}

TEST(Records, BasicIsDefaultUnlessOneOfItsFourValuesIsSet) {
    BasicAdjustParams unused;
    unused.Unused = 7;
    EXPECT_TRUE(unused.IsDefault());
    for (int BasicAdjustParams::*field : {&BasicAdjustParams::Brightness, &BasicAdjustParams::Contrast,
                                          &BasicAdjustParams::Saturation, &BasicAdjustParams::Sharpness}) {
        BasicAdjustParams record;
        record.*field = -1;
        EXPECT_FALSE(record.IsDefault());
    }
}

TEST(Records, AdvanceCountsItsPairsAndItsTwoSpareWordsAsSet) {
    AdvanceAdjustParams unused;
    unused.Unused = 7;
    EXPECT_TRUE(unused.IsDefault());
    AdvanceAdjustParams pairs;
    pairs.Pairs = {{0, 0}};
    EXPECT_FALSE(pairs.IsDefault());
    for (int AdvanceAdjustParams::*field :
         {&AdvanceAdjustParams::Exposure, &AdvanceAdjustParams::Hue, &AdvanceAdjustParams::Red,
          &AdvanceAdjustParams::Green, &AdvanceAdjustParams::Blue, &AdvanceAdjustParams::First,
          &AdvanceAdjustParams::Second}) {
        AdvanceAdjustParams record;
        record.*field = 1;
        EXPECT_FALSE(record.IsDefault());
    }
}

TEST(Records, SceneIsDefaultWithoutAnIndexWhateverItsPath) {
    AutoOptimizeParams record;
    record.path = QStringLiteral("left over");
    EXPECT_TRUE(record.IsDefault());
    record.ScenarioIndex = 1;
    EXPECT_FALSE(record.IsDefault());
}

TEST(Records, CloneOfAdvanceOwnsItsPairs) {
    AdvanceAdjustParams record = Filled<AdvanceAdjustParams>();
    const std::unique_ptr<CUndoRedoParams> clone = record.Clone();
    record.Pairs[0].first = 99;
    EXPECT_EQ(RecordAs<AdvanceAdjustParams>(*clone)->Pairs[0].first, 1);
}

TEST(Records, CloneOfPixelRecordNeverAsksForAFileAndSharesThePixels) {
    ImageParams record;
    record.order = 2;
    record.path = QStringLiteral("a.bin");
    record.image = TestPictures::Noise(2, 2, 1);
    record.save = true;
    const std::unique_ptr<CUndoRedoParams> clone = record.Clone();
    const ImageParams* image = RecordAs<ImageParams>(*clone);
    ASSERT_TRUE(image);
    EXPECT_FALSE(image->save);
    EXPECT_EQ(image->order, 2);
    EXPECT_EQ(image->path, record.path);
    EXPECT_TRUE(image->image.SharesPixelsWith(record.image));
}

}  // namespace
