// SPDX-License-Identifier: GPL-3.0-or-later
// The displacement field as its formula stands, one pixel after the other: the judge of CWarpField.
#pragma once

#include <cmath>
#include <cstdint>
#include <vector>

#include "Bitmap.h"

namespace Plain {

struct Pair {
    float x = 0.0f, y = 0.0f;
};

class WarpField {
  public:
    explicit WarpField(const Bitmap& image)
        : output(image),
          source(image),
          field(std::size_t(image.Width()) * image.Height()),
          m_width(image.Width()),
          m_height(image.Height()) {}

    void SetRadius(int r) {
        m_radius = r < 2 ? 1 : r;
        m_lookup.assign(m_radius, 0.0);
        for (int i = 0; i < m_radius; ++i)
            m_lookup[i] =
                std::pow((std::cos(std::sqrt(static_cast<double>(i) / m_radius) * 3.141592653589793) + 1.0) * 0.5, 0.7);
    }

    bool Deform(int x1, int y1, int x0, int y0, int mode) {
        if (amount == 0.0) return false;
        double a = amount;
        if (a < 0.0) {
            a = -a;
            mode = 1;
        }
        if (x1 < 0 || x1 > m_width - 1 || x0 < 0 || x0 > m_width - 1) return false;
        if (y1 < 0 || y1 > m_height - 1 || y0 < 0 || y0 > m_height - 1) return false;
        m_v = a;
        m_mode = mode;
        if (mode != 2) {
            ApplyAt(x1, y1, a, a);
            return true;
        }
        double dx = x1 - x0, dy = y1 - y0;
        const double length = std::sqrt(dx * dx + dy * dy);
        const int n = 1 + static_cast<int>(2.0 * length / m_radius);
        dx = dx / n;
        dy = dy / n;
        double xf = x0 + dx, yf = y0 + dy;
        for (int i = 0; i < n; ++i) {
            ApplyAt(static_cast<int>(xf), static_cast<int>(yf), -dx, -dy);
            xf += dx;
            yf += dy;
        }
        return true;
    }

    const Pair& At(int x, int y) const { return field[std::size_t(y) * m_width + x]; }

    Bitmap output, source;
    std::vector<Pair> field;
    double amount = 0.0;
    bool bilinear = true;

  private:
    void ApplyAt(int x, int y, double dx, double dy) {
        const int left = -std::min(m_radius, x), top = -std::min(m_radius, y);
        const int right = m_width <= m_radius + x ? m_width - x - 1 : m_radius;
        const int bottom = m_height <= m_radius + y ? m_height - y - 1 : m_radius;
        const std::int64_t square = std::max<std::int64_t>(1, std::int64_t{m_radius} * m_radius);
        const int columns = right - left + 1;
        std::vector<Pair> scratch(std::size_t(columns) * (bottom - top + 1));
        const auto kAt = [&](int xi, int yi) {
            return (std::int64_t{xi} * xi + std::int64_t{yi} * yi) * m_radius / square;
        };
        for (int yi = top; yi <= bottom; ++yi)
            for (int xi = left; xi <= right; ++xi) {
                const std::int64_t k = kAt(xi, yi);
                if (k >= m_radius) continue;
                Pair& entry = scratch[std::size_t(yi - top) * columns + (xi - left)];
                const int p = x + xi, q = y + yi;
                entry = NewPair(m_lookup[k], xi, yi, p, q, dx, dy);
                SamplePixel(p, q, double(entry.x) + p, double(entry.y) + q);
            }
        for (int yi = top; yi <= bottom; ++yi)
            for (int xi = left; xi <= right; ++xi)
                if (kAt(xi, yi) < m_radius)
                    field[std::size_t(y + yi) * m_width + x + xi] =
                        scratch[std::size_t(yi - top) * columns + (xi - left)];
    }

