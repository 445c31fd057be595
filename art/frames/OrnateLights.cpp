// SPDX-License-Identifier: GPL-3.0-or-later
// Overlays of light on black, which the program lays over a picture by the blend mode screen, and one of shade.
#include "OrnateFrames.h"

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>
#include <cmath>

#include "BlendModes.h"
#include "Noise.h"
#include "Softness.h"

namespace {

constexpr int W = OverlaySize::Width, H = OverlaySize::Height;
constexpr int Quality = 90;

// A colour of light whose levels are dithered by half a level, so that slow slopes don't break into bands.
QRgb LightAt(int x, int y, double r, double g, double b) {
    const double noise = HashUnit(x, y, 5) - 0.5;
    const auto level = [&](double v) { return static_cast<int>(std::clamp(std::lround(v + noise), 0L, 255L)); };
    return qRgb(level(r), level(g), level(b));
}

QImage Black() {
    QImage image(W, H, QImage::Format_RGB32);
    image.fill(Qt::black);
    return image;
}

QColor WithAlpha(QColor colour, double alpha) {
    colour.setAlphaF(static_cast<float>(std::clamp(alpha, 0.0, 1.0)));
    return colour;
}

// How far a place is from the middle: 0 there, 1 half way along the sides, above 1 in the corners.
double OffMiddle(double x, double y) {
    return std::max(std::abs(x / W - 0.5), std::abs(y / H - 0.5)) * 2;
}

QByteArray Screen(const QImage& image, bool mayRotate) {
    OverlayFile file;
    file.mayRotate = mayRotate;
    file.keepRatio = !mayRotate;
    file.blendMode = BlendScreen;
    file.extension = "jpg";
    file.data = JpegOf(image, Quality);
    return file.Bytes();
}

void Glow(QPainter& painter, QPointF at, double radius, const QColor& colour, double strength) {
    QRadialGradient glow(at, radius);
    for (int i = 0; i <= 12; ++i) {
        const double t = i / 12.0;
        glow.setColorAt(t, WithAlpha(colour, strength * std::pow(1 - t, 2.4)));
    }
    painter.setBrush(glow);
    painter.drawEllipse(at, radius, radius);
}

void BeginLight(QPainter& painter) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_Plus);
    painter.setPen(Qt::NoPen);
}

}  // namespace

QByteArray DrawSoftLight() {
    return Screen(Computed(W, H,
                           [](int x, int y) {
                               const double dx = std::min(x, W - 1 - x), dy = std::min(y, H - 1 - y);
                               // Round corners: the way to a rounded border deep inside.
                               const double reach = 430;
                               const double ax = std::max(0.0, 1 - dx / reach), ay = std::max(0.0, 1 - dy / reach);
                               const double wave = 0.10 * Fractal({x / 420.0, y / 420.0}, 2, 3);
                               const double t = std::clamp(std::hypot(ax, ay) * (1 + wave), 0.0, 1.15);
                               const double light = 0.93 * std::pow(std::min(1.0, t), 2.1);
                               return LightAt(x, y, 255 * light, 250 * light, 240 * light);
                           }),
                  true);
}

QByteArray DrawBokeh() {
    QImage image = Black();
    QPainter painter(&image);
    BeginLight(painter);
    Random random(2);
    const QColor lights[] = {{255, 190, 96}, {255, 214, 150}, {255, 150, 92}, {255, 168, 150}, {150, 196, 255}};
    for (int i = 0; i < 190; ++i) {
        const QPointF at(random.Next() * W, random.Next() * H);
        const double out = OffMiddle(at.x(), at.y());
        const double low = at.y() / H;
        if (random.Next() > Ramp(0.45, 0.95, out) * (0.35 + 0.65 * low)) continue;
        const double radius = 26 + 104 * std::pow(random.Next(), 1.6);
        const QColor colour = lights[int(random.Next() * 5)];
        const double strength = (0.13 + 0.30 * random.Next()) * Ramp(0.35, 0.9, out);
        // A lens out of focus shows a disc, brighter at its rim.
        QRadialGradient disc(at, radius);
        disc.setColorAt(0, WithAlpha(colour, strength * 0.72));
        disc.setColorAt(0.80, WithAlpha(colour, strength * 0.82));
        disc.setColorAt(0.93, WithAlpha(colour, strength * 1.25));
        disc.setColorAt(0.97, WithAlpha(colour, strength * 0.9));
        disc.setColorAt(1, WithAlpha(colour, 0));
        painter.setBrush(disc);
        painter.drawEllipse(at, radius, radius);
        if (random.Next() < 0.3) Glow(painter, at, radius * 2.2, colour, strength * 0.35);
    }
    painter.end();
    return Screen(Blurred(image, 1.2), true);
}

