// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QRect>
#include <QtCore/QSize>

#include "Bitmap.h"
#include "ViewGeometry.h"

// How carefully a view is drawn: Moving is quick, for the time while it changes under the hand.
enum class ViewQuality { Settled, Moving };

// What a canvas paints.
struct CanvasView {
    Bitmap bitmap;  // shares the pixels; let go of it soon, since the next drawing then needs no memory of its own
    QRect dest;     // where it goes in the client
    bool opaque = true;
};

// What CPictureWnd asks of the logic object behind it: a picture, its view and its moves in the history. No widgets.
//
// Threads: one at a time, which is the main thread, or the worker of a task while the main thread stands in the modal
// progress loop. Meanwhile the main thread may call View() and Geometry(): both take the view lock, as does everything
// that changes what they read.
//
// Every operation is a silent no-op without a picture. Sizes and points are physical pixels of the client.
class CanvasLogic {
  public:
    virtual ~CanvasLogic() = default;

    // Forgets the picture and everything done to it, zoom and fit zoom 1; a new visit of the tool begins. The view's
    // size stays.
    virtual void Reset() = 0;
    // The client's size; nothing for a side below 1.
    virtual void SetViewSize(int width, int height) = 0;
    // Takes a picture to work on; fits when its size differs from the former one's.
    virtual void SetSource(const Bitmap& picture) = 0;
    // Takes up what the last tool left in the history manager: picture, zoom, pan, and the view's pixels when they fit
    // this view. False, and nothing is taken, when it left no view or no picture.
    virtual bool TakeViewState() = 0;

    // Takes a changed geometry and draws the view for it.
    virtual void SetGeometry(const ViewGeometry& geometry, ViewQuality quality) = 0;
    virtual ViewGeometry Geometry() const = 0;
    virtual CanvasView View() const = 0;
    // The whole picture as it would be saved, reduced to lie within `bounds`, for an overview; without a full pass.
    // Null without a picture.
    virtual Bitmap Overview(QSize bounds) const = 0;

    // The full picture as it would be saved, pending work included; null without one.
    virtual Bitmap RenderResult() = 0;

    // History moves, each recording pending work first (Redo has nothing to record). False when nothing moved.
    virtual bool Undo() = 0;
    virtual bool Redo() = 0;
    virtual bool Jump(int row) = 0;
    // Goes to the opened picture by a new step; undone like any other.
    virtual bool Revert() = 0;
    // Leaves the tool: hands result and view to the history manager, and commits what is pending.
    virtual void Apply() = 0;

    // The picture differs from the opened one, or work is pending.
    virtual bool IsImageChanged() const = 0;
    // Work that the history does not hold yet.
    virtual bool HasUnrecorded() const = 0;
};
