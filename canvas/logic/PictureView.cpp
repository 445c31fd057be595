// SPDX-License-Identifier: GPL-3.0-or-later
#include "PictureView.h"

#include <algorithm>

#include "PC_Dsp.h"
#include "Truncate.h"

bool DrawVisiblePart(const Bitmap& picture, const ViewGeometry& geometry, ViewQuality quality, Bitmap& view) {
    if (!picture || !geometry.HasPicture()) return false;
    const QRectF source = geometry.ImageRect();
    const QSize size = geometry.ScreenRect().size();
    if (QSize(view.Width(), view.Height()) != size) view = Bitmap::Uninitialised(size.width(), size.height());
    const double x = double(picture.Width()) / geometry.Image().width();
    const double y = double(picture.Height()) / geometry.Image().height();
    PC_Dsp::ResampleRect(picture, source.x() * x, source.y() * y, source.width() * x, source.height() * y, view,
                         quality == ViewQuality::Settled ? ResampleQuality::Best : ResampleQuality::Fast);
    return true;
}

std::unique_ptr<CViewState> MakeViewState(const Bitmap& view, const ViewGeometry& geometry) {
    auto state = std::make_unique<CViewState>();
    state->bitmap = view;
    state->zoom = geometry.Zoom();
    state->x = geometry.Pan().x();
    state->y = geometry.Pan().y();
    state->destRect = geometry.ScreenRect();
    return state;
}

bool IsViewOf(const CViewState& state, const ViewGeometry& geometry) {
    const QRect dest = geometry.ScreenRect();
    return state.destRect == dest && QSize(state.bitmap.Width(), state.bitmap.Height()) == dest.size();
}

Bitmap ReducedWithin(const Bitmap& picture, QSize bounds, double* scale) {
    if (!picture || bounds.isEmpty()) return {};
    const double by =
        std::min({1.0, double(bounds.width()) / picture.Width(), double(bounds.height()) / picture.Height()});
    if (scale) *scale = by;
    return PC_Dsp::Resample(picture, TruncateSide(picture.Width() * by), TruncateSide(picture.Height() * by));
}

void PictureView::Clear() {
    m_picture = m_standIn = {};
    const std::lock_guard lock(m_lock);
    const QSize client = m_geometry.Client();
    m_geometry = ViewGeometry(m_floor);
    m_geometry.SetClient(client);
    m_view = {};
    m_opaque = true;
}

void PictureView::SetPicture(const Bitmap& picture) {
    if (!picture) return Clear();
    ViewGeometry geometry = Geometry();
    const QSize size(picture.Width(), picture.Height());
    if (size != geometry.Image()) {
        geometry.SetImage(size);
        geometry.Fit();
    }
    SetPicture(picture, geometry, ViewQuality::Settled);
}

void PictureView::SetPicture(const Bitmap& picture, const ViewGeometry& geometry, ViewQuality quality) {
    if (!picture) return;
    m_picture = picture;
    m_standIn = {};
    const std::lock_guard lock(m_lock);
    m_geometry = geometry;
    Draw(quality);
}

void PictureView::ShowStandIn(const Bitmap& standIn, const ViewGeometry& geometry) {
    if (!standIn) return;
    m_standIn = standIn;
    const std::lock_guard lock(m_lock);
    m_geometry = geometry;
    Draw(ViewQuality::Settled);
}

void PictureView::SetGeometry(const ViewGeometry& geometry, ViewQuality quality) {
    const std::lock_guard lock(m_lock);
    const bool wellEnough = quality == m_quality || quality == ViewQuality::Moving;
    if (geometry == m_geometry && wellEnough) return;
    m_geometry = geometry;
    Draw(quality);
}

void PictureView::SetClient(int width, int height) {
    if (width <= 0 || height <= 0) return;
    ViewGeometry geometry = Geometry();
    geometry.SetClient({width, height});
    SetGeometry(geometry, ViewQuality::Settled);
}

void PictureView::Fit() {
    ViewGeometry geometry = Geometry();
    geometry.Fit();
    SetGeometry(geometry, ViewQuality::Settled);
}

ViewGeometry PictureView::Geometry() const {
    const std::lock_guard lock(m_lock);
    return m_geometry;
}

CanvasView PictureView::View() const {
    const std::lock_guard lock(m_lock);
    return {m_view, m_geometry.ScreenRect(), m_opaque};
}

Bitmap PictureView::Overview(QSize bounds) const {
    return ReducedWithin(Shown(), bounds);
}

std::unique_ptr<CViewState> PictureView::MakeViewState() {
    if (!m_picture) return nullptr;
    SetGeometry(Geometry(), ViewQuality::Settled);
    const std::lock_guard lock(m_lock);
    return ::MakeViewState(m_view, m_geometry);
}

void PictureView::TakeViewState(const Bitmap& picture, const CViewState& state) {
    m_picture = picture;
    m_standIn = {};
    const std::lock_guard lock(m_lock);
    m_geometry.SetImage({picture.Width(), picture.Height()});
    m_geometry.Restore(state.zoom, {state.x, state.y});
    if (!IsViewOf(state, m_geometry)) return Draw(ViewQuality::Settled);
    m_view = state.bitmap;
    m_opaque = m_view.IsOpaque();
    m_quality = ViewQuality::Settled;
}

// The lock is held.
void PictureView::Draw(ViewQuality quality) {
    if (!DrawVisiblePart(Shown(), m_geometry, quality, m_view)) return;
    m_opaque = m_view.IsOpaque();
    m_quality = quality;
}
