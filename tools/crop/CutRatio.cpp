// SPDX-License-Identifier: GPL-3.0-or-later
#include "CutRatio.h"

#include <algorithm>

#include "Truncate.h"

int HeightFor(int width, double ratio) {
    return std::max(1, TruncateNear(width * ratio));
}

int WidthFor(int height, double ratio) {
    return std::max(1, TruncateNear(height / ratio));
}

QSize FitRatio(QSize picture, double ratio) {
    const double own = static_cast<double>(picture.height()) / picture.width();
    if (own > ratio) return {picture.width(), HeightFor(picture.width(), ratio)};
    return {WidthFor(picture.height(), ratio), picture.height()};
}

QSize SizeByWidth(int value, double ratio, QSize picture) {
    const int height = TruncateNear(value * ratio);
    if (height >= 1 && height <= picture.height()) return {value, height};
    const int held = std::clamp(height, 1, picture.height());
    return {std::min(WidthFor(held, ratio), picture.width()), held};
}

QSize SizeByHeight(int value, double ratio, QSize picture) {
    const int width = TruncateNear(value / ratio);
    if (width >= 1 && width <= picture.width()) return {width, value};
    const int held = std::clamp(width, 1, picture.width());
    return {held, std::min(HeightFor(held, ratio), picture.height())};
}

QSize Swapped(QSize size, QSize picture) {
    const double ratio = static_cast<double>(size.width()) / size.height();
    const QSize turned(size.height(), size.width());
    if (turned.boundedTo(picture) == turned) return turned;
    return ratio > 1.0 ? SizeByHeight(std::min(turned.height(), picture.height()), ratio, picture)
                       : SizeByWidth(std::min(turned.width(), picture.width()), ratio, picture);
}
