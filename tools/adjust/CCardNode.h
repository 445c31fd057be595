// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtWidgets/QAbstractButton>

// The heading of a card that can be folded: a strong text with a small arrow that shows whether the card's body is
// open. A tree node of the panel; a click, Space or Enter tells the panel, which folds the body and sets `folded`.
class CCardNode : public QAbstractButton {
    Q_OBJECT
    Q_PROPERTY(bool folded READ IsFolded WRITE SetFolded)

  public:
    explicit CCardNode(QWidget* parent = nullptr);

    bool IsFolded() const { return m_folded; }
    void SetFolded(bool folded);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QFont HeadingFont() const;

    bool m_folded = false;
};
