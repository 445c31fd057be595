// SPDX-License-Identifier: GPL-3.0-or-later
#include "FramePieces.h"

#include <algorithm>
#include <cstring>

#include "CEffect.h"
#include "PC_Dsp.h"
#include "Rows.h"
#include "Truncate.h"

namespace {

constexpr std::ptrdiff_t Pixel = 4;

// Pixels first to last - 1 of a row.
struct Stretch {
    std::int64_t first = 0, last = 0;
    bool IsEmpty() const { return first >= last; }
};

Stretch Within(Stretch stretch, std::int64_t width) {
    return {std::clamp<std::int64_t>(stretch.first, 0, width), std::clamp<std::int64_t>(stretch.last, 0, width)};
}

// The frame's rows, one at a time. Only what pieces touch is drawn and cleared again, since of a frame around a large
// picture most of each row is clear.
class FrameRow {
  public:
    explicit FrameRow(const FramePlan& plan) : m_plan(plan), m_row(static_cast<std::size_t>(plan.width) * Pixel) {}

    // Draws row y; it holds until the next one.
    void Draw(int y) {
        for (const Stretch& stretch : m_touched)
            std::memset(At(stretch.first), 0, static_cast<std::size_t>((stretch.last - stretch.first) * Pixel));
        m_touched.clear();
        for (const FramePiece& piece : m_plan.pieces) Draw(piece, y);
        Merge();
    }
    // What the row's pieces cover, from left to right.
    const std::vector<Stretch>& Touched() const { return m_touched; }
    std::uint8_t* At(std::int64_t x) { return m_row.data() + x * Pixel; }

  private:
    void Draw(const FramePiece& piece, int y) {
        const std::int64_t down = y - piece.y;
        if (down < 0 || down >= piece.down * piece.height) return;
        const Stretch all = Within({piece.x, piece.x + piece.across * piece.width}, m_plan.width);
        if (all.IsEmpty()) return;
        const std::uint8_t* from =
            piece.pixels.Row(piece.top + static_cast<int>(down % piece.height)) + piece.left * Pixel;
        for (std::int64_t x = all.first; x < all.last;) {
            const std::int64_t in = (x - piece.x) % piece.width;
            const std::int64_t count = std::min(piece.width - in, all.last - x);
            std::memcpy(At(x), from + in * Pixel, static_cast<std::size_t>(count * Pixel));
            x += count;
        }
        m_touched.push_back(all);
    }

    void Merge() {
        std::sort(m_touched.begin(), m_touched.end(),
                  [](const Stretch& a, const Stretch& b) { return a.first < b.first; });
        std::size_t count = 0;
        for (const Stretch& stretch : m_touched) {
            if (count > 0 && stretch.first <= m_touched[count - 1].last)
                m_touched[count - 1].last = std::max(m_touched[count - 1].last, stretch.last);
            else
                m_touched[count++] = stretch;
        }
        m_touched.resize(count);
    }

    const FramePlan& m_plan;
    std::vector<std::uint8_t> m_row;
    std::vector<Stretch> m_touched;
};

// The whole frame at the result's size.
Bitmap StretchedFrame(const FramePlan& plan) {
    Bitmap frame(plan.width, plan.height);
    std::uint8_t* to = frame.MutablePixels();
    ForEachBand(plan.height, GrainOf(plan.width), [&](int first, int last) {
        FrameRow row(plan);
        for (int y = first; y < last; ++y) {
            row.Draw(y);
            std::memcpy(to + y * frame.Stride(), row.At(0), static_cast<std::size_t>(frame.Stride()));
        }
    });
    Bitmap stretched = Bitmap::Uninitialised(plan.resultWidth, plan.resultHeight);
    PC_Dsp::ResampleRect(frame, 0, 0, plan.width, plan.height, stretched, ResampleQuality::Best);
    return stretched;
}

void DrawTexture(const Bitmap& texture, int y, std::uint8_t* out, int width) {
    const std::uint8_t* from = texture.Row(y % texture.Height());
    for (int x = 0; x < width; x += texture.Width())
        std::memcpy(out + x * Pixel, from, static_cast<std::size_t>(std::min(texture.Width(), width - x)) * Pixel);
}

// The rows of the result.
class ResultRows {
  public:
    ResultRows(const FramePlan& plan, const Bitmap& picture)
        : m_plan(plan),
          m_picture(picture),
          m_across(Within({plan.pictureX, std::int64_t{plan.pictureX} + picture.Width()}, plan.resultWidth)) {
        if (plan.width != plan.resultWidth || plan.height != plan.resultHeight) m_stretched = StretchedFrame(plan);
    }

