// SPDX-License-Identifier: GPL-3.0-or-later
#include "CropSelection.h"

#include <algorithm>

#include "KeptRatio.h"
#include "Truncate.h"
#include "ViewGeometry.h"

namespace {

// One canvas pixel: an edge so near to the picture's is meant to be it.
constexpr double Touching = 1.0;

// The picture along one axis.
struct Axis {
    int image;      // picture pixels
    double scaled;  // canvas pixels
    double zoom;

    double Least() const { return std::min(CropSelection::LeastSide, scaled); }
    // Where a dragged edge comes to stand.
    double Edge(double at) const {
        if (at <= Touching) return 0.0;
        if (at >= scaled - Touching) return scaled;
        return zoom > 1.0 ? TruncateNear(at / zoom) * zoom : at;
    }
    // The same, no nearer to `from` than the least side where there is room.
    double UpperEdge(double at, double from) const {
        const double wanted = std::max(at, std::min(from + Least(), scaled));
        if (Ends(wanted)) return scaled;
        double edge = Edge(wanted);
        if (edge - from < Least() && zoom > 1.0) edge += zoom;
        return std::min(edge, scaled);
    }
    int Start(double at) const { return at <= Touching ? 0 : std::min(TruncateNear(at / zoom), image - 1); }
    bool Ends(double at) const { return at >= scaled - Touching; }
    int Length(double start, double end) const {
        const int first = Start(start);
        return std::clamp(Ends(end) ? image - first : TruncateNear((end - start) / zoom), 1, image - first);
    }
};

bool MovesLeft(CropHit hit) {
    return hit == CropHit::TopLeft || hit == CropHit::BottomLeft || hit == CropHit::Left;
}
bool MovesRight(CropHit hit) {
    return hit == CropHit::TopRight || hit == CropHit::BottomRight || hit == CropHit::Right;
}
bool MovesTop(CropHit hit) {
    return hit == CropHit::TopLeft || hit == CropHit::TopRight || hit == CropHit::Top;
}
bool MovesBottom(CropHit hit) {
    return hit == CropHit::BottomLeft || hit == CropHit::BottomRight || hit == CropHit::Bottom;
}

// Moves one or neither edge of a span by `by`; the other stays, and both stay within the picture.
void DragSpan(const Axis& axis, bool low, bool high, double by, double& first, double& last) {
    const double least = axis.Least();
    if (low) first = axis.Edge(std::clamp(first + by, 0.0, std::max(0.0, last - least)));
    if (high) last = axis.UpperEdge(std::min(last + by, axis.scaled), first);
    // The other edge may stand so near to the picture's that the least side has no room.
    if (low && last - first < least) last = std::min(first + least, axis.scaled);
    if (high && last - first < least) first = std::max(0.0, last - least);
}

}  // namespace

void CropSelection::StartDrawing() {
    m_cut = {};
    m_frame = {};
    m_drawingNew = true;
    m_hasDrawn = false;
    m_dragging = false;
    m_active = CropHit::Inside;
}

void CropSelection::SetGeometry(const ViewGeometry& geometry) {
    const bool otherPicture = geometry.Image() != m_image;
    const bool otherScale = geometry.Shown() != m_scaled || geometry.Zoom() != m_zoom;
    if (!otherPicture && !otherScale) return;
    m_image = geometry.Image();
    m_scaled = geometry.Shown();
    m_zoom = geometry.Zoom();
    m_dragging = false;
    if (IsEmpty()) return;
    if (otherPicture)
        SelectAll();
    else
        TakeCut(m_cut);
}

void CropSelection::SelectAll() {
    if (m_image.isEmpty()) return;
    m_drawingNew = false;
    TakeCut(QRect(QPoint(0, 0), m_image));
}

void CropSelection::SelectDefault() {
    if (m_image.isEmpty()) return;
    m_hasDrawn = false;
    m_frame = QRectF(m_image.width() * m_zoom * 0.25, m_image.height() * m_zoom * 0.25, m_image.width() * m_zoom * 0.5,
                     m_image.height() * m_zoom * 0.5);
    m_cut = CutOf(m_frame);
}

void CropSelection::SetSize(QSize size) {
    if (m_image.isEmpty()) return;
    const QSize sides = size.boundedTo(m_image).expandedTo({1, 1});
    const QSize room = m_image - sides;
    const QPoint at = IsEmpty() ? QPoint(room.width() / 2, room.height() / 2) : m_cut.topLeft();
    m_drawingNew = false;
    TakeCut(QRect(QPoint(std::min(at.x(), room.width()), std::min(at.y(), room.height())), sides));
}

QPointF CropSelection::Held(QPointF at) const {
    return {std::clamp(at.x(), 0.0, double(m_scaled.width())), std::clamp(at.y(), 0.0, double(m_scaled.height()))};
}

