// SPDX-License-Identifier: GPL-3.0-or-later
#include "Coverage.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

namespace {

constexpr double Grid = 256.0;
// A curve may leave its chords by that much of a pixel.
constexpr double Flatness = 0.08;
constexpr int MostPieces = 64;
// Rows are filled in bands of about so many pixels, which keeps them in cache and large texts cheap in memory.
constexpr int BandPixels = 1 << 18;

struct Free {
    void operator()(float* memory) const { std::free(memory); }
};

// The signed areas of a band of rows; one value more than pixels a row.
class Areas {
  public:
    Areas(float* areas, int width, int top, int bottom)
        : m_areas(areas), m_width(width), m_top(static_cast<float>(top)), m_rows(bottom - top) {}

    void Add(float x0, float y0, float x1, float y1) const {
        y0 -= m_top;
        y1 -= m_top;
        if (y0 == y1) return;
        const float direction = y0 < y1 ? 1.0f : -1.0f;
        if (y0 > y1) {
            std::swap(x0, x1);
            std::swap(y0, y1);
        }
        if (y1 <= 0 || y0 >= static_cast<float>(m_rows)) return;
        const float slope = (x1 - x0) / (y1 - y0);
        const int first = y0 <= 0 ? 0 : static_cast<int>(y0);
        const int last = std::min(m_rows, static_cast<int>(std::ceil(y1)));
        for (int row = first; row < last; ++row) {
            const float from = std::max(static_cast<float>(row), y0), to = std::min(static_cast<float>(row + 1), y1);
            const float left = x0 + (from - y0) * slope, right = x0 + (to - y0) * slope;
            Row(m_areas + static_cast<std::ptrdiff_t>(row) * (m_width + 1), std::min(left, right),
                std::max(left, right), (to - from) * direction);
        }
    }

  private:
    // An edge of height `d` goes from x0 to x1 within one row: what lies right of it is inside.
    void Row(float* row, float x0, float x1, float d) const {
        const auto width = static_cast<float>(m_width);
        if (x0 >= width) return;
        if (x1 <= 0) {
            row[0] += d;
            return;
        }
        if (x0 < 0) {
            const float part = -x0 / (x1 - x0);
            row[0] += d * part;
            d *= 1 - part;
            x0 = 0;
        }
        if (x1 > width) {
            d *= (width - x0) / (x1 - x0);
            x1 = width;
        }
        const int first = static_cast<int>(x0), end = static_cast<int>(std::ceil(x1));
        if (end <= first + 1) {
            const float middle = 0.5f * (x0 + x1) - static_cast<float>(first);
            row[first] += d * (1 - middle);
            row[first + 1] += d * middle;
            return;
        }
        const float by = 1 / (x1 - x0), in = x0 - static_cast<float>(first);
        const float out = x1 - static_cast<float>(end) + 1;
        const float head = 0.5f * by * (1 - in) * (1 - in), tail = 0.5f * by * out * out;
        row[first] += d * head;
        if (end == first + 2) {
            row[first + 1] += d * (1 - head - tail);
        } else {
            const float second = by * (1.5f - in);
            row[first + 1] += d * (second - head);
            for (int x = first + 2; x < end - 1; ++x) row[x] += d * by;
            row[end - 1] += d * (1 - (second + static_cast<float>(end - first - 3) * by) - tail);
        }
        row[end] += d * tail;
    }

    float* m_areas;
    int m_width;
    float m_top;
    int m_rows;
};

// The premultiplied pixels of a colour for each share of 255.
std::array<QRgb, 256> PixelsOf(const QColor& colour) {
    std::array<QRgb, 256> pixels;
    for (int share = 0; share < 256; ++share) {
        const int alpha = (share * colour.alpha() + 127) / 255;
        const auto premultiplied = [alpha](int channel) { return (channel * alpha + 127) / 255; };
        pixels[static_cast<std::size_t>(share)] =
            qRgba(premultiplied(colour.red()), premultiplied(colour.green()), premultiplied(colour.blue()), alpha);
    }
    return pixels;
}

// The pixels of a row by the shares that its areas add up to. True when there is any. Between edges nothing changes.
bool Resolve(const float* areas, int width, const std::array<QRgb, 256>& pixels, QRgb* out) {
    float sum = 0;
    QRgb pixel = 0;
    bool any = false;
    for (int x = 0; x < width; ++x) {
        if (areas[x] != 0) {
            sum += areas[x];
            pixel = pixels[static_cast<std::size_t>(std::min(std::abs(sum), 1.0f) * 255.0f + 0.5f)];
            any |= pixel != 0;
        }
        out[x] = pixel;
    }
    return any;
}

}  // namespace

