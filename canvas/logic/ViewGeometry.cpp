// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewGeometry.h"

#include <algorithm>
#include <cmath>

#include "Truncate.h"

namespace {

// A sum of tenths in binary misses the decimal by some 1e-16: without this, eight steps up from 20 % would end at
// 0.9999999999999999, where a picture of 1000 pixels shows 999 and loses its sharpness.
double WithoutNoise(double zoom) {
    constexpr double digits = 1e9;
    return std::round(zoom * digits) / digits;
}

// The picture along one axis.
struct Axis {
    int offset;          // of the picture's first pixel, in client pixels
    int pan;             // limited
    double sourceStart;  // picture pixels
    double sourceLength;
    int screenStart;  // client pixels
    int screenLength;
};

Axis LayAxis(int image, int client, int shown, double zoom, int pan, bool canDrag) {
    const int centred = Truncate((client - shown) * 0.5);
    if (!canDrag || shown < client) return {centred, 0, 0.0, static_cast<double>(image), centred, shown};
    const int offset = std::clamp(centred + pan, client - shown, 0);
    return {offset, offset - centred, -offset / zoom, static_cast<double>(client) / shown * image, 0, client};
}

// The pan at which picture position `image` lies at client position `at` along one axis.
int PanFor(double image, double at, int imageLength, int client, int shown, double zoom) {
    const double offset = (at * imageLength / shown - image) * zoom;
    // A whole offset that binary arithmetic missed by a hair must not lose a pixel.
    return Truncate(offset + std::copysign(1e-6, offset)) - Truncate((client - shown) * 0.5);
}

}  // namespace

void ViewGeometry::SetImage(QSize size) {
    m_image = size.isEmpty() ? QSize() : size;
    m_fitZoom = ComputeFitZoom();
    UpdateViewRects();
}

void ViewGeometry::SetClient(QSize size) {
    if (size.isEmpty() || size == m_client) return;
    const bool wasFit = AtFit() && m_pan.isNull();
    m_client = size;
    m_fitZoom = ComputeFitZoom();
    if (wasFit)
        Fit();
    else
        ZoomAround(LimitZoom(m_zoom));  // a larger client may lift the fit zoom, and with it the lower limit
}

double ViewGeometry::ComputeFitZoom() const {
    if (!HasPicture()) return 1.0;
    const double widthRatio = static_cast<double>(m_image.width()) / m_client.width();
    const double heightRatio = static_cast<double>(m_image.height()) / m_client.height();
    const double larger = std::max(widthRatio, heightRatio);
    return larger > 1.0 ? 1.0 / (larger + FitMargin) : 1.0;
}

void ViewGeometry::Fit() {
    m_fitZoom = ComputeFitZoom();
    m_zoom = m_fitZoom;
    m_pan = {};
    UpdateViewRects();
}

bool ViewGeometry::AtFit() const {
    return std::abs(m_zoom - m_fitZoom) <= SameZoom;
}

int ViewGeometry::ZoomPercent() const {
    // 0.29 × 100 is 28.999999999999996; what the user set as 29 % must not read 28 %.
    return Truncate(m_zoom * 100.0 + SameZoom);
}

double ViewGeometry::LimitZoom(double zoom) const {
    return std::clamp(zoom, std::min(MinZoom, m_fitZoom), MaxZoom);
}

void ViewGeometry::ZoomIn() {
    ZoomAround(std::min(WithoutNoise(m_zoom + ZoomStep), MaxZoom));
}

void ViewGeometry::ZoomOut() {
    if (!HasPicture()) return;
    const double zoom = m_zoom > MinZoom ? WithoutNoise(m_zoom - ZoomStep) : m_zoom;
    if (zoom > MinZoom) return ZoomAround(zoom);
    const QSize least = ShownAt(MinZoom);
    const bool inside = least.width() < m_client.width() && least.height() < m_client.height();
    const bool toFit = m_floor == ZoomFloor::FitBelowMinimum ? m_fitZoom < MinZoom : !inside;
    if (toFit)
        Fit();
    else
        ZoomAround(MinZoom);
}

void ViewGeometry::ZoomActualSize() {
    ZoomAround(1.0);
}

void ViewGeometry::ZoomToPercent(int percent) {
    SetZoom(percent * 0.01);
}

void ViewGeometry::SetZoom(double zoom) {
    ZoomAround(LimitZoom(zoom));
}

void ViewGeometry::SetZoomAt(double zoom, QPointF at) {
    ZoomAt(LimitZoom(zoom), at);
}

