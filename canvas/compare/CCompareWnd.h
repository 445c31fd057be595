// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CBaseWnd.h"

class QPushButton;

// Compare view: stands over the tool's canvas and shows the opened picture against the present result. Mode 1, while a
// button is held, draws the original in the place of the tool's picture; mode 2 shows the two side by side with two
// buttons below. The host decides the mode; the view shows what it is handed. Main thread only.
class CCompareWnd : public CBaseWnd {
    Q_OBJECT

  public:
    // Logical pixels: the two buttons, and what they take from the pictures' area.
    static constexpr QSize SaveSize{174, 42}, CancelSize{104, 42};
    static constexpr int ButtonRise = 70, AreaRise = 100;

    CCompareWnd(ToolHost& host, QWidget* parent);

    // Mode 1. `imageRect` of the original is drawn at `screenRect`, in physical client pixels. With both empty, as for
    // an original of another size than the tool's picture, the original is drawn at its own fit.
    void ShowOriginal(const Bitmap& original, const QRectF& imageRect, const QRect& screenRect);
    // Mode 2.
    void ShowSideBySide(const Bitmap& before, const Bitmap& after);
    // Lets go of the pictures; mode 0.
    void Clear();
    int Mode() const { return m_nMode; }

    Bitmap GetShowBitmap() override { return m_after; }
    void SetShowBitmap(const Bitmap& picture) override { m_after = picture; }
    bool IsImageChanged() override { return false; }
    void LayoutChildren(int cx, int cy) override;

    // Where the pictures stand, in physical client pixels; empty when not on show.
    QRect BeforeRect() const { return m_beforeView.place; }
    QRect AfterRect() const { return m_afterView.place; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    static ViewPicture Draw(const Bitmap& picture, const QRectF& source, const QRect& place);
    void ArrangePictures();
    void ArrangeFit();
    void ArrangeSideBySide();
    void PaintLabel(QPainter& painter, const QRect& place, const QString& text) const;

    QPushButton* m_save;
    QPushButton* m_cancel;
    Bitmap m_before;
    Bitmap m_after;
    int m_nMode = 0;
    QRectF m_imageRect;
    QRect m_screenRect;
    ViewPicture m_beforeView;
    ViewPicture m_afterView;
};
