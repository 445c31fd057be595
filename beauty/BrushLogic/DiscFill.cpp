// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiscFill.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

// Columns of a row whose middles the ellipse covers; `end` lies outside.
struct Columns {
    int first, end;
};

// Empty for an empty rectangle, also one of sides below 0, which QRect would turn round.
QRect Within(const Bitmap& bitmap, const QRect& rect) {
    return rect.isEmpty() ? QRect() : rect.intersected(QRect(0, 0, bitmap.Width(), bitmap.Height()));
}

Columns ColumnsOf(const QRect& rect, int y) {
    const double radiusX = rect.width() / 2.0, radiusY = rect.height() / 2.0;
    const double down = (y + 0.5 - (rect.y() + radiusY)) / radiusY;
    const double half = radiusX * std::sqrt(std::max(0.0, 1.0 - down * down));
    const double middle = rect.x() + radiusX;
    return {static_cast<int>(std::ceil(middle - half - 0.5)), static_cast<int>(std::floor(middle + half - 0.5)) + 1};
}

}  // namespace

void FillEllipse(const QRect& rect, std::uint32_t argb, Bitmap& bitmap) {
    const QRect part = Within(bitmap, rect);
    if (part.isEmpty()) return;
    std::uint8_t* const pixels = bitmap.MutablePixels();
    for (int y = part.top(); y <= part.bottom(); ++y) {
        const Columns columns = ColumnsOf(rect, y);
        const int end = std::min(columns.end, part.right() + 1);
        std::uint8_t* const row = pixels + y * bitmap.Stride();
        for (int x = std::max(columns.first, part.left()); x < end; ++x)
            std::memcpy(row + std::ptrdiff_t{4} * x, &argb, sizeof argb);
    }
}

void ClearPart(const QRect& part, Bitmap& bitmap) {
    const QRect inside = Within(bitmap, part);
    if (inside.isEmpty()) return;
    std::uint8_t* row = bitmap.MutablePixels() + inside.y() * bitmap.Stride() + std::ptrdiff_t{4} * inside.x();
    for (int y = 0; y < inside.height(); ++y, row += bitmap.Stride())
        std::memset(row, 0, static_cast<std::size_t>(4 * inside.width()));
}
