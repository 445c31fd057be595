// SPDX-License-Identifier: GPL-3.0-or-later
#include "CNumberEdit.h"

#include <algorithm>
#include <QtCore/QRegularExpression>
#include <QtGui/QKeyEvent>
#include <QtGui/QRegularExpressionValidator>
#include <QtGui/QWheelEvent>

namespace {

// More than the sides of any picture have.
constexpr int MostDigits = 7;
constexpr int LargeStep = 10;
constexpr int WheelTurn = 120;

}  // namespace

CNumberEdit::CNumberEdit(QWidget* parent) : QLineEdit(parent) {
    const QString digits = QStringLiteral("[0-9]{0,%1}").arg(MostDigits);
    setValidator(new QRegularExpressionValidator(QRegularExpression(digits), this));
    setInputMethodHints(Qt::ImhDigitsOnly);
}

int CNumberEdit::Value() const {
    return text().toInt();
}

void CNumberEdit::ShowValue(int value) {
    const QString number = QString::number(value);
    if (number == text()) return;
    const int cursor = cursorPosition();
    setText(number);
    setCursorPosition(std::min(cursor, static_cast<int>(number.size())));
}

void CNumberEdit::Step(int by) {
    if (isReadOnly()) return;
    const int value = std::max(0, Value() + by);
    if (value == Value() && !text().isEmpty()) return;
    setText(QString::number(value));
    emit textEdited(text());
}

// A field of text would take the keys for its own typing, also when it has nothing to take back.
bool CNumberEdit::event(QEvent* event) {
    if (event->type() != QEvent::ShortcutOverride) return QLineEdit::event(event);
    const auto* key = static_cast<QKeyEvent*>(event);
    if (!key->matches(QKeySequence::Undo) && !key->matches(QKeySequence::Redo)) return QLineEdit::event(event);
    event->ignore();
    return false;
}

void CNumberEdit::keyPressEvent(QKeyEvent* event) {
    const int one = event->modifiers().testFlag(Qt::ControlModifier) ? LargeStep : 1;
    switch (event->key()) {
        case Qt::Key_Up:
            return Step(one);
        case Qt::Key_Down:
            return Step(-one);
        case Qt::Key_PageUp:
            return Step(LargeStep);
        case Qt::Key_PageDown:
            return Step(-LargeStep);
        default:
            QLineEdit::keyPressEvent(event);
    }
}

void CNumberEdit::wheelEvent(QWheelEvent* event) {
    event->accept();
    if (!isEnabled()) return;
    setFocus(Qt::MouseFocusReason);
    const int delta = event->angleDelta().y();
    if ((delta > 0) != (m_wheelRest > 0)) m_wheelRest = 0;
    m_wheelRest += delta;
    const int turns = m_wheelRest / WheelTurn;
    m_wheelRest -= turns * WheelTurn;
    if (turns != 0) Step(turns * (event->modifiers().testFlag(Qt::ControlModifier) ? LargeStep : 1));
}
