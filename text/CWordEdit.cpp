// SPDX-License-Identifier: GPL-3.0-or-later
#include "CWordEdit.h"

#include <QtCore/QMimeData>
#include <QtGui/QKeyEvent>
#include <QtGui/QTextDocument>
#include <QtWidgets/QStyle>

namespace {

// Every kind of line break as a line feed.
QString WithLineFeeds(QString text) {
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    for (const char16_t lineBreak : {u'\r', u'\u2028', u'\u2029', u'\v', u'\f'}) text.replace(QChar(lineBreak), u'\n');
    return text;
}

}  // namespace

CWordEdit::CWordEdit(QWidget* parent) : QPlainTextEdit(parent) {
    setTabChangesFocus(true);
    setCursorWidth(0);
}

QString CWordEdit::Text() const {
    return WithLineFeeds(toPlainText());
}

void CWordEdit::ShowText(const QString& text) {
    if (text != toPlainText()) setPlainText(text);
}

void CWordEdit::MarkPrompt(bool prompt) {
    if (property("prompt").toBool() == prompt) return;
    setProperty("prompt", prompt);
    style()->unpolish(this);
    style()->polish(this);
}

// Text written from code would show a cursor that nobody writes at.
void CWordEdit::focusInEvent(QFocusEvent* event) {
    setCursorWidth(1);
    QPlainTextEdit::focusInEvent(event);
}

void CWordEdit::focusOutEvent(QFocusEvent* event) {
    QPlainTextEdit::focusOutEvent(event);
    setCursorWidth(0);
}

bool CWordEdit::event(QEvent* event) {
    if (event->type() != QEvent::ShortcutOverride) return QPlainTextEdit::event(event);
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool undo = key->matches(QKeySequence::Undo), redo = key->matches(QKeySequence::Redo);
    if ((undo && !document()->isUndoAvailable()) || (redo && !document()->isRedoAvailable())) {
        event->ignore();
        return false;
    }
    return QPlainTextEdit::event(event);
}

void CWordEdit::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) return QPlainTextEdit::keyPressEvent(event);
    if (event->modifiers().testFlag(Qt::ControlModifier)) return event->ignore();
    textCursor().insertBlock();
    ensureCursorVisible();
}

void CWordEdit::insertFromMimeData(const QMimeData* source) {
    if (source->hasText()) textCursor().insertText(WithLineFeeds(source->text()));
    ensureCursorVisible();
}
