// SPDX-License-Identifier: GPL-3.0-or-later
#include "BitmapView.h"

#include <cstring>

QImage ViewOf(const Bitmap& bitmap, AlphaUse alpha) {
    if (!bitmap) return {};
    const auto format = alpha == AlphaUse::Ignore ? QImage::Format_RGB32 : QImage::Format_ARGB32;
    auto* held = new Bitmap(bitmap);
    return QImage(
        held->Pixels(), held->Width(), held->Height(), held->Stride(), format,
        [](void* kept) { delete static_cast<Bitmap*>(kept); }, held);
}

Bitmap BitmapOf(const QImage& image) {
    if (image.isNull()) return {};
    const QImage straight = image.convertToFormat(QImage::Format_ARGB32);
    Bitmap bitmap = Bitmap::Uninitialised(straight.width(), straight.height());
    std::uint8_t* to = bitmap.MutablePixels();
    for (int y = 0; y < straight.height(); ++y, to += bitmap.Stride())
        std::memcpy(to, straight.constScanLine(y), static_cast<std::size_t>(bitmap.Stride()));
    return bitmap;
}
