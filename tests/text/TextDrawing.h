// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <QtCore/QRect>

#include "Bitmap.h"
#include "StringParams.h"
#include "TestPictures.h"

// What tests of drawn texts look at.
namespace TextDrawing {

// A text on a picture of that size, at the upper left, in Arial of 40 pixels.
inline StringParams Text(const QString& text, float size = 40, QSize canvas = {800, 600}) {
    StringParams params;
    params.SetCanvasSize(static_cast<float>(canvas.width()), static_cast<float>(canvas.height()));
    params.SetText(text);
    params.SetFontSize(size);
    return params;
}

inline QSizeF BoxOf(const StringParams& params) {
    double width = 0, height = 0;
    params.GetBoxSize(&width, &height);
    return {width, height};
}

inline QPointF PlaceOf(const StringParams& params) {
    float x = 0, y = 0;
    params.GetPosition(&x, &y);
    return {x, y};
}

// Pixels that differ between two pictures of one size: around all of them, and how many.
struct Changed {
    QRect around;
    int count = 0;
};
inline Changed Difference(const Bitmap& a, const Bitmap& b) {
    Changed changed;
    for (int y = 0; y < a.Height(); ++y)
        for (int x = 0; x < a.Width(); ++x)
            if (TestPictures::PixelAt(a, x, y) != TestPictures::PixelAt(b, x, y)) {
                changed.around |= QRect(x, y, 1, 1);
                ++changed.count;
            }
    return changed;
}

}  // namespace TextDrawing
