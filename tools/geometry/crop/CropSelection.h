// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <QtCore/QPointF>
#include <QtCore/QRectF>
#include <QtCore/QSize>

class ViewGeometry;

// Where a press takes hold of the selection: four corners, four edges, the inside; in the order in which they are
// asked. A point outside takes none.
enum class CropHit { TopLeft, TopRight, BottomLeft, BottomRight, Top, Left, Bottom, Right, Inside, None };

// The rectangle of the crop tool. What is cut is a rectangle of whole picture pixels (Cut); what is on the screen and
// under the mouse is one in canvas pixels from the scaled picture's top left corner (Frame). A plain value, any thread.
//
// A drag works on the frame and the cut follows from it: its start and size in picture pixels are truncated, and an
// edge within one canvas pixel of the picture's edge is that edge. Everything else (typed numbers, keys, another zoom)
// works on the cut, and the frame follows: so no zoom and no pan changes what will be cut. Enlarged, a dragged edge
// stands on the border of a picture pixel.
//
// All points are canvas pixels from the scaled picture's top left corner, so that a pan changes nothing here.
class CropSelection {
  public:
    // The least side of a dragged frame in canvas pixels; less where the scaled picture is smaller.
    static constexpr double LeastSide = 10.0;

    // Nothing is selected; the next press draws. The ratio stays.
    void StartDrawing();
    // Takes the picture's size, its scaled size and the zoom. Another picture size selects the whole picture, unless
    // nothing is selected.
    void SetGeometry(const ViewGeometry& geometry);

    // The whole picture.
    void SelectAll();
    // The middle of the picture, half as wide and high.
    void SelectDefault();
    // Takes these sides in picture pixels, held within the picture, as they are; the position stays where the picture
    // allows it. Without a selection it is centred. Ends drawing.
    void SetSize(QSize size);

    // Height divided by width, above 0; drags then keep it. 0 lets the sides go free.
    void SetRatio(double heightByWidth) { m_ratio = heightByWidth; }
    double Ratio() const { return m_ratio; }

    // The mouse: a press draws a new frame, or takes hold of the present one. False when it takes hold of nothing.
    bool Press(QPointF at);
    // True when the frame changed. A point outside the picture counts as the nearest inside.
    bool MoveTo(QPointF at);
    // A click while drawing selects the default. False when nothing was held.
    bool Release();
    // Takes the drag back. False when nothing was held.
    bool CancelDrag();
    bool IsDragging() const { return m_dragging; }

    // The keyboard, in picture pixels: moves the selection, or its right and bottom edges; held within the picture.
    // With a ratio the other side follows. False when nothing changed. Ends drawing.
    bool MoveBy(int dx, int dy);
    bool GrowBy(int dx, int dy);

    // What is cut, in picture pixels; empty without a selection.
    const QRect& Cut() const { return m_cut; }
    const QRectF& Frame() const { return m_frame; }
    bool IsEmpty() const { return m_cut.isEmpty(); }
    bool IsWhole() const { return m_cut == QRect(QPoint(0, 0), m_image); }
    // The next press draws a new frame, wherever it is.
    bool IsDrawingNew() const { return m_drawingNew; }

    // Side of the corner squares in canvas pixels, 10 on a screen of one physical pixel per logical one.
    void SetHandleSide(double side) { m_handle = side; }
    // In the order of CropHit.
    std::array<QRectF, 9> HitAreas() const;
    // What the point takes hold of; None while the next press draws.
    CropHit HitTest(QPointF at) const;
    QSize Scaled() const { return m_scaled; }

  private:
    QPointF Held(QPointF at) const;
    void DrawTo(QPointF at);
    void MoveFrame(QPointF by);
    void DragFree(CropHit hit, QPointF by);
    void DragRatio(CropHit hit, QPointF by);
    void TakeCut(const QRect& cut);
    QRectF FrameOf(const QRect& cut) const;
    QRect CutOf(const QRectF& frame) const;

    QSize m_image;
    QSize m_scaled;
    double m_zoom = 1.0;
    double m_ratio = 0.0;
    double m_handle = 10.0;
    QRect m_cut;
    QRectF m_frame;
    bool m_drawingNew = true;
    bool m_hasDrawn = false;
    bool m_dragging = false;
    CropHit m_active = CropHit::Inside;
    // At the press.
    QPointF m_pressed;
    QRect m_cutBefore;
    QRectF m_frameBefore;
};
