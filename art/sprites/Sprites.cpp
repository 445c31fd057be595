// SPDX-License-Identifier: GPL-3.0-or-later
#include "Sprites.h"

#include <QtCore/QDir>
#include <QtGui/QPainterPath>
#include <QtSvg/QSvgRenderer>

#include "Canvas.h"

namespace {

constexpr int SpinnerSide = 27;
constexpr int SpinnerFrames = 11;
constexpr int HandleFrame = 32;
const QColor Accent(0x20, 0xB8, 0xF1);
const QColor AccentHover(0x32, 0xBE, 0xF2);
const QColor Hairline(0xE1, 0xE4, 0xE8);
const QColor Ink(0x2B, 0x2F, 0x36);
const QColor Danger(0xE5, 0x48, 0x4D);

// Eleven frames close the circle, so the dots stand at elevenths of it and the brightest one moves on by one a frame.
void DrawSpinnerFrame(QPainter& painter, int frame) {
    const QPointF centre(SpinnerSide / 2.0, SpinnerSide / 2.0);
    constexpr double radius = 9.0;
    constexpr int parts = 88;
    painter.save();
    painter.setClipRect(QRectF(0, 0, SpinnerSide, SpinnerSide));
    painter.setPen(QPen(QColor(255, 255, 255, 38), 3.0));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(centre, radius, radius);
    const double head = 90.0 - 360.0 * frame / SpinnerFrames;
    const QRectF box(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius);
    for (int part = 0; part < parts; ++part) {
        const double along = 1.0 - static_cast<double>(part) / parts;
        QColor colour = Accent;
        colour.setAlphaF(along * along);
        painter.setPen(QPen(colour, 3.0, Qt::SolidLine, part == 0 ? Qt::RoundCap : Qt::FlatCap));
        const double start = head + 270.0 * part / parts;
        painter.drawArc(box, static_cast<int>(start * 16), static_cast<int>(270.0 * 16 / parts) + 1);
    }
    painter.restore();
}

void DrawSpinnerStrip(QPainter& painter) {
    for (int frame = 0; frame < SpinnerFrames; ++frame) {
        painter.save();
        painter.translate(frame * SpinnerSide, 0);
        DrawSpinnerFrame(painter, frame);
        painter.restore();
    }
}

void DrawPanel(QPainter& painter) {
    const QRectF panel(4, 4, 292, 92);
    for (int ring = 4; ring > 0; --ring) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0, 0, 0, 14));
        painter.drawRoundedRect(panel.adjusted(-ring, -ring + 1, ring, ring), 10 + ring, 10 + ring);
    }
    QLinearGradient ground(0, 4, 0, 96);
    ground.setColorAt(0, QColor(48, 53, 61, 232));
    ground.setColorAt(1, QColor(34, 38, 44, 238));
    painter.setBrush(ground);
    painter.setPen(QPen(QColor(255, 255, 255, 30), 1));
    painter.drawRoundedRect(panel.adjusted(0.5, 0.5, -0.5, -0.5), 10, 10);
}

void DrawNavigatorGround(QPainter& painter) {
    const QRectF card(6, 6, 175, 204);
    painter.setPen(Qt::NoPen);
    for (int ring = 6; ring > 0; --ring) {
        painter.setBrush(QColor(20, 26, 34, 7));
        painter.drawRoundedRect(card.adjusted(-ring, -ring + 2, ring, ring), 6 + ring, 6 + ring);
    }
    painter.setBrush(QColor(255, 255, 255, 250));
    painter.setPen(QPen(Hairline, 1));
    painter.drawRoundedRect(card.adjusted(0.5, 0.5, -0.5, -0.5), 6, 6);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xF0, 0xF1, 0xF3));
    painter.drawRoundedRect(QRectF(17, 32, 153, 165), 3, 3);
}

void DrawCloseBox(QPainter& painter, const QColor& ground, const QColor& cross) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRoundedRect(QRectF(0, 0, 15, 15), 4, 4);
    painter.setPen(QPen(cross, 1.5, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(4.5, 4.5), QPointF(10.5, 10.5));
    painter.drawLine(QPointF(10.5, 4.5), QPointF(4.5, 10.5));
}

void DrawButtonGround(QPainter& painter, double width, const QColor& ground, const QColor& border) {
    painter.setBrush(ground);
    painter.setPen(QPen(border, 1));
    painter.drawRoundedRect(QRectF(0.5, 0.5, width - 1, 41), 6, 6);
}

