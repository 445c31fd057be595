// SPDX-License-Identifier: GPL-3.0-or-later
#include "CWarpField.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "Rows.h"
#include "Truncate.h"

namespace {

void LayRowOnWhite(const std::uint8_t* in, int width, std::uint8_t* out) {
    for (int x = 0; x < width; ++x, in += 4, out += 4) {
        const int alpha = in[3];
        for (int c = 0; c < 3; ++c)
            out[c] = static_cast<std::uint8_t>((in[c] * alpha + 255 * (255 - alpha) + 127) / 255);
        out[3] = 255;
    }
}

// The picture itself where it is opaque.
Bitmap OnWhite(const Bitmap& image) {
    if (image.IsOpaque()) return image;
    Bitmap flat = Bitmap::Uninitialised(image.Width(), image.Height());
    std::uint8_t* const to = flat.MutablePixels();
    ForEachBand(image.Height(), GrainOf(image.Width()), [&](int first, int last) {
        for (int y = first; y < last; ++y) LayRowOnWhite(image.Row(y), image.Width(), to + y * flat.Stride());
    });
    return flat;
}

std::vector<double> FallOffOf(int radius) {
    std::vector<double> fallOff(radius);
    for (int i = 0; i < radius; ++i)
        fallOff[i] = std::pow((std::cos(std::sqrt(double(i) / radius) * 3.141592653589793) + 1.0) * 0.5, 0.7);
    return fallOff;
}

// The columns of a row that lie in disc and picture, against the centre: none where first > last.
struct Span {
    int first, last;
};

// What a step about (x, y) reaches, against its centre and clipped to the picture.
struct Window {
    int left, right, top, bottom;
    std::int64_t square;  // of the radius

    Window(int x, int y, int radius, int width, int height)
        : left(-std::min(radius, x)),
          right(std::min(radius, width - x - 1)),
          top(-std::min(radius, y)),
          bottom(std::min(radius, height - y - 1)),
          square(std::max(std::int64_t{1}, std::int64_t{radius} * radius)) {}

    int Columns() const { return right - left + 1; }
    int Rows() const { return bottom - top + 1; }

    std::size_t Pairs() const { return std::size_t(Columns()) * Rows(); }

    // What of a row lies in the disc. There k < radius, which is xi^2 + yi^2 < R^2.
    Span RowSpan(int yi) const {
        const std::int64_t rest = square - std::int64_t{yi} * yi;
        if (rest <= 0) return {1, 0};
        auto reach = static_cast<std::int64_t>(std::sqrt(static_cast<double>(rest)));
        while (reach * reach >= rest) --reach;
        while ((reach + 1) * (reach + 1) < rest) ++reach;
        return {static_cast<int>(std::max<std::int64_t>(-reach, left)),
                static_cast<int>(std::min<std::int64_t>(reach, right))};
    }
};

int HeldRadius(int r) {
    return r < 2 ? 1 : std::min(r, CWarpField::MaxRadius);
}

// The parts of a stroke, none longer than half a radius: body(x, y, dx, dy) for each, with what it pushes by, which is
// the way back, since the field leads from the output to its source.
template <class Body>
void ForParts(int x1, int y1, int x0, int y0, int radius, const Body& body) {
    double dx = x1 - x0, dy = y1 - y0;
    const int parts = 1 + Truncate(2.0 * std::sqrt(dx * dx + dy * dy) / radius);
    dx /= parts;
    dy /= parts;
    double x = x0 + dx, y = y0 + dy;
    for (int i = 0; i < parts; ++i, x += dx, y += dy) body(Truncate(x), Truncate(y), -dx, -dy);
}

}  // namespace

float* CWarpField::Scratch::OfPairs(std::size_t count) {
    const std::size_t bytes = count * 2 * sizeof(float);
    if (bytes > m_count) {
        std::uint8_t* const larger = BlockAllocator::Take(bytes);
        BlockAllocator::Give(m_bytes, m_count);
        m_bytes = larger;
        m_count = bytes;
    }
    return reinterpret_cast<float*>(m_bytes);
}

void CWarpField::SetRadius(int r) {
    const int radius = HeldRadius(r);
    if (radius == m_radius) return;
    m_fallOff = FallOffOf(radius);
    m_radius = radius;
}

bool CWarpField::SetImage(const Bitmap* image, std::mutex* lock) {
    if (!image || !*image) return false;
    std::optional<std::scoped_lock<std::mutex>> held;
    if (lock) held.emplace(*lock);
    // All that can fail comes before anything changes. The output has pixels of its own at once, so that the first
    // step need not copy them.
    Bitmap source = OnWhite(*image), output = source.Clone();
    WarpTiles field(source.Width(), source.Height());
    std::vector<int> unsampled;
    unsampled.reserve(field.Count());
    std::vector<bool> isUnsampled(field.Count());
    m_source = std::move(source);
    m_output = std::move(output);
    m_field = std::move(field);
    m_unsampled = std::move(unsampled);
    m_isUnsampled = std::move(isUnsampled);
    return true;
}

bool CWarpField::Deform(int x1, int y1, int x0, int y0, int mode) {
    Settle();
    return Push(x1, y1, x0, y0, mode, Sampling::AtOnce);
}

bool CWarpField::DeformLater(int x1, int y1, int x0, int y0, int mode) {
    return Push(x1, y1, x0, y0, mode, Sampling::Later);
}

