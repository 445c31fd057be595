// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtGui/QWheelEvent>

#include "PC_Dsp.h"
#include "ResizeHost.h"

namespace {

class ResizePanel : public testing::Test {
  protected:
    void SetUp() override {
        host.Open(TestPictures::Ramp(4000, 1000));
        host.Click("OptBaoChi");  // each side by itself, until a test says otherwise
    }
    ResizeHost host;
};

TEST(FreshResizePanel, KeepsTheProportions) {
    ResizeHost host;
    host.Open(TestPictures::Ramp(4000, 1000));
    EXPECT_TRUE(host.Checked("OptBaoChi"));
    EXPECT_FALSE(host.Enabled("BtnJianHuanChiCun"));
    host.Type("EditKuanDu", QStringLiteral("2000"));
    EXPECT_EQ(host.Fields(), QSize(2000, 500));
}

TEST_F(ResizePanel, TheFieldsShowThePicturesSizeOnEntry) {
    EXPECT_EQ(host.Fields(), QSize(4000, 1000));
    host.Open(TestPictures::Ramp(123, 45));
    EXPECT_EQ(host.Fields(), QSize(123, 45));
    EXPECT_FALSE(host.Checked("OptBaoChi"));
    EXPECT_TRUE(host.Enabled("BtnJianHuanChiCun"));
}

TEST_F(ResizePanel, NumbersAreCorrectedWhileTyping) {
    host.Type("EditKuanDu", QStringLiteral("0"));
    EXPECT_EQ(host.Text("EditKuanDu"), QStringLiteral("1"));
    host.Type("EditKuanDu", QString());
    EXPECT_EQ(host.Text("EditKuanDu"), QStringLiteral("1"));
    host.Type("EditGaoDu", QStringLiteral("12000"));
    EXPECT_EQ(host.Text("EditGaoDu"), QStringLiteral("10000"));
    host.Type("EditGaoDu", QStringLiteral("10000"));
    EXPECT_EQ(host.Text("EditGaoDu"), QStringLiteral("10000"));
    EXPECT_EQ(host.ImageSize(), QSize(4000, 1000));
    EXPECT_EQ(host.history.m_count, 1);
}

TEST_F(ResizePanel, WithoutKeepingTheOtherFieldStays) {
    host.Type("EditKuanDu", QStringLiteral("77"));
    EXPECT_EQ(host.Fields(), QSize(77, 1000));
}

TEST_F(ResizePanel, KeepingMakesTheOtherFieldFollow) {
    host.Click("OptBaoChi");
    EXPECT_TRUE(host.Checked("OptBaoChi"));
    host.Type("EditKuanDu", QStringLiteral("2000"));
    EXPECT_EQ(host.Fields(), QSize(2000, 500));
    host.Type("EditGaoDu", QStringLiteral("30"));
    EXPECT_EQ(host.Fields(), QSize(120, 30));
}

TEST_F(ResizePanel, KeepingHoldsBothSidesAndRewritesTheEditedOne) {
    host.Click("OptBaoChi");
    host.Type("EditKuanDu", QStringLiteral("2"));
    EXPECT_EQ(host.Text("EditGaoDu"), QStringLiteral("1"));
    QTest::keyClick(host.Control("EditKuanDu"), Qt::Key_Tab);
    EXPECT_EQ(host.Fields(), QSize(4, 1));
    host.Type("EditGaoDu", QStringLiteral("5000"));
    EXPECT_EQ(host.Fields(), QSize(10000, 2500));
    host.Type("EditKuanDu", QStringLiteral("3"));
    QTest::keyClick(host.Control("EditKuanDu"), Qt::Key_Return);
    EXPECT_EQ(host.ImageSize(), QSize(4, 1));
}

TEST_F(ResizePanel, KeepingRecomputesTheHeightFromTheWidth) {
    host.Type("EditKuanDu", QStringLiteral("800"));
    EXPECT_EQ(host.Fields(), QSize(800, 1000));
    host.Click("OptBaoChi");
    EXPECT_EQ(host.Fields(), QSize(800, 200));
    host.Click("OptBaoChi");
    EXPECT_FALSE(host.Checked("OptBaoChi"));
    host.Type("EditKuanDu", QStringLiteral("801"));
    EXPECT_EQ(host.Fields(), QSize(801, 200));
}

TEST_F(ResizePanel, KeepingStartsFromOneWhereTheWidthIsEmpty) {
    host.Control<QLineEdit>("EditKuanDu")->clear();
    host.Click("OptBaoChi");
    EXPECT_EQ(host.Fields(), QSize(4, 1));  // one pixel of width has no height; one of height has four of width
}

TEST_F(ResizePanel, SwapExchangesTheNumbersAndTheSizeOnlyAtOk) {
    host.Click("BtnJianHuanChiCun");
    EXPECT_EQ(host.Fields(), QSize(1000, 4000));
    EXPECT_EQ(host.ImageSize(), QSize(4000, 1000));
    host.Click("BtnOK");
    EXPECT_EQ(host.ImageSize(), QSize(1000, 4000));
}

TEST_F(ResizePanel, SwapWorksOnlyWithoutKeepingAndWithTwoNumbers) {
    host.Click("OptBaoChi");
    EXPECT_FALSE(host.Enabled("BtnJianHuanChiCun"));
    host.Click("BtnJianHuanChiCun");
    EXPECT_EQ(host.Fields(), QSize(4000, 1000));
    host.Click("OptBaoChi");
    EXPECT_TRUE(host.Enabled("BtnJianHuanChiCun"));
    host.Control<QLineEdit>("EditGaoDu")->clear();
    host.Click("BtnJianHuanChiCun");
    EXPECT_EQ(host.Text("EditKuanDu"), QStringLiteral("4000"));
}

TEST_F(ResizePanel, OkWithUnchangedNumbersPushesNoStep) {
    host.Click("BtnOK");
    EXPECT_EQ(host.history.m_count, 1);
    EXPECT_EQ(host.tasks, 0);
}

TEST_F(ResizePanel, OkAppliesAndShowsTheNewSize) {
    host.Type("EditKuanDu", QStringLiteral("640"));
    host.Type("EditGaoDu", QStringLiteral("480"));
    host.Click("BtnOK");
    EXPECT_EQ(host.ImageSize(), QSize(640, 480));
    EXPECT_EQ(host.Fields(), QSize(640, 480));
    EXPECT_EQ(host.history.m_count, 2);
    // Proportions are those of the new picture.
    host.Click("OptBaoChi");
    host.Type("EditKuanDu", QStringLiteral("320"));
    EXPECT_EQ(host.Fields(), QSize(320, 240));
}

TEST_F(ResizePanel, EnterInAFieldIsOk) {
    host.Type("EditKuanDu", QStringLiteral("64"));
    QTest::keyClick(host.Control("EditKuanDu"), Qt::Key_Return);
    EXPECT_EQ(host.ImageSize(), QSize(64, 1000));
}

TEST_F(ResizePanel, SmallerAndThenLargerRestoresDetail) {
    const Bitmap picture = TestPictures::Noise(300, 200, 9);
    host.Open(picture);
    host.Type("EditKuanDu", QStringLiteral("30"));
    host.Type("EditGaoDu", QStringLiteral("20"));
    host.Click("BtnOK");
    host.Type("EditKuanDu", QStringLiteral("300"));
    host.Type("EditGaoDu", QStringLiteral("200"));
    host.Click("BtnOK");
    EXPECT_TRUE(host.canvas->GetShowBitmap() == picture);
    EXPECT_EQ(host.history.m_count, 3);
}

TEST_F(ResizePanel, CancelAndEscShowThePresentSize) {
    host.Type("EditKuanDu", QStringLiteral("64"));
    host.Click("BtnCancel");
    EXPECT_EQ(host.Fields(), QSize(4000, 1000));
    host.Type("EditGaoDu", QStringLiteral("64"));
    QTest::keyClick(host.Control("EditGaoDu"), Qt::Key_Escape);
    EXPECT_EQ(host.Fields(), QSize(4000, 1000));
    EXPECT_EQ(host.history.m_count, 1);
}

TEST_F(ResizePanel, ACancelledTaskKeepsTheTypedNumbersForAnotherTry) {
    host.Type("EditKuanDu", QStringLiteral("2000"));
    host.cancelAt = 1.0f;
    host.Click("BtnOK");
    EXPECT_EQ(host.ImageSize(), QSize(4000, 1000));
    EXPECT_EQ(host.Fields(), QSize(2000, 1000));
}

TEST_F(ResizePanel, ArrowsAndWheelChangeTheNumbers) {
    host.Click("OptBaoChi");
    QWidget* width = host.Control("EditKuanDu");
    QTest::keyClick(width, Qt::Key_Down);
    EXPECT_EQ(host.Fields(), QSize(3999, 999));
    const QPointF at(10, 10);
    QWheelEvent event(at, width->mapToGlobal(at), {}, {0, 120}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(width, &event);
    EXPECT_EQ(host.Fields(), QSize(4000, 1000));
}

TEST_F(ResizePanel, ASideAboveTheLimitStaysWhileOnlyTheOtherChanges) {
    host.Open(TestPictures::Ramp(12000, 20));
    EXPECT_EQ(host.Fields(), QSize(12000, 20));
    host.Type("EditGaoDu", QStringLiteral("10"));
    host.Click("BtnOK");
    EXPECT_EQ(host.ImageSize(), QSize(12000, 10));
}

TEST_F(ResizePanel, EveryActLeavesCompareFirst) {
    const auto leaves = [&](const auto& act) {
        host.compareMode = 1;
        act();
        return host.compareMode == 0;
    };
    EXPECT_TRUE(leaves([&] { host.Type("EditKuanDu", QStringLiteral("200")); }));
    EXPECT_TRUE(leaves([&] { host.Click("BtnJianHuanChiCun"); }));
    EXPECT_TRUE(leaves([&] { host.Click("OptBaoChi"); }));
    EXPECT_TRUE(leaves([&] { host.Click("BtnCancel"); }));
    EXPECT_TRUE(leaves([&] { host.Click("BtnOK"); }));
}

TEST_F(ResizePanel, WithAnotherToolsCanvasNothingHappens) {
    host.canvas = nullptr;
    host.Type("EditKuanDu", QStringLiteral("12"));
    EXPECT_TRUE(host.FieldsAreEmpty());
    for (const char* name : {"BtnOK", "BtnCancel", "BtnJianHuanChiCun", "OptBaoChi"}) host.Click(name);
    EXPECT_TRUE(host.FieldsAreEmpty());
}

// Both languages, each control by its exact name.
class ResizeSkin : public testing::TestWithParam<const char*> {
  protected:
    ResizeSkin() : host(QString::fromLatin1(GetParam())) {}
    ResizeHost host;
};

TEST_P(ResizeSkin, EveryControlIsThereUnderItsNameAndExplainsItself) {
    for (const char* name : {"EditKuanDu", "EditGaoDu", "BtnOK", "BtnCancel", "BtnJianHuanChiCun", "OptBaoChi"}) {
        const QWidget* control = host.Control(name);
        EXPECT_FALSE(control->accessibleName().isEmpty()) << name;
        EXPECT_FALSE(control->toolTip().isEmpty()) << name;
        EXPECT_NE(control->focusPolicy() & Qt::TabFocus, 0) << name;
    }
}

TEST_P(ResizeSkin, NothingIsCutOffInTheColumn) {
    EXPECT_LE(host.panel->minimumSizeHint().width(), 250);
    for (const char* name : {"BtnOK", "BtnCancel", "OptBaoChi"}) {
        const QWidget* control = host.Control(name);
        EXPECT_GE(control->width(), control->minimumSizeHint().width()) << name;
        EXPECT_LE(control->mapTo(host.panel, QPoint(control->width(), 0)).x(), 250) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, ResizeSkin, testing::Values("1033", "2052"));

}  // namespace
