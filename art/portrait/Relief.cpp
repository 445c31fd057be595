// SPDX-License-Identifier: GPL-3.0-or-later
#include "Relief.h"

#include "Features.h"
#include "Parallel.h"
#include "Truncate.h"

namespace {

double NoseHeight(Vec2 p) {
    const double x = std::abs(p.x);
    const double along = Clamp01((p.y + 0.16) / 0.52);
    const double width = Mix(0.088, 0.105, along * along) + 0.035 * Bell((p.y + 0.18) / 0.12);
    const double rise = Mix(0.050, 0.195, std::pow(along, 1.2));
    const double ridge = rise * Bell(p.x / width) * Smooth(-0.34, -0.08, p.y) * Smooth(0.445, 0.335, p.y);
    const double base = 0.075 * Bell(p.x / 0.20) * Smooth(-0.15, 0.3, p.y) * Smooth(0.47, 0.35, p.y);
    const double tip = 0.085 * Blob(p, {0, 0.352}, 0.085, 0.068);
    const double wings = 0.085 * Blob({x, p.y}, {0.118, 0.380}, 0.050, 0.052);
    const double groove =
        -0.030 * Blob({x, p.y}, {0.165, 0.36}, 0.022, 0.05) - 0.020 * Blob({x, p.y}, {0.085, 0.345}, 0.02, 0.03);
    return ridge + base + tip + wings + groove;
}

double EyeHeight(Vec2 p) {
    const Vec2 q{std::abs(p.x), p.y};
    const double socket = -0.105 * Blob(q, {0.27, -0.045}, 0.2, 0.115) - 0.06 * Blob(q, {0.145, -0.03}, 0.06, 0.09);
    const double brow = 0.05 * Blob(q, {0.3, -0.2}, 0.24, 0.075);
    const Vec2 r{(q.x - Face::EyeX) / 0.205, (q.y + 0.012) / 0.125};
    const double ball = 0.105 * std::sqrt(std::max(0.0, 1 - Dot(r, r)));
    const double bag = 0.012 * Blob(q, {0.29, 0.115}, 0.13, 0.022) - 0.014 * Blob(q, {0.27, 0.155}, 0.15, 0.028);
    return socket + brow + ball + bag;
}

double MouthHeight(Vec2 p) {
    const Vec2 q{std::abs(p.x), p.y};
    const double muzzle = 0.075 * Blob(q, {0, 0.6}, 0.27, 0.2);
    const auto edges = Face::MouthAt(p.x);
    double lips = 0;
    if (q.x < Face::MouthHalf) {
        const double upper = (p.y - edges.upperOuter) / std::max(edges.upperInner - edges.upperOuter, 1e-4);
        const double lower = (p.y - edges.lowerInner) / std::max(edges.lowerOuter - edges.lowerInner, 1e-4);
        const double taper = std::sqrt(1 - q.x / Face::MouthHalf);
        if (upper > 0 && upper < 1) lips += 0.03 * taper * std::sin(3.1416 * std::pow(upper, 0.8));
        if (lower > 0 && lower < 1) lips += 0.046 * taper * std::sin(3.1416 * std::pow(lower, 0.9));
    }
    const double philtrum = -0.012 * Blob(q, {0, 0.49}, 0.022, 0.045) + 0.007 * Blob(q, {0.042, 0.495}, 0.02, 0.05);
    const double fold = -0.035 * Blob(q, {0, 0.785}, 0.17, 0.04);
    const double corner = -0.03 * Blob(q, {0.278, 0.59}, 0.035, 0.04);
    return muzzle + lips + philtrum + fold + corner;
}

double CheekHeight(Vec2 p) {
    const Vec2 q{std::abs(p.x), p.y};
    const double bone = 0.055 * Blob(q, {0.43, 0.2}, 0.19, 0.13);
    const double apple = 0.038 * Blob(q, {0.3, 0.33}, 0.13, 0.12);
    // From the wing of the nose to beside the mouth.
    const Vec2 from{0.175, 0.37};
    const Vec2 along = Vec2{0.335, 0.6} - from;
    const double t = Clamp01(Dot(q - from, along) / Dot(along, along));
    const double fold = -0.02 * Bell(Length(q - (from + along * t)) / 0.035) * Smooth(1.0, 0.5, t) * Smooth(0, 0.2, t);
    const double chin = 0.085 * Blob(q, {0, 0.89}, 0.15, 0.085);
    const double temple = -0.03 * Blob(q, {0.58, -0.22}, 0.1, 0.2);
    return bone + apple + fold + chin + temple;
}

}  // namespace

double FeatureHeight(Vec2 p) {
    return NoseHeight(p) + EyeHeight(p) + MouthHeight(p) + CheekHeight(p);
}

Relief::Relief(Vec3 light)
    : m_width(Truncate((Right - Left) / Step + 1.5)), m_rows(Truncate((Bottom - Top) / Step + 1.5)) {
    m_smooth = Inflate();
    Grid features(m_smooth.size());
    ForEachBand(m_rows, 8, [&](int first, int last) {
        for (int y = first; y < last; ++y) {
            for (int x = 0; x < m_width; ++x) Cell(features, x, y) = FeatureHeight(PointOf(x, y));
        }
    });
    Blur(features, 1.6);
    m_height = m_smooth;
    for (std::size_t i = 0; i < m_height.size(); ++i) m_height[i] += features[i];
    Blur(m_smooth, 6);
    Blur(features, 9);
    for (std::size_t i = 0; i < m_smooth.size(); ++i) m_smooth[i] += features[i];
    AddNormals();
    AddOpenness();
    AddShadow(light);
}