    void Draw(int y, FrameRow& frame, std::uint8_t* out) const {
        const std::uint8_t* picture = PictureAt(y);
        const std::size_t count = static_cast<std::size_t>(m_across.last - m_across.first);
        std::uint8_t* place = out + m_across.first * Pixel;
        DrawGround(y, out, picture != nullptr);
        if (picture && m_plan.texture) DrawPixelsOver(place, picture, static_cast<int>(count));
        if (picture && !m_plan.texture) std::memcpy(place, picture, count * Pixel);
        DrawFrame(y, frame, out);
        if (picture && m_plan.pictureOnTop) std::memcpy(place, picture, count * Pixel);
    }

  private:
    // The picture's pixels in this row; null where it has none.
    const std::uint8_t* PictureAt(int y) const {
        const std::int64_t row = std::int64_t{y} - m_plan.pictureY;
        if (row < 0 || row >= m_picture.Height() || m_across.IsEmpty()) return nullptr;
        return m_picture.Row(static_cast<int>(row)) + (m_across.first - m_plan.pictureX) * Pixel;
    }

    // Not where the picture replaces it.
    void DrawGround(int y, std::uint8_t* out, bool withPicture) const {
        const std::int64_t width = m_plan.resultWidth;
        if (m_plan.texture) return DrawTexture(m_plan.texture, y, out, m_plan.resultWidth);
        const Stretch kept = withPicture ? m_across : Stretch{width, width};
        std::memset(out, 0, static_cast<std::size_t>(kept.first * Pixel));
        std::memset(out + kept.last * Pixel, 0, static_cast<std::size_t>((width - kept.last) * Pixel));
    }

    void DrawFrame(int y, FrameRow& frame, std::uint8_t* out) const {
        if (m_stretched) return DrawPixelsOver(out, m_stretched.Row(y), m_plan.resultWidth);
        frame.Draw(y);
        for (const Stretch& stretch : frame.Touched())
            DrawPixelsOver(out + stretch.first * Pixel, frame.At(stretch.first),
                           static_cast<int>(stretch.last - stretch.first));
    }

    const FramePlan& m_plan;
    const Bitmap& m_picture;
    const Stretch m_across;
    Bitmap m_stretched;
};

// The end of the pixels from `first` on whose alpha `kind` likes.
template <class Kind>
int EndOfRun(const std::uint8_t* pixels, int first, int count, Kind kind) {
    while (first < count && kind(pixels[first * Pixel + 3])) ++first;
    return first;
}

}  // namespace

void DrawPixelsOver(std::uint8_t* pixels, const std::uint8_t* over, int count) {
    for (int x = 0; x < count;) {
        x = EndOfRun(over, x, count, [](int alpha) { return alpha == 0; });
        const int opaque = EndOfRun(over, x, count, [](int alpha) { return alpha == 255; });
        std::memcpy(pixels + x * Pixel, over + x * Pixel, static_cast<std::size_t>(opaque - x) * Pixel);
        x = EndOfRun(over, opaque, count, [](int alpha) { return alpha != 0 && alpha != 255; });
        // The library takes the layer as a pointer to bytes that it may write; it writes the picture only.
        if (x > opaque)
            CEffect::ChannelBlend_X(pixels + opaque * Pixel, const_cast<std::uint8_t*>(over) + opaque * Pixel,
                                    x - opaque, 1, BlendNormal, nullptr, 0, 100);
    }
}

Bitmap DrawFramePlan(const FramePlan& plan, const Bitmap& picture, const ProgressSpan& span) {
    const ResultRows rows(plan, picture);
    Bitmap result = Bitmap::Uninitialised(plan.resultWidth, plan.resultHeight);
    std::uint8_t* out = result.MutablePixels();
    const bool done = RunRows(span, plan.resultHeight, GrainOf(plan.resultWidth), [&](int first, int last) {
        FrameRow frame(plan);
        for (int y = first; y < last; ++y) rows.Draw(y, frame, out + y * result.Stride());
    });
    return done ? result : Bitmap();
}
