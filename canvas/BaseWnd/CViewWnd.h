// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CBaseWnd.h"
#include "ViewGeometry.h"

class QEventPoint;
class QNativeGestureEvent;
class QTabletEvent;
class QTouchEvent;

// A place under the mouse, a finger or a pen.
struct StrokePoint {
    QPointF image;          // picture pixels, not limited to the picture
    QPointF client;         // physical client pixels
    double pressure = 1.0;  // of a pen, 0 to 1; 1 of anything else
    Qt::KeyboardModifiers modifiers;
};

// Base of the tool canvases that show one picture: zoom, pan, wheel, pinch, navigator, paint, and the strokes of tools
// that work with the left button.
//
// A stroke is from press to release, and one act: losing the mouse, the window or the tool ends it as a release does.
// While it lasts every event of the device is delivered, since each is a place where the hand was; the toolkit would
// else drop all but the latest.
//
// All positions are physical client pixels (ViewGeometry). The paint draws the view bitmap that the tool keeps at the
// size of the visible part, never the picture itself.
class CViewWnd : public CBaseWnd {
    Q_OBJECT

  public:
    CViewWnd(ToolHost& host, int tool, QWidget* parent);

    void GetImageSize(int* w, int* h) override;
    void GetViewRects(QRectF* imageRect, QRect* screenRect) override;
    void FitToWindow() override;
    void UpdateViewRects() override;
    void ZoomToPercent(int percent) override;
    void ZoomOut() override;
    void ZoomIn() override;
    void ZoomActualSize() override;
    void ZoomFit() override;
    void LayoutChildren(int cx, int cy) override;
    // The one rule: a stroke, a pan, the navigator's frame, or a slider of the panel (HoldSlider).
    bool IsStrokeHeld() const final;

    // The geometry that all of this works on. A tool whose logic keeps it overrides this.
    virtual ViewGeometry& Geometry() { return m_geometry; }

  protected:
    // Settled: rebuild the view bitmap well. Panning: quickly, a Settled one follows when the button comes up.
    enum class ViewChange { Settled, Panning };

    // What to paint now. Main thread, also while a worker runs: take the tool's lock.
    virtual ViewPicture TakeViewPicture() = 0;
    // The geometry changed: the tool rebuilds its view bitmap for Geometry().ImageRect() at ScreenRect().size(). Main
    // thread, and the worker for ZoomFit.
    virtual void OnViewChanged(ViewChange change) = 0;
    // The picture that the navigator's thumbnail is made from; must not take a full pass. Same threads.
    virtual Bitmap NavigatorPicture() = 0;
    // Draws over the picture, which lies at `place`; physical client pixels. Main thread.
    virtual void PaintOverlay(QPainter& painter, const QRect& place);
    // Whether the left button alone pans. A tool that works with it says no; Space and the middle button still pan.
    virtual bool LeftButtonPans() const { return true; }

    // The left button goes down where the tool works with it: true begins a stroke. Never while the host is busy. False
    // here.
    virtual bool BeginStroke(const StrokePoint& at);
    // The stroke goes on, or ends where it last was. Cancelled by Esc. Nothing here.
    virtual void MoveStroke(const StrokePoint& at);
    enum class StrokeEnd { Released, Cancelled };
    virtual void EndStroke(StrokeEnd how);
    // The mouse moves without a stroke. Nothing here.
    virtual void Hover(const StrokePoint& at);
    bool IsStroking() const { return m_stroking; }

    // A slider of the panel moves under the hand, or no longer does. The mouse is asked too, since a release may get
    // lost.
    void HoldSlider(bool held) { m_sliderHeld = held; }
    // The cursor over the picture while nothing can be panned there.
    virtual QCursor ToolCursor() const { return QCursor(Qt::ArrowCursor); }

    // The picture changed (a step, undo, a new source): a navigator on show gets a new thumbnail, a hidden one when it
    // is shown. Any thread that may call NavigatorPicture.
    void RefreshNavigator();
    // Takes up a changed geometry: the tool's view bitmap, zoom, navigator, paint; and tells the frame the zoom.
    void TakeUpZoom();
    // The same for a pan, which tells the frame nothing.
    void TakeUpPan(ViewChange change);
    // Sets the cursor for a mouse position in logical pixels.
    void UpdateCursor(QPointF at);
    bool IsPanning() const { return m_panButton != Qt::NoButton; }

    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void tabletEvent(QTabletEvent* event) override;

  private:
    bool TakesInput();
    StrokePoint PointAt(QPointF logical, Qt::KeyboardModifiers modifiers, double pressure = 1.0);
    void PressStroke(const StrokePoint& at);
    void FinishStroke(StrokeEnd how);
    void LetGo();
    bool NativeGesture(QNativeGestureEvent* event);
    bool Touch(QTouchEvent* event);
    void FingerAsMouse(const QEventPoint& point);
    void Pinch(QPointF first, QPointF second);
    void EndPan();
    Bitmap Thumbnail();
    // Shows the navigator with the present view, or hides it.
    void UpdateNavigator();
    void FollowNavigator(ViewChange change);

    ViewGeometry m_geometry;
    Qt::MouseButton m_panButton = Qt::NoButton;
    QPoint m_panLast;
    bool m_spaceHeld = false;
    bool m_stroking = false;
    bool m_sliderHeld = false;
    int m_wheelRest = 0;        // of a turn, in eighths of a degree
    bool m_pinching = false;    // two fingers were down since the last time that none was
    double m_pinchStart = 1.0;  // zoom per logical pixel between the fingers
};
