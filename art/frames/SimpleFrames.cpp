// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>
#include <cmath>

#include "Borders.h"
#include "FrameArt.h"
#include "Noise.h"
#include "Softness.h"

namespace {

const QColor Clear(0, 0, 0, 0);

// What the inner edge of a border throws on the picture: light comes from the upper left.
QColor ShadeOnPicture(const BorderPlace& place, double reach, int strength) {
    const auto from = [](double inside, double far) {
        const double t = std::clamp(1 - inside / far, 0.0, 1.0);
        return t * t;
    };
    const double lit = (1 - from(place.fromTop, reach)) * (1 - from(place.fromLeft, reach)) *
                       (1 - 0.4 * from(place.fromRight, reach * 0.3)) * (1 - 0.4 * from(place.fromBottom, reach * 0.3));
    return {0, 0, 0, static_cast<int>(strength * (1 - lit))};
}

// The slanted cut of a mat's board, whose core is white.
QColor BevelCut(const BorderPlace& place) {
    switch (place.edge) {
        case Edge::Top:
            return {206, 205, 202};
        case Edge::Left:
            return {219, 218, 215};
        case Edge::Right:
            return {246, 245, 243};
        default:
            return {254, 254, 253};
    }
}

// A board of even colour with a bevelled window, and lines of its own.
MiniFrame Mat(int margin, int bevel, const std::function<QColor(const BorderPlace&)>& board) {
    constexpr int Shade = 26;
    return MitredBorder({margin, margin + Shade, 8}, [=](const BorderPlace& place) {
        if (place.depth >= margin) return ShadeOnPicture(place, Shade, 84);
        if (place.depth >= margin - bevel) return BevelCut(place);
        return board(place);
    });
}

QByteArray DrawMatWhite() {
    return NinePartFile(Mat(232, 8, [](const BorderPlace& place) {
        return place.depth < 2 ? QColor(222, 221, 217) : QColor(247, 246, 242);
    }));
}

QByteArray DrawMatBlack() {
    return NinePartFile(Mat(
        232, 7, [](const BorderPlace& place) { return place.depth < 3 ? QColor(52, 52, 54) : QColor(27, 27, 29); }));
}

QByteArray DrawDoubleLine() {
    return NinePartFile(MitredBorder({208, 212, 8}, [](const BorderPlace& place) {
        const double d = place.depth;
        if (d >= 208) return Clear;
        if ((d >= 132 && d < 143) || (d >= 157 && d < 160)) return QColor(38, 37, 36);
        return d >= 206 ? QColor(214, 213, 210) : QColor(252, 251, 249);
    }));
}

// Across a rounded bar of gold, 0 to 1.
QColor GoldAt(double t, bool lit) {
    const double light = std::pow(std::max(0.0, std::sin(3.14159 * (lit ? 0.15 + 0.8 * t : 0.05 + 0.8 * t))), 1.5);
    const QColor deep(128, 92, 34), bright(250, 226, 152);
    return MixedColour(deep, bright, light * (lit ? 1.0 : 0.8));
}

QByteArray DrawGoldLine() {
    return StripFile(Mat(236, 7, [](const BorderPlace& place) {
        const double d = place.depth;
        if (d >= 158 && d < 172) return GoldAt((d - 158) / 14, place.IsLit());
        if (d >= 182 && d < 185) return GoldAt(0.4, place.IsLit());
        if ((d >= 172 && d < 176) || (d >= 185 && d < 187)) return QColor(226, 220, 206);  // the lines' own shade
        return d < 2 ? QColor(224, 219, 207) : QColor(244, 240, 229);
    }));
}

QByteArray DrawInstantPhoto() {
    constexpr int Side = 168, Foot = 560, Over = 14;
    return NinePartFile(MitredBorder(Side, Side, Side, Foot, Over, 8, [](const BorderPlace& place, double inside) {
        if (inside >= 0) return ShadeOnPicture(place, Over, 96);
        // The card is a little lighter where it bends towards its edges, and recessed at the window.
        const double edge = std::exp(-place.outer / 9.0), window = std::exp(inside / 5.0);
        const double factor = 1.0 - 0.07 * edge - 0.05 * window;
        return Shaded(QColor(250, 248, 241), factor);
    }));
}

QByteArray DrawRoundedWhite() {
    constexpr double Margin = 190, Radius = 190;
    constexpr int Corner = int(Margin + Radius);
    MiniFrame frame = MitredBorder({int(Margin), Corner, 8}, [](const BorderPlace&) { return Clear; });
    const int side = frame.image.width();
    frame.image = Computed(side, side, [=](int x, int y) {
        const double half = side / 2.0, inner = half - Margin - Radius;
        const double dx = std::max(0.0, std::abs(x + 0.5 - half) - inner);
        const double dy = std::max(0.0, std::abs(y + 0.5 - half) - inner);
        const double out = std::hypot(dx, dy) - Radius;  // of the window, in pixels
        const double cover = std::clamp(out + 0.5, 0.0, 1.0);
        const double rim = std::exp(-std::max(0.0, out) / 3.0);
        const int level = static_cast<int>(std::lround(254 - 20 * rim));
        return qRgba(level, level, level, static_cast<int>(std::lround(255 * cover)));
    });
    return StripFile(frame);
}

// Warp and weft over and under each other, six pixels a thread.
QColor LinenAt(double x, double y, double period) {
    constexpr double Thread = 6;
    const auto cell = [=](double v) {
        return static_cast<int>(std::floor((v - period * std::floor(v / period)) / Thread));
    };
    const int column = cell(x), row = cell(y);
    const bool over = (column + row) % 2 == 0;
    const double u = std::fmod(x + 100 * Thread * period, Thread) / Thread;
    const double v = std::fmod(y + 100 * Thread * period, Thread) / Thread;
    const double across = over ? v : u, along = over ? u : v;
    const double round = 0.80 + 0.20 * std::sin(3.14159 * across) * (0.6 + 0.4 * std::sin(3.14159 * along));
    const double own = over ? HashUnit(row, 3, 11) : HashUnit(column, 5, 12);
    const double slub = PeriodicNoise(x / 18, y / 18, period / 18, 31) * 0.02;
    return Shaded(QColor(229, 220, 202), round + 0.035 * (own - 0.5) + slub + 0.06);
}

QByteArray DrawLinen() {
    constexpr int Tile = 240;
    return StripFile([] {
        constexpr int Margin = 240, Shade = 26;
        return MitredBorder({Margin, Margin + Shade, Tile}, [](const BorderPlace& place) {
            const double d = place.depth;
            if (d >= Margin) return ShadeOnPicture(place, Shade, 90);
            if (d >= Margin - 7) return BevelCut(place);
            const double edge = 1.0 - 0.25 * std::exp(-d / 4.0);
            return Shaded(LinenAt(place.x, place.y, Tile), edge);
        });
    }());
}

// How high the moulding stands at a depth of 0 to 1: a bead outside, a hollow, and a lip at the picture.
double MouldingSlope(double t) {
    if (t < 0.07) return 3.2 * (1 - t / 0.07);
    if (t < 0.16) return -1.6 * Ramp(0.07, 0.16, t);
    if (t < 0.24) return -1.6 * (1 - Ramp(0.16, 0.24, t));
    if (t < 0.80) return -0.45 * std::sin((t - 0.24) / 0.56 * 3.14159);
    if (t < 0.88) return 1.5 * std::sin((t - 0.80) / 0.08 * 3.14159);
    return -1.5 * std::sin((t - 0.88) / 0.12 * 3.14159 * 0.5);
}

QByteArray DrawWood() {
    constexpr int Margin = 250, Shade = 40, Tile = 512;
    return StripFile(MitredBorder({Margin, Margin + Shade, Tile}, [](const BorderPlace& place) {
        const double d = place.depth;
        if (d >= Margin) return ShadeOnPicture(place, Shade, 120);
        const unsigned seed = 40u + 7u * static_cast<unsigned>(place.edge);
        // Straight grain: the years are the same all along an edge, so that a tile that is cut meets its corner unseen.
        // Pores are short dark strokes in them.
        const double wander = ValueNoise({d / 37, 1.5}, seed) * 6;
        const double years = 0.5 + 0.5 * std::sin((d + wander) * 0.30 + 3 * ValueNoise({d / 23, 0.5}, seed + 1));
        const double fine = ValueNoise({0.5, (d + wander * 0.5) * 0.8}, seed + 2);
        const double pores =
            Ramp(0.35, 0.8, PeriodicNoise(place.along / 16, (d + wander * 0.3) / 1.7, Tile / 16.0, seed + 3));
        QColor wood = MixedColour(QColor(84, 50, 27), QColor(139, 90, 52), 0.25 + 0.5 * years + 0.16 * fine);
        wood = Shaded(wood, 1.0 - 0.24 * pores);
        const double light = MouldingSlope(d / Margin) * (place.IsLit() ? 0.17 : -0.13);
        const double crease = 0.35 * std::exp(-std::abs(d - Margin * 0.24) / 2.5) + 0.4 * std::exp(-(Margin - d) / 2.0);
        return Shaded(wood, std::clamp(1.0 + light - crease, 0.25, 1.6));
    }));
}

QByteArray DrawShadowBox() {
    constexpr int Face = 104, Wall = 84, Margin = Face + Wall, Shade = 150;
    return StripFile(MitredBorder({Margin, Margin + Shade, 8}, [](const BorderPlace& place) {
        const double d = place.depth;
        if (d >= Margin) {
            const QColor far = ShadeOnPicture(place, Shade, 118);
            const QColor near(0, 0, 0, static_cast<int>(70 * std::exp(-(d - Margin) / 6.0)));
            return far.alpha() > near.alpha() ? far : near;
        }
        if (d < Face) {
            const double satin = place.IsLit() ? 0.5 : 0.2;
            const double rim = std::exp(-d / 5.0) + 0.7 * std::exp(-(Face - d) / 4.0);
            return Shaded(QColor(38, 36, 35), 1.0 + rim * satin);
        }
        // Walls of white card: the far end lies in the shade of the near one.
        const double t = (d - Face) / Wall;
        const double light = place.edge == Edge::Top     ? Mixed(0.52, 0.66, t)
                             : place.edge == Edge::Left  ? Mixed(0.60, 0.76, t)
                             : place.edge == Edge::Right ? Mixed(0.98, 0.90, t)
                                                         : Mixed(1.0, 0.94, t);
        return Shaded(QColor(244, 242, 237), light * (1 - 0.5 * std::exp(-(d - Face) / 5.0)));
    }));
}

// Paper on a table: the ground, the paper's shadow, the paper, and a window that shows the picture.
MiniFrame PaperOnGround(MiniFrame frame, const QImage& paper, const QColor& ground) {
    QImage shadow(paper.size(), QImage::Format_ARGB32_Premultiplied);
    shadow.fill(Qt::transparent);
    QPainter below(&shadow);
    below.drawImage(4, 7, paper);
    below.setCompositionMode(QPainter::CompositionMode_SourceIn);
    below.fillRect(shadow.rect(), QColor(20, 18, 16, 130));
    below.end();
    QImage image(paper.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(ground);
    QPainter painter(&image);
    painter.drawImage(0, 0, Blurred(shadow, 8));
    painter.drawImage(0, 0, paper);
    const QRect window(frame.pictureLeft, frame.pictureTop, image.width() - frame.pictureLeft - frame.pictureRight,
                       image.height() - frame.pictureTop - frame.pictureBottom);
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.fillRect(window, Qt::transparent);
    painter.end();
    frame.image = image.convertToFormat(QImage::Format_ARGB32);
    return frame;
}

QByteArray DrawDeckle() {
    constexpr int Ground = 96, Margin = 262, Tile = 512;
    const auto torn = [](const BorderPlace& place) {
        const unsigned seed = 70u + static_cast<unsigned>(place.edge);
        return Ground + 7 * PeriodicNoise(place.along / 32, 0.5, Tile / 32.0, seed) +
               4 * PeriodicNoise(place.along / 8, 0.5, Tile / 8.0, seed + 9) +
               1.5 * PeriodicNoise(place.along / 2, 0.5, Tile / 2.0, seed + 19);
    };
    const MiniFrame frame = MitredBorder({Margin, Margin + 40, Tile}, [&](const BorderPlace& place) {
        const double in = place.depth - torn(place);
        const double cover = std::clamp(in + 0.5, 0.0, 1.0);
        // Where the sheet was torn its thickness shows: fibres, a little rough, then the even face.
        const double fringe = 1 - Ramp(0, 14 + 5 * PeriodicNoise(place.along / 5, 3.5, Tile / 5.0, 91), in);
        const double fibre = PeriodicNoise(place.along / 3, place.depth / 3, Tile / 3.0, 93);
        const double cloud = PeriodicNoise(place.along / 40, place.depth / 40, Tile / 40.0, 94);
        const double line = place.depth >= Margin - 3 ? 0.10 : 0.0;
        QColor paper = Shaded(QColor(247, 243, 233), 1.0 + 0.006 * cloud + fringe * (0.02 + 0.03 * fibre) - line);
        paper.setAlphaF(static_cast<float>(cover));
        return paper;
    });
    return StripFile(PaperOnGround(frame, frame.image, QColor(197, 191, 182)));
}

QByteArray DrawStamp() {
    constexpr int Ground = 60, Margin = 200, Period = 96;
    // A hole lies on each corner of the paper.
    constexpr int Corner = Ground + Period + Period / 2;
    constexpr double Radius = 27;
    const MiniFrame frame = MitredBorder({Margin, Corner, Period}, [](const BorderPlace& place) {
        // A row of holes lies on each side of the paper, half a period off the tiles' ends.
        const auto bite = [](double along, double depth) {
            const double phase = along - Period * std::floor(along / Period) - Period / 2.0;
            return std::hypot(phase, depth - Ground) - Radius;
        };
        double out = std::min(place.depth - Ground, bite(place.along, place.depth));
        const double inCorner = place.edge == Edge::Top || place.edge == Edge::Bottom ? place.x : place.y;
        const double across =
            inCorner < 0 ? Corner + inCorner : Corner + Period - inCorner;  // from the side next to it
        if (inCorner < 0 || inCorner > Period) {
            const double depth = place.edge == Edge::Top || place.edge == Edge::Left ? place.depth - Corner
                                                                                     : Corner + Period - place.depth;
            out = std::min(out, bite(depth, across));
        }
        const double cover = std::clamp(out + 0.5, 0.0, 1.0);
        const double d = place.depth;
        const double line = (d >= Margin - 3 ? 0.12 : 0.0) + 0.04 * std::exp(-std::max(0.0, out) / 2.5);
        QColor paper = Shaded(QColor(250, 248, 242), 1.0 - line);
        paper.setAlphaF(static_cast<float>(cover));
        return paper;
    });
    return NinePartFile(PaperOnGround(frame, frame.image, QColor(150, 158, 165)));
}

QByteArray DrawFilmEdge() {
    constexpr int Band = 204, Side = 44, Period = 112, Over = 6;
    MiniFrame frame = MitredBorder(Side, Band, Side, Band, Over, Period, [](const BorderPlace& place, double inside) {
        // The exposed part ends softly, as under a camera's gate.
        if (inside >= 0) return QColor(8, 7, 6, static_cast<int>(255 * (1 - Ramp(0, Over, inside))));
        const double edge = place.depth < 3 ? 1.8 : 1.0;
        return Shaded(QColor(17, 15, 13), edge);
    });
    QPainter painter(&frame.image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const int height = frame.image.height(), middle = frame.left + Period / 2;
    for (const bool top : {true, false}) {
        const QRectF hole(middle - 33, top ? 56 : height - 56 - 84, 66, 84);
        painter.setBrush(QColor(4, 4, 4));
        painter.drawRoundedRect(hole.adjusted(-2.5, -2.5, 2.5, 2.5), 16, 16);
        painter.setBrush(QColor(246, 245, 241));
        painter.drawRoundedRect(hole, 13.5, 13.5);
        // Edge marks as a maker prints them by light.
        painter.setBrush(QColor(226, 146, 44));
        const double mark = top ? 20 : height - 20 - 18;
        painter.drawRoundedRect(QRectF(frame.left + 14, mark, 30, 18), 3, 3);
        painter.setBrush(QColor(226, 146, 44, 170));
        painter.drawRoundedRect(QRectF(frame.left + 54, mark + 6, 8, 6), 2, 2);
        painter.drawRoundedRect(QRectF(frame.left + 68, mark + 6, 8, 6), 2, 2);
        const double code = top ? Band - 40 : height - Band + 28;
        for (int bar = 0; bar < 6; ++bar)
            painter.drawRect(QRectF(frame.left + 16 + 14 * bar, code, bar % 3 == 1 ? 9 : 5, 12));
    }
    painter.end();
    return NinePartFile(frame);
}

}  // namespace

const std::vector<FrameArt>& SimpleFrameArt() {
    static const std::vector<FrameArt> art{
        {"Deckle", "nlf", DrawDeckle},
        {"DoubleLine", "vnbkwz", DrawDoubleLine},
        {"FilmEdge", "vnbkwz", DrawFilmEdge},
        {"GoldLine", "nlf", DrawGoldLine},
        {"InstantPhoto", "vnbkwz", DrawInstantPhoto},
        {"Linen", "nlf", DrawLinen},
        {"MatBlack", "vnbkwz", DrawMatBlack},
        {"MatWhite", "vnbkwz", DrawMatWhite},
        {"RoundedWhite", "nlf", DrawRoundedWhite},
        {"ShadowBox", "nlf", DrawShadowBox},
        {"Stamp", "vnbkwz", DrawStamp},
        {"Wood", "nlf", DrawWood},
    };
    return art;
}