QByteArray DrawSnow() {
    QImage near = Black(), far = Black();
    QPainter nearby(&near), away(&far);
    BeginLight(nearby);
    BeginLight(away);
    Random random(6);
    const QColor snow(244, 248, 255);
    const auto flake = [&](QPainter& painter, double radius, double strength) {
        const QPointF at(random.Next() * W, random.Next() * H);
        const double calm = 0.35 + 0.65 * Ramp(0.2, 0.85, OffMiddle(at.x(), at.y()));
        painter.setBrush(WithAlpha(snow, strength * calm));
        painter.save();
        painter.translate(at);
        painter.rotate(random.Next() * 180);
        painter.drawEllipse(QPointF(), radius, radius * random.Next(0.72, 1.0));
        painter.restore();
    };
    for (int i = 0; i < 1500; ++i) flake(away, random.Next(1.2, 3.2), random.Next(0.25, 0.8));
    for (int i = 0; i < 330; ++i) flake(away, random.Next(3.5, 7.5), random.Next(0.5, 0.95));
    for (int i = 0; i < 46; ++i) flake(nearby, random.Next(14, 34), random.Next(0.35, 0.7));
    nearby.end();
    away.end();
    QImage image = Blurred(far, 1.1).convertToFormat(QImage::Format_RGB32);
    QPainter sum(&image);
    sum.setCompositionMode(QPainter::CompositionMode_Plus);
    sum.drawImage(0, 0, Blurred(near, 9));
    sum.end();
    return Screen(image, false);
}

QByteArray DrawSunFlare() {
    const Vec2 sun{0.29 * W, 0.03 * H};  // on a portrait too
    QImage image = Computed(W, H, [&](int x, int y) {
        const double dx = x - sun.x, dy = y - sun.y, far = std::hypot(dx, dy) / H;
        const double angle = std::atan2(dy, dx);
        const double rays = 0.5 + 0.5 * ValueNoise({angle * 9, 0.5}, 8);
        const double thin = 0.5 + 0.5 * ValueNoise({angle * 31, 4.5}, 9);
        const double core = std::exp(-far * far / 0.012);
        const double halo = 0.55 * std::exp(-far / 0.22) * (0.72 + 0.28 * rays);
        const double veil = 0.26 * std::exp(-far / 0.75) * (0.8 + 0.2 * rays * thin);
        const double light = core + halo + veil;
        return LightAt(x, y, 255 * std::min(1.0, light), 214 * std::min(1.0, 1.15 * core + 0.93 * halo + 0.80 * veil),
                       150 * std::min(1.0, 1.5 * core + 0.75 * halo + 0.55 * veil));
    });
    QPainter painter(&image);
    BeginLight(painter);
    struct Ghost {
        double place, radius, strength;
        QColor colour;
    };
    // Reflections in the lens, on the line through the picture's middle.
    const Ghost ghosts[] = {{0.45, 46, 0.10, {255, 190, 90}},   {0.62, 24, 0.16, {255, 150, 90}},
                            {0.80, 92, 0.07, {140, 220, 160}},  {1.28, 60, 0.09, {255, 176, 110}},
                            {1.46, 150, 0.06, {150, 190, 255}}, {1.62, 34, 0.14, {255, 206, 130}}};
    for (const Ghost& ghost : ghosts) {
        const QPointF at(sun.x + (W / 2.0 - sun.x) * ghost.place, sun.y + (H / 2.0 - sun.y) * ghost.place);
        QRadialGradient disc(at, ghost.radius);
        disc.setColorAt(0, WithAlpha(ghost.colour, ghost.strength * 0.5));
        disc.setColorAt(0.85, WithAlpha(ghost.colour, ghost.strength));
        disc.setColorAt(1, WithAlpha(ghost.colour, 0));
        painter.setBrush(disc);
        painter.drawEllipse(at, ghost.radius, ghost.radius);
    }
    painter.end();
    return Screen(image, false);
}

