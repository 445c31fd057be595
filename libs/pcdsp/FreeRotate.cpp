// SPDX-License-Identifier: GPL-3.0-or-later
#include "FreeRotate.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "CubicTaps.h"
#include "Kernels.h"
#include "Parallel.h"

namespace {

// Result squares of this side keep what they read in the first cache.
constexpr int Tile = 64;

// What is left transparent: white, for readers that take no notice of alpha.
constexpr std::uint32_t Clear = 0x00FFFFFFu;

// Places in source pixels are counted in 1/2^32, so that a row's pixels do not depend on where the row is begun.
constexpr double Unit = 4294967296.0;
std::int64_t ToPlace(double pixels) {
    return static_cast<std::int64_t>(std::llround(pixels * Unit));
}
double ToPixels(std::int64_t place) {
    return static_cast<double>(place) / Unit;
}

const RotateWeights& Weights() {
    static const RotateWeights weights = [] {
        RotateWeights w;
        for (int phase = 0; phase < 256; ++phase) {
            const auto taps = CubicTaps(phase / 256.0);
            for (int n = 0; n < 4; ++n) {
                w.across[4 * phase + n] = taps[n];
                std::int16_t* down = w.down + 16 * phase + 8 * (n & 1) + n / 2;
                for (int i = 0; i < 4; ++i) down[2 * i] = taps[n];
            }
        }
        return w;
    }();
    return weights;
}

// The part of a result pixel, a square that is turned against the source, on the inner side of a straight border: the
// square seen along the border is a trapezoid, whose integral this is.
class BorderCoverage {
  public:
    BorderCoverage(double sine, double cosine)
        : m_foot(0.5 * (std::abs(cosine) + std::abs(sine))), m_top(0.5 * std::abs(std::abs(cosine) - std::abs(sine))) {}

    // How far a pixel's centre may lie outside and still be touched.
    double Reach() const { return m_foot; }
    // `inside` is the distance from the border, positive inside.
    double Of(double inside) const {
        if (inside < 0.0) return 1.0 - Of(-inside);
        if (inside <= m_top) return 0.5 + inside / (m_foot + m_top);
        if (inside >= m_foot) return 1.0;
        const double rest = m_foot - inside;
        return 1.0 - rest * rest / (2.0 * (m_foot - m_top) * (m_foot + m_top));
    }
    // Between two parallel borders, at 0 and `length`.
    double Between(double place, double length) const { return Of(place) + Of(length - place) - 1.0; }

  private:
    double m_foot, m_top;
};

struct Range {
    int first = 0, last = 0;  // to last - 1
};

// What lies in both; within `b` even where that is nothing.
Range Cut(const Range& a, const Range& b) {
    const int first = std::clamp(a.first, b.first, b.last);
    return {first, std::clamp(a.last, first, b.last)};
}

std::int64_t CeilDiv(std::int64_t a, std::int64_t b) {
    return a / b + (a % b > 0 ? 1 : 0);
}

// The x of 0 .. count - 1 at which low <= start + x * step < high.
Range WhereBetween(std::int64_t start, std::int64_t step, std::int64_t low, std::int64_t high, int count) {
    if (step < 0) return WhereBetween(-start, -step, 1 - high, 1 - low, count);
    if (high <= low) return {};
    if (step == 0) return start >= low && start < high ? Range{0, count} : Range{};
    const auto held = [&](std::int64_t x) { return static_cast<int>(std::clamp<std::int64_t>(x, 0, count)); };
    return {held(CeilDiv(low - start, step)), held(CeilDiv(high - start, step))};
}

struct Direction {
    explicit Direction(int degrees)
        : sine(std::sin(degrees * std::numbers::pi / 180.0)), cosine(std::cos(degrees * std::numbers::pi / 180.0)) {}
    double sine, cosine;
};

class Rotation {
  public:
    // A result pixel is as large as `scale` source pixels.
    Rotation(const Bitmap& source, const Direction& turn, double scale, Bitmap& result)
        : m_source(source),
          m_coverage(turn.sine * scale, turn.cosine * scale),
          m_width(result.Width()),
          m_height(result.Height()),
          m_out(result.MutablePixels()),
          m_sine(turn.sine * scale),
          m_cosine(turn.cosine * scale),
          m_stepX(ToPlace(m_cosine)),
          m_stepY(ToPlace(-m_sine)) {}

    // Result rows first to last - 1, at most Tile of them.
    void MakeRows(int first, int last) const {
        std::array<Row, Tile> rows;
        for (int y = first; y < last; ++y) rows[y - first] = RowOf(y);
        for (int x = 0; x < m_width; x += Tile)
            for (int y = first; y < last; ++y)
                MakeRun(rows[y - first], {x, std::min(x + Tile, m_width)}, m_out + std::ptrdiff_t{4} * m_width * y);
    }

  private:
    // Places of the centre of a row's first pixel, and where the row touches the source and has all its taps there.
    struct Row {
        std::int64_t x = 0, y = 0;
        Range touched, inner;
    };