void Coverage::Line(QPointF from, QPointF to) {
    const auto grid = [](double at) { return static_cast<float>(std::floor(at * Grid + 0.5) / Grid); };
    const Segment segment{grid(from.x()), grid(from.y()), grid(to.x()), grid(to.y())};
    if (m_segments.empty()) {
        m_left = m_right = segment.x0;
        m_top = m_bottom = segment.y0;
    }
    m_left = std::min({m_left, segment.x0, segment.x1});
    m_right = std::max({m_right, segment.x0, segment.x1});
    m_top = std::min({m_top, segment.y0, segment.y1});
    m_bottom = std::max({m_bottom, segment.y0, segment.y1});
    m_segments.push_back(segment);
}

void Coverage::Curve(QPointF p0, QPointF p1, QPointF p2, QPointF p3) {
    const QPointF bend = p0 - 2 * p1 + p2, other = p1 - 2 * p2 + p3;
    const double far = std::max(std::hypot(bend.x(), bend.y()), std::hypot(other.x(), other.y()));
    // A chord of one of n pieces leaves the curve by at most 6/8 of the second difference over n squared.
    const int pieces = std::clamp(static_cast<int>(std::ceil(std::sqrt(0.75 * far / Flatness))), 1, MostPieces);
    QPointF last = p0;
    for (int i = 1; i <= pieces; ++i) {
        const double t = double(i) / pieces, u = 1 - t;
        const QPointF at = i == pieces ? p3 : u * u * u * p0 + 3 * u * u * t * p1 + 3 * u * t * t * p2 + t * t * t * p3;
        Line(last, at);
        last = at;
    }
}

void Coverage::Add(const QPainterPath& path, const QTransform& transform) {
    if (path.isEmpty()) return;
    if (!m_hasOrigin) {
        const QPointF first = transform.map(QPointF(path.elementAt(0)));
        m_origin = QPoint(static_cast<int>(std::floor(first.x())), static_cast<int>(std::floor(first.y())));
        m_hasOrigin = true;
    }
    const QTransform toOrigin = transform * QTransform::fromTranslate(-m_origin.x(), -m_origin.y());
    QPointF start, last;
    const auto close = [&] {
        if (last != start) Line(last, start);
    };
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        const QPointF at = toOrigin.map(QPointF(element));
        if (element.isMoveTo()) {
            close();
            start = last = at;
        } else if (element.isLineTo()) {
            Line(last, at);
            last = at;
        } else if (element.isCurveTo() && i + 2 < path.elementCount()) {
            const QPointF second = toOrigin.map(QPointF(path.elementAt(i + 1)));
            const QPointF end = toOrigin.map(QPointF(path.elementAt(i + 2)));
            Curve(last, at, second, end);
            last = end;
            i += 2;
        }
    }
    close();
}

QRect Coverage::Bounds() const {
    if (m_segments.empty()) return {};
    const auto down = [](float at) { return static_cast<int>(std::floor(at)); };
    return QRect(QPoint(down(m_left), down(m_top)), QPoint(down(m_right) + 1, down(m_bottom) + 1));
}

bool Coverage::Fill(QPainter& painter, const QRect& clip, const QColor& colour) const {
    // All columns of the outlines unless they are far larger than what is seen, so that a pixel does not depend on it.
    QRect area = Bounds();
    const QRect seen = area.intersected(clip.translated(-m_origin));
    if (seen.isEmpty() || colour.alpha() == 0) return true;
    if (area.width() > 4 * seen.width() + 1024) area = QRect(seen.x(), area.y(), seen.width(), area.height());
    area.setTop(seen.top());
    area.setBottom(seen.bottom());
    const int width = area.width(), rows = std::clamp(BandPixels / (width + 1), 1, area.height());
    const std::size_t count = static_cast<std::size_t>(rows) * static_cast<std::size_t>(width + 1);
    const std::unique_ptr<float, Free> areas(static_cast<float*>(std::malloc(count * sizeof(float))));
    QImage image(width, rows, QImage::Format_ARGB32_Premultiplied);
    if (!areas || image.isNull()) return false;
    const std::array<QRgb, 256> pixels = PixelsOf(colour);
    painter.save();
    painter.setWorldTransform(painter.deviceTransform().inverted() * painter.worldTransform());
    for (int top = area.top(); top <= area.bottom(); top += rows) {
        const int bottom = std::min(top + rows, area.bottom() + 1);
        std::memset(areas.get(), 0, count * sizeof(float));
        const Areas band(areas.get(), width, top, bottom);
        const auto shift = static_cast<float>(area.left());
        for (const Segment& s : m_segments) band.Add(s.x0 - shift, s.y0, s.x1 - shift, s.y1);
        bool any = false;
        for (int row = 0; row < bottom - top; ++row)
            any |= Resolve(areas.get() + static_cast<std::ptrdiff_t>(row) * (width + 1), width, pixels,
                           reinterpret_cast<QRgb*>(image.scanLine(row)));
        if (any) painter.drawImage(QPoint(area.left(), top) + m_origin, image, QRect(0, 0, width, bottom - top));
    }
    painter.restore();
    return true;
}
