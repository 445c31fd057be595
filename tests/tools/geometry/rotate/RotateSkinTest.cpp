// SPDX-License-Identifier: GPL-3.0-or-later
#include "RotateHost.h"

namespace {

constexpr const char* Buttons[] = {"BtnZuoXuanZhuan", "BtnYouXuanZhuan", "BtnZuoYouFanZhuan", "BtnShangXiaFanZhuan",
                                   "BtnChongZhi"};

// Both languages, each control by its exact name.
class RotateSkin : public testing::TestWithParam<const char*> {
  protected:
    RotateSkin() : host(QString::fromLatin1(GetParam())) {}
    RotateHost host;
};

TEST_P(RotateSkin, TheSliderGoesHalfATurnEitherWayInDegrees) {
    EXPECT_EQ(host.Slider()->minimum(), -180);
    EXPECT_EQ(host.Slider()->maximum(), 180);
    EXPECT_EQ(host.Slider()->singleStep(), 1);
    EXPECT_EQ(host.Slider()->pageStep(), 15);
    EXPECT_EQ(host.Slider()->value(), 0);
    EXPECT_EQ(host.Slider()->Neutral(), 0);
    EXPECT_TRUE(host.Slider()->TrackColors().isEmpty());
}

TEST_P(RotateSkin, EveryControlIsThereUnderItsNameAndExplainsItself) {
    std::vector<const char*> names(std::begin(Buttons), std::end(Buttons));
    names.push_back("SlideRenYiXuanZhuan");
    for (const char* name : names) {
        const QWidget* control = host.Control(name);
        EXPECT_FALSE(control->accessibleName().isEmpty()) << name;
        EXPECT_FALSE(control->toolTip().isEmpty()) << name;
        EXPECT_NE(control->focusPolicy() & Qt::TabFocus, 0) << name;
    }
}

TEST_P(RotateSkin, StartsAtRest) {
    EXPECT_FALSE(host.Enabled("BtnChongZhi"));
    EXPECT_EQ(host.Value(), QString());
}

TEST_P(RotateSkin, NothingIsCutOffInTheColumn) {
    EXPECT_LE(host.panel->minimumSizeHint().width(), 250);
    for (const char* name : Buttons) {
        const QWidget* button = host.Control(name);
        EXPECT_GE(button->width(), button->sizeHint().width()) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, RotateSkin, testing::Values("1033", "2052"));

}  // namespace
