// SPDX-License-Identifier: GPL-3.0-or-later
#include "CropRatio.h"

#include <algorithm>

#include "KeptRatio.h"

QSize FitRatio(QSize picture, double ratio) {
    const double own = static_cast<double>(picture.height()) / picture.width();
    if (own > ratio) return {picture.width(), HeightFor(picture.width(), ratio)};
    return {WidthFor(picture.height(), ratio), picture.height()};
}

QSize Swapped(QSize size, QSize picture) {
    const double ratio = static_cast<double>(size.width()) / size.height();
    const QSize turned(size.height(), size.width());
    if (turned.boundedTo(picture) == turned) return turned;
    return ratio > 1.0 ? SizeByHeight(std::min(turned.height(), picture.height()), ratio, picture)
                       : SizeByWidth(std::min(turned.width(), picture.width()), ratio, picture);
}