QByteArray DrawDust() {
    QImage image = Black();
    QPainter painter(&image);
    BeginLight(painter);
    Random random(14);
    const QColor white(255, 250, 240);
    for (int i = 0; i < 1700; ++i) {
        const double size = 0.7 + 1.9 * std::pow(random.Next(), 3);
        painter.setBrush(WithAlpha(white, random.Next(0.25, 0.9)));
        painter.drawEllipse(QPointF(random.Next() * W, random.Next() * H), size, size * random.Next(0.5, 1.0));
    }
    painter.setBrush(Qt::NoBrush);
    // Fibres.
    for (int i = 0; i < 26; ++i) {
        const QPointF at(random.Next() * W, random.Next() * H);
        const auto way = [&](double reach) { return QPointF(random.Next(-reach, reach), random.Next(-reach, reach)); };
        QPainterPath fibre(at);
        fibre.cubicTo(at + way(40), at + way(60), at + way(70));
        painter.setPen(
            QPen(WithAlpha(white, random.Next(0.25, 0.6)), random.Next(0.9, 2.0), Qt::SolidLine, Qt::RoundCap));
        painter.drawPath(fibre);
    }
    // Scratches along the film, each in pieces of its own strength.
    for (int i = 0; i < 17; ++i) {
        double x = random.Next() * W, y = random.Next(-0.2, 0.7) * H;
        const double length = random.Next(0.15, 0.9) * H, lean = random.Next(-0.02, 0.02);
        const double width = random.Next(0.7, 1.8), strength = random.Next(0.12, 0.42);
        for (const double end = y + length; y < end; y += 24) {
            const double wobble = random.Next(-0.6, 0.6);
            painter.setPen(QPen(WithAlpha(white, strength * random.Next(0.2, 1.0)), width, Qt::SolidLine, Qt::FlatCap));
            painter.drawLine(QPointF(x, y), QPointF(x + lean * 24 + wobble, y + 24));
            x += lean * 24 + wobble;
        }
    }
    painter.setPen(Qt::NoPen);
    // Worn edges.
    for (int i = 0; i < 420; ++i) {
        const double along = random.Next(), in = 26 * std::pow(random.Next(), 2);
        const int side = int(random.Next() * 4);
        const QPointF at = side == 0   ? QPointF(along * W, in)
                           : side == 1 ? QPointF(along * W, H - in)
                           : side == 2 ? QPointF(in, along * H)
                                       : QPointF(W - in, along * H);
        painter.setBrush(WithAlpha(white, random.Next(0.2, 0.7)));
        painter.drawEllipse(at, random.Next(1, 7), random.Next(1, 4));
    }
    painter.end();
    return Screen(Blurred(image, 0.6), true);
}

