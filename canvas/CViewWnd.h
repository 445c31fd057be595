// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CBaseWnd.h"
#include "ViewGeometry.h"

class QEventPoint;
class QNativeGestureEvent;
class QTouchEvent;

// Base of the tool canvases that show one picture: zoom, pan, wheel, pinch, navigator, paint. A tool adds its pixels
// and its own mouse work.
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
    bool IsStrokeHeld() const override { return m_panButton != Qt::NoButton; }

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
    // Draws over the picture, in physical client pixels. Main thread.
    virtual void PaintOverlay(QPainter& painter);
    // Whether the left button alone pans. A tool that works with it says no; Space and the middle button still pan.
    virtual bool LeftButtonPans() const { return true; }
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

  private:
    bool TakesInput();
    bool NativeGesture(QNativeGestureEvent* event);
    bool Touch(QTouchEvent* event);
    void FingerAsMouse(const QEventPoint& point);
    void Pinch(QPointF first, QPointF second);
    void EndPan();
    // Shows the navigator with the present view, or hides it.
    void UpdateNavigator();
    void FollowNavigator(ViewChange change);

    ViewGeometry m_geometry;
    Qt::MouseButton m_panButton = Qt::NoButton;
    QPoint m_panLast;
    bool m_spaceHeld = false;
    int m_wheelRest = 0;        // of a turn, in eighths of a degree
    bool m_pinching = false;    // two fingers were down since the last time that none was
    double m_pinchStart = 1.0;  // zoom per logical pixel between the fingers
};
