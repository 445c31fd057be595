// SPDX-License-Identifier: GPL-3.0-or-later
#include "UsmSharpen.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "Kernels.h"
#include "Rows.h"
#include "Truncate.h"

namespace {

constexpr int BandRows = 96;
constexpr int Slack = 16;  // a kernel reads and writes whole groups behind the end of a row
constexpr int MaxHalf = 15;
// Levels by which a sharpened pixel may leave the range of its 3 x 3 neighbourhood.
constexpr float Halo = 10.0f;

struct Blur {
    int half = 1;
    std::array<float, MaxHalf + 1> weights{};

    explicit Blur(double sigma) : half(std::clamp(Truncate(std::ceil(2.6 * sigma)), 1, MaxHalf)) {
        double sum = 0.0;
        for (int i = 0; i <= half; ++i) sum += (i ? 2.0 : 1.0) * std::exp(-0.5 * i * i / (sigma * sigma));
        for (int i = 0; i <= half; ++i) weights[i] = static_cast<float>(std::exp(-0.5 * i * i / (sigma * sigma)) / sum);
    }
};

// Rows of luma, each repeated outwards by `half` values at both ends.
class LumaRows {
  public:
    LumaRows(int rows, int width, int half) : m_width(width), m_half(half), m_values(std::size_t(rows) * Pitch()) {}

    float* Row(int index) { return m_values.data() + index * Pitch(); }
    void Fill(int index, const std::uint8_t* pixels) {
        float* row = Row(index);
        Kernels().lumaRow(pixels, m_width, row + m_half);
        std::fill(row, row + m_half, row[m_half]);
        std::fill(row + m_half + m_width, row + Pitch(), row[m_half + m_width - 1]);
    }

  private:
    std::ptrdiff_t Pitch() const { return m_width + 2 * m_half + Slack; }

    int m_width;
    int m_half;
    std::vector<float> m_values;
};

// A picture is sharpened in place by bands of fixed height. What a band needs of its neighbours' rows is taken before
// any band begins, so that neither the order nor the number of threads shows.
class Sharpener {
  public:
    Sharpener(std::uint8_t* pixels, int width, int height, double radius, double amount)
        : m_pixels(pixels),
          m_width(width),
          m_height(height),
          m_amount(static_cast<float>(amount)),
          m_blur(radius),
          m_borders((Bands() - 1) * 2 * m_blur.half, width, m_blur.half) {
        ForEachBand(Bands() - 1, 1, [&](int first, int last) {
            for (int border = first; border < last; ++border)
                for (int i = 0; i < 2 * m_blur.half; ++i)
                    m_borders.Fill(border * 2 * m_blur.half + i, Pixels(BorderRow(border, i)));
        });
    }

    int Bands() const { return (m_height + BandRows - 1) / BandRows; }

    void Run(int band) {
        const int half = m_blur.half, count = 2 * half + 1;
        const int first = band * BandRows, last = std::min(m_height, first + BandRows);
        LumaRows ring(count, m_width, half);
        std::vector<float> scratch(3 * std::size_t(m_width + 2 * half + Slack));
        // Luma of row y, filled ahead of the row that is changed; border rows come from what was taken before.
        const auto source = [&](int y) -> const float* {
            y = std::clamp(y, 0, m_height - 1);
            if (y < first) return m_borders.Row((band - 1) * 2 * half + (y - first + half));
            if (y >= last) return m_borders.Row(band * 2 * half + half + (y - last));
            return ring.Row(y % count);
        };
        for (int y = first; y < std::min(last, first + half); ++y) ring.Fill(y % count, Pixels(y));
        std::array<const float*, 2 * MaxHalf + 1> rows;
        UsmRow row;
        row.luma = rows.data();
        row.half = half;
        row.weights = m_blur.weights.data();
        row.amount = m_amount;
        row.halo = Halo;
        row.scratch = scratch.data();
        for (int y = first; y < last; ++y) {
            if (y + half < last) ring.Fill((y + half) % count, Pixels(y + half));
            for (int i = 0; i < count; ++i) rows[i] = source(y - half + i);
            Kernels().usmRow(Pixels(y), m_width, row);
        }
    }

  private:
    std::uint8_t* Pixels(int y) const { return m_pixels + std::ptrdiff_t{4} * m_width * y; }
    // Row i of the 2 * half rows about the lower end of band `border`; a short last band repeats the last row.
    int BorderRow(int border, int i) const {
        return std::clamp((border + 1) * BandRows - m_blur.half + i, 0, m_height - 1);
    }

    std::uint8_t* m_pixels;
    int m_width, m_height;
    float m_amount;
    Blur m_blur;
    LumaRows m_borders;
};

}  // namespace

bool UsmSharpen(std::uint8_t* pixels, int width, int height, double radius, double amount, const ProgressSpan& span) {
    Sharpener sharpener(pixels, width, height, std::clamp(radius, 0.3, 5.0), std::clamp(amount, -1.0, 20.0));
    return RunRows(span, sharpener.Bands(), 1, [&](int first, int last) {
        for (int band = first; band < last; ++band) sharpener.Run(band);
    });
}
