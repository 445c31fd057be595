// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtWidgets/QAbstractButton>

// An option that shows a colour. Skin property: `color`, as "#RRGGBB".
class CColorButton : public QAbstractButton {
    Q_OBJECT
    Q_PROPERTY(QString color READ ColorName WRITE SetColorName)

  public:
    explicit CColorButton(QWidget* parent = nullptr);

    // 0xRRGGBB.
    QRgb Color() const { return m_color & 0xFFFFFF; }
    void SetColor(QRgb color);
    QString ColorName() const { return QColor::fromRgb(m_color).name(); }
    void SetColorName(const QString& name) { SetColor(QColor(name).rgb()); }

    QSize sizeHint() const override { return {30, 30}; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

  private:
    QRgb m_color = 0;
};