void ViewGeometry::Wheel(bool away, QPointF at) {
    if (at.x() < 0 || at.y() < 0 || at.x() >= m_client.width() || at.y() >= m_client.height()) return;
    double zoom = m_zoom + (away ? ZoomStep : -ZoomStep);
    if (!away && m_fitZoom < MinZoom) {
        if (AtFit()) return;
        if (std::abs(m_zoom - MinZoom) <= SameZoom) return Fit();
    }
    zoom = std::clamp(WithoutNoise(zoom), MinZoom, MaxZoom);
    ZoomAt(zoom, at);
}

// Not ZoomAt with the client's middle: a centred view must stay exactly centred.
void ViewGeometry::ZoomAround(double zoom) {
    if (!HasPicture()) return;
    m_pan = {Truncate(m_pan.x() * zoom / m_zoom), Truncate(m_pan.y() * zoom / m_zoom)};
    m_zoom = zoom;
    UpdateViewRects();
}

void ViewGeometry::ZoomAt(double zoom, QPointF at) {
    if (!HasPicture()) return;
    const QPointF fixed = ToImage(at);
    m_zoom = zoom;
    const QSize shown = ShownAt(zoom);
    m_pan = {PanFor(fixed.x(), at.x(), m_image.width(), m_client.width(), shown.width(), zoom),
             PanFor(fixed.y(), at.y(), m_image.height(), m_client.height(), shown.height(), zoom)};
    UpdateViewRects();
}

void ViewGeometry::PanBy(int dx, int dy) {
    PanTo(m_pan.x() + dx, m_pan.y() + dy);
}

void ViewGeometry::PanTo(int x, int y) {
    m_pan = {x, y};
    UpdateViewRects();
}

void ViewGeometry::PanToImage(QPointF topLeft) {
    if (!HasPicture()) return;
    PanTo(PanFor(topLeft.x(), 0.0, m_image.width(), m_client.width(), m_shown.width(), m_zoom),
          PanFor(topLeft.y(), 0.0, m_image.height(), m_client.height(), m_shown.height(), m_zoom));
}

void ViewGeometry::Restore(double zoom, QPoint pan) {
    m_fitZoom = ComputeFitZoom();
    m_zoom = HasPicture() ? LimitZoom(zoom) : zoom;  // without a client the fit zoom is not known yet
    m_pan = pan;
    UpdateViewRects();
}

QSize ViewGeometry::ShownAt(double zoom) const {
    return {TruncateSide(m_image.width() * zoom), TruncateSide(m_image.height() * zoom)};
}

void ViewGeometry::UpdateViewRects() {
    if (!HasPicture()) {
        m_shown = {};
        m_imageRect = {};
        m_screenRect = {};
        m_viewOffset = {};
        m_canDrag = false;
        return;
    }
    m_shown = ShownAt(m_zoom);
    m_canDrag = m_shown.width() > m_client.width() || m_shown.height() > m_client.height();
    const Axis x = LayAxis(m_image.width(), m_client.width(), m_shown.width(), m_zoom, m_pan.x(), m_canDrag);
    const Axis y = LayAxis(m_image.height(), m_client.height(), m_shown.height(), m_zoom, m_pan.y(), m_canDrag);
    m_viewOffset = {x.offset, y.offset};
    m_pan = {x.pan, y.pan};
    m_imageRect = {x.sourceStart, y.sourceStart, x.sourceLength, y.sourceLength};
    m_screenRect = {x.screenStart, y.screenStart, x.screenLength, y.screenLength};
}

QPointF ViewGeometry::ToImage(QPointF client) const {
    if (!HasPicture()) return client;
    return {m_imageRect.x() + (client.x() - m_screenRect.x()) * m_imageRect.width() / m_screenRect.width(),
            m_imageRect.y() + (client.y() - m_screenRect.y()) * m_imageRect.height() / m_screenRect.height()};
}

QPointF ViewGeometry::ToClient(QPointF image) const {
    if (!HasPicture()) return image;
    return {m_screenRect.x() + (image.x() - m_imageRect.x()) * m_screenRect.width() / m_imageRect.width(),
            m_screenRect.y() + (image.y() - m_imageRect.y()) * m_screenRect.height() / m_imageRect.height()};
}

QRectF ViewGeometry::ToClient(const QRectF& image) const {
    return QRectF(ToClient(image.topLeft()), ToClient(image.bottomRight()));
}
