// SPDX-License-Identifier: GPL-3.0-or-later
#include "ModalScript.h"

#include <gtest/gtest.h>

#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLineEdit>

namespace {

constexpr int PollMilliseconds = 5;
constexpr int LongestWaits = 2000;

}  // namespace

ModalScript::ModalScript() = default;

ModalScript::~ModalScript() {
    EXPECT_EQ(m_next, m_steps.size()) << "the windows of the last steps never came";
}

ModalScript& ModalScript::Add(Step step) {
    m_steps.push_back(std::move(step));
    if (!m_polling) {
        m_polling = true;
        QTimer::singleShot(0, this, [this] { Poll(); });
    }
    return *this;
}

void ModalScript::Poll() {
    if (m_next == m_steps.size()) {
        m_polling = false;
        return;
    }
    // The next poll is due before the act, which may open a window and not return for long.
    QTimer::singleShot(PollMilliseconds, this, [this] { Poll(); });
    QWidget* active = QApplication::activeModalWidget();
    const auto act = active && active->isVisible() ? m_steps[m_next](active) : std::function<void()>();
    if (act) {
        ++m_next;
        m_waits = 0;
        act();
    } else if (++m_waits > LongestWaits) {
        GiveUp();
    }
}

void ModalScript::GiveUp() {
    QWidget* active = QApplication::activeModalWidget();
    ADD_FAILURE() << "step " << m_next + 1 << " waits in vain; open is "
                  << (active ? active->metaObject()->className() : "nothing");
    m_next = m_steps.size();
    for (int i = 0; i < 8 && QApplication::activeModalWidget(); ++i) QApplication::activeModalWidget()->close();
}

void Click(const QWidget& window, const char* name) {
    auto& control = Control(window, name);
    // A check box answers on its mark and text only, not on the empty rest of its row.
    const QPoint at = qobject_cast<QCheckBox*>(&control) ? QPoint(8, control.height() / 2) : control.rect().center();
    QTest::mouseClick(&control, Qt::LeftButton, {}, at);
}

void TypeInto(const QWidget& window, const char* name, const QString& text) {
    auto& edit = Control<QLineEdit>(window, name);
    edit.setFocus();
    QTest::keyClick(&edit, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&edit, Qt::Key_Delete);
    QTest::keyClicks(&edit, text);
}
