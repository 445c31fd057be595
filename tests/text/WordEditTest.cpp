// SPDX-License-Identifier: GPL-3.0-or-later
#include "CWordEdit.h"

#include <gtest/gtest.h>

#include <QtCore/QMimeData>
#include <QtGui/QClipboard>
#include <QtGui/QInputMethodEvent>
#include <QtGui/QShortcut>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QVBoxLayout>

namespace {

class WordEdit : public testing::Test {
  protected:
    WordEdit() {
        auto* layout = new QVBoxLayout(&m_window);
        layout->addWidget(m_edit = new CWordEdit);
        layout->addWidget(m_next = new QLineEdit);
        m_window.show();
        static_cast<void>(QTest::qWaitForWindowExposed(&m_window));
        m_window.activateWindow();
        static_cast<void>(QTest::qWaitForWindowActive(&m_window));
        m_edit->setFocus();
    }
    QWidget m_window;
    CWordEdit* m_edit;
    QLineEdit* m_next;
};

}  // namespace

TEST_F(WordEdit, EnterBreaksTheLineWithAndWithoutShift) {
    QTest::keyClicks(m_edit, QStringLiteral("a"));
    QTest::keyClick(m_edit, Qt::Key_Return);
    QTest::keyClicks(m_edit, QStringLiteral("b"));
    QTest::keyClick(m_edit, Qt::Key_Return, Qt::ShiftModifier);
    QTest::keyClicks(m_edit, QStringLiteral("c"));
    EXPECT_EQ(m_edit->Text(), QStringLiteral("a\nb\nc"));
    QTest::keyClick(m_edit, Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(m_edit->Text(), QStringLiteral("a\nb\nc"));
}

TEST_F(WordEdit, TabGoesOn) {
    QTest::keyClick(m_edit, Qt::Key_Tab);
    EXPECT_TRUE(m_next->hasFocus());
    EXPECT_TRUE(m_edit->Text().isEmpty());
}

TEST_F(WordEdit, PastedTextLosesItsFormattingAndItsKindsOfLineBreaks) {
    auto* rich = new QMimeData;
    rich->setHtml(QStringLiteral("<b>bold</b> <i>leaning</i>"));
    rich->setText(QStringLiteral("bold leaning\r\nnext\rlast"));
    QApplication::clipboard()->setMimeData(rich);
    m_edit->paste();
    EXPECT_EQ(m_edit->Text(), QStringLiteral("bold leaning\nnext\nlast"));
    EXPECT_FALSE(m_edit->textCursor().charFormat().font().bold());
}

TEST_F(WordEdit, InputMethodsWriteIntoIt) {
    QInputMethodEvent composing(QStringLiteral("ni"), {});
    QApplication::sendEvent(m_edit, &composing);
    EXPECT_EQ(m_edit->Text(), QString()) << "what is being composed is not text yet";
    QInputMethodEvent done;
    done.setCommitString(QStringLiteral("你好"));
    QApplication::sendEvent(m_edit, &done);
    EXPECT_EQ(m_edit->Text(), QStringLiteral("你好"));
    EXPECT_TRUE(m_edit->testAttribute(Qt::WA_InputMethodEnabled));
}

TEST_F(WordEdit, UndoIsItsOwnAsLongAsItHasSomethingToTakeBack) {
    int program = 0;
    QShortcut shortcut(QKeySequence::Undo, &m_window);
    QObject::connect(&shortcut, &QShortcut::activated, [&] { ++program; });
    m_edit->ShowText(QStringLiteral("shown"));
    QTest::keyClick(m_edit, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(program, 1);
    EXPECT_EQ(m_edit->Text(), QStringLiteral("shown"));
    QTest::keyClicks(m_edit, QStringLiteral("x"));
    QTest::keyClick(m_edit, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(program, 1);
    EXPECT_EQ(m_edit->Text(), QStringLiteral("shown"));
}
