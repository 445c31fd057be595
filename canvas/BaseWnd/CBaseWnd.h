// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <QtCore/QRect>
#include <QtGui/QImage>
#include <QtWidgets/QWidget>
#include <vector>

#include "Bitmap.h"
#include "CImageNavigateCtrl.h"
#include "ToolHost.h"

class QPainter;

// What a paint needs of a picture, taken in one go under the tool's lock. The bitmap is a shared handle: nothing is
// copied, and a tool that writes while a paint holds it gets pixels of its own.
struct ViewPicture {
    Bitmap bitmap;  // of `place`'s size when it is up to date; null: no picture
    bool opaque = true;
    QRect place;  // physical client pixels
};

// Base of every tool canvas: the window that shows the picture. Exactly one is on show; during a tool change two exist.
//
// It is the contract between the work area and a tool: which bitmap is shown, how a tool is entered and left, undo and
// redo, zoom and the navigator. The tool's pixels live in its logic object; the window holds only the view. CViewWnd,
// below, fills the slots of zoom, pan and paint for tools that show one picture.
//
// Threads. A task's worker may touch pixels, numbers and files, never a widget:
//
// | on the worker, while the main thread stands in the progress loop | on the main thread only                    |
// |------------------------------------------------------------------|--------------------------------------------|
// | OnApply, OnEnter, SetShowBitmap, OnImageReady, ZoomFit,          | input, paint, panels, OnUndo, OnRedo,      |
// | GetImageSize (between OnApply and OnEnter)                       | OnRevert, OnHistoryJump, compare, the rest |
//
// Redraw, ShowNavigator and NotifyView may be called on either: they reach the widget by message. While the worker runs
// no input reaches a canvas, but it may be painted: what a paint reads must be guarded by the tool (TakeViewPicture of
// CViewWnd). A change of the window's size is held back until the task is over.
class CBaseWnd : public QWidget {
    Q_OBJECT

  public:
    enum class Paint { Now, Later };

    // `tool` is the number under which the canvas reports to the frame. The host must outlive the canvas.
    CBaseWnd(ToolHost& host, int tool, QWidget* parent);
    ~CBaseWnd() override;

    // 1. The present result with the tool's unsaved preview in it; null without a picture. May take a full pass.
    virtual Bitmap GetShowBitmap() = 0;
    // 2. Installs a new source and rebuilds the logic. Does not fit: the caller follows with ZoomFit.
    virtual void SetShowBitmap(const Bitmap& picture) = 0;
    // 3. Last stage of entering a tool or opening a picture: builds what the tool derives from it. Empty here.
    virtual void OnImageReady() {}
    // 4. Leave the tool: click code when IsImageChanged, SetZoom of the present zoom, commit of the pending work. Empty
    //    here.
    virtual void OnApply() {}
    // 5. The history is not at the original, or work is pending.
    virtual bool IsImageChanged() = 0;
    // 6. Size of the present picture; 0, 0 here and without a picture.
    virtual void GetImageSize(int* w, int* h);
    // 7. Source in picture pixels and place in physical client pixels; both empty here.
    virtual void GetViewRects(QRectF* imageRect, QRect* screenRect);
    // 8. Sets the fit zoom without painting or telling. Empty here.
    virtual void FitToWindow() {}
    // 9. Computes the rectangles anew and shows or hides the navigator. Empty here.
    virtual void UpdateViewRects() {}
    // 10, 11. The zoom that the canvas last stored.
    virtual double GetZoom() { return m_zoom; }
    virtual void SetZoom(double z) { m_zoom = z; }
    // 12 to 16. The zoom requests of bar and keyboard; each paints at once and tells the frame the zoom. Empty here.
    virtual void ZoomToPercent(int percent);
    virtual void ZoomOut() {}
    virtual void ZoomIn() {}
    virtual void ZoomActualSize() {}
    virtual void ZoomFit() {}
    // 17 to 19. Commit pending work, move in the history, take up what is found there. Empty here.
    virtual void OnUndo() {}
    virtual void OnRedo() {}
    virtual void OnRevert() {}
    // 20. Empty in every class.
    virtual void OnReserved() {}
    // 21. The same for the 0-based row of the history list. Nothing here.
    virtual void OnHistoryJump(int row);
    // 22. The client has a new size, in logical pixels. Empty here.
    virtual void LayoutChildren(int cx, int cy);
    // 23. Tells the frame what is new. Any thread.
    virtual void NotifyView(const ViewNews& news);
    // 24. Takes up what the last tool left. False when there is nothing to take up, and always here: the caller then
    //     calls SetShowBitmap with the history's current bitmap, and ZoomFit.
    virtual bool OnEnter() { return false; }
    // 25. Shows the navigator without taking the focus, or hides it; no effect without a picture. Any thread.
    virtual void ShowNavigator(bool show);

    // Values or strokes that no history step holds yet, which undo would record first.
    virtual bool HasPendingWork() { return false; }
    // Something is held that changes the picture or the view (a stroke, the navigator's frame, a slider, a pan): all
    // other input waits.
    virtual bool IsStrokeHeld() const { return false; }
    // What the mouse did over the canvas while a task ran, which nobody else hears of: a canvas may do it later.
    // Nothing here.
    virtual void KeepInput(const QMouseEvent& event);
    // What puts canvas and history back to this moment, for an act beyond the tool that fails half way. Nothing here.
    virtual std::function<void()> Remember();

    // Moves the canvas and lays it out at once, also while it is hidden. Logical pixels of the parent.
    void Place(const QRect& rect);
    // Marks the whole canvas for painting, or paints it before returning. From a worker always Later.
    void Redraw(Paint when);
    // Paints a part of it before returning; physical client pixels. Main thread.
    void RedrawPart(const QRect& part);

    int Tool() const { return m_tool; }
    ToolHost& Host() const { return m_host; }
    CImageNavigateCtrl& Navigator() { return m_navigator; }
    // Physical pixels per logical pixel as of the last layout.
    double PixelRatio() const { return m_pixelRatio; }
    // The client in physical pixels as of the last layout.
    QSize PhysicalClient() const { return m_physicalClient; }
    // Physical pixels of a position in logical pixels.
    QPointF Physical(QPointF logical) const { return logical * m_pixelRatio; }

  protected:
    // Puts the painter into physical client pixels, which the rectangles of ViewGeometry are in.
    void UsePhysicalPixels(QPainter& painter) const;
    // Clears the canvas around the pictures and, behind translucent ones, fills it with the pattern; then draws each at
    // its place, scaled when it has another size. Null pictures leave the bare canvas. Physical pixels.
    void PaintPictures(QPainter& painter, const std::vector<ViewPicture>& pictures);

    // The pattern behind translucent pictures, loaded at the first of them.
    const QPixmap& Texture();

    void resizeEvent(QResizeEvent* event) override;
    // Does a layout that had to wait for a task, or for a new screen's scale. The first act of every paint.
    void SettleLayout();

    double m_zoom = 1.0;
    QPixmap m_pTexture;
    CImageNavigateCtrl m_navigator;

  private:
    void LayOut();

    ToolHost& m_host;
    const int m_tool;
    double m_pixelRatio = 1.0;
    QSize m_physicalClient;
    bool m_layoutPending = false;
};
