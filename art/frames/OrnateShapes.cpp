// SPDX-License-Identifier: GPL-3.0-or-later
// Overlays of things that lie over the picture by their alpha.
#include "OrnateFrames.h"

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>
#include <cmath>

#include "Noise.h"
#include "Softness.h"

namespace {

constexpr int W = OverlaySize::Width, H = OverlaySize::Height;
constexpr double Pi = 3.14159265358979;

QImage Empty() {
    QImage image(W, H, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

QByteArray Plain(const QImage& image, bool mayRotate) {
    OverlayFile file;
    file.mayRotate = mayRotate;
    file.keepRatio = !mayRotate;
    file.extension = "png";
    file.data = PngOf(image);
    return file.Bytes();
}

// The same shape with its soft shadow below it.
QImage WithShadow(const QImage& image, QPointF offset, double softness, int strength) {
    QImage shadow = Empty();
    QPainter painter(&shadow);
    painter.drawImage(offset, image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(shadow.rect(), QColor(0, 0, 0, strength));
    painter.end();
    shadow = Blurred(shadow, softness);
    QPainter over(&shadow);
    over.drawImage(0, 0, image);
    over.end();
    return shadow;
}

// Things that fall past the camera: few near ones out of focus, many behind them. `draw` draws one of size 1 around the
// origin; none hides the middle.
struct Fall {
    int count;
    double smallest, largest;
    double softness;
    double clear;  // how far from the middle it begins
};
QImage Fallen(const std::vector<Fall>& layers, unsigned seed,
              const std::function<void(QPainter&, Random&, double size)>& draw) {
    QImage all = Empty();
    Random random(seed);
    for (const Fall& fall : layers) {
        QImage layer = Empty();
        QPainter painter(&layer);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        for (int i = 0; i < fall.count;) {
            const double x = random.Next(), y = random.Next();
            const double out = std::max(std::abs(x - 0.5), std::abs(y - 0.5)) * 2;
            if (random.Next() > Ramp(fall.clear, 1.0, out)) continue;
            ++i;
            painter.save();
            painter.translate(x * W, y * H);
            painter.rotate(random.Next() * 360);
            draw(painter, random, random.Next(fall.smallest, fall.largest));
            painter.restore();
        }
        painter.end();
        QPainter sum(&all);
        sum.drawImage(0, 0, fall.softness > 0 ? Blurred(layer, fall.softness) : layer);
    }
    return all;
}

void DrawPetal(QPainter& painter, Random& random, double size) {
    painter.scale(size, size * random.Next(0.45, 0.95));  // seen aslant
    QPainterPath petal(QPointF(0, 0.5));
    petal.cubicTo(-0.42, 0.26, -0.40, -0.34, -0.10, -0.48);
    petal.quadTo(-0.03, -0.46, 0, -0.38);  // the notch at its end
    petal.quadTo(0.05, -0.47, 0.12, -0.48);
    petal.cubicTo(0.42, -0.30, 0.40, 0.26, 0, 0.5);
    const double warm = random.Next();
    const QColor tip = MixedColour(QColor(255, 226, 232), QColor(255, 240, 238), warm);
    const QColor root = MixedColour(QColor(236, 128, 158), QColor(244, 164, 176), warm);
    QLinearGradient ground(0, -0.5, random.Next(-0.3, 0.3), 0.5);
    ground.setColorAt(0, tip);
    ground.setColorAt(0.55, MixedColour(tip, root, 0.35));
    ground.setColorAt(1, root);
    painter.setBrush(ground);
    painter.drawPath(petal);
    // The fold through its middle: one half lies in shade.
    painter.setClipPath(petal);
    QLinearGradient fold(-0.3, 0, 0.35, 0);
    fold.setColorAt(0, QColor(170, 60, 96, 0));
    fold.setColorAt(0.5, QColor(170, 60, 96, 26));
    fold.setColorAt(0.54, QColor(255, 255, 255, 56));
    fold.setColorAt(1, QColor(255, 255, 255, 0));
    painter.setBrush(fold);
    painter.drawRect(QRectF(-0.5, -0.5, 1, 1));
}

void DrawPaperBit(QPainter& painter, Random& random, double size) {
    static const QColor colours[] = {{240, 84, 104},  {250, 184, 60},  {92, 190, 222}, {126, 202, 132},
                                     {186, 132, 220}, {250, 236, 170}, {246, 140, 176}};
    const QColor colour = Shaded(colours[int(random.Next() * 7)], random.Next(0.86, 1.06));
    const double kind = random.Next();
    const double aslant = random.Next(0.35, 1.0);
    if (kind < 0.55) {
        QLinearGradient bent(-size / 2, 0, size / 2, 0);
        bent.setColorAt(0, Shaded(colour, 0.84));
        bent.setColorAt(0.5, colour);
        bent.setColorAt(1, Shaded(colour, 1.14));
        painter.setBrush(bent);
        painter.drawRect(QRectF(-size / 2, -size * 0.3 * aslant, size, size * 0.6 * aslant));
    } else if (kind < 0.85) {
        painter.setBrush(colour);
        painter.drawEllipse(QPointF(), size * 0.36, size * 0.36 * aslant);
    } else {
        // A streamer: a ribbon in a wave.
        QPainterPath ribbon(QPointF(-size * 1.3, 0));
        for (int i = 0; i < 4; ++i) {
            const double x = -size * 1.3 + i * size * 0.65;
            const double up = i % 2 ? 1 : -1;
            ribbon.cubicTo(x + size * 0.22, up * size * 0.5, x + size * 0.43, up * size * 0.5, x + size * 0.65, 0);
        }
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(colour, size * 0.17, Qt::SolidLine, Qt::FlatCap));
        painter.drawPath(ribbon);
    }
}

// One scallop of lace: its border lies on y = 0, the picture below it. Holes are cut afterwards.
void DrawScallop(QPainter& painter, double width, double depth) {
    QPainterPath scallop(QPointF(0, 0));
    scallop.cubicTo(0, depth * 1.25, width, depth * 1.25, width, 0);
    painter.drawPath(scallop);
    // Picots along the edge.
    for (int i = 1; i < 12; ++i) {
        const double t = i / 12.0;
        painter.drawEllipse(scallop.pointAtPercent(t) + QPointF(0, 2), 5.2, 5.2);
    }
}

// Eight holes like the petals of a flower as wide as two thirds of `size`.
void CutRosette(QPainter& painter, QPointF heart, double size) {
    for (int i = 0; i < 8; ++i) {
        painter.save();
        painter.translate(heart);
        painter.rotate(i * 45 + 22.5);
        QPainterPath petal(QPointF(0, size * 0.07));
        petal.cubicTo(size * 0.13, size * 0.14, size * 0.10, size * 0.30, 0, size * 0.31);
        petal.cubicTo(-size * 0.10, size * 0.30, -size * 0.13, size * 0.14, 0, size * 0.07);
        painter.drawPath(petal);
        painter.restore();
    }
}

void CutScallop(QPainter& painter, double width, double depth) {
    const QPointF heart(width / 2, depth * 0.36);
    CutRosette(painter, heart, depth);
    for (int i = 0; i < 11; ++i) {
        const double angle = Pi * (0.06 + 0.88 * i / 10);
        painter.drawEllipse(
            heart + QPointF(-std::cos(angle) * width * 0.405, std::sin(angle) * depth * 0.475 + depth * 0.02), 5.0,
            5.0);
    }
}

// Lays lace along an edge of `length` in the painter's own coordinates, y inwards.
void DrawLaceEdge(QPainter& painter, double length, double band, double depth, int scallops, bool cut) {
    // Corners have a rosette of their own.
    const double start = band + 0.75 * depth, width = (length - 2 * start) / scallops;
    if (!cut) {
        painter.drawRect(QRectF(0, -2, length, band + 3));
        painter.drawEllipse(QPointF(band + 12, band + 12), depth * 0.94, depth * 0.94);
    }
    if (cut) CutRosette(painter, QPointF(band + 26, band + 26), depth * 1.5);
    for (int i = 0; i < scallops; ++i) {
        painter.save();
        painter.translate(start + i * width, band);
        cut ? CutScallop(painter, width, depth) : DrawScallop(painter, width, depth);
        painter.restore();
    }
    if (!cut) return;
    // Ladders in the band.
    const int steps = scallops * 6;
    const double step = (length - 2 * band) / steps, w = step * 0.55;
    for (int i = 0; i < steps; ++i) {
        const double x = band + (i + 0.5) * step;
        painter.drawRoundedRect(QRectF(x - w / 2, band * 0.24, w, band * 0.30), 5, 5);
        painter.drawEllipse(QPointF(x, band * 0.78), 4.2, 4.2);
    }
}

// The four edges, each with the painter turned so that the edge runs along x.
void ForEdges(QPainter& painter, const std::function<void(double length, int edge)>& draw) {
    const struct { double x, y, turn, length; } edges[] = {{0, 0, 0, W}, {W, 0, 90, H}, {W, H, 180, W}, {0, H, 270, H}};
    for (int i = 0; i < 4; ++i) {
        painter.save();
        painter.translate(edges[i].x, edges[i].y);
        painter.rotate(edges[i].turn);
        draw(edges[i].length, i);
        painter.restore();
    }
}

// A pen stroke along a curve that turns more and more, thick in the middle: `turn` degrees a step at its end.
struct Swirl {
    QPointF at;
    double heading;  // degrees
    double length;
    double firstTurn, lastTurn;  // degrees a step of four pixels
    double thick;
};

void DrawSwirl(QPainter& painter, const Swirl& swirl) {
    QPointF at = swirl.at;
    double heading = swirl.heading;
    const int steps = int(swirl.length / 2);
    for (int i = 0; i <= steps; ++i) {
        const double t = double(i) / steps;
        const double radius =
            0.5 * swirl.thick * (0.22 + 0.78 * std::pow(std::sin(Pi * std::min(1.0, 0.08 + t * 0.92)), 0.8));
        painter.drawEllipse(at, radius, radius);
        heading += Mixed(swirl.firstTurn, swirl.lastTurn, t * t) / 2;
        at += 2 * QPointF(std::cos(heading * Pi / 180), std::sin(heading * Pi / 180));
    }
    painter.drawEllipse(at, swirl.thick * 0.62, swirl.thick * 0.62);  // the drop where the pen rests
}

void DrawLeaf(QPainter& painter, QPointF at, double heading, double size) {
    painter.save();
    painter.translate(at);
    painter.rotate(heading);
    QPainterPath leaf;
    leaf.cubicTo(size * 0.3, -size * 0.34, size * 0.75, -size * 0.26, size, 0);
    leaf.cubicTo(size * 0.72, size * 0.10, size * 0.3, size * 0.14, 0, 0);
    painter.drawPath(leaf);
    painter.restore();
}

// Half of a corner's flourish, along x; the other half is its mirror in the diagonal.
void DrawFlourishHalf(QPainter& painter) {
    DrawSwirl(painter, {{74, 74}, 8, 430, -0.35, 3.9, 13});
    DrawSwirl(painter, {{190, 84}, 18, 250, 0.9, 5.6, 10});
    DrawSwirl(painter, {{262, 88}, 34, 340, -0.1, -4.4, 10});
    DrawSwirl(painter, {{120, 96}, 44, 150, 0.6, 7.0, 8});
    DrawLeaf(painter, {196, 84}, -36, 56);
    DrawLeaf(painter, {262, 90}, -30, 50);
    DrawLeaf(painter, {306, 116}, 62, 46);
    DrawLeaf(painter, {150, 92}, 40, 46);
}

}  // namespace

QByteArray DrawPetals() {
    QImage image = Fallen({{64, 34, 62, 0.8, 0.30}, {30, 70, 112, 1.2, 0.50}, {12, 170, 250, 13, 0.80}}, 61, DrawPetal);
    return Plain(WithShadow(image, {5, 9}, 9, 46), false);
}

QByteArray DrawConfetti() {
    QImage image =
        Fallen({{250, 14, 26, 0.6, 0.34}, {96, 28, 44, 0.6, 0.55}, {16, 70, 110, 9, 0.85}}, 77, DrawPaperBit);
    return Plain(WithShadow(image, {4, 6}, 5, 60), false);
}

QByteArray DrawLace() {
    constexpr double Band = 66, Depth = 118;
    QImage lace = Empty();
    QPainter painter(&lace);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(253, 251, 246));
    const auto scallops = [](int edge) { return edge % 2 == 0 ? 14 : 9; };
    ForEdges(painter,
             [&](double length, int edge) { DrawLaceEdge(painter, length, Band, Depth, scallops(edge), false); });
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    ForEdges(painter,
             [&](double length, int edge) { DrawLaceEdge(painter, length, Band, Depth, scallops(edge), true); });
    painter.end();
    QImage image = WithShadow(lace, {0, 5}, 7, 120);
    // A light fall-off towards the border holds the white thread off a light picture.
    QImage whole = Computed(W, H, [](int x, int y) {
        const double dx = (x - W / 2.0) / (W / 2.0), dy = (y - H / 2.0) / (H / 2.0);
        const double dark = 62 * Ramp(0.72, 1.3, std::hypot(dx, dy)) + HashUnit(x, y, 4) - 0.5;
        return qRgba(24, 16, 14, static_cast<int>(std::clamp(std::lround(dark), 0L, 255L)));
    });
    QPainter over(&whole);
    over.drawImage(0, 0, image);
    over.end();
    return Plain(whole, true);
}

QByteArray DrawFlourish() {
    QImage mask = Empty();
    QPainter painter(&mask);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    for (const bool right : {false, true})
        for (const bool low : {false, true}) {
            painter.save();
            painter.translate(right ? W : 0, low ? H : 0);
            painter.scale(right ? -1 : 1, low ? -1 : 1);
            DrawFlourishHalf(painter);
            painter.setTransform(QTransform(0, 1, 1, 0, 0, 0), true);
            DrawFlourishHalf(painter);
            painter.drawEllipse(QPointF(74, 74), 13, 13);
            painter.restore();
        }
    // Two lines from corner to corner.
    painter.setBrush(Qt::NoBrush);
    const struct { double in, width, from; } lines[] = {{46, 5, 560}, {60, 2, 600}};
    for (const auto& line : lines) {
        painter.setPen(QPen(Qt::black, line.width, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(line.from, line.in), QPointF(W - line.from, line.in));
        painter.drawLine(QPointF(line.from, H - line.in), QPointF(W - line.from, H - line.in));
        painter.drawLine(QPointF(line.in, line.from), QPointF(line.in, H - line.from));
        painter.drawLine(QPointF(W - line.in, line.from), QPointF(W - line.in, H - line.from));
    }
    painter.end();
    // Gold leaf: light from the upper left, in broad bands.
    QPainter gild(&mask);
    gild.setCompositionMode(QPainter::CompositionMode_SourceIn);
    QLinearGradient gold(0, 0, W * 0.32, H * 0.48);
    gold.setSpread(QGradient::ReflectSpread);
    gold.setColorAt(0, QColor(150, 112, 46));
    gold.setColorAt(0.35, QColor(236, 206, 128));
    gold.setColorAt(0.55, QColor(255, 242, 196));
    gold.setColorAt(0.75, QColor(222, 184, 100));
    gold.setColorAt(1, QColor(140, 100, 40));
    gild.fillRect(mask.rect(), gold);
    gild.end();
    return Plain(WithShadow(mask, {2, 4}, 4, 150), true);
}