bool CropSelection::Press(QPointF at) {
    if (m_image.isEmpty() || m_dragging) return false;
    if (m_drawingNew) {
        if (Held(at) != at) return false;
        m_hasDrawn = false;
    } else {
        m_active = HitTest(at);
        if (m_active == CropHit::None) return false;
    }
    m_pressed = at;
    m_cutBefore = m_cut;
    m_frameBefore = m_frame;
    m_dragging = true;
    return true;
}

// Each move starts from the frame as it was at the press: beyond a limit the frame waits for the mouse to come back.
bool CropSelection::MoveTo(QPointF at) {
    if (!m_dragging) return false;
    const QRectF before = m_frame;
    if (m_drawingNew) {
        if (at == m_pressed && !m_hasDrawn) return false;
        DrawTo(Held(at));
        return m_frame != before;
    }
    m_frame = m_frameBefore;
    m_cut = m_cutBefore;
    const QPointF by = at - m_pressed;
    if (!by.isNull()) {
        if (m_active == CropHit::Inside)
            MoveFrame(by);
        else if (m_ratio > 0.0)
            DragRatio(m_active, by);
        else
            DragFree(m_active, by);
    }
    return m_frame != before;
}

bool CropSelection::Release() {
    if (!m_dragging) return false;
    m_dragging = false;
    m_active = CropHit::Inside;
    if (!m_drawingNew) return true;
    m_drawingNew = false;
    if (!m_hasDrawn) {
        SelectDefault();
        return true;
    }
    // What was drawn too small grows to the least side.
    if (m_ratio > 0.0)
        DragRatio(CropHit::BottomRight, {});
    else
        DragFree(CropHit::BottomRight, {});
    return true;
}

bool CropSelection::CancelDrag() {
    if (!m_dragging) return false;
    m_dragging = false;
    m_active = CropHit::Inside;
    m_frame = m_frameBefore;
    m_cut = m_cutBefore;
    return true;
}

void CropSelection::DrawTo(QPointF at) {
    m_hasDrawn = true;
    const Axis x{m_image.width(), double(m_scaled.width()), m_zoom};
    const Axis y{m_image.height(), double(m_scaled.height()), m_zoom};
    m_frame = QRectF(QPointF(x.Edge(m_pressed.x()), y.Edge(m_pressed.y())), QPointF(x.Edge(at.x()), y.Edge(at.y())))
                  .normalized();
    m_cut = CutOf(m_frame);
}

// The cut keeps its size; only its place follows.
void CropSelection::MoveFrame(QPointF by) {
    const auto along = [&](int image, int scaled, int length, double size, double from, double delta, double& frame,
                           int& cut) {
        const Axis axis{image, double(scaled), m_zoom};
        const double at = std::clamp(from + delta, 0.0, std::max(0.0, scaled - size));
        const bool end = at > Touching && axis.Ends(at + size);
        frame = end ? scaled - size : axis.Edge(at);
        cut = end ? image - length : std::min(axis.Start(frame), image - length);
    };
    double left = 0, top = 0;
    int x = 0, y = 0;
    along(m_image.width(), m_scaled.width(), m_cut.width(), m_frame.width(), m_frame.x(), by.x(), left, x);
    along(m_image.height(), m_scaled.height(), m_cut.height(), m_frame.height(), m_frame.y(), by.y(), top, y);
    m_frame.moveTo(left, top);
    m_cut.moveTo(x, y);
}

void CropSelection::DragFree(CropHit hit, QPointF by) {
    double left = m_frame.left(), top = m_frame.top(), right = m_frame.right(), bottom = m_frame.bottom();
    DragSpan({m_image.width(), double(m_scaled.width()), m_zoom}, MovesLeft(hit), MovesRight(hit), by.x(), left, right);
    DragSpan({m_image.height(), double(m_scaled.height()), m_zoom}, MovesTop(hit), MovesBottom(hit), by.y(), top,
             bottom);
    m_frame = QRectF(QPointF(left, top), QPointF(right, bottom));
    m_cut = CutOf(m_frame);
}

// A corner or a side edge leads by the width, the upper and the lower edge by the height. The corner that stays put is
// the opposite one; of an edge's two, the upper or left.
void CropSelection::DragRatio(CropHit hit, QPointF by) {
    const bool toLeft = MovesLeft(hit);
    const bool toTop = MovesTop(hit);
    const double roomX = toLeft ? m_frame.right() : m_scaled.width() - m_frame.left();
    const double roomY = toTop ? m_frame.bottom() : m_scaled.height() - m_frame.top();
    const bool byHeight = hit == CropHit::Top || hit == CropHit::Bottom;
    const double wanted = byHeight ? (m_frame.height() + (toTop ? -by.y() : by.y())) / m_ratio
                                   : m_frame.width() + (toLeft ? -by.x() : by.x());
    const double most = std::min(roomX, roomY / m_ratio);
    const double least = std::max(std::min(LeastSide, double(m_scaled.width())),
                                  std::min(LeastSide, double(m_scaled.height())) / m_ratio);
    const double width = std::min(std::max(wanted, least), most);
    const QSizeF size(width, width * m_ratio);
    const QPointF corner(toLeft ? m_frame.right() - size.width() : m_frame.left(),
                         toTop ? m_frame.bottom() - size.height() : m_frame.top());
    m_frame = QRectF(corner, size);
    m_cut = CutOf(m_frame);
}

