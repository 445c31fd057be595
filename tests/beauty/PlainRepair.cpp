// SPDX-License-Identifier: GPL-3.0-or-later
#include "PlainRepair.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "BrushPlace.h"
#include "PC_Dsp.h"

namespace {

// In whole numbers, so that no rounding has a part in it.
bool Covers(const QRect& disc, int x, int y) {
    const qint64 w = disc.width(), h = disc.height();
    const qint64 dx = 2 * (qint64{x} - disc.x()) + 1 - w, dy = 2 * (qint64{y} - disc.y()) + 1 - h;
    return dx * dx * h * h + dy * dy * w * w <= w * w * h * h;
}

PixelRect PixelsOf(const QRect& rect) {
    return {rect.x(), rect.y(), rect.x() + rect.width(), rect.y() + rect.height()};
}

using Colour = std::array<int, 3>;  // blue, green, red

// A disc of a colour whose edge mixes over one pixel, and that covers by `share`.
void Paint(Bitmap& picture, double x, double y, double radius, const Colour& colour, double share = 1.0) {
    std::uint8_t* p = picture.MutablePixels();
    for (int v = 0; v < picture.Height(); ++v)
        for (int u = 0; u < picture.Width(); ++u, p += 4) {
            const double here = share * std::clamp(radius + 0.5 - std::hypot(u - x, v - y), 0.0, 1.0);
            for (int c = 0; c < 3; ++c) p[c] = static_cast<std::uint8_t>(std::lround(p[c] + here * (colour[c] - p[c])));
        }
}

}  // namespace

QRect PlainRepair::Place(QPoint client, int pen, const ViewGeometry& geometry) {
    return PenPlace(client - geometry.ViewOffset(), pen, geometry.Zoom(), geometry.Image()).value_or(QRect());
}

Bitmap PlainRepair::Mask(QSize size, const std::vector<QRect>& discs, std::uint32_t argb) {
    Bitmap mask(size.width(), size.height());
    std::uint8_t* p = mask.MutablePixels();
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x, p += 4)
            if (std::any_of(discs.begin(), discs.end(), [=](const QRect& disc) { return Covers(disc, x, y); }))
                std::memcpy(p, &argb, 4);
    return mask;
}

Bitmap PlainRepair::WithoutSpot(Bitmap picture, const QRect& place) {
    const Bitmap mask = Mask({picture.Width(), picture.Height()}, {place}, 0xFF38EEFF);
    PC_Dsp::ImageProcessWithInpaint(picture.MutablePixels(), picture.Width(), picture.Height(), mask.Pixels(),
                                    static_cast<int>(0xFF38EEFF), nullptr, 0, 100);
    return picture;
}

Bitmap PlainRepair::WithoutRedEye(Bitmap picture, const QRect& place) {
    PC_Dsp::RedEyeRemove(picture, PixelsOf(place));
    return picture;
}

Bitmap PlainRepair::WithoutCircles(Bitmap picture, const std::vector<QRect>& discs, int side, int strength) {
    const Bitmap mask = Mask({picture.Width(), picture.Height()}, discs, 0x66FF6363);
    PC_Dsp::BlackEye(picture.MutablePixels(), picture.Width(), picture.Height(), mask.Pixels(), side / 2, strength,
                     nullptr, 0, 100);
    return picture;
}

Bitmap PlainRepair::Face(int width, int height) {
    Bitmap face(width, height);
    face.Fill(0xFFD2A284);
    const double eye = width / 30.0;  // radius of a pupil
    Paint(face, width * 0.3, height * 0.5, width / 8.0, {120, 110, 140}, 0.35);
    Paint(face, width * 0.5, height * 0.7, width / 60.0 + 1.0, {60, 60, 150}, 0.7);
    for (const double x : {0.3, 0.7}) {
        const QPointF at(std::floor(width * x), std::floor(height * 0.35));
        Paint(face, at.x(), at.y(), 5.0 * eye, {212, 216, 222});
        Paint(face, at.x(), at.y(), 3.0 * eye, {150, 120, 88});
        Paint(face, at.x(), at.y(), eye, {42, 30, 214});
        Paint(face, at.x() - 0.4 * eye, at.y() - 0.4 * eye, 0.2 * eye, {252, 250, 250});
    }
    // The grain of skin, the same on every machine.
    std::uint32_t random = 1;
    std::uint8_t* p = face.MutablePixels();
    for (std::size_t i = 0; i < face.ByteCount(); i += 4) {
        random = random * 1664525u + 1013904223u;
        for (int c = 0; c < 3; ++c)
            p[i + c] = static_cast<std::uint8_t>(std::clamp(p[i + c] + static_cast<int>(random >> 24) % 7 - 3, 0, 255));
    }
    return face;
}
