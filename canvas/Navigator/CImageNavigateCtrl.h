// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QRectF>
#include <QtGui/QImage>
#include <QtWidgets/QWidget>

#include "Bitmap.h"

// Image navigator: the overview at the canvas's bottom right while the picture is larger than the view. Shows a
// thumbnail, frames the visible part, lets the user drag the frame (or move it by the arrow keys), and shows the zoom.
// A child of the canvas. Main thread only, but for MakeThumbnail.
class CImageNavigateCtrl : public QWidget {
    Q_OBJECT

  public:
    // Logical pixels: the control, and the most that the thumbnail takes.
    static constexpr int Width = 187, Height = 216;
    static constexpr int ThumbWidth = 147, ThumbHeight = 159;

    explicit CImageNavigateCtrl(QWidget* parent);

    // The smaller of ThumbWidth / width and ThumbHeight / height; 0.01 for a side of 0.
    static double ThumbScale(QSize image);
    // Size of the thumbnail in logical pixels: the picture's times ThumbScale, each side at least 1.
    static QSize ThumbSize(QSize image);
    // The thumbnail of a picture for a screen of `pixelRatio` physical per logical pixels. Any thread.
    static Bitmap MakeThumbnail(const Bitmap& picture, double pixelRatio);

    // Takes a new thumbnail of a picture of that size. `view` is the visible part in picture pixels.
    void SetImage(const Bitmap& thumbnail, QSize image, const QRectF& view, double zoom);
    // Moves the frame.
    void SetView(const QRectF& view, double zoom);
    // The thumbnail no longer shows the picture; SetImage is due before the control is shown.
    void DropImage();
    bool HasImage() const { return !m_thumb.isNull(); }

    // The frame in logical thumbnail pixels, and in picture pixels.
    QRectF Frame() const { return m_frame; }
    QRectF View() const;
    double Zoom() const { return m_zoom; }
    // Where the thumbnail lies, where the frame is drawn and where the close box is, in the control. A click anywhere
    // in the last hides the control.
    QRect ThumbRect() const;
    QRectF FrameRect() const { return m_frame.translated(ThumbRect().topLeft()); }
    static QRect CloseBox();
    QString ZoomText() const;

    // The frame is held.
    bool IsDragging() const { return m_dragging; }

    // Hidden by its close box: it stays so until the zoom changes.
    bool IsClosedByUser() const { return m_closedByUser; }
    void ForgetClose() { m_closedByUser = false; }

  signals:
    // The user moves the frame (the owner reads View and pans), and let go after a move.
    void FrameDragging();
    void FrameDragged();

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    bool MoveFrame(QPointF delta);
    void LetGo();
    void CloseByUser();
    void UpdateCursor(QPointF at);

    QImage m_thumb;
    QSize m_imageSize;
    QRectF m_frame;
    QRectF m_source;
    double m_thumbScale = 0.01;
    double m_zoom = 1.0;
    QPointF m_dragLast;
    bool m_dragging = false;
    bool m_moved = false;
    bool m_closeHot = false;
    bool m_closedByUser = false;
};