bool CropSelection::MoveBy(int dx, int dy) {
    if (IsEmpty() || m_dragging) return false;
    const QSize room = m_image - m_cut.size();
    const QRect cut(QPoint(std::clamp(m_cut.x() + dx, 0, room.width()), std::clamp(m_cut.y() + dy, 0, room.height())),
                    m_cut.size());
    if (cut == m_cut) return false;
    m_drawingNew = false;
    TakeCut(cut);
    return true;
}

bool CropSelection::GrowBy(int dx, int dy) {
    if (IsEmpty() || m_dragging) return false;
    QSize size(m_cut.width() + dx, m_cut.height() + dy);
    if (m_ratio > 0.0 && dx != 0) size.setHeight(HeightFor(size.width(), m_ratio));
    if (m_ratio > 0.0 && dx == 0 && dy != 0) size.setWidth(WidthFor(size.height(), m_ratio));
    const QSize room(m_image.width() - m_cut.x(), m_image.height() - m_cut.y());
    if (size.width() < 1 || size.height() < 1 || size.boundedTo(room) != size || size == m_cut.size()) return false;
    m_drawingNew = false;
    TakeCut(QRect(m_cut.topLeft(), size));
    return true;
}

void CropSelection::TakeCut(const QRect& cut) {
    m_cut = cut;
    m_frame = FrameOf(cut);
}

// The scaled picture is truncated: the picture's own edge is held to it.
QRectF CropSelection::FrameOf(const QRect& cut) const {
    const auto end = [this](int at, int image, int scaled) {
        return at >= image ? double(scaled) : std::min(at * m_zoom, double(scaled));
    };
    const QPointF first(std::min(cut.x() * m_zoom, double(m_scaled.width())),
                        std::min(cut.y() * m_zoom, double(m_scaled.height())));
    const QPointF last(end(cut.x() + cut.width(), m_image.width(), m_scaled.width()),
                       end(cut.y() + cut.height(), m_image.height(), m_scaled.height()));
    return QRectF(first, last);
}

QRect CropSelection::CutOf(const QRectF& frame) const {
    const Axis x{m_image.width(), double(m_scaled.width()), m_zoom};
    const Axis y{m_image.height(), double(m_scaled.height()), m_zoom};
    QSize size(x.Length(frame.left(), frame.right()), y.Length(frame.top(), frame.bottom()));
    if (m_ratio > 0.0 && !m_drawingNew) {
        const bool wholeHeight = size.height() == m_image.height();
        if (!wholeHeight) size.setHeight(HeightFor(size.width(), m_ratio));
        if (wholeHeight || size.height() > m_image.height()) {
            size.setHeight(m_image.height());
            size.setWidth(std::min(m_image.width(), WidthFor(size.height(), m_ratio)));
        }
    }
    const int left = x.Ends(frame.right()) ? m_image.width() - size.width() : x.Start(frame.left());
    const int top = y.Ends(frame.bottom()) ? m_image.height() - size.height() : y.Start(frame.top());
    return {QPoint(std::min(left, m_image.width() - size.width()), std::min(top, m_image.height() - size.height())),
            size};
}

std::array<QRectF, 9> CropSelection::HitAreas() const {
    const double half = m_handle / 2;
    const auto square = [&](QPointF at) { return QRectF(at.x() - half, at.y() - half, m_handle, m_handle); };
    const QRectF& f = m_frame;
    return {square(f.topLeft()),
            square(f.topRight()),
            square(f.bottomLeft()),
            square(f.bottomRight()),
            QRectF(f.left(), f.top() - half, f.width(), m_handle),
            QRectF(f.left() - half, f.top(), m_handle, f.height()),
            QRectF(f.left(), f.bottom() - half, f.width(), m_handle),
            QRectF(f.right() - half, f.top(), m_handle, f.height()),
            f};
}

CropHit CropSelection::HitTest(QPointF at) const {
    if (IsEmpty() || m_drawingNew) return CropHit::None;
    const auto areas = HitAreas();
    for (std::size_t i = 0; i < areas.size(); ++i) {
        const QRectF& area = areas[i];
        if (at.x() >= area.left() && at.y() >= area.top() && at.x() < area.right() && at.y() < area.bottom())
            return static_cast<CropHit>(i);
    }
    return CropHit::None;
}