// The head's plain form: the height of a membrane blown up over its outline, which is an ellipsoid over an ellipse.
Relief::Grid Relief::Inflate() const {
    Grid height(static_cast<std::size_t>(m_width) * m_rows, 0.0);
    std::vector<char> inside(height.size());
    ForEachBand(m_rows, 8, [&](int first, int last) {
        for (int y = first; y < last; ++y) {
            for (int x = 0; x < m_width; ++x)
                inside[static_cast<std::size_t>(y) * m_width + x] = Face::Head().Inside(PointOf(x, y)) > 0;
        }
    });
    const std::size_t row = static_cast<std::size_t>(m_width);
    for (int round = 0; round < 420; ++round) {
        for (int y = 1; y < m_rows - 1; ++y) {
            double* line = &height[y * row];
            const char* in = &inside[y * row];
            for (int x = 1; x < m_width - 1; ++x) {
                if (!in[x]) continue;
                const double target =
                    0.25 * (line[x - 1] + line[x + 1] + line[x - m_width] + line[x + m_width] + 4 * Step * Step);
                line[x] += 1.97 * (target - line[x]);
            }
        }
    }
    // Flatter in front than an ellipsoid, as a face is.
    for (double& h : height) h = 0.90 * std::tanh(1.05 * std::sqrt(std::max(h, 0.0)));
    Blur(height, 2.5);
    return height;
}

// Three running means a direction, close to a bell of `radius` cells' deviation.
void Relief::Blur(Grid& grid, double radius) const {
    const int half = std::max(1, Truncate(radius + 0.5));
    const double share = 1.0 / (2 * half + 1);
    Grid other(grid.size());
    const auto pass = [&](const Grid& from, Grid& to, int count, int length, int stride, int across) {
        ForEachBand(count, 16, [&](int first, int last) {
            for (int line = first; line < last; ++line) {
                const double* in = &from[static_cast<std::size_t>(line) * across];
                double* out = &to[static_cast<std::size_t>(line) * across];
                for (int i = 0; i < length; ++i) {
                    double sum = 0;
                    for (int k = -half; k <= half; ++k) sum += in[std::clamp(i + k, 0, length - 1) * stride];
                    out[i * stride] = sum * share;
                }
            }
        });
    };
    for (int round = 0; round < 3; ++round) {
        pass(grid, other, m_rows, m_width, 1, m_width);
        pass(other, grid, m_width, m_rows, m_width, 1);
    }
}

void Relief::AddNormals() {
    m_normalX.assign(m_height.size(), 0);
    m_normalY.assign(m_height.size(), 0);
    for (int y = 1; y < m_rows - 1; ++y) {
        for (int x = 1; x < m_width - 1; ++x) {
            const double slopeX = (Cell(m_height, x + 1, y) - Cell(m_height, x - 1, y)) / (2 * Step);
            const double slopeY = (Cell(m_height, x, y + 1) - Cell(m_height, x, y - 1)) / (2 * Step);
            const Vec3 normal = Normalized({-slopeX, -slopeY, 1});
            Cell(m_normalX, x, y) = normal.x;
            Cell(m_normalY, x, y) = normal.y;
        }
    }
}

// What lies below the mean of its surroundings receives less light from all sides; two sizes of surroundings, so that
// both the sockets and the corner of a lip count.
void Relief::AddOpenness() {
    Grid wide = m_height;
    Grid near = m_height;
    Blur(wide, 20);
    Blur(near, 6);
    m_open.resize(m_height.size());
    m_hollow.resize(m_height.size());
    for (std::size_t i = 0; i < m_height.size(); ++i) {
        m_hollow[i] = wide[i] - m_height[i];
        const double depth =
            5.5 * std::max(0.0, wide[i] - m_height[i] + 0.004) + 11 * std::max(0.0, near[i] - m_height[i]);
        m_open[i] = std::exp(-depth);
    }
}

void Relief::AddShadow(Vec3 light) {
    m_lit.assign(m_height.size(), 1);
    const double flat = std::sqrt(light.x * light.x + light.y * light.y);
    const Vec2 way{light.x / flat, light.y / flat};
    const double climb = light.z / flat;
    ForEachBand(m_rows, 8, [&](int first, int last) {
        for (int y = first; y < last; ++y) {
            for (int x = 0; x < m_width; ++x) {
                const Vec2 from = PointOf(x, y);
                const double height = Cell(m_height, x, y);
                double covered = 0;
                for (double t = 0.02; t < 0.42; t += 0.01) {
                    const double over = Read(m_height, from + way * t) - height - climb * t;
                    covered = std::max(covered, over / (0.03 + 0.22 * t));
                }
                Cell(m_lit, x, y) = 1 - Smooth(-0.02, 0.55, covered);
            }
        }
    });
    Blur(m_lit, 2.5);
}

double Relief::Read(const Grid& grid, Vec2 p) const {
    const double gx = std::clamp((p.x - Left) / Step, 0.0, m_width - 1.001);
    const double gy = std::clamp((p.y - Top) / Step, 0.0, m_rows - 1.001);
    const int x = Truncate(gx);
    const int y = Truncate(gy);
    const double* cell = &grid[static_cast<std::size_t>(y) * m_width + x];
    return Mix(Mix(cell[0], cell[1], gx - x), Mix(cell[m_width], cell[m_width + 1], gx - x), gy - y);
}

Relief::Sample Relief::At(Vec2 p) const {
    Sample sample;
    sample.height = Read(m_height, p);
    sample.smoothHeight = Read(m_smooth, p);
    const double x = Read(m_normalX, p);
    const double y = Read(m_normalY, p);
    sample.normal = Normalized({x, y, std::sqrt(std::max(0.02, 1 - x * x - y * y))});
    sample.open = Read(m_open, p);
    sample.lit = Read(m_lit, p);
    sample.hollow = Read(m_hollow, p);
    return sample;
}
