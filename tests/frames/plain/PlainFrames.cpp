// SPDX-License-Identifier: GPL-3.0-or-later
#include "PlainFrames.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "PC_Dsp.h"
#include "TestPictures.h"

namespace PlainFrames {
namespace {

void Set(Bitmap& bitmap, int x, int y, std::uint32_t argb) {
    if (x < 0 || y < 0 || x >= bitmap.Width() || y >= bitmap.Height()) return;
    std::memcpy(bitmap.MutablePixels() + y * bitmap.Stride() + 4 * x, &argb, 4);
}

// Replaces what lies in `target`, pixel by pixel.
void Copy(const Bitmap& from, int left, int top, int width, int height, Bitmap& target, int x, int y) {
    for (int dy = 0; dy < height; ++dy)
        for (int dx = 0; dx < width; ++dx)
            Set(target, x + dx, y + dy, TestPictures::PixelAt(from, left + dx, top + dy));
}

void DrawOver(const Bitmap& over, Bitmap& target, int x, int y) {
    for (int dy = 0; dy < over.Height(); ++dy)
        for (int dx = 0; dx < over.Width(); ++dx) {
            const int tx = x + dx, ty = y + dy;
            if (tx < 0 || ty < 0 || tx >= target.Width() || ty >= target.Height()) continue;
            Set(target, tx, ty, Over(TestPictures::PixelAt(target, tx, ty), TestPictures::PixelAt(over, dx, dy)));
        }
}

void DrawFrameOver(const Bitmap& frame, Bitmap& result) {
    Bitmap stretched = frame;
    if (frame.Width() != result.Width() || frame.Height() != result.Height()) {
        stretched = Bitmap(result.Width(), result.Height());
        PC_Dsp::ResampleRect(frame, 0, 0, frame.Width(), frame.Height(), stretched, ResampleQuality::Best);
    }
    DrawOver(stretched, result, 0, 0);
}

bool IsPossible(double width, double height, float scale) {
    return width >= 1 && height >= 1 && std::trunc(width * scale) >= 1 && std::trunc(height * scale) >= 1;
}

}  // namespace

std::uint32_t Over(std::uint32_t below, std::uint32_t over) {
    const double a = (over >> 24) / 255.0, b = (below >> 24) / 255.0, whole = a + b * (1 - a);
    if (over >> 24 == 0) return below;
    std::uint32_t result = static_cast<std::uint32_t>(std::lround(whole * 255)) << 24;
    for (int shift = 0; shift < 24; shift += 8) {
        const double value = ((over >> shift & 255) * a + (below >> shift & 255) * b * (1 - a)) / whole;
        result |= static_cast<std::uint32_t>(std::lround(value)) << shift;
    }
    return result;
}

Bitmap Compose(const FrameBuilder::Strip& f, const Bitmap& picture, float scale) {
    const int w = int(picture.Width() / double(scale)) + f.extraWidth;
    const int h = int(picture.Height() / double(scale)) + f.extraHeight;
    if (!IsPossible(w, h, scale)) return {};
    Bitmap frame(w, h);
    const auto& [tl, t, tr, l, r, bl, b, br] = f.pieces;
    const int sw = f.strip.Width(), sh = f.strip.Height();
    const auto draw = [&](FrameBuilder::Size size, int left, int top, int x, int y) {
        if (size.width > 0 && size.height > 0) Copy(f.strip, left, top, size.width, size.height, frame, x, y);
    };
    const auto count = [](int span, int size) { return span < 0 || size < 1 ? 0 : span / size + 1; };
    draw(tl, 0, 0, 0, 0);
    for (int k = 0; k < count(w - tr.width - tl.width, t.width); ++k) draw(t, tl.width, 0, tl.width + k * t.width, 0);
    draw(tr, sw - tr.width, 0, w - tr.width, 0);
    for (int k = 0; k < count(h - bl.height - tl.height, l.height); ++k)
        draw(l, 0, tl.height, 0, tl.height + k * l.height);
    for (int k = 0; k < count(h - br.height - tr.height, r.height); ++k)
        draw(r, sw - r.width, tr.height, w - r.width, tr.height + k * r.height);
    draw(bl, 0, sh - bl.height, 0, h - bl.height);
    for (int k = 0; k < count(w - br.width - bl.width, b.width); ++k)
        draw(b, bl.width, sh - b.height, bl.width + k * b.width, h - b.height);
    draw(br, sw - br.width, sh - br.height, w - br.width, h - br.height);

    Bitmap result(int(w * double(scale)), int(h * double(scale)));
    const int x = int(f.pictureX * double(scale)), y = int(f.pictureY * double(scale));
    Copy(picture, 0, 0, picture.Width(), picture.Height(), result, x, y);
    DrawFrameOver(frame, result);
    if (f.pictureUnder == 0) Copy(picture, 0, 0, picture.Width(), picture.Height(), result, x, y);
    return result;
}

Bitmap Compose(const FrameBuilder::NinePart& f, const Bitmap& picture, float scale) {
    const auto width = [&](int i) { return f.parts[static_cast<std::size_t>(i)].Width(); };
    const auto height = [&](int i) { return f.parts[static_cast<std::size_t>(i)].Height(); };
    const auto count = [](int d, int size) { return size == 0 || d < 0 ? 0 : (d + size - 1) / size; };
    const auto trim = [&](int d, int size) {
        const int n = count(d, size);
        return n > 0 ? d - (n - (d % size != 0 ? 1 : 0)) * size : 0;
    };
    const int w0 = int(picture.Width() / double(scale)) + f.extraWidth;
    const int h0 = int(picture.Height() / double(scale)) + f.extraHeight;
    const int top = w0 - width(2) - width(0), left = h0 - height(6) - height(0);
    const int trimX = trim(top, width(1)), trimY = trim(left, height(3));
    const int w = w0 - trimX, h = h0 - trimY;
    if (!IsPossible(w, h, scale)) return {};
    Bitmap frame(w, h);
    const auto draw = [&](int i, int x, int y) {
        const Bitmap& part = f.parts[static_cast<std::size_t>(i)];
        Copy(part, 0, 0, part.Width(), part.Height(), frame, x, y);
    };
    draw(0, 0, 0);
    for (int k = 0; k < count(top, width(1)); ++k) draw(1, width(0) + k * width(1), 0);
    draw(2, w - width(2), 0);
    for (int k = 0; k < count(left, height(3)); ++k) draw(3, 0, height(0) + k * height(3));
    for (int k = 0; k < count(h0 - height(8) - height(2), height(5)); ++k)
        draw(5, w - width(5), height(2) + k * height(5));
    draw(6, 0, h - height(6));
    for (int k = 0; k < count(w0 - width(8) - width(6), width(7)); ++k) draw(7, width(6) + k * width(7), h - height(7));
    draw(8, w - width(8), h - height(8));

    Bitmap result(int(w * double(scale)), int(h * double(scale)));
    if (const Bitmap& texture = f.parts[4])
        for (int y = 0; y < result.Height(); ++y)
            for (int x = 0; x < result.Width(); ++x)
                Set(result, x, y, TestPictures::PixelAt(texture, x % texture.Width(), y % texture.Height()));
    const int x = int((f.pictureX - trimX / 2) * double(scale)), y = int((f.pictureY - trimY / 2) * double(scale));
    if (f.parts[4])
        DrawOver(picture, result, x, y);
    else
        Copy(picture, 0, 0, picture.Width(), picture.Height(), result, x, y);
    DrawFrameOver(frame, result);
    return result;
}

Bitmap Stretched(const FrameBuilder::Overlay& f, int width, int height) {
    Bitmap overlay = f.picture, temporary(width, height);
    const bool mayRotate = f.mayRotate != '0', keepRatio = f.keepRatio != '0';
    bool stretch = f.stretch != '0';
    const bool bothLandscape = height <= width && overlay.Height() <= overlay.Width();
    if (!stretch && !keepRatio && !mayRotate) stretch = true;
    int x = 0, y = 0, w = overlay.Width(), h = overlay.Height();
    if (!stretch && !keepRatio && !bothLandscape) {
        Bitmap turned(overlay.Height(), overlay.Width());
        for (int row = 0; row < h; ++row)
            for (int column = 0; column < w; ++column)
                Set(turned, h - 1 - row, column, TestPictures::PixelAt(overlay, column, row));
        overlay = turned;
        std::swap(w, h);
    }
    if (!stretch && keepRatio) {
        const double s = std::min(double(w) / width, double(h) / height);
        const int cutWidth = std::max(1, int(width * s)), cutHeight = std::max(1, int(height * s));
        x = int((w - cutWidth) * 0.5);
        y = int((h - cutHeight) * 0.5);
        w = cutWidth;
        h = cutHeight;
    }
    PC_Dsp::ResampleRect(overlay, x, y, w, h, temporary, ResampleQuality::Best);
    return temporary;
}

Bitmap Compose(const FrameBuilder::Overlay& f, const Bitmap& picture) {
    Bitmap result = picture;
    if (f.picture) DrawOver(Stretched(f, picture.Width(), picture.Height()), result, 0, 0);
    return result;
}

}  // namespace PlainFrames