bool CWarpField::Push(int x1, int y1, int x0, int y0, int mode, Sampling sampling) {
    if (m_amount == 0.0 || !std::isfinite(m_amount) || m_radius == 0) return false;
    double amount = m_amount;
    if (amount < 0.0) {
        amount = -amount;
        mode = Shrink;
    }
    if (!Contains(x1, y1) || !Contains(x0, y0)) return false;
    if (mode < Grow || mode > SwirlRight) return false;
    m_activeAmount = amount;
    m_activeRadius = m_radius;
    m_mode = mode;
    if (mode != Move) {
        Step(m_output, x1, y1, amount, amount, sampling);
        return true;
    }
    ForParts(x1, y1, x0, y0, m_radius,
             [&](int x, int y, double dx, double dy) { Step(m_output, x, y, dx, dy, sampling); });
    return true;
}

void CWarpField::Reserve(int x1, int y1, int x0, int y0, int mode, int radius) {
    if (!Contains(x1, y1) || !Contains(x0, y0)) return;
    m_output.MutablePixels();
    const int held = HeldRadius(radius);
    const auto reserve = [&](int x, int y, double, double) {
        const Window window(x, y, held, Width(), Height());
        m_field.Open(x + window.left, y + window.top, x + window.right, y + window.bottom);
        m_scratch.OfPairs(window.Pairs());
    };
    if (mode == Move)
        ForParts(x1, y1, x0, y0, held, reserve);
    else
        reserve(x1, y1, 0.0, 0.0);
}

void CWarpField::ApplyAt(Bitmap& output, int x, int y, double dx, double dy) {
    Settle();
    Step(output, x, y, dx, dy, Sampling::AtOnce);
}

WarpStep CWarpField::PlanFor(std::uint8_t* output) const {
    WarpStep step;
    step.field = m_field.View();
    step.source = m_source.Pixels();
    step.output = output;
    step.width = Width();
    step.height = Height();
    step.bilinear = m_bilinear;
    return step;
}

void CWarpField::Step(Bitmap& output, int x, int y, double dx, double dy, Sampling sampling) {
    if (m_radius == 0 || !Contains(x, y)) return;
    const Window window(x, y, m_activeRadius, Width(), Height());
    // All that can fail comes before anything changes.
    m_field.Open(x + window.left, y + window.top, x + window.right, y + window.bottom);
    float* const scratch = m_scratch.OfPairs(window.Pairs());
    std::uint8_t* const pixels = output.MutablePixels();
    WarpStep step = PlanFor(pixels);
    step.x = x;
    step.y = y;
    step.mode = m_mode;
    step.deferred = sampling == Sampling::Later;
    step.amount = m_activeAmount;
    step.dx = dx;
    step.dy = dy;
    step.border = std::max(1.0, m_activeRadius * 0.2);
    step.fallOff = m_fallOff.data();
    step.length = m_radius;
    step.square = static_cast<double>(window.square);
    const auto forRows = [&](const auto& body) {
        ForEachBand(window.Rows(), GrainOf(window.Columns()), [&](int first, int last) {
            for (int row = first; row < last; ++row) {
                const Span span = window.RowSpan(window.top + row);
                if (span.first <= span.last)
                    body(window.top + row, span, scratch + std::ptrdiff_t{2} * window.Columns() * row);
            }
        });
    };
    forRows(
        [&](int yi, Span span, float* pairs) { WarpKernelsInUse().warpRow(step, yi, span.first, span.last, pairs); });
    // Only now, so that every pixel has read the field as it was before the step.
    forRows([&](int yi, Span span, const float* pairs) {
        m_field.Write(x + span.first, y + yi, span.last - span.first + 1, pairs);
    });
    if (step.deferred) MarkUnsampled(x + window.left, y + window.top, x + window.right, y + window.bottom);
}

void CWarpField::MarkUnsampled(int left, int top, int right, int bottom) {
    for (int row = top >> WarpTileShift; row <= bottom >> WarpTileShift; ++row)
        for (int column = left >> WarpTileShift; column <= right >> WarpTileShift; ++column) {
            const int tile = row * m_field.Columns() + column;
            if (m_isUnsampled[tile]) continue;
            m_isUnsampled[tile] = true;
            m_unsampled.push_back(tile);
        }
}

void CWarpField::Settle() {
    if (m_unsampled.empty()) return;
    const WarpStep step = PlanFor(m_output.MutablePixels());
    ForEachBand(static_cast<int>(m_unsampled.size()), 1, [&](int first, int last) {
        for (int i = first; i < last; ++i) SampleTile(step, m_unsampled[i]);
    });
    for (const int tile : m_unsampled) m_isUnsampled[tile] = false;
    m_unsampled.clear();
}

void CWarpField::SampleTile(const WarpStep& step, int tile) const {
    const int left = tile % m_field.Columns() * WarpTileSide, top = tile / m_field.Columns() * WarpTileSide;
    const int bottom = std::min(top + WarpTileSide, Height()), columns = std::min(WarpTileSide, Width() - left);
    for (int y = top; y < bottom; ++y) WarpKernelsInUse().sampleRow(step, y, left, columns);
}

void CWarpField::SampleField(double x, double y, double* dx, double* dy) const {
    *dx = *dy = 0.0;
    if (!(x >= 0.0 && x < Width() - 1 && y >= 0.0 && y < Height() - 1)) return;
    const int ix = Truncate(x), iy = Truncate(y);
    const double tx = x - ix, ty = y - iy;
    const float *const a = FieldAt(ix, iy), *const b = FieldAt(ix + 1, iy);
    const float *const c = FieldAt(ix, iy + 1), *const d = FieldAt(ix + 1, iy + 1);
    const auto mix = [](double from, double to, double part) { return (to - from) * part + from; };
    *dx = mix(mix(a[0], b[0], tx), mix(c[0], d[0], tx), ty);
    *dy = mix(mix(a[1], b[1], tx), mix(c[1], d[1], tx), ty);
}
