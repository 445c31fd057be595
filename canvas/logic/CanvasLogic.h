// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <mutex>
#include <QtCore/QRect>
#include <QtCore/QSize>
#include <QtCore/QString>
#include <vector>

#include "Bitmap.h"
#include "CHistoryManager.h"
#include "StepCommitter.h"
#include "ToolFacts.h"
#include "ViewDrawing.h"
#include "ViewGeometry.h"

// What a canvas paints.
struct CanvasView {
    Bitmap bitmap;  // shares the pixels; let go of it soon, since the next drawing then needs no memory of its own
    QRect dest;     // where it goes in the client
    bool opaque = true;
};

// Base of all logic objects: a tool without its window. It holds the picture's view, which is made of the tool's
// full-size layers, and the tool's moves in the history; a tool states its layers, how they compose to what is shown,
// and what its steps hold (StepSource).
//
// The full layers are read only when picture or geometry change, never by a paint. While a value changes, only the
// view's pixels are composed anew.
//
// Threads: one at a time, which is the main thread, or the worker of a task while the main thread stands in the modal
// progress loop. Meanwhile the main thread may call View() and Geometry(): both take the view's lock, as does
// everything here that changes what they read.
//
// Every operation is a silent no-op without a picture. Sizes and points are physical pixels of the client. An act that
// runs out of memory throws std::bad_alloc, and picture, view, history and the tool's values are as they were before
// it.
class CanvasLogic : public StepSource {
  public:
    CanvasLogic(const CanvasLogic&) = delete;
    CanvasLogic& operator=(const CanvasLogic&) = delete;

    // Forgets the picture and everything done to it, zoom and fit zoom 1; a new visit of the tool begins. The client's
    // size stays.
    void Reset();
    // Takes a picture to work on; fits when its size differs from the former one's.
    void SetSource(const Bitmap& picture);
    // Takes up what the last tool left in the history manager: picture, zoom, pan, and the view's pixels when they fit
    // this view. False, and nothing is taken, when it left no view or no picture.
    bool TakeViewState();

    // The client's size; nothing for a side below 1.
    void SetViewSize(int width, int height);
    // Takes a changed geometry and draws the view for it. Nothing happens when it is the present one and its view was
    // drawn well enough.
    void SetGeometry(const ViewGeometry& geometry, ViewQuality quality);
    void SetZoom(double zoom);
    void FitToWindow();
    void PanBy(int dx, int dy);
    ViewGeometry Geometry() const;
    CanvasView View() const;
    // The whole picture as it would be saved, reduced to lie within `bounds`, for an overview; without a full pass.
    // Null without a picture.
    Bitmap Overview(QSize bounds) const;

    // The picture worked on, full size; null without one.
    virtual const Bitmap& Picture() const = 0;
    bool HasPicture() const { return !Picture().IsNull(); }
    // Size of what is shown in picture pixels, the picture's own here; 0 x 0 without one.
    virtual QSize ImageSize() const { return {Picture().Width(), Picture().Height()}; }
    // The full picture as it would be saved, pending work included; null without one. May take a full pass.
    virtual Bitmap RenderResult() = 0;

    // Records the present state as the tool's steps go. False when there is nothing to record or the history refused
    // it; then it stays pending.
    bool CommitStep();
    // History moves, each recording pending work first; Redo has nothing to record and refuses while work is pending.
    // False when nothing moved.
    bool Undo();
    bool Redo();
    // To a 0-based row of the history list.
    bool Jump(int row);
    // Goes to the opened picture by a new step; undone like any other.
    bool Revert();
    // Leaves the tool: hands result and view to the history manager, and commits what is pending.
    void Apply();

    // The picture differs from the opened one, or work is pending.
    bool IsImageChanged() const;
    // Work that the history does not hold yet.
    bool HasUnrecorded() const { return HasPicture() && HasWork() && !IsRecorded(); }

    // What puts tool, view and history back to this moment, for an act that is larger than this object. Valid as long
    // as the object.
    std::function<void()> Remember();

  protected:
    // The history outlives the object.
    CanvasLogic(const ToolFacts& tool, StepStyle style, CHistoryManager& history,
                ViewGeometry::ZoomFloor floor = ViewGeometry::ZoomFloor::Minimum);

    // --- what a tool states

    // Forgets everything that the tool holds.
    virtual void ForgetAll() = 0;
    // Takes `picture`, which is not null, as the source of the tool's own state. It is shown afterwards.
    virtual void TakeSource(const Bitmap& picture) = 0;
    // A source came in from outside and is shown: what can't be put back, such as a file, is written here. Nothing
    // here.
    virtual void OnSource() {}
    // The full-size pictures that the view is made of, from the lowest; each may be a smaller stand-in of one. The
    // picture alone here. A null one ends the list.
    virtual std::vector<Bitmap> Layers() const { return {Picture()}; }
    // Makes `shown` out of the layers' visible parts, all of one size, inside the rectangle `part` of them; `scale` is
    // screen pixels per picture pixel. What was in `shown` before is the last composition of the same size, or
    // anything. The first layer alone here. The lock is held.
    virtual void Compose(Bitmap& shown, const std::vector<Bitmap>& views, const QRect& part, double scale) const;
    // What puts the tool's own state back to this moment.
    virtual std::function<void()> RememberTool() = 0;

    // --- what a tool calls

    // Runs an act as a whole or not at all: when it throws, or says by false that nothing is to come of it, everything
    // is put back.
    bool Whole(const std::function<bool()>& act);

    // The layers changed: draws the view anew. A picture of another size than the geometry's is fitted.
    void ShowLayers();
    // The same in a geometry of the tool's own, in one go as seen by a paint.
    void ShowLayers(const ViewGeometry& geometry);
    // The layers changed within this rectangle of the picture: draws that part, and yields the rectangle of the client
    // to be painted again.
    QRect ShowPart(const QRect& changed);
    // A value changed: composes the view anew.
    void ShowValues();
    // The same within this rectangle of the view, counted from its corner: yields the rectangle of the client to be
    // painted again.
    QRect ShowValues(const QRect& part);

    // A step under the tool's name whose pixel record holds `picture`; `save` asks for a file of its own.
    std::unique_ptr<CHistoryStep> NewStep(const Bitmap& picture, bool save) const;

    CHistoryManager& History() const { return m_history; }
    bool StepOpen() const { return m_committer.StepOpen(); }

    // The view that the next tool takes over when this one is left: what is shown. A tool that shows something else
    // than its result hands the result's view over.
    virtual std::unique_ptr<CViewState> MakeViewState();

  private:
    // The view, but for the lock: a plain value.
    struct ViewState {
        ViewGeometry geometry{};
        std::vector<Bitmap> layers;  // the visible part of each layer
        Bitmap shown;
        bool opaque = true;
        ViewQuality quality = ViewQuality::Settled;
        bool drawn = false;
    };

    bool TakeView(const CViewState& left, const ViewGeometry& geometry);
    bool InHistory(const std::function<bool()>& act);
    void Draw(ViewQuality quality);
    void Compose(const QRect& part);
    std::function<void()> RememberSelf();

    CHistoryManager& m_history;
    StepCommitter m_committer;
    const QString m_stepName;
    const ViewGeometry::ZoomFloor m_floor;
    mutable std::mutex m_lock;
    ViewState m_view;
};
