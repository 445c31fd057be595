// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtWidgets/QScrollArea>

#include "AdjustHost.h"
#include "CCardNode.h"

namespace {

// Both languages, each control by its exact name.
class AdjustSkin : public testing::TestWithParam<const char*> {
  protected:
    AdjustSkin() : host(QString::fromLatin1(GetParam())) {}
    AdjustHost host;
};

TEST_P(AdjustSkin, SlidersHaveTheRangeAndRestOfTheTable) {
    for (const AdjustSlider& row : AdjustSliders) {
        const CSliderCtrl* slider = host.Slider(row.control);
        ASSERT_NE(slider, nullptr) << row.control;
        EXPECT_EQ(slider->minimum(), row.minimum) << row.control;
        EXPECT_EQ(slider->maximum(), row.maximum) << row.control;
        EXPECT_EQ(slider->value(), AdjustSlider::Neutral) << row.control;
        EXPECT_EQ(slider->Neutral(), AdjustSlider::Neutral) << row.control;
        if (row.valueLabel) {
            EXPECT_NE(host.Control<QLabel>(row.valueLabel), nullptr) << row.valueLabel;
        }
    }
}

TEST_P(AdjustSkin, EveryControlIsThereUnderItsNameAndExplainsItself) {
    std::vector<const char*> names{"BtnMeiHuaRestart", "BtnJiChuRestart", "BtnGaoJiRestart", "NodeTiaoSe", "NodeGaoJi"};
    for (const AdjustScene& scene : AdjustScenes) names.push_back(scene.button);
    for (const AdjustSlider& row : AdjustSliders) names.push_back(row.control);
    for (const char* name : names) {
        const QWidget* control = host.Control(name);
        ASSERT_NE(control, nullptr) << name;
        EXPECT_FALSE(control->accessibleName().isEmpty()) << name;
        EXPECT_FALSE(control->toolTip().isEmpty()) << name;
        EXPECT_NE(control->focusPolicy() & Qt::TabFocus, 0) << name;
    }
}

TEST_P(AdjustSkin, ResetsStartDisabledAndScenesUnchosen) {
    for (const char* name : {"BtnMeiHuaRestart", "BtnJiChuRestart", "BtnGaoJiRestart"})
        EXPECT_FALSE(host.Control(name)->isEnabled()) << name;
    for (const AdjustScene& scene : AdjustScenes) {
        EXPECT_TRUE(host.Control<QAbstractButton>(scene.button)->isCheckable()) << scene.button;
        EXPECT_FALSE(host.Control<QAbstractButton>(scene.button)->isChecked()) << scene.button;
    }
}

TEST_P(AdjustSkin, BothCardsAreOpenAtTheStart) {
    EXPECT_FALSE(host.Control<CCardNode>("NodeTiaoSe")->IsFolded());
    EXPECT_FALSE(host.Control<CCardNode>("NodeGaoJi")->IsFolded());
    EXPECT_TRUE(host.Slider("Liangdu")->isVisible());
    EXPECT_TRUE(host.Slider("SliderB")->isVisible());
}

TEST_P(AdjustSkin, NothingIsCutOffInTheColumn) {
    const auto* area = host.Control<QScrollArea>("TreeAdjust");
    ASSERT_NE(area, nullptr);
    EXPECT_LE(area->widget()->minimumSizeHint().width(), area->viewport()->width());
}

INSTANTIATE_TEST_SUITE_P(Languages, AdjustSkin, testing::Values("1033", "2052"));

TEST(AdjustSkins, TheLanguagesDiffer) {
    QStringList english, chinese;
    for (auto [id, texts] : {std::pair{"1033", &english}, std::pair{"2052", &chinese}}) {
        AdjustHost host(QString::fromLatin1(id));
        for (const AdjustScene& scene : AdjustScenes) *texts << host.Control<QAbstractButton>(scene.button)->text();
        for (const AdjustSlider& row : AdjustSliders) *texts << host.Slider(row.control)->accessibleName();
    }
    for (qsizetype i = 0; i < english.size(); ++i) EXPECT_NE(english[i], chinese[i]);
}

}  // namespace
