// SPDX-License-Identifier: GPL-3.0-or-later
#include "BlendTool.h"
#include "CEffect.h"
#include "PictureView.h"

// The part of BlendTool that keeps the view's pixels.

ViewGeometry BlendTool::Geometry() const {
    const std::lock_guard lock(m_viewLock);
    return m_geometry;
}

CanvasView BlendTool::View() const {
    const std::lock_guard lock(m_viewLock);
    const Bitmap& shown = m_state.ViewBlendBitmap ? m_state.ViewBlendBitmap : m_state.ViewEffectBitmap;
    return {shown, m_geometry.ScreenRect(), m_state.ViewOpaque};
}

Bitmap BlendTool::Overview(QSize bounds) const {
    Bitmap overview = ReducedWithin(m_state.EffectBitmap, bounds);
    if (!overview || m_state.Alpha == 100) return overview;
    const Bitmap source = ReducedWithin(m_state.SourceBitmap, bounds);
    CEffect::Effect_AlphaAdJust(overview.MutablePixels(), const_cast<std::uint8_t*>(source.Pixels()), overview.Width(),
                                overview.Height(), 1.0 - m_state.Alpha * 0.01);
    return overview;
}

void BlendTool::SetGeometry(const ViewGeometry& geometry, ViewQuality quality) {
    {
        const std::lock_guard lock(m_viewLock);
        if (geometry == m_geometry && (quality == m_viewQuality || quality == ViewQuality::Moving)) return;
        m_geometry = geometry;
    }
    RebuildView(quality);
}

void BlendTool::SetViewSize(int width, int height) {
    if (width <= 0 || height <= 0) return;
    ViewGeometry geometry = Geometry();
    geometry.SetClient({width, height});
    SetGeometry(geometry, ViewQuality::Settled);
}

void BlendTool::SetZoom(double zoom) {
    ViewGeometry geometry = Geometry();
    geometry.SetZoom(zoom);
    SetGeometry(geometry, ViewQuality::Settled);
}

void BlendTool::FitToWindow() {
    ViewGeometry geometry = Geometry();
    geometry.Fit();
    SetGeometry(geometry, ViewQuality::Settled);
}

void BlendTool::PanBy(int dx, int dy) {
    ViewGeometry geometry = Geometry();
    geometry.PanBy(dx, dy);
    SetGeometry(geometry, m_dragging ? ViewQuality::Moving : ViewQuality::Settled);
}

void BlendTool::BeginDrag(int x, int y) {
    if (!Geometry().CanDrag()) return;
    m_dragging = true;
    m_dragPoint = {x, y};
}

void BlendTool::DragTo(int x, int y) {
    if (!m_dragging) return;
    const QPoint by = QPoint(x, y) - m_dragPoint;
    m_dragPoint = {x, y};
    PanBy(by.x(), by.y());
}

void BlendTool::EndDrag() {
    if (!m_dragging) return;
    m_dragging = false;
    RebuildView(ViewQuality::Settled);
}

void BlendTool::RebuildView(ViewQuality quality) {
    const std::lock_guard lock(m_viewLock);
    DrawView(quality);
    Blend();
}

// The lock is held. Without a look the two views are one.
void BlendTool::DrawView(ViewQuality quality) {
    Bitmap& source = m_state.ViewSourceBitmap;
    Bitmap& effect = m_state.ViewEffectBitmap;
    if (effect.SharesPixelsWith(source)) effect = {};
    if (!DrawVisiblePart(m_state.SourceBitmap, m_geometry, quality, source)) return;
    if (m_state.EffectBitmap.SharesPixelsWith(m_state.SourceBitmap))
        effect = source;
    else
        DrawVisiblePart(m_state.EffectBitmap, m_geometry, quality, effect);
    m_state.ViewOpaque = source.IsOpaque() && effect.IsOpaque();
    m_viewQuality = quality;
}