    Row RowOf(int y) const {
        const double u = 0.5 - 0.5 * m_width, v = y + 0.5 - 0.5 * m_height;
        const int width = m_source.Width(), height = m_source.Height();
        Row row;
        row.x = ToPlace(u * m_cosine + v * m_sine + 0.5 * width);
        row.y = ToPlace(v * m_cosine - u * m_sine + 0.5 * height);
        const auto between = [&](double low, double right, double bottom) {
            return Cut(WhereBetween(row.x, m_stepX, ToPlace(low), ToPlace(right), m_width),
                       WhereBetween(row.y, m_stepY, ToPlace(low), ToPlace(bottom), m_width));
        };
        const double reach = m_coverage.Reach();
        row.touched = between(-reach, width + reach, height + reach);
        // Half a step of the weight table is added when a place is looked up there.
        const double hair = 1.0 / 512;
        row.inner = Cut(row.touched, between(1.5 - hair, width - 1.5 - hair, height - 1.5 - hair));
        return row;
    }

    RotateRun RunAt(const Row& row, int x) const {
        // From the centre to the first tap, and to the nearest place of the weight table.
        const std::int64_t shift = ToPlace(-1.5 + 1.0 / 512);
        return {m_source.Pixels(), m_source.Stride(), row.x + x * m_stepX + shift, row.y + x * m_stepY + shift, m_stepX,
                m_stepY,           &Weights()};
    }

    void MakeRun(const Row& row, const Range& part, std::uint8_t* line) const {
        const Range touched = Cut(row.touched, part), inner = Cut(row.inner, touched);
        auto* words = reinterpret_cast<std::uint32_t*>(line);
        std::fill(words + part.first, words + touched.first, Clear);
        std::fill(words + touched.last, words + part.last, Clear);
        for (int x = touched.first; x < inner.first; ++x) MakeBorder(row, x, line + std::ptrdiff_t{4} * x);
        for (int x = inner.last; x < touched.last; ++x) MakeBorder(row, x, line + std::ptrdiff_t{4} * x);
        if (inner.first == inner.last) return;
        const RotateRun run = RunAt(row, inner.first);
        Sample(run, inner.last - inner.first, line + std::ptrdiff_t{4} * inner.first);
    }

    static void Sample(const RotateRun& run, int count, std::uint8_t* out) {
        if (Kernels().rotateOpaque(run, count, out) >> 24 != 255) Kernels().rotateTranslucent(run, count, out);
    }

    // A pixel near the source's border, which repeats outwards; what lies outside takes from alpha alone, so that no
    // colour but the picture's own shows.
    void MakeBorder(const Row& row, int x, std::uint8_t* out) const {
        RotateRun run = RunAt(row, x);
        const int width = m_source.Width(), height = m_source.Height();
        std::uint32_t block[16];
        for (int n = 0; n < 16; ++n) {
            const std::int64_t column = std::clamp<std::int64_t>((run.x >> 32) + n % 4, 0, width - 1);
            const std::int64_t line = std::clamp<std::int64_t>((run.y >> 32) + n / 4, 0, height - 1);
            block[n] = reinterpret_cast<const std::uint32_t*>(m_source.Row(static_cast<int>(line)))[column];
        }
        run.pixels = reinterpret_cast<const std::uint8_t*>(block);
        run.stride = 16;
        run.x &= 0xFFFFFFFF;
        run.y &= 0xFFFFFFFF;
        Sample(run, 1, out);
        const double covered = m_coverage.Between(ToPixels(row.x + x * m_stepX), width) *
                               m_coverage.Between(ToPixels(row.y + x * m_stepY), height);
        // Rounded to the nearest level, as the kernels do.
        out[3] = static_cast<std::uint8_t>(out[3] * std::clamp(covered, 0.0, 1.0) + 0.5);
        if (out[3] == 0) std::fill_n(out, 3, std::uint8_t{255});
    }

    const Bitmap& m_source;
    BorderCoverage m_coverage;
    int m_width, m_height;
    std::uint8_t* m_out;
    double m_sine, m_cosine;
    std::int64_t m_stepX, m_stepY;
};

// A side of the bounds; a hair less than whole does not open another pixel.
double Side(double along, double across, const Direction& turn) {
    return std::ceil(along * std::abs(turn.cosine) + across * std::abs(turn.sine) - 1e-6);
}

void RotateOnto(const Bitmap& source, int degrees, double scale, Bitmap& result) {
    const Rotation rotation(source, Direction(degrees), scale, result);
    const int height = result.Height();
    ForEachBand((height + Tile - 1) / Tile, 1, [&](int first, int last) {
        for (int band = first; band < last; ++band) rotation.MakeRows(band * Tile, std::min(height, (band + 1) * Tile));
    });
}

}  // namespace

RotatedBounds BoundsOf(int width, int height, int degrees) {
    const Direction turn(degrees);
    return {Side(width, height, turn), Side(height, width, turn)};
}

Bitmap FreelyRotated(const Bitmap& source, int degrees) {
    const RotatedBounds bounds = BoundsOf(source.Width(), source.Height(), degrees);
    if (!Bitmap::Allowed(static_cast<std::int64_t>(bounds.width), static_cast<std::int64_t>(bounds.height))) return {};
    Bitmap result = Bitmap::Uninitialised(static_cast<int>(bounds.width), static_cast<int>(bounds.height));
    RotateOnto(source, degrees, 1.0, result);
    return result;
}

Bitmap FreelyRotated(const Bitmap& source, int degrees, double scale, int width, int height) {
    Bitmap result = Bitmap::Uninitialised(width, height);
    RotateOnto(source, degrees, scale, result);
    return result;
}
