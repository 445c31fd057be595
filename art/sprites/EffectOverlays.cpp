// SPDX-License-Identifier: GPL-3.0-or-later
#include "EffectOverlays.h"

#include <QtGui/QPainterPath>

#include "Canvas.h"

namespace {

constexpr double Width = 70, Height = 96;
// Of the tile that the overlay lies in.
constexpr double Corner = 6;

QRectF All() {
    return {0, 0, Width, Height};
}

// The room between the tile's edge and a rounded window in it.
QPainterPath Border(double left, double top, double right, double bottom, double corner) {
    QPainterPath border;
    border.setFillRule(Qt::OddEvenFill);
    border.addRect(All());
    border.addRoundedRect(All().adjusted(left, top, -right, -bottom), corner, corner);
    return border;
}

// A line along the tile's edge; its lower end meets the name strip.
void EdgeLine(QPainter& painter, const QColor& colour, double width) {
    painter.setPen(QPen(colour, width));
    painter.setBrush(Qt::NoBrush);
    const double half = width / 2;
    painter.drawRoundedRect(All().adjusted(half, half, -half, Corner), Corner - half, Corner - half);
}

// Darkens or lightens towards the corners; clear in the middle up to the share `clear` of the way out.
void Vignette(QPainter& painter, const QColor& colour, double clear) {
    painter.save();
    painter.translate(Width / 2, Height / 2);
    painter.scale(1.0, Height / Width);
    QRadialGradient gradient(0, 0, Width * 0.71);
    QColor none = colour;
    none.setAlpha(0);
    gradient.setColorAt(clear, none);
    gradient.setColorAt(1.0, colour);
    painter.fillRect(QRectF(-Width / 2, -Width / 2, Width, Width), gradient);
    painter.restore();
}

// A dark edge with as many edge marks as the place in the list.
void DrawFilm(QPainter& painter, int place) {
    EdgeLine(painter, QColor(12, 16, 22, 110), 1.5);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 236, 190, 190));
    for (int i = 0; i < place; ++i) painter.drawRoundedRect(QRectF(3.2, Height - 6 - 4.0 * i, 1.6, 2.4), 0.6, 0.6);
}

// The white card of an instant picture; from warm to cool down the list.
void DrawPola(QPainter& painter, int place) {
    const QColor card(252 - place, 250 - place / 2, 242 + place, 235);
    painter.setPen(Qt::NoPen);
    painter.setBrush(card);
    painter.drawPath(Border(3, 3, 3, 8, 1.5));
    painter.setPen(QPen(QColor(60, 60, 66, 60), 0.8));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(All().adjusted(3, 3, -3, -8), 1.5, 1.5);
}

// Browned edges behind a narrow cream border.
void DrawVintage(QPainter& painter, int place) {
    Vignette(painter, QColor(92, 58, 20, 80 + 6 * place), 0.62);
    EdgeLine(painter, QColor(246, 232, 204, 150), 2.0);
}

void DrawLomo(QPainter& painter, int place) {
    Vignette(painter, QColor(8, 4, 20, 90 + 8 * place), 0.55);
}

// A haze that comes in from the edge.
void DrawFade(QPainter& painter, int place) {
    Vignette(painter, QColor(255, 255, 255, 70 + 8 * place), 0.7);
    EdgeLine(painter, QColor(255, 255, 255, 90), 1.0);
}

// A key line inside a white edge, as on a print.
void DrawBw(QPainter& painter, int place) {
    EdgeLine(painter, QColor(255, 255, 255, 215), 2.0);
    painter.setPen(QPen(QColor(0, 0, 0, 120 + 10 * place), 0.8));
    painter.drawRoundedRect(All().adjusted(2.4, 2.4, -2.4, -0.4), Corner - 2.4, Corner - 2.4);
}

// A glow on the edge through which the light comes, going round the frame down the list.
void DrawLeaker(QPainter& painter, int place) {
    static constexpr double Ways[][2] = {{0, 0.2}, {1, 0.3}, {0.7, 0}, {0, 0.8}, {1, 0.75}, {0.2, 0}, {1, 0}};
    const auto& way = Ways[(place - 1) % 7];
    const QPointF at(way[0] * Width, way[1] * Height);
    QRadialGradient glow(at, Width * 0.5);
    glow.setColorAt(0, QColor(255, 150, 70, 110));
    glow.setColorAt(1, QColor(255, 120, 60, 0));
    painter.fillRect(All(), glow);
    EdgeLine(painter, QColor(255, 196, 150, 90), 1.0);
}

struct Family {
    const char* folder;
    int count;
    void (*draw)(QPainter& painter, int place);
};

constexpr Family Families[] = {{"film", 8, DrawFilm},    {"pola", 7, DrawPola}, {"vintage", 7, DrawVintage},
                               {"lomo", 8, DrawLomo},    {"fade", 6, DrawFade}, {"bw", 7, DrawBw},
                               {"leaker", 7, DrawLeaker}};

}  // namespace

bool DrawEffectOverlays(const QString& folder) {
    for (const Family& family : Families)
        for (int place = 1; place <= family.count; ++place) {
            const QString name = QLatin1String(family.folder) + u'/' + QString::number(place);
            const auto draw = [&](QPainter& painter) { family.draw(painter, place); };
            if (!WriteSprite(folder, name, int(Width), int(Height), draw)) return false;
        }
    return true;
}
