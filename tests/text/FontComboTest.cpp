// SPDX-License-Identifier: GPL-3.0-or-later
#include "CFontCombo.h"

#include <gtest/gtest.h>

#include <QtGui/QPainter>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QCompleter>
#include <QtWidgets/QLineEdit>

#include "Families.h"

namespace {

class FontCombo : public testing::Test {
  protected:
    void Show() {
        m_combo.show();
        static_cast<void>(QTest::qWaitForWindowExposed(&m_combo));
        m_combo.activateWindow();
        static_cast<void>(QTest::qWaitForWindowActive(&m_combo));
        ASSERT_TRUE(QTest::qWaitFor([this] { return m_combo.IsFilled(); }, 20000));
    }
    CFontCombo m_combo;
};

}  // namespace

TEST_F(FontCombo, ShowsItsFamilyBeforeAllAreGathered) {
    m_combo.ShowFamily(QStringLiteral("Arial"));
    EXPECT_EQ(m_combo.currentText(), QStringLiteral("Arial"));
    EXPECT_FALSE(m_combo.IsFilled());
    Show();
    EXPECT_EQ(m_combo.currentText(), QStringLiteral("Arial"));
    EXPECT_EQ(m_combo.itemText(m_combo.currentIndex()), QStringLiteral("Arial"));
}

TEST_F(FontCombo, HasEveryFamilyOnceInOrder) {
    Show();
    QStringList shown;
    for (int i = 0; i < m_combo.count(); ++i) shown << m_combo.itemText(i);
    EXPECT_EQ(shown, TextFamilies());
    EXPECT_GT(shown.size(), 3);
    EXPECT_EQ(QSet<QString>(shown.begin(), shown.end()).size(), shown.size());
}

TEST_F(FontCombo, AFamilyThatIsNotThereLeavesNoSelection) {
    Show();
    m_combo.ShowFamily(QStringLiteral("No Such Family"));
    EXPECT_EQ(m_combo.currentIndex(), -1);
    EXPECT_TRUE(m_combo.currentText().isEmpty());
}

TEST_F(FontCombo, TypingAPartOfANameFindsIt) {
    Show();
    int chosen = -1;
    QObject::connect(&m_combo, &QComboBox::activated, [&](int index) { chosen = index; });
    m_combo.lineEdit()->setFocus();
    m_combo.lineEdit()->selectAll();
    QTest::keyClicks(m_combo.lineEdit(), QStringLiteral("vu ser"));
    QAbstractItemView* found = m_combo.completer()->popup();
    ASSERT_TRUE(QTest::qWaitFor([&] { return found->isVisible(); }));
    for (int i = 0; i < found->model()->rowCount(); ++i)
        EXPECT_TRUE(found->model()->index(i, 0).data().toString().contains(u"vu ser", Qt::CaseInsensitive));
    QTest::keyClick(found, Qt::Key_Down);
    QTest::keyClick(found, Qt::Key_Return);
    ASSERT_GE(chosen, 0);
    EXPECT_EQ(m_combo.itemText(chosen), QStringLiteral("DejaVu Serif"));
}

TEST_F(FontCombo, WhatWasTypedAndNotChosenGoesAgain) {
    m_combo.ShowFamily(QStringLiteral("Arial"));
    Show();
    m_combo.lineEdit()->setFocus();
    QTest::keyClicks(m_combo.lineEdit(), QStringLiteral("zzz"));
    m_combo.clearFocus();
    m_combo.lineEdit()->clearFocus();
    EXPECT_EQ(m_combo.currentText(), QStringLiteral("Arial"));
}

TEST_F(FontCombo, EachFamilyIsWrittenInItsOwnFace) {
    Show();
    const auto row = [&](const QString& family) {
        QImage image(280, 28, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        QStyleOptionViewItem option;
        option.rect = image.rect();
        option.font = m_combo.font();
        m_combo.view()->itemDelegate()->paint(&painter, option, m_combo.model()->index(m_combo.findText(family), 0));
        return image;
    };
    EXPECT_FALSE(row(QStringLiteral("DejaVu Sans")) == row(QStringLiteral("DejaVu Serif")));
}
