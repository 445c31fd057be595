// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QSize>

// The geometry of a picture in a canvas: fit, zoom steps, pan, the rectangles that a paint needs, and the mapping of
// points. A plain value: copyable, comparable, no widget, any thread. Client units are physical screen pixels, so that
// 100 % is one picture pixel on one screen pixel, whatever the screen's scale.
//
// Every conversion to an integer truncates towards zero (Truncate.h).
class ViewGeometry {
  public:
    static constexpr double MinZoom = 0.2;
    static constexpr double MaxZoom = 4.0;
    static constexpr double ZoomStep = 0.1;
    // Added to the ratio picture : client when the picture is reduced, so that a margin remains.
    static constexpr double FitMargin = 0.2;
    // Two zooms closer than this are the same zoom.
    static constexpr double SameZoom = 1e-06;

    // Where ZoomOut ends. `Minimum`: at 20 % as long as the picture then lies inside the client in both directions,
    // else at the fit zoom. `FitBelowMinimum`: at the fit zoom whenever that is below 20 %, also where 20 % would just
    // lie inside the client (a picture 4.8 to 5 times as long as the client).
    enum class ZoomFloor { Minimum, FitBelowMinimum };

    explicit ViewGeometry(ZoomFloor floor = ZoomFloor::Minimum) : m_floor(floor) {}

    // Takes a picture's size; keeps zoom and pan as far as they are possible and computes the fit zoom anew. It does
    // not fit. A size with a side below 1 means no picture.
    void SetImage(QSize size);
    // Ignored unless both sides are above 0. Fits when the view was at fit zoom, else keeps the zoom.
    void SetClient(QSize size);

    QSize Image() const { return m_image; }
    QSize Client() const { return m_client; }
    bool HasPicture() const { return !m_image.isEmpty() && !m_client.isEmpty(); }

    // Fit: the zoom at which the whole picture shows, pan zero. Remembered apart from the zoom.
    void Fit();
    double FitZoom() const { return m_fitZoom; }
    double Zoom() const { return m_zoom; }
    // The zoom in whole percent, as bars and the navigator show it.
    int ZoomPercent() const;
    bool AtFit() const;

    // The toolbar's steps. After each the rectangles are up to date. The picture point in the middle of the client
    // stays there where the limits allow it. No zoom changes without a picture.
    void ZoomIn();
    void ZoomOut();
    void ZoomActualSize();
    // Limited like SetZoom.
    void ZoomToPercent(int percent);
    // Limited to MaxZoom and to MinZoom, or the fit zoom where that is below.
    void SetZoom(double zoom);
    // The same with the picture point under `at` staying in place, as for a pinch.
    void SetZoomAt(double zoom, QPointF at);
    // One turn of the wheel; `away` from the user enlarges. Nothing happens while `at` lies outside the client. The
    // picture point under `at` stays in place where the limits allow it.
    void Wheel(bool away, QPointF at);

    // Pan by a delta in client pixels; clamped so that no client area lies outside the picture on a clipped axis.
    void PanBy(int dx, int dy);
    void PanTo(int x, int y);
    // Pans so that the visible part begins at this picture point (the navigator's frame), clamped the same way.
    void PanToImage(QPointF topLeft);
    // The pan's offset from the centred view, client pixels; 0 on an axis that is not clipped.
    QPoint Pan() const { return m_pan; }
    bool CanDrag() const { return m_canDrag; }

    // Shown size: trunc(picture × zoom), each side at least 1.
    QSize Shown() const { return m_shown; }
    // Source in picture pixels and destination in client pixels. Both empty without a picture.
    QRectF ImageRect() const { return m_imageRect; }
    QRect ScreenRect() const { return m_screenRect; }
    // Offset of the picture's top left corner in the client; negative on a clipped axis.
    QPoint ViewOffset() const { return m_viewOffset; }

    // The mapping that the paint follows; the two are each other's inverse. Not limited to the picture. Without a
    // picture both return their argument.
    QPointF ToImage(QPointF client) const;
    QPointF ToClient(QPointF image) const;
    QRectF ToClient(const QRectF& image) const;

    // Takes up a view that another tool left: zoom and pan as they were, the fit zoom computed anew.
    void Restore(double zoom, QPoint pan);

    // Computes shown size, rectangles and the pan's limits from picture, client, zoom and pan. Every other operation
    // ends with it; a second call changes nothing.
    void UpdateViewRects();

    bool operator==(const ViewGeometry&) const = default;

  private:
    double ComputeFitZoom() const;
    double LimitZoom(double zoom) const;
    QSize ShownAt(double zoom) const;
    void ZoomAround(double zoom);
    void ZoomAt(double zoom, QPointF at);

    ZoomFloor m_floor;
    QSize m_image;
    QSize m_client;
    double m_zoom = 1.0;
    double m_fitZoom = 1.0;
    QPoint m_pan;
    bool m_canDrag = false;
    QSize m_shown;
    QRectF m_imageRect;
    QRect m_screenRect;
    QPoint m_viewOffset;
};
