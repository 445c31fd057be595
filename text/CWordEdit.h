// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtWidgets/QPlainTextEdit>

// The field in which a text is written: plain text of several lines. What is pasted loses its formatting; input methods
// write into it as they do into every field. Enter with Shift breaks the line like Enter alone, with Ctrl it is left to
// the window, and Tab goes to the next control. Undo is the field's own while it has something to take back, else the
// program's.
class CWordEdit : public QPlainTextEdit {
    Q_OBJECT

  public:
    explicit CWordEdit(QWidget* parent = nullptr);

    // The text with line feeds between its lines.
    QString Text() const;
    // Writes from code, with nothing to take back.
    void ShowText(const QString& text);
    // The text is but a prompt, and looks like one.
    void MarkPrompt(bool prompt);

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;
};
