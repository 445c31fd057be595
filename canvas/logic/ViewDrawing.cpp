// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewDrawing.h"

#include <algorithm>
#include <cstring>

#include "PC_Dsp.h"
#include "Truncate.h"

namespace {

// Draws the rectangle `source`, in pixels of the geometry's picture, over all of `target`.
void DrawRect(const Bitmap& picture, const ViewGeometry& geometry, const QRectF& source, ViewQuality quality,
              Bitmap& target) {
    const double x = double(picture.Width()) / geometry.Image().width();
    const double y = double(picture.Height()) / geometry.Image().height();
    PC_Dsp::ResampleRect(picture, source.x() * x, source.y() * y, source.width() * x, source.height() * y, target,
                         quality == ViewQuality::Settled ? ResampleQuality::Best : ResampleQuality::Fast);
}

}  // namespace

void DrawVisiblePart(const Bitmap& picture, const ViewGeometry& geometry, ViewQuality quality, Bitmap& view) {
    const QSize size = geometry.ScreenRect().size();
    if (QSize(picture.Width(), picture.Height()) == size && geometry.ImageRect() == QRectF({}, geometry.Image()))
        return CopyPixels(view, picture);
    if (QSize(view.Width(), view.Height()) != size || view.IsShared())
        view = Bitmap::Uninitialised(size.width(), size.height());
    DrawRect(picture, geometry, geometry.ImageRect(), quality, view);
}

void DrawVisiblePart(const Bitmap& picture, const ViewGeometry& geometry, const QRect& part, Bitmap& view) {
    const QRectF whole = geometry.ImageRect();
    const double x = whole.width() / view.Width(), y = whole.height() / view.Height();
    Bitmap piece = Bitmap::Uninitialised(part.width(), part.height());
    DrawRect(picture, geometry,
             {whole.x() + part.x() * x, whole.y() + part.y() * y, part.width() * x, part.height() * y},
             ViewQuality::Settled, piece);
    std::uint8_t* to = view.MutablePixels() + part.y() * view.Stride() + std::ptrdiff_t{4} * part.x();
    for (int row = 0; row < part.height(); ++row, to += view.Stride())
        std::memcpy(to, piece.Row(row), static_cast<std::size_t>(piece.Stride()));
}

Bitmap ReducedWithin(const Bitmap& picture, QSize bounds) {
    if (!picture || bounds.isEmpty()) return {};
    const double by =
        std::min({1.0, double(bounds.width()) / picture.Width(), double(bounds.height()) / picture.Height()});
    return PC_Dsp::Resample(picture, TruncateSide(picture.Width() * by), TruncateSide(picture.Height() * by));
}

void MakeRoom(Bitmap& target, const Bitmap& source) {
    if (target.Width() != source.Width() || target.Height() != source.Height() || target.IsShared())
        target = Bitmap::Uninitialised(source.Width(), source.Height());
}

void CopyPixels(Bitmap& target, const Bitmap& source) {
    MakeRoom(target, source);
    std::memcpy(target.MutablePixels(), source.Pixels(), source.ByteCount());
}
