// SPDX-License-Identifier: GPL-3.0-or-later
#include "CNumberEdit.h"

#include <gtest/gtest.h>

#include <QtGui/QWheelEvent>
#include <QtTest/QTest>
#include <vector>

namespace {

struct NumberEdit : testing::Test {
    NumberEdit() {
        QObject::connect(&edit, &QLineEdit::textEdited, [this](const QString& text) { told.push_back(text); });
        edit.show();
        static_cast<void>(QTest::qWaitForWindowExposed(&edit));
    }
    void Wheel(int delta, Qt::KeyboardModifiers modifiers = {}) {
        const QPointF at(5, 5);
        QWheelEvent event(at, edit.mapToGlobal(at), {}, {0, delta}, Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&edit, &event);
        EXPECT_TRUE(event.isAccepted());
    }
    CNumberEdit edit;
    std::vector<QString> told;
};

TEST_F(NumberEdit, TakesDigitsOnlyAndNoMoreThanSidesHave) {
    QTest::keyClicks(&edit, QStringLiteral("-1x2.3,4 5e678"));
    EXPECT_EQ(edit.text(), QStringLiteral("1234567"));
    EXPECT_EQ(edit.Value(), 1234567);
    edit.clear();
    EXPECT_EQ(edit.Value(), 0);
}

TEST_F(NumberEdit, KeysStepAsIfTyped) {
    edit.ShowValue(20);
    EXPECT_TRUE(told.empty());
    QTest::keyClick(&edit, Qt::Key_Up);
    QTest::keyClick(&edit, Qt::Key_Down);
    QTest::keyClick(&edit, Qt::Key_Up, Qt::ControlModifier);
    QTest::keyClick(&edit, Qt::Key_PageDown);
    QTest::keyClick(&edit, Qt::Key_PageUp);
    EXPECT_EQ(told, (std::vector<QString>{QStringLiteral("21"), QStringLiteral("20"), QStringLiteral("30"),
                                          QStringLiteral("20"), QStringLiteral("30")}));
}

TEST_F(NumberEdit, StepsEndAtZeroAndStartFromAnEmptyField) {
    QTest::keyClick(&edit, Qt::Key_Up);
    EXPECT_EQ(edit.text(), QStringLiteral("1"));
    QTest::keyClick(&edit, Qt::Key_PageDown);
    EXPECT_EQ(edit.text(), QStringLiteral("0"));
    told.clear();
    QTest::keyClick(&edit, Qt::Key_Down);
    EXPECT_TRUE(told.empty());
}

TEST_F(NumberEdit, TheWheelStepsByWholeTurns) {
    edit.ShowValue(20);
    Wheel(120);
    EXPECT_EQ(edit.Value(), 21);
    Wheel(60);
    EXPECT_EQ(edit.Value(), 21);
    Wheel(60);
    EXPECT_EQ(edit.Value(), 22);
    Wheel(-240);
    EXPECT_EQ(edit.Value(), 20);
    Wheel(120, Qt::ControlModifier);
    EXPECT_EQ(edit.Value(), 30);
    edit.setEnabled(false);
    Wheel(120);
    EXPECT_EQ(edit.Value(), 30);
}

TEST_F(NumberEdit, ShowingANumberKeepsTheCursorAndTellsNothing) {
    QTest::keyClicks(&edit, QStringLiteral("0042"));
    edit.setCursorPosition(1);
    told.clear();
    edit.ShowValue(42);
    EXPECT_EQ(edit.text(), QStringLiteral("42"));
    EXPECT_EQ(edit.cursorPosition(), 1);
    edit.ShowValue(7);
    EXPECT_EQ(edit.cursorPosition(), 1);
    EXPECT_TRUE(told.empty());
}

}  // namespace
