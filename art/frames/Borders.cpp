// SPDX-License-Identifier: GPL-3.0-or-later
#include "Borders.h"

#include <algorithm>
#include <iterator>

#include "Softness.h"

namespace {

// The mean of straight-alpha colours, by their alpha.
class Mean {
  public:
    void Add(const QColor& c) {
        const double a = c.alphaF();
        m_red += c.red() * a;
        m_green += c.green() * a;
        m_blue += c.blue() * a;
        m_alpha += a;
        ++m_count;
    }
    QRgb Value() const {
        if (m_alpha <= 0) return 0;
        const auto level = [&](double sum) { return static_cast<int>(sum / m_alpha + 0.5); };
        return qRgba(level(m_red), level(m_green), level(m_blue), static_cast<int>(m_alpha * 255 / m_count + 0.5));
    }

  private:
    double m_red = 0, m_green = 0, m_blue = 0, m_alpha = 0;
    int m_count = 0;
};

}  // namespace

MiniFrame MitredBorder(int left, int top, int right, int bottom, int over, int tile,
                       const std::function<QColor(const BorderPlace&, double)>& colour) {
    MiniFrame frame;
    frame.pictureLeft = left;
    frame.pictureTop = top;
    frame.pictureRight = right;
    frame.pictureBottom = bottom;
    frame.left = left + over;
    frame.top = top + over;
    frame.right = right + over;
    frame.bottom = bottom + over;
    frame.tileWidth = frame.tileHeight = tile;
    const int width = frame.left + tile + frame.right, height = frame.top + tile + frame.bottom;
    const auto at = [&](double x, double y) {
        // By how much of its own edge's breadth a place lies inside; mitres run where two edges are even.
        const double depths[] = {y, width - x, height - y, x};
        const double breadths[] = {double(top), double(right), double(bottom), double(left)};
        int nearest = 0;
        for (int i = 1; i < 4; ++i)
            if (depths[i] - breadths[i] < depths[nearest] - breadths[nearest]) nearest = i;
        BorderPlace place;
        place.edge = static_cast<Edge>(nearest);
        place.depth = depths[nearest];
        place.x = x - frame.left;
        place.y = y - frame.top;
        place.outer = *std::min_element(std::begin(depths), std::end(depths));
        place.fromTop = y - top;
        place.fromRight = width - right - x;
        place.fromBottom = height - bottom - y;
        place.fromLeft = x - left;
        place.along = nearest % 2 == 0 ? place.x : place.y;
        return colour(place, place.depth - breadths[nearest]);
    };
    frame.image = Computed(width, height, [&](int x, int y) {
        Mean mean;
        for (const double dy : {0.25, 0.75})
            for (const double dx : {0.25, 0.75}) mean.Add(at(x + dx, y + dy));
        return mean.Value();
    });
    return frame;
}

MiniFrame MitredBorder(const BorderSize& size, const std::function<QColor(const BorderPlace&)>& colour) {
    const int m = size.margin;
    return MitredBorder(m, m, m, m, size.corner - m, size.tile,
                        [&](const BorderPlace& place, double) { return colour(place); });
}
