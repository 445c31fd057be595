// SPDX-License-Identifier: GPL-3.0-or-later
#include "Palettes.h"

#include <algorithm>
#include <array>

#include "Canvas.h"

namespace {

constexpr double GroundWidth = 200, GroundHeight = 80, FieldWidth = 200, FieldHeight = 110, GreyWidth = 14;

// A wash from one tone to another, so light that the swatches on it are judged as on white.
void DrawGround(QPainter& painter, const QColor& from, const QColor& to) {
    QLinearGradient wash(0, 0, GroundWidth, GroundHeight);
    wash.setColorAt(0, QColor(from.red(), from.green(), from.blue(), 46));
    wash.setColorAt(1, QColor(to.red(), to.green(), to.blue(), 30));
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(0, 0, GroundWidth, GroundHeight), 8, 8);
    painter.setBrush(wash);
    painter.drawRoundedRect(QRectF(0, 0, GroundWidth, GroundHeight), 8, 8);
}

QColor FieldColor(double x, double y) {
    const double down = y / (FieldHeight - 1);
    if (x >= FieldWidth - GreyWidth) return QColor::fromHsvF(0, 0, static_cast<float>(1 - down));
    const auto hue = static_cast<float>(x / (FieldWidth - GreyWidth));
    const auto saturation = static_cast<float>(std::min(1.0, 2 * down));
    const auto value = static_cast<float>(std::min(1.0, 2 - 2 * down));
    return QColor::fromHsvF(hue, saturation, value);
}

void DrawField(QPainter& painter) {
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (int y = 0; y < FieldHeight; ++y)
        for (int x = 0; x < FieldWidth; ++x) painter.fillRect(x, y, 1, 1, FieldColor(x, y));
}

struct Ground {
    const char* name;
    QColor from, to;
};

}  // namespace

bool DrawPalettes(const QString& folder) {
    const std::array grounds{Ground{"bg_mouthcolor1", {208, 66, 64}, {169, 39, 87}},
                             Ground{"bg_mouthcolor2", {236, 118, 80}, {196, 124, 110}},
                             Ground{"bg_mouthcolor3", {255, 114, 126}, {238, 93, 150}},
                             Ground{"bk_sepan1", {252, 203, 186}, {242, 144, 160}},
                             Ground{"bk_sepan2", {240, 225, 201}, {173, 141, 114}}};
    const auto write = [&](const char* name, double width, double height, const auto& draw) {
        return WriteSprite(folder, QStringLiteral("Background/") + QLatin1String(name), int(width), int(height), draw);
    };
    return std::all_of(grounds.begin(), grounds.end(),
                       [&](const Ground& ground) {
                           return write(ground.name, GroundWidth, GroundHeight,
                                        [&](QPainter& p) { DrawGround(p, ground.from, ground.to); });
                       }) &&
           write("bk_colorsepan", FieldWidth, FieldHeight, DrawField);
}
