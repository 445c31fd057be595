// SPDX-License-Identifier: GPL-3.0-or-later
#include "ToneCurve.h"

#include <algorithm>
#include <cmath>

namespace {

// Slopes at the points that keep the cubic from overshooting.
std::vector<double> SlopesOf(const CurvePoints& points) {
    const std::size_t n = points.size();
    std::vector<double> secant(n - 1), slope(n);
    for (std::size_t i = 0; i + 1 < n; ++i)
        secant[i] = (points[i + 1].y - points[i].y) / (points[i + 1].x - points[i].x);
    slope.front() = secant.front();
    slope.back() = secant.back();
    for (std::size_t i = 1; i + 1 < n; ++i) {
        // The harmonic mean, weighted by the spans: 0 where one side is flat.
        const double before = points[i].x - points[i - 1].x, after = points[i + 1].x - points[i].x;
        const double a = secant[i - 1], b = secant[i];
        slope[i] =
            a <= 0 || b <= 0 ? 0.0 : 3 * (before + after) / ((2 * after + before) / a + (after + 2 * before) / b);
    }
    return slope;
}

}  // namespace

ToneCurve::ToneCurve(const CurvePoints& points) {
    if (points.size() < 2) return;
    m_identity = false;
    const std::vector<double> slopes = SlopesOf(points);
    for (int i = 0; i <= Steps; ++i) m_values[i] = static_cast<float>(Exact(points, slopes, 255.0 * i / Steps) / 255.0);
    m_slopeAtBlack = (m_values[1] - m_values[0]) * Steps;
    m_slopeAtWhite = (m_values[Steps] - m_values[Steps - 1]) * Steps;
}

double ToneCurve::Exact(const CurvePoints& points, const std::vector<double>& slopes, double x) const {
    if (x <= points.front().x) return points.front().y + slopes.front() * (x - points.front().x);
    if (x >= points.back().x) return points.back().y + slopes.back() * (x - points.back().x);
    std::size_t i = 0;
    while (x > points[i + 1].x) ++i;
    const double span = points[i + 1].x - points[i].x;
    const double t = (x - points[i].x) / span, u = 1 - t;
    return points[i].y * u * u * (1 + 2 * t) + slopes[i] * span * t * u * u + points[i + 1].y * t * t * (3 - 2 * t) -
           slopes[i + 1] * span * t * t * u;
}

double ToneCurve::At(double x) const {
    if (m_identity) return x;
    if (x <= 0.0) return m_values[0] + m_slopeAtBlack * x;
    if (x >= 1.0) return m_values[Steps] + m_slopeAtWhite * (x - 1.0);
    const double place = x * Steps;
    const int i = std::min(static_cast<int>(place), Steps - 1);
    return m_values[i] + (m_values[i + 1] - m_values[i]) * (place - i);
}
