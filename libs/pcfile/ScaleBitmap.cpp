// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScaleBitmap.h"

#include <QtGui/QImage>

#include <cstring>

Bitmap ScaleBitmap(const Bitmap& source, int width, int height) {
    if (!source || !Bitmap::Allowed(width, height)) return {};
    if (width == source.Width() && height == source.Height()) return source;
    const QImage view(source.Pixels(), source.Width(), source.Height(), source.Stride(), QImage::Format_ARGB32);
    const QImage scaled = view.scaled(width, height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                              .convertToFormat(QImage::Format_ARGB32);
    if (scaled.isNull()) return {};
    Bitmap result = Bitmap::Uninitialised(width, height);
    std::uint8_t* out = result.MutablePixels();
    for (int y = 0; y < height; ++y) std::memcpy(out + y * result.Stride(), scaled.constScanLine(y), result.Stride());
    return result;
}
