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

// What is sharpened, and where it goes: the same place, or another.
struct Job {
    const std::uint8_t* from;
    std::uint8_t* to;
    int width, height;
    double radius, amount;

    bool IsInPlace() const { return from == to; }
    const std::uint8_t* From(int y) const { return from + std::ptrdiff_t{4} * width * y; }
    std::uint8_t* To(int y) const { return to + std::ptrdiff_t{4} * width * y; }
};

// A picture is sharpened by bands of fixed height. What a band needs of its neighbours' rows in place is taken before
// any band begins, so that neither the order nor the number of threads shows.
class Sharpener {
  public:
    explicit Sharpener(const Job& job)
        : m_job(job),
          m_blur(std::clamp(job.radius, 0.3, 5.0)),
          m_borders(job.IsInPlace() ? (Bands() - 1) * 2 * m_blur.half : 0, job.width, m_blur.half) {
        if (!job.IsInPlace()) return;
        ForEachBand(Bands() - 1, 1, [&](int first, int last) {
            for (int border = first; border < last; ++border)
                for (int i = 0; i < 2 * m_blur.half; ++i)
                    m_borders.Fill(border * 2 * m_blur.half + i, m_job.From(BorderRow(border, i)));
        });
    }

    int Bands() const { return (m_job.height + BandRows - 1) / BandRows; }

    // `finish` is called with each row that is done; it may be empty.
    void Run(int band, const std::function<void(std::uint8_t*)>& finish) {
        const int half = m_blur.half, count = 2 * half + 1;
        const int first = band * BandRows, last = std::min(m_job.height, first + BandRows);
        // The rows whose luma is read as they are; those before and behind were taken before.
        const int begin = m_job.IsInPlace() ? first : std::max(0, first - half);
        const int end = m_job.IsInPlace() ? last : m_job.height;
        LumaRows ring(count, m_job.width, half);
        std::vector<float> scratch(3 * std::size_t(m_job.width + 2 * half + Slack));
        // Luma of row y, filled ahead of the row that is changed.
        const auto source = [&](int y) -> const float* {
            y = std::clamp(y, 0, m_job.height - 1);
            if (y < begin) return m_borders.Row((band - 1) * 2 * half + (y - first + half));
            if (y >= end) return m_borders.Row(band * 2 * half + half + (y - last));
            return ring.Row(y % count);
        };
        for (int y = begin; y < std::min(end, first + half); ++y) ring.Fill(y % count, m_job.From(y));
        std::array<const float*, 2 * MaxHalf + 1> rows;
        UsmRow row;
        row.luma = rows.data();
        row.half = half;
        row.weights = m_blur.weights.data();
        row.amount = static_cast<float>(std::clamp(m_job.amount, -1.0, 20.0));
        row.halo = Halo;
        row.scratch = scratch.data();
        for (int y = first; y < last; ++y) {
            if (y + half < end) ring.Fill((y + half) % count, m_job.From(y + half));
            for (int i = 0; i < count; ++i) rows[i] = source(y - half + i);
            if (!m_job.IsInPlace()) std::copy_n(m_job.From(y), std::ptrdiff_t{4} * m_job.width, m_job.To(y));
            Kernels().usmRow(m_job.To(y), m_job.width, row);
            if (finish) finish(m_job.To(y));
        }
    }

  private:
    // Row i of the 2 * half rows about the lower end of band `border`; a short last band repeats the last row.
    int BorderRow(int border, int i) const {
        return std::clamp((border + 1) * BandRows - m_blur.half + i, 0, m_job.height - 1);
    }

    const Job m_job;
    const Blur m_blur;
    LumaRows m_borders;
};

bool Sharpen(const Job& job, const std::function<void(std::uint8_t*)>& finish, const ProgressSpan& span) {
    Sharpener sharpener(job);
    return RunRows(span, sharpener.Bands(), 1, [&](int first, int last) {
        for (int band = first; band < last; ++band) sharpener.Run(band, finish);
    });
}

}  // namespace

bool UsmSharpen(std::uint8_t* pixels, int width, int height, double radius, double amount, const ProgressSpan& span) {
    return Sharpen({pixels, pixels, width, height, radius, amount}, {}, span);
}

bool UsmSharpenInto(const std::uint8_t* source, std::uint8_t* target, int width, int height, double radius,
                    double amount, const std::function<void(std::uint8_t* row)>& finish, const ProgressSpan& span) {
    return Sharpen({source, target, width, height, radius, amount}, finish, span);
}
