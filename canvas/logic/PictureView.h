// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <mutex>

#include "CanvasLogic.h"
#include "CViewState.h"

// The view that a canvas keeps of one full-size picture: the visible part at the size that it has on the screen, drawn
// anew when picture or geometry change. The full picture is read only then, never by a paint.
//
// Threads as in CanvasLogic: changes on one thread at a time; View() and Geometry() may be called beside them.
class PictureView {
  public:
    explicit PictureView(ViewGeometry::ZoomFloor floor = ViewGeometry::ZoomFloor::Minimum)
        : m_floor(floor), m_geometry(floor) {}

    // Lets go of the picture; zoom and fit zoom 1. The client's size stays.
    void Clear();
    // Shows another picture where the former stood; fits when its size differs. Null clears.
    void SetPicture(const Bitmap& picture);
    // Shows another picture in this geometry, in one go as seen by a paint. `geometry` must count in that picture's
    // size. Nothing for a null picture.
    void SetPicture(const Bitmap& picture, const ViewGeometry& geometry, ViewQuality quality);
    const Bitmap& Picture() const { return m_picture; }
    // Shows `standIn`, a smaller version of a picture that is still to be made, as that picture in `geometry`, until
    // the next SetPicture. Picture() stays what it was. Nothing for a null bitmap.
    void ShowStandIn(const Bitmap& standIn, const ViewGeometry& geometry);

    // Takes a changed geometry and draws the view for it. Nothing happens when it is the present one and its view was
    // drawn well enough.
    void SetGeometry(const ViewGeometry& geometry, ViewQuality quality);
    // The client's size; nothing for a side below 1.
    void SetClient(int width, int height);
    void Fit();
    ViewGeometry Geometry() const;
    CanvasView View() const;
    // The whole picture reduced to lie within `bounds`; null without one.
    Bitmap Overview(QSize bounds) const;

    // What a leaving tool hands to the next: the visible part, zoom and pan. Null without a picture.
    std::unique_ptr<CViewState> MakeViewState();
    // Shows `picture` as `state` left it; its pixels are taken over when they are of this very view, else drawn.
    void TakeViewState(const Bitmap& picture, const CViewState& state);

  private:
    const Bitmap& Shown() const { return m_standIn ? m_standIn : m_picture; }
    void Draw(ViewQuality quality);

    ViewGeometry::ZoomFloor m_floor;
    Bitmap m_picture;
    Bitmap m_standIn;
    mutable std::mutex m_lock;  // guards what follows
    ViewGeometry m_geometry;
    Bitmap m_view;
    bool m_opaque = true;
    ViewQuality m_quality = ViewQuality::Settled;
};

// The same for tools that keep the view's pixels themselves. They hold their own lock.

// Draws the visible part of `picture`, which may be smaller than `geometry` says that it is, into `view`, which is made
// when it has not the size of the destination. False, and nothing is drawn, without a picture or a client.
bool DrawVisiblePart(const Bitmap& picture, const ViewGeometry& geometry, ViewQuality quality, Bitmap& view);
// The state that hands `view`, drawn for `geometry`, to the next tool.
std::unique_ptr<CViewState> MakeViewState(const Bitmap& view, const ViewGeometry& geometry);
// Whether the pixels of `state` are those of the view that `geometry` shows.
bool IsViewOf(const CViewState& state, const ViewGeometry& geometry);
// `picture` reduced, never enlarged, to lie within `bounds`; null without one. `scale` tells by how much.
Bitmap ReducedWithin(const Bitmap& picture, QSize bounds, double* scale = nullptr);
