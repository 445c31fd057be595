// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdlib>
#include <QtGui/QImage>
#include <QtGui/QPainter>

#include "BitmapOfImage.h"
#include "CWordLogic.h"
#include "PC_Dsp.h"
#include "TestPictures.h"

// A view of the picture around the texts: without them, as they are painted over it, and of the burnt picture.
struct BurntView {
    Bitmap bare, seen, burnt;
};

inline BurntView ViewsAt(CWordLogic& logic, const ViewGeometry& geometry) {
    logic.SetGeometry(geometry, ViewQuality::Settled);
    const CanvasView view = logic.View();
    QImage image(view.bitmap.Pixels(), view.bitmap.Width(), view.bitmap.Height(), view.bitmap.Stride(),
                 QImage::Format_RGB32);
    image = image.copy();
    {
        QPainter painter(&image);
        painter.translate(-view.dest.topLeft());
        logic.PaintTexts(painter, view.dest);
    }
    Bitmap burnt;
    DrawVisiblePart(logic.RenderResult(), logic.Geometry(), ViewQuality::Settled, burnt);
    QRect around;
    for (int i = 0; i < logic.Count(); ++i) around |= logic.InkOnScreen(i);
    around = around.translated(-view.dest.topLeft()).intersected(image.rect());
    const auto part = [&](const Bitmap& whole) {
        return PC_Dsp::Clone(whole, around.x(), around.y(), around.width(), around.height());
    };
    return {part(view.bitmap), part(BitmapOfImage(image)), part(burnt)};
}

// Around the pixels that differ by at least a third of the largest difference.
inline QRect ClearDifference(const Bitmap& a, const Bitmap& b) {
    const int least = std::max(1, TestPictures::LargestDifference(a, b) / 3);
    QRect around;
    for (int y = 0; y < a.Height(); ++y)
        for (int x = 0; x < 4 * a.Width(); ++x)
            if (std::abs(a.Row(y)[x] - b.Row(y)[x]) >= least) around |= QRect(x / 4, y, 1, 1);
    return around;
}
