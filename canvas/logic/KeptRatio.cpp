// SPDX-License-Identifier: GPL-3.0-or-later
#include "KeptRatio.h"

#include <algorithm>

#include "Truncate.h"

int HeightFor(int width, double ratio) {
    return std::max(1, TruncateNear(width * ratio));
}

int WidthFor(int height, double ratio) {
    return HeightFor(height, 1.0 / ratio);
}

QSize SizeByWidth(int value, double ratio, QSize most) {
    const int height = TruncateNear(value * ratio);
    const int held = std::clamp(height, 1, most.height());
    if (held == height) return {value, height};
    return {std::min(WidthFor(held, ratio), most.width()), held};
}

QSize SizeByHeight(int value, double ratio, QSize most) {
    return SizeByWidth(value, 1.0 / ratio, most.transposed()).transposed();
}