QByteArray DrawRain() {
    QImage image = Black(), soft = Black();
    QPainter sharp(&image), blurry(&soft);
    BeginLight(sharp);
    BeginLight(blurry);
    Random random(21);
    const QColor rain(216, 228, 244);
    const auto streak = [&](QPainter& painter, double length, double width, double strength) {
        const QPointF at(random.Next(-0.05, 1.05) * W, random.Next(-0.1, 1.0) * H);
        const QPointF fall(-0.16 * length + random.Next(-0.02, 0.02) * length, length);
        const double calm = 0.5 + 0.5 * Ramp(0.15, 0.8, OffMiddle(at.x(), at.y()));
        QLinearGradient fade(at, at + fall);
        fade.setColorAt(0, WithAlpha(rain, 0));
        fade.setColorAt(0.7, WithAlpha(rain, strength * calm));
        fade.setColorAt(1, WithAlpha(rain, 0));
        painter.setPen(QPen(QBrush(fade), width, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(at, at + fall);
    };
    for (int i = 0; i < 900; ++i) streak(sharp, random.Next(40, 120), random.Next(0.9, 1.7), random.Next(0.12, 0.42));
    for (int i = 0; i < 260; ++i) streak(sharp, random.Next(110, 230), random.Next(1.6, 2.6), random.Next(0.2, 0.55));
    for (int i = 0; i < 42; ++i) streak(blurry, random.Next(240, 460), random.Next(6, 13), random.Next(0.25, 0.5));
    sharp.end();
    blurry.end();
    QPainter sum(&image);
    sum.setCompositionMode(QPainter::CompositionMode_Plus);
    sum.drawImage(0, 0, Blurred(soft, 4));
    sum.end();
    return Screen(image, false);
}

QByteArray DrawStars() {
    QImage image = Black();
    QPainter painter(&image);
    BeginLight(painter);
    Random random(33);
    const QColor colours[] = {{255, 250, 236}, {255, 226, 168}, {206, 222, 255}};
    const auto place = [&](double clear) {
        for (;;) {
            const QPointF at(random.Next() * W, random.Next() * H);
            if (random.Next() < Ramp(clear, 1.0, OffMiddle(at.x(), at.y()))) return at;
        }
    };
    for (int i = 0; i < 900; ++i) {
        const double size = random.Next(0.9, 2.6);
        painter.setBrush(WithAlpha(colours[int(random.Next() * 3)], random.Next(0.2, 0.9)));
        painter.drawEllipse(place(0.30), size, size);
    }
    for (int i = 0; i < 74; ++i) {
        const QPointF at = place(0.55);
        const QColor colour = colours[int(random.Next() * 3)];
        const double arm = 16 + 88 * std::pow(random.Next(), 2.2), strength = random.Next(0.55, 1.0);
        Glow(painter, at, arm * 0.8, colour, strength * 0.45);
        painter.save();
        painter.translate(at);
        painter.rotate(random.Next(-6, 6));
        for (int ray = 0; ray < 4; ++ray, painter.rotate(90)) {
            QLinearGradient fade(0, 0, arm, 0);
            fade.setColorAt(0, WithAlpha(colour, strength));
            fade.setColorAt(0.3, WithAlpha(colour, strength * 0.5));
            fade.setColorAt(1, WithAlpha(colour, 0));
            painter.setBrush(fade);
            const double thick = 1.3 + arm / 34;
            painter.drawPolygon(QPolygonF({{0, -thick}, {arm, 0}, {0, thick}}));
        }
        painter.setBrush(WithAlpha(QColor(255, 255, 255), strength));
        painter.drawEllipse(QPointF(), 1.6 + arm / 26, 1.6 + arm / 26);
        painter.restore();
    }
    painter.end();
    return Screen(image, true);
}

QByteArray DrawWindowLight() {
    // Six panes of a window, thrown askew, with a twig before it; the softer the farther from the window.
    QImage light(W, H, QImage::Format_ARGB32_Premultiplied);
    light.fill(Qt::black);
    QPainter painter(&light);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setTransform(QTransform(1.0, 0.26, -0.26, 1.0, 250, -520));
    painter.setBrush(Qt::white);
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            painter.drawRect(QRectF(-170 + column * 900, -330 + row * 900, 846, 846));
    Random random(51);
    for (int branch = 0; branch < 5; ++branch) {
        QPointF at(1960 + 60 * branch, -160 + 330 * branch);
        double heading = random.Next(2.6, 3.3);
        for (int step = 0; step < 9; ++step) {
            const QPointF next = at + 62 * QPointF(std::cos(heading), std::sin(heading));
            painter.setPen(QPen(QColor(0, 0, 0, 190), 9 - 0.7 * step, Qt::SolidLine, Qt::RoundCap));
            painter.drawLine(at, next);
            painter.setPen(Qt::NoPen);
            painter.setBrush(QColor(0, 0, 0, 200));
            for (const double turn : {-0.9, 0.9}) {
                painter.save();
                painter.translate(next);
                painter.rotate((heading + turn + random.Next(-0.3, 0.3)) * 57.3);
                QPainterPath leaf;
                leaf.quadTo(44, -30, 100, 0);
                leaf.quadTo(44, 30, 0, 0);
                painter.drawPath(leaf);
                painter.restore();
            }
            at = next;
            heading += random.Next(-0.25, 0.25);
        }
    }
    painter.end();
    const QImage crisp = Blurred(light, 11), soft = Blurred(light, 34);
    OverlayFile file;
    file.keepRatio = true;
    file.blendMode = BlendMultiply;
    file.extension = "jpg";
    file.data =
        JpegOf(Computed(W, H,
                        [&](int x, int y) {
                            const double far = Ramp(0, 1, double(y) / H);
                            const double lit = Mixed(qRed(crisp.pixel(x, y)), qRed(soft.pixel(x, y)), far) / 255;
                            return LightAt(x, y, Mixed(124, 255, lit), Mixed(120, 250, lit), Mixed(126, 236, lit));
                        }),
               Quality);
    return file.Bytes();
}
