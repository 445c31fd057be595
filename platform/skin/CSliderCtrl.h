// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtWidgets/QSlider>

// The slider of all panels: a thin track that fills from the slider's neutral point, so that its distance from "no
// change" shows. A press anywhere on it takes the handle there; a double click goes back to neutral.
//
// Skin properties: `neutral` (int, default 0; where the fill starts and a double click returns to; outside of the range
// there is none, and the fill starts at its end), `trackColors`
// (text, colours separated by blanks: a gradient track without a fill).
class CSliderCtrl : public QSlider {
    Q_OBJECT
    Q_PROPERTY(int neutral READ Neutral WRITE SetNeutral)
    Q_PROPERTY(QString trackColors READ TrackColors WRITE SetTrackColors)

  public:
    explicit CSliderCtrl(QWidget* parent = nullptr);

    int Neutral() const { return m_neutral; }
    bool HasNeutral() const;
    void SetNeutral(int value);
    QString TrackColors() const { return m_trackColors; }
    void SetTrackColors(const QString& colors);

    // Sets the position from code: no notification.
    void SetQuietly(int value);

    // Centre of the handle at `value`, in widget coordinates: where a test or a touch presses.
    QPoint HandleAt(int value) const;

  signals:
    // The user moves the handle; the user let go, pressed a key or turned the wheel.
    void ValueChanging(int value);
    void ValueChanged(int value);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  private:
    double PositionOf(int value) const;
    int ValueAt(double x) const;
    void Drag(double x);
    void Settle(int value);

    int m_neutral = 0;
    QString m_trackColors;
    bool m_held = false;
};
