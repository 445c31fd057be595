// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include "CSliderCtrl.h"

class Sliders : public testing::Test {
  protected:
    void SetUp() override {
        slider.setRange(-100, 100);
        slider.resize(214, 20);
        slider.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&slider));
    }
    CSliderCtrl slider;
};

TEST_F(Sliders, ADragTellsChangingOnTheWayAndChangedOnceAtTheEnd) {
    QSignalSpy changing(&slider, &CSliderCtrl::ValueChanging), changed(&slider, &CSliderCtrl::ValueChanged);
    QTest::mousePress(&slider, Qt::LeftButton, {}, slider.HandleAt(0));
    QTest::mouseMove(&slider, slider.HandleAt(20));
    QTest::mouseMove(&slider, slider.HandleAt(40));
    EXPECT_EQ(changed.count(), 0);
    EXPECT_GE(changing.count(), 2);
    QTest::mouseRelease(&slider, Qt::LeftButton, {}, slider.HandleAt(40));
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed[0][0].toInt(), 40);
    EXPECT_EQ(slider.value(), 40);
}

TEST_F(Sliders, APressAnywhereTakesTheHandleThere) {
    QTest::mouseClick(&slider, Qt::LeftButton, {}, slider.HandleAt(-60));
    EXPECT_EQ(slider.value(), -60);
}

TEST_F(Sliders, SettingFromCodeTellsNothing) {
    QSignalSpy changing(&slider, &CSliderCtrl::ValueChanging), changed(&slider, &CSliderCtrl::ValueChanged);
    slider.SetQuietly(33);
    slider.setValue(44);
    EXPECT_EQ(slider.value(), 44);
    EXPECT_EQ(changing.count() + changed.count(), 0);
}

TEST_F(Sliders, KeysSettleEachStep) {
    QSignalSpy changed(&slider, &CSliderCtrl::ValueChanged);
    QTest::keyClick(&slider, Qt::Key_Right);
    QTest::keyClick(&slider, Qt::Key_Right);
    QTest::keyClick(&slider, Qt::Key_Home);
    QTest::keyClick(&slider, Qt::Key_Home);
    EXPECT_EQ(slider.value(), -100);
    EXPECT_EQ(changed.count(), 3) << "a key that moves nothing tells nothing";
}

TEST_F(Sliders, ADoubleClickGoesBackToNeutral) {
    slider.SetNeutral(5);
    QSignalSpy changed(&slider, &CSliderCtrl::ValueChanged);
    QTest::mouseDClick(&slider, Qt::LeftButton, {}, slider.HandleAt(70));
    ASSERT_GE(changed.count(), 1);
    EXPECT_EQ(changed.last()[0].toInt(), 5);
}

TEST_F(Sliders, WithoutANeutralPointADoubleClickOnTheHandleChangesNothing) {
    slider.setRange(20, 400);
    slider.SetNeutral(0);
    slider.SetQuietly(150);
    QSignalSpy changed(&slider, &CSliderCtrl::ValueChanged);
    QTest::mouseDClick(&slider, Qt::LeftButton, {}, slider.HandleAt(150));
    QTest::keyClick(&slider, Qt::Key_Delete);
    EXPECT_EQ(slider.value(), 150);
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(Sliders, TheWheelBelongsToThePanelUntilTheSliderHasTheKeyboard) {
    slider.clearFocus();
    QWheelEvent away({10, 10}, slider.mapToGlobal(QPointF(10, 10)), {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&slider, &away);
    EXPECT_FALSE(away.isAccepted());
    EXPECT_EQ(slider.value(), 0);
}
