// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtWidgets/QAbstractButton>

// A colour to choose: a round spot, ringed while it is the chosen one. Main thread.
class CColorSwatch : public QAbstractButton {
    Q_OBJECT

  public:
    explicit CColorSwatch(QWidget* parent = nullptr);

    // Screen readers and the tool tip say its values.
    void SetColor(const QColor& color);
    QColor Color() const { return m_color; }

    QSize sizeHint() const override { return {32, 32}; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QColor m_color;
};
