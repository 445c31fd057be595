// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtWidgets/QLineEdit>

// A field that takes digits only. Arrow keys and the wheel change its number by one, with Ctrl and by the page keys by
// ten; that counts as typing (`textEdited`). It never goes below 0 by itself: its window corrects what is typed. Undo
// and redo keys are the program's, not the text's.
class CNumberEdit : public QLineEdit {
    Q_OBJECT

  public:
    explicit CNumberEdit(QWidget* parent = nullptr);

    // The number; 0 when the field is empty.
    int Value() const;
    // Writes the number in its plain form, unless it stands there already. Tells nothing; the cursor keeps its place as
    // far as it can.
    void ShowValue(int value);

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    void Step(int by);

    int m_wheelRest = 0;  // of a turn, in eighths of a degree
};
