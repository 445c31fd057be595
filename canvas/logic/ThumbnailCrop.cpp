// SPDX-License-Identifier: GPL-3.0-or-later
#include "ThumbnailCrop.h"

#include <cstring>

#include "Flatten.h"
#include "PC_Dsp.h"
#include "Truncate.h"

namespace {

constexpr double Step = 1.1;

// Where `part` of a picture of this size lies in the thumbnail.
QRect PlaceOf(const QRect& part, const QRect& whole, QSize thumbnail) {
    const double across = double(thumbnail.width()) / whole.width();
    const double down = double(thumbnail.height()) / whole.height();
    return {Truncate((part.x() - whole.x()) * across), Truncate((part.y() - whole.y()) * down),
            TruncateSide(part.width() * across), TruncateSide(part.height() * down)};
}

void Insert(const Bitmap& part, QPoint at, Bitmap& target) {
    std::uint8_t* to = target.MutablePixels() + at.y() * target.Stride() + at.x() * 4;
    for (int y = 0; y < part.Height(); ++y, to += target.Stride())
        std::memcpy(to, part.Row(y), static_cast<std::size_t>(part.Stride()));
}

}  // namespace

QRect ThumbnailPart(QSize image, QSize shape) {
    double width = shape.width();
    double height = shape.height();
    while (width < image.width() && height < image.height()) {
        width *= Step;
        height *= Step;
    }
    width /= Step;
    height /= Step;
    return {Truncate((image.width() - width) * 0.5), Truncate((image.height() - height) * 0.5), TruncateSide(width),
            TruncateSide(height)};
}

Bitmap MakeThumbnail(const Bitmap& picture, QSize shape, double scale) {
    if (!picture) return {};
    const QRect whole = ThumbnailPart({picture.Width(), picture.Height()}, shape);
    const QRect part = whole.intersected(QRect(0, 0, picture.Width(), picture.Height()));
    const QSize size(TruncateSide(shape.width() * scale), TruncateSide(shape.height() * scale));
    Bitmap thumbnail = Bitmap::Uninitialised(size.width(), size.height());
    thumbnail.Fill(0xFFFFFFFF);
    const QRect place = PlaceOf(part, whole, size) & QRect(QPoint(0, 0), size);
    Bitmap drawn = Bitmap::Uninitialised(place.width(), place.height());
    PC_Dsp::ResampleRect(picture, part.x(), part.y(), part.width(), part.height(), drawn, ResampleQuality::Best);
    FlattenOnWhite(drawn);
    if (place.size() == size) return drawn;
    Insert(drawn, place.topLeft(), thumbnail);
    return thumbnail;
}