// A disc in the middle of a frame of HandleFrame, whose rest is there for the finger; a soft edge keeps it visible on
// every picture.
void DrawHandle(QPainter& painter, const QColor& ground, const QPainterPath& sign) {
    const QPointF middle(HandleFrame / 2.0, HandleFrame / 2.0);
    painter.setPen(Qt::NoPen);
    for (int ring = 3; ring > 0; --ring) {
        painter.setBrush(QColor(0, 0, 0, 18));
        painter.drawEllipse(middle, 11.0 + ring * 0.6, 11.0 + ring * 0.6);
    }
    painter.setPen(QPen(Qt::white, 1.5));
    painter.setBrush(ground);
    painter.drawEllipse(middle, 10.5, 10.5);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::white, 1.7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(sign.translated(middle - QPointF(10, 10)));
}

bool WriteHandle(const QString& folder, const QString& name, const QColor& colour, const QPainterPath& sign) {
    return WriteSprite(folder, name, 3 * HandleFrame, HandleFrame, [&](QPainter& painter) {
        for (const QColor& ground : {colour.darker(112), colour, colour.lighter(108)}) {
            DrawHandle(painter, ground, sign);
            painter.translate(HandleFrame, 0);
        }
    });
}

QPainterPath CrossSign() {
    QPainterPath sign(QPointF(7, 7));
    sign.lineTo(13, 13);
    sign.moveTo(13, 7);
    sign.lineTo(7, 13);
    return sign;
}

QPainterPath TurnSign() {
    QPainterPath sign;
    sign.arcMoveTo(QRectF(6, 6, 8, 8), 60);
    sign.arcTo(QRectF(6, 6, 8, 8), 60, 280);
    sign.moveTo(12.2, 3.9);
    sign.lineTo(12.2, 6.7);
    sign.lineTo(9.4, 6.9);
    return sign;
}

}  // namespace

bool DrawTexture(const QString& folder) {
    const QString path = folder + QStringLiteral("/TextureBrush");
    if (!QDir().mkpath(path)) return false;
    for (const int scale : {1, 2}) {
        QImage tile(16 * scale, 16 * scale, QImage::Format_RGB32);
        for (int y = 0; y < tile.height(); ++y) {
            for (int x = 0; x < tile.width(); ++x) {
                const bool light = (x < 8 * scale) == (y < 8 * scale);
                tile.setPixel(x, y, light ? qRgb(0xFF, 0xFF, 0xFF) : qRgb(0xED, 0xEF, 0xF2));
            }
        }
        const QString name = scale == 1 ? QStringLiteral("/TextureBrush.jpg") : QStringLiteral("/TextureBrush@2x.jpg");
        if (!tile.save(path + name, "JPEG", 100)) return false;
    }
    return true;
}

bool DrawLoading(const QString& folder) {
    return WriteSprite(folder, QStringLiteral("Loading/login_bg"), 300, 100, DrawPanel) &&
           WriteSprite(folder, QStringLiteral("Loading/loading"), SpinnerSide * SpinnerFrames, SpinnerSide,
                       DrawSpinnerStrip);
}

bool DrawNavigator(const QString& folder) {
    const auto plain = [](QPainter& painter) { DrawCloseBox(painter, Qt::transparent, QColor(0x6B, 0x72, 0x80)); };
    const auto hover = [](QPainter& painter) { DrawCloseBox(painter, Hairline, Ink); };
    return WriteSprite(folder, QStringLiteral("ThumbWnd/thumb_bg"), 187, 216, DrawNavigatorGround) &&
           WriteSprite(folder, QStringLiteral("ThumbWnd/thumb_close"), 15, 15, plain) &&
           WriteSprite(folder, QStringLiteral("ThumbWnd/thumb_close_h"), 15, 15, hover);
}

bool DrawButtons(const QString& folder) {
    const auto button = [&](const QString& name, int width, const QColor& ground, const QColor& border) {
        return WriteSprite(folder, QStringLiteral("Button/") + name, width, 42,
                           [&](QPainter& painter) { DrawButtonGround(painter, width, ground, border); });
    };
    return button(QStringLiteral("btn_compare_save"), 174, Accent, Accent) &&
           button(QStringLiteral("btn_compare_save_h"), 174, AccentHover, AccentHover) &&
           button(QStringLiteral("btn_compare_before"), 104, Qt::white, QColor(0xD3, 0xD8, 0xDE)) &&
           button(QStringLiteral("btn_compare_before_h"), 104, QColor(0xF3, 0xF9, 0xFD), Accent) &&
           WriteHandle(folder, QStringLiteral("Button/btn_delete"), Danger, CrossSign()) &&
           WriteHandle(folder, QStringLiteral("Button/btn_rotate"), Accent, TurnSign());
}

bool DrawProgramIcons(const QString& folder, const QString& svgPath) {
    QSvgRenderer drawing(svgPath);
    if (!drawing.isValid() || !QDir().mkpath(folder + QStringLiteral("/Icons"))) return false;
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        drawing.render(&painter, QRectF(0, 0, size, size));
        painter.end();
        if (!image.save(folder + QStringLiteral("/Icons/quince_%1.png").arg(size), "PNG")) return false;
    }
    return true;
}
