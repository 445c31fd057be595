// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstring>

#include "AdjustChain.h"
#include "AdjustLogic.h"
#include "PictureView.h"

// The part of CAdjustLogic that keeps the view's pixels.

ViewGeometry CAdjustLogic::Geometry() const {
    const std::lock_guard lock(m_viewLock);
    return m_geometry;
}

CanvasView CAdjustLogic::View() const {
    const std::lock_guard lock(m_viewLock);
    return {m_state.ViewBitmap, m_geometry.ScreenRect(), m_state.ViewOpaque};
}

Bitmap CAdjustLogic::Overview(QSize bounds) const {
    double scale = 1.0;
    Bitmap overview = ReducedWithin(m_state.WorkBitmap, bounds, &scale);
    if (!overview) return {};
    RunAdjustChain(overview, AdjustChain(m_state.Basic, m_state.Advance, scale));
    return overview;
}

void CAdjustLogic::SetGeometry(const ViewGeometry& geometry, ViewQuality quality) {
    {
        const std::lock_guard lock(m_viewLock);
        if (geometry == m_geometry && (quality == m_viewQuality || quality == ViewQuality::Moving)) return;
        m_geometry = geometry;
    }
    RebuildView(quality);
}

void CAdjustLogic::SetViewSize(int width, int height) {
    if (width <= 0 || height <= 0) return;
    ViewGeometry geometry = Geometry();
    geometry.SetClient({width, height});
    SetGeometry(geometry, ViewQuality::Settled);
}

void CAdjustLogic::SetZoom(double zoom) {
    ViewGeometry geometry = Geometry();
    geometry.SetZoom(zoom);
    SetGeometry(geometry, ViewQuality::Settled);
}

void CAdjustLogic::FitToWindow() {
    ViewGeometry geometry = Geometry();
    geometry.Fit();
    SetGeometry(geometry, ViewQuality::Settled);
}

void CAdjustLogic::PanBy(int dx, int dy) {
    ViewGeometry geometry = Geometry();
    geometry.PanBy(dx, dy);
    SetGeometry(geometry, m_dragging ? ViewQuality::Moving : ViewQuality::Settled);
}

void CAdjustLogic::BeginDrag(int x, int y) {
    if (!Geometry().CanDrag()) return;
    m_dragging = true;
    m_dragPoint = {x, y};
}

void CAdjustLogic::DragTo(int x, int y) {
    if (!m_dragging) return;
    const QPoint by = QPoint(x, y) - m_dragPoint;
    m_dragPoint = {x, y};
    PanBy(by.x(), by.y());
}

void CAdjustLogic::EndDrag() {
    if (!m_dragging) return;
    m_dragging = false;
    RedrawHighQuality();
}

void CAdjustLogic::RedrawHighQuality() {
    RebuildView(ViewQuality::Settled);
}

void CAdjustLogic::RebuildView(ViewQuality quality) {
    DrawFromWork(quality);
    RunPreview();
}

// Draws the visible part of the full picture into a view bitmap of the destination's size.
void CAdjustLogic::DrawFromWork(ViewQuality quality) {
    const std::lock_guard lock(m_viewLock);
    Bitmap& view = m_state.ViewBitmap;
    if (view.SharesPixelsWith(m_state.ViewSourceBitmap)) view = {};
    if (!DrawVisiblePart(m_state.WorkBitmap, m_geometry, quality, view)) return;
    m_state.ViewRebuilt = true;
    m_viewQuality = quality;
}

void CAdjustLogic::RunPreview() {
    const std::lock_guard lock(m_viewLock);
    Bitmap& view = m_state.ViewBitmap;
    Bitmap& source = m_state.ViewSourceBitmap;
    if (!m_state.BaseBitmap || !view) return;
    const auto calls = AdjustChain(m_state.Basic, m_state.Advance, m_geometry.Zoom());
    if (m_state.ViewRebuilt) {
        source = view;
        m_state.ViewOpaque = view.IsOpaque();  // no call of the chain touches alpha
        m_state.ViewRebuilt = false;
    } else if (calls.empty() || view.SharesPixelsWith(source) || view.ByteCount() != source.ByteCount()) {
        view = source;
    } else {
        std::memcpy(view.MutablePixels(), source.Pixels(), source.ByteCount());
    }
    RunAdjustChain(view, calls);
}