    Pair NewPair(double f, int xi, int yi, int p, int q, double dx, double dy) const {
        double vx = 0.0, vy = 0.0, d = 0.0;
        switch (m_mode) {
            case 0:
                d = f * 0.1 * m_v;
                vx = -xi * d;
                vy = -yi * d;
                break;
            case 1:
                d = f * 0.1 * m_v;
                vx = xi * d;
                vy = yi * d;
                break;
            case 2:
                d = f * m_v;
                vx = dx * d;
                vy = dy * d;
                break;
            case 3: {
                const double c = 1.0 - 0.5 * m_v * f;
                return {static_cast<float>(c * At(p, q).x), static_cast<float>(c * At(p, q).y)};
            }
            case 4:
                d = f * m_v * 0.5;
                vx = -yi * d;
                vy = xi * d;
                break;
            default:
                d = f * m_v * 0.5;
                vx = yi * d;
                vy = -xi * d;
        }
        double e = m_radius * 0.2;
        if (e < 1.0) e = 1.0;
        double fade = 1.0;
        if (p < e) fade = std::min(fade, p / e);
        if (q < e) fade = std::min(fade, q / e);
        if (m_width - 1 - p < e) fade = std::min(fade, (m_width - 1 - p) / e);
        if (m_height - 1 - q < e) fade = std::min(fade, (m_height - 1 - q) / e);
        vx *= fade;
        vy *= fade;
        double fx, fy;
        SampleField(p + vx, q + vy, fx, fy);
        double nx = fx + vx, ny = fy + vy;
        if (p + nx < 0.0)
            nx = -p;
        else if (p + nx > m_width - 1)
            nx = m_width - 1 - p;
        if (q + ny < 0.0)
            ny = -q;
        else if (q + ny > m_height - 1)
            ny = m_height - 1 - q;
        return {static_cast<float>(nx), static_cast<float>(ny)};
    }

    void SampleField(double x, double y, double& dx, double& dy) const {
        dx = dy = 0.0;
        if (!(x >= 0.0 && x < m_width - 1 && y >= 0.0 && y < m_height - 1)) return;
        const int ix = static_cast<int>(x), iy = static_cast<int>(y);
        const double tx = x - ix, ty = y - iy;
        const Pair &a = At(ix, iy), &b = At(ix + 1, iy), &c = At(ix, iy + 1), &d = At(ix + 1, iy + 1);
        const double topX = (double(b.x) - a.x) * tx + a.x, bottomX = (double(d.x) - c.x) * tx + c.x;
        const double topY = (double(b.y) - a.y) * tx + a.y, bottomY = (double(d.y) - c.y) * tx + c.y;
        dx = (bottomX - topX) * ty + topX;
        dy = (bottomY - topY) * ty + topY;
    }

    void SamplePixel(int destX, int destY, double srcX, double srcY) {
        const int ix = static_cast<int>(srcX), iy = static_cast<int>(srcY);
        if (!(iy >= 0 && iy + 1 < m_height && ix >= 0 && ix + 1 < m_width)) return;
        if (!(destY >= 0 && destY + 1 < m_height && destX >= 0 && destX + 1 < m_width)) return;
        std::uint8_t* const to = output.MutablePixels() + destY * output.Stride() + std::ptrdiff_t{4} * destX;
        const std::uint8_t* const upper = source.Row(iy) + std::ptrdiff_t{4} * ix;
        const std::uint8_t* const lower = upper + source.Stride();
        const double tx = srcX - ix, ty = srcY - iy;
        for (int c = 0; c < 3; ++c) {
            if (!bilinear) {
                to[c] = upper[c];
                continue;
            }
            const double top = (double(upper[4 + c]) - upper[c]) * tx + upper[c];
            const double bottom = (double(lower[4 + c]) - lower[c]) * tx + lower[c];
            to[c] = static_cast<std::uint8_t>((bottom - top) * ty + top);
        }
    }

    int m_width, m_height;
    int m_radius = 1;
    std::vector<double> m_lookup{1.0};
    double m_v = 0.3;
    int m_mode = 2;
};

}  // namespace Plain
