// SPDX-License-Identifier: GPL-3.0-or-later
#include "ContactSheet.h"

#include <QtGui/QPainter>

#include "PC_Dsp.h"

namespace {

constexpr int Gap = 10;
constexpr int LabelHeight = 26;

void DrawTile(QPainter& painter, QPoint corner, const Bitmap& tile, const QString& label) {
    painter.drawImage(corner, QImage(tile.Pixels(), tile.Width(), tile.Height(), QImage::Format_ARGB32));
    painter.drawText(QRect(corner.x(), corner.y() + tile.Height(), tile.Width(), LabelHeight),
                     Qt::AlignLeft | Qt::AlignVCenter, label);
}

}  // namespace

QImage ContactSheet::Draw(const Bitmap& picture, const std::vector<Tile>& tiles, QString& error) const {
    const int tileHeight = std::max(1, tileWidth * picture.Height() / picture.Width());
    const Bitmap small = PC_Dsp::Resample(picture, tileWidth, tileHeight);
    const int count = static_cast<int>(tiles.size()) + (withOriginal ? 1 : 0);
    const int across = std::min(columns, count), down = (count + across - 1) / across;
    QImage sheet(Gap + across * (tileWidth + Gap), Gap + down * (tileHeight + LabelHeight + Gap), QImage::Format_RGB32);
    sheet.fill(QColor(250, 250, 250));
    QPainter painter(&sheet);
    QFont font;
    font.setPixelSize(14);
    painter.setFont(font);
    painter.setPen(QColor(60, 60, 66));
    int place = 0;
    const auto corner = [&] {
        const QPoint at(Gap + place % across * (tileWidth + Gap),
                        Gap + place / across * (tileHeight + LabelHeight + Gap));
        ++place;
        return at;
    };
    if (withOriginal) DrawTile(painter, corner(), small, QStringLiteral("original"));
    for (const Tile& tile : tiles) {
        std::string why;
        Bitmap changed = small;
        const QString label = tile.apply(changed, why);
        if (label.isEmpty()) {
            error = QString::fromStdString(why);
            return {};
        }
        DrawTile(painter, corner(), changed, label);
    }
    return sheet;
}
