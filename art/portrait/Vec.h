// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cmath>

// A point or direction of the drawing plane: x to the right, y down.
struct Vec2 {
    double x = 0;
    double y = 0;
};
inline Vec2 operator+(Vec2 a, Vec2 b) {
    return {a.x + b.x, a.y + b.y};
}
inline Vec2 operator-(Vec2 a, Vec2 b) {
    return {a.x - b.x, a.y - b.y};
}
inline Vec2 operator*(Vec2 a, double k) {
    return {a.x * k, a.y * k};
}
inline double Dot(Vec2 a, Vec2 b) {
    return a.x * b.x + a.y * b.y;
}
inline double Length(Vec2 a) {
    return std::sqrt(Dot(a, a));
}

// A direction in space (z towards the viewer) or a colour of linear light.
struct Vec3 {
    double x = 0;
    double y = 0;
    double z = 0;
};
using Colour = Vec3;
inline Vec3 operator+(Vec3 a, Vec3 b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Vec3 operator-(Vec3 a, Vec3 b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Vec3 operator*(Vec3 a, double k) {
    return {a.x * k, a.y * k, a.z * k};
}
inline Vec3 operator*(Vec3 a, Vec3 b) {
    return {a.x * b.x, a.y * b.y, a.z * b.z};
}
inline double Dot(Vec3 a, Vec3 b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline Vec3 Normalized(Vec3 a) {
    return a * (1.0 / std::sqrt(std::max(Dot(a, a), 1e-18)));
}

inline double Clamp01(double t) {
    return std::clamp(t, 0.0, 1.0);
}
inline double Mix(double a, double b, double t) {
    return a + (b - a) * t;
}
inline Vec2 Mix(Vec2 a, Vec2 b, double t) {
    return a + (b - a) * t;
}
inline Vec3 Mix(Vec3 a, Vec3 b, double t) {
    return a + (b - a) * t;
}

// 0 up to `from`, 1 from `to` on, smooth between; `from` may be the greater.
inline double Smooth(double from, double to, double t) {
    const double s = Clamp01((t - from) / (to - from));
    return s * s * (3 - 2 * s);
}
inline double Bell(double t) {
    return std::exp(-t * t);
}
// A soft round spot of height 1 at `centre`, falling to 1/e at the radii.
inline double Blob(Vec2 p, Vec2 centre, double rx, double ry) {
    const double x = (p.x - centre.x) / rx;
    const double y = (p.y - centre.y) / ry;
    return std::exp(-(x * x + y * y));
}

// Linear light of an sRGB byte triple.
inline Colour FromSrgb(int r, int g, int b) {
    const auto linear = [](int v) {
        const double s = v / 255.0;
        return s <= 0.04045 ? s / 12.92 : std::pow((s + 0.055) / 1.055, 2.4);
    };
    return {linear(r), linear(g), linear(b)};
}
