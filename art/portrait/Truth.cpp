// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdio>

#include "Features.h"
#include "Portrait.h"
#include "PortraitScene.h"

namespace {

// Writes JSON members one after the other; numbers are pixels with one decimal.
class Writer {
  public:
    explicit Writer(int width) : m_scale(width / Scene::Width) {}

    std::string OfFace(Vec2 face) const { return OfCanvas(m_scene.ToCanvas(face)); }
    std::string OfCanvas(Vec2 p) const {
        return Format("[%.1f, %.1f]", (p.x + Scene::OriginX) * m_scale, (p.y + Scene::OriginY) * m_scale);
    }
    std::string Pixels(double units) const { return Format("%.1f", units * m_scale); }

    std::string Polygon(const std::vector<Vec2>& face) const {
        std::string text;
        for (const Vec2& p : face) text += (text.empty() ? "[" : ", ") + OfFace(p);
        return text + "]";
    }
    std::string Disc(Vec2 face, double radius) const {
        return "{\"centre\": " + OfFace(face) + ", \"radius\": " + Pixels(radius) + "}";
    }
    std::string Ellipse(Vec2 face, double rx, double ry) const {
        return "{\"centre\": " + OfFace(face) + ", \"radii\": [" + Pixels(rx) + ", " + Pixels(ry) + "]}";
    }
    std::string Spot(Vec2 canvas, double radius) const {
        return "{\"centre\": " + OfCanvas(canvas) + ", \"radius\": " + Pixels(radius) + "}";
    }

  private:
    static std::string Format(const char* format, double a, double b = 0) {
        char text[64];
        std::snprintf(text, sizeof text, format, a, b);
        return text;
    }

    Scene m_scene;
    double m_scale;
};

template <typename List, typename Item>
std::string Listed(const List& list, Item item) {
    std::string text;
    for (const auto& entry : list) text += (text.empty() ? "\n    " : ",\n    ") + item(entry);
    return "[" + text + "]";
}

std::vector<Vec2> EyeOpening(double side) {
    std::vector<Vec2> points;
    constexpr int steps = 12;
    const auto at = [&](double t, double (*edge)(double)) {
        const double x = Mix(Face::EyeInner, Face::EyeOuter, t);
        points.push_back({side * (Face::EyeX + x), edge(x)});
    };
    for (int i = 0; i <= steps; ++i) at(static_cast<double>(i) / steps, Face::UpperLid);
    for (int i = steps - 1; i > 0; --i) at(static_cast<double>(i) / steps, Face::LowerLid);
    return points;
}

// Between two of the mouth's edges, closed.
std::vector<Vec2> MouthPart(double Face::MouthEdges::*top, double Face::MouthEdges::*bottom, double half) {
    std::vector<Vec2> points;
    constexpr int steps = 16;
    for (int i = -steps; i <= steps; ++i) points.push_back({half * i / steps, Face::MouthAt(half * i / steps).*top});
    for (int i = steps; i >= -steps; --i) points.push_back({half * i / steps, Face::MouthAt(half * i / steps).*bottom});
    return points;
}

std::string Eye(const Writer& write, double side, bool red) {
    const Vec2 iris{side * (Face::EyeX + Face::Iris.x + side * Face::GazeShift), Face::Iris.y};
    return "{\"opening\": " + write.Polygon(EyeOpening(side)) +
           ",\n     \"iris\": " + write.Disc(iris, Face::IrisRadius) +
           ",\n     \"pupil\": " + write.Disc(iris, Face::PupilRadius) +
           ",\n     \"red\": " + (red ? "true" : "false") + "}";
}

}  // namespace

std::string PortraitTruth(int width, const PortraitLook& look) {
    const Writer write(width);
    const int height = static_cast<int>(width * (Scene::Height / Scene::Width) + 0.5);
    const std::vector<double> sides{-1.0, 1.0};
    const std::vector<Vec2> skin{{-0.30, 0.36}, {-0.08, -0.46}, {0.05, -0.30},
                                 {-0.42, 0.22}, {0.30, 0.33},   {-0.20, 0.78}};
    const std::vector<Vec2> hair{{-0.74, 0.30}, {-0.70, -0.35}, {0.76, 0.35}, {0.70, -0.25}, {-0.80, 0.75}};
    const std::vector<Vec2> background{{-1.15, -1.2}, {1.15, -1.15}, {-1.2, 0.2}, {1.2, 0.5}};
    const auto disc = [&](double radius) { return [&, radius](Vec2 p) { return write.Disc(p, radius); }; };
    std::string text = "{\n\"width\": " + std::to_string(width) + ", \"height\": " + std::to_string(height);
    text += ",\n\"face\": " + write.Polygon(Face::Head().Points());
    text += ",\n\"eyes\": " + Listed(sides, [&](double side) { return Eye(write, side, look.flaws && side > 0); });
    // Without flaws there are no circles and no spots to find.
    text += ",\n\"darkCircles\": " + Listed(look.flaws ? sides : std::vector<double>{}, [&](double side) {
                return write.Ellipse({side * (Face::EyeX - 0.04), 0.108}, 0.09, 0.022);
            });
    text += ",\n\"spots\": " + Listed(look.flaws ? Face::Spots() : std::vector<Face::Spot>{},
                                      [&](const Face::Spot& s) { return write.Disc(s.centre, s.radius); });
    text += ",\n\"upperLip\": " +
            write.Polygon(MouthPart(&Face::MouthEdges::upperOuter, &Face::MouthEdges::upperInner, Face::MouthHalf));
    text += ",\n\"lowerLip\": " +
            write.Polygon(MouthPart(&Face::MouthEdges::lowerInner, &Face::MouthEdges::lowerOuter, Face::MouthHalf));
    text += ",\n\"teeth\": " + write.Polygon(MouthPart(&Face::MouthEdges::upperInner, &Face::MouthEdges::lowerInner,
                                                       0.8 * Face::MouthHalf));
    text += ",\n\"skin\": " + Listed(skin, disc(0.035));
    text += ",\n\"hair\": " + Listed(hair, [&](Vec2 p) { return write.Spot(Scene::Tilt(p), 0.05); });
    text += ",\n\"background\": " + Listed(background, [&](Vec2 p) { return write.Spot(p, 0.06); });
    return text + "\n}\n";
}
