// SPDX-License-Identifier: GPL-3.0-or-later
#include "Outline.h"

#include <limits>

namespace {

Vec2 CatmullRom(Vec2 a, Vec2 b, Vec2 c, Vec2 d, double t) {
    const double t2 = t * t;
    const double t3 = t2 * t;
    return a * (-0.5 * t3 + t2 - 0.5 * t) + b * (1.5 * t3 - 2.5 * t2 + 1) + c * (-1.5 * t3 + 2 * t2 + 0.5 * t) +
           d * (0.5 * t3 - 0.5 * t2);
}

}  // namespace

std::vector<Vec2> SmoothCurve(const std::vector<Vec2>& points, int piecesPerSpan, bool closed) {
    const int count = static_cast<int>(points.size());
    const auto at = [&](int i) {
        return closed ? points[static_cast<std::size_t>((i + count) % count)]
                      : points[static_cast<std::size_t>(std::clamp(i, 0, count - 1))];
    };
    std::vector<Vec2> curve;
    const int spans = closed ? count : count - 1;
    for (int span = 0; span < spans; ++span) {
        for (int piece = 0; piece < piecesPerSpan; ++piece) {
            const double t = static_cast<double>(piece) / piecesPerSpan;
            curve.push_back(CatmullRom(at(span - 1), at(span), at(span + 1), at(span + 2), t));
        }
    }
    if (!closed) curve.push_back(points.back());
    return curve;
}

Outline::Outline(const std::vector<Vec2>& points, int piecesPerSpan)
    : m_points(SmoothCurve(points, piecesPerSpan, true)), m_low(m_points.front()), m_high(m_points.front()) {
    for (const Vec2& p : m_points) {
        m_low = {std::min(m_low.x, p.x), std::min(m_low.y, p.y)};
        m_high = {std::max(m_high.x, p.x), std::max(m_high.y, p.y)};
    }
}

double Outline::Inside(Vec2 p) const {
    const Vec2 beyond{std::max({m_low.x - p.x, p.x - m_high.x, 0.0}), std::max({m_low.y - p.y, p.y - m_high.y, 0.0})};
    const double boxAway = Length(beyond);
    if (boxAway > Far) return -boxAway;
    double nearest = std::numeric_limits<double>::max();
    bool inside = false;
    Vec2 from = m_points.back();
    for (const Vec2& to : m_points) {
        const Vec2 edge = to - from;
        const Vec2 offset = p - from;
        const double t = Clamp01(Dot(offset, edge) / std::max(Dot(edge, edge), 1e-18));
        const Vec2 away = offset - edge * t;
        nearest = std::min(nearest, Dot(away, away));
        if ((from.y > p.y) != (to.y > p.y) && p.x < from.x + edge.x * (p.y - from.y) / edge.y) inside = !inside;
        from = to;
    }
    const double distance = std::sqrt(nearest);
    return inside ? distance : -distance;
}
