// SPDX-License-Identifier: GPL-3.0-or-later
#include "Strands.h"

#include "Parallel.h"
#include "Truncate.h"

namespace {

void DrawPiece(Picture& picture, const StrandSet::Piece& piece, int first, int last) {
    // In pixels, where the piece is a band about the line from `from` along the unit vector `way`.
    const double pixel = picture.PixelSide();
    const Vec2 from = picture.PixelOf(piece.from);
    const Vec2 to = picture.PixelOf(piece.to);
    const double length = std::max(Length(to - from), 1e-9);
    const Vec2 way = (to - from) * (1 / length);
    const double reach = 0.5 * std::max({piece.fromWidth, piece.toWidth, pixel}) / pixel + 0.5;
    const int top = std::max(first, Truncate(std::floor(std::min(from.y, to.y) - reach)));
    const int bottom = std::min(last - 1, Truncate(std::ceil(std::max(from.y, to.y) + reach)));
    for (int y = top; y <= bottom; ++y) {
        // A row meets the band where its distance from the line is below the reach; a level piece over its whole box.
        const double down = y - from.y;
        double low = std::min(from.x, to.x) - reach;
        double high = std::max(from.x, to.x) + reach;
        if (std::abs(way.y) > 1e-3) {
            const double middle = from.x + down * way.x / way.y;
            const double half = reach / std::abs(way.y);
            low = std::max(low, middle - half);
            high = std::min(high, middle + half);
        }
        const int left = std::max(0, Truncate(std::ceil(low)));
        const int right = std::min(picture.Width() - 1, Truncate(std::floor(high)));
        for (int x = left; x <= right; ++x) {
            const double across = x - from.x;
            const double t = (across * way.x + down * way.y) / length;
            if (t < 0 || t >= 1) continue;
            const double width = Mix(piece.fromWidth, piece.toWidth, t) / pixel;
            const double away = std::abs(across * way.y - down * way.x);
            // Thinner than a pixel: fainter instead.
            const double drawn = std::max(width, 1.0);
            const double cover =
                Clamp01(0.5 * drawn - away + 0.5) * (width / drawn) * Mix(piece.fromCover, piece.toCover, t);
            if (cover > 0) picture.Lay(x, y, Mix(piece.fromColour, piece.toColour, t), cover);
        }
    }
}

}  // namespace

void StrandSet::Add(const std::vector<Vec2>& points, double rootWidth, double tipWidth, Colour root, Colour tip,
                    double cover) {
    const double count = static_cast<double>(points.size() - 1);
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        const double s = static_cast<double>(i) / count;
        const double t = static_cast<double>(i + 1) / count;
        Add(Piece{points[i], points[i + 1], Mix(rootWidth, tipWidth, s), Mix(rootWidth, tipWidth, t), Mix(root, tip, s),
                  Mix(root, tip, t), cover, cover});
    }
}

void StrandSet::Draw(Picture& picture) const {
    constexpr int rowsPerBand = 32;
    const int bands = (picture.Height() + rowsPerBand - 1) / rowsPerBand;
    std::vector<std::vector<const Piece*>> parts(static_cast<std::size_t>(bands));
    for (const Piece& piece : m_pieces) {
        const double reach = 0.5 * std::max(piece.fromWidth, piece.toWidth) + 2 * picture.PixelSide();
        const double top = picture.PixelOf({0, std::min(piece.from.y, piece.to.y) - reach}).y;
        const double bottom = picture.PixelOf({0, std::max(piece.from.y, piece.to.y) + reach}).y;
        const int from = std::clamp(Truncate(top) / rowsPerBand, 0, bands - 1);
        const int to = std::clamp(Truncate(bottom) / rowsPerBand, 0, bands - 1);
        if (bottom < 0 || top > picture.Height()) continue;
        for (int band = from; band <= to; ++band) parts[static_cast<std::size_t>(band)].push_back(&piece);
    }
    ForEachBand(bands, 1, [&](int first, int last) {
        for (int band = first; band < last; ++band) {
            const int end = std::min((band + 1) * rowsPerBand, picture.Height());
            for (const Piece* piece : parts[static_cast<std::size_t>(band)])
                DrawPiece(picture, *piece, band * rowsPerBand, end);
        }
    });
}
