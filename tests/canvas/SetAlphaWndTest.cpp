// SPDX-License-Identifier: GPL-3.0-or-later
#include "CSetAlphaWnd.h"

#include <QtTest/QTest>
#include <QtWidgets/QLabel>

#include "CanvasSupport.h"
#include "CSliderCtrl.h"
#include "Language.h"

namespace {

class StrengthWindow : public testing::Test {
  protected:
    StrengthWindow() {
        SetLanguage(QStringLiteral("1033"));
        owner.resize(1024, 730);
        owner.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&owner));
        strength = new CSetAlphaWnd(&owner, 200, 530);
        strength->SetTaker([this](int percent, bool moving) { taken.emplace_back(percent, moving); });
        slider = strength->Find<CSliderCtrl>(QStringLiteral("SliderSetAlpha"));
        label = strength->Find<QLabel>(QStringLiteral("TextSetAlpha"));
    }

    QWidget owner;
    CSetAlphaWnd* strength = nullptr;
    CSliderCtrl* slider = nullptr;
    QLabel* label = nullptr;
    std::vector<std::pair<int, bool>> taken;
};

TEST_F(StrengthWindow, IsMadeHiddenAtItsFirstPlaceAndInItsSize) {
    EXPECT_TRUE(strength->isHidden());
    EXPECT_EQ(strength->pos(), QPoint(200, 530));
    EXPECT_EQ(strength->size(), QSize(211, 109));
    EXPECT_EQ(slider->minimum(), 0);
    EXPECT_EQ(slider->maximum(), 100);
}

TEST_F(StrengthWindow, AppearsAtItsPlaceOverTheOwner) {
    strength->Appear();
    EXPECT_TRUE(strength->isVisible());
    EXPECT_EQ(strength->pos(), QPoint(260, 730 - 150));
    EXPECT_EQ(owner.childAt(strength->geometry().center())->window(), &owner);
    EXPECT_TRUE(strength->isAncestorOf(owner.childAt(strength->geometry().center())));
}

TEST_F(StrengthWindow, SetValueChangesNoPicture) {
    strength->SetValue(37);
    EXPECT_EQ(strength->Value(), 37);
    EXPECT_EQ(label->text(), QStringLiteral("37%"));
    EXPECT_TRUE(taken.empty()) << "the owner hears of the user's acts only";
}

TEST_F(StrengthWindow, TheOwnerTakesEveryValueOfTheSlider) {
    strength->SetValue(100);
    strength->Appear();
    QTest::mousePress(slider, Qt::LeftButton, {}, slider->HandleAt(100));
    for (const int value : {80, 50}) {
        QTest::mouseMove(slider, slider->HandleAt(value));
        ASSERT_FALSE(taken.empty());
        EXPECT_EQ(taken.back(), std::make_pair(slider->value(), true));
        EXPECT_EQ(label->text(), QStringLiteral("%1%").arg(slider->value()));
    }
    QTest::mouseRelease(slider, Qt::LeftButton, {}, slider->HandleAt(50));
    EXPECT_EQ(taken.back(), std::make_pair(50, false));
    QTest::keyClick(slider, Qt::Key_Left);
    EXPECT_EQ(taken.back(), std::make_pair(49, false));
    EXPECT_EQ(label->text(), QStringLiteral("49%"));
}

TEST_F(StrengthWindow, MovesWithTheOwnerAndKeepsItsPlaceWhenTheOwnerChangesItsSize) {
    strength->Appear();
    const QPoint inside = strength->pos();
    const QPoint before = strength->mapToGlobal(QPoint());
    owner.move(owner.pos() + QPoint(40, 30));
    QTest::qWait(50);
    EXPECT_EQ(strength->pos(), inside);
    EXPECT_EQ(strength->mapToGlobal(QPoint()) - before, QPoint(40, 30));
    owner.resize(1200, 900);
    QTest::qWait(50);
    EXPECT_EQ(strength->pos(), QPoint(260, 900 - 150));
}

TEST_F(StrengthWindow, ItsCornersAreRound) {
    owner.setStyleSheet(
        QStringLiteral("QWidget#owner { background: #204060; } CSetAlphaWnd { background: transparent; }"
                       "QFrame[role=\"float\"] { background: #ffffff; border-radius: 5px; }"));
    owner.setObjectName(QStringLiteral("owner"));
    strength->Appear();
    const QImage shown = owner.grab().toImage();
    const double scale = shown.devicePixelRatio();
    const auto at = [&](QPoint p) { return shown.pixelColor(QPoint(int(p.x() * scale), int(p.y() * scale))); };
    EXPECT_NE(at(strength->geometry().topLeft()), QColor(Qt::white));
    EXPECT_EQ(at(strength->geometry().topLeft() + QPoint(105, 3)), QColor(Qt::white));
}

TEST_F(StrengthWindow, BothLanguagesFitTheWindow) {
    for (const char* language : {"1033", "2052"}) {
        SetLanguage(QLatin1String(language));
        CSetAlphaWnd window(&owner, 0, 0);
        window.SetValue(100);
        for (const QLabel* text : window.findChildren<QLabel*>())
            EXPECT_LE(text->fontMetrics().horizontalAdvance(text->text()), 211 - 28) << text->text().toStdString();
        EXPECT_LE(window.minimumSizeHint().height(), 109);
    }
}

}  // namespace
