// SPDX-License-Identifier: GPL-3.0-or-later
#include "SkinSmooth.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "BlockAllocator.h"
#include "Kernels.h"
#include "RangeGrid.h"
#include "Rows.h"

// How skin is smoothed. All work happens on a reduced copy, and what comes out is a smooth correction that is added to
// the picture; the finest grain is therefore never touched.
//
//   copy    mean of factor x factor pixels, at most MostCells of them
//   fine    copy after a Gaussian that takes out the grain
//   even    mean of `fine` over about a fiftieth of the face's width, over pixels of like value only (RangeGrid): other
//           pixels of the same skin, not the lashes beside it
//   correction = strength * mask of edges * (even - fine), and a part of (fine - copy) to soften the shadows of pores
//
// Lengths follow the face, whose width is judged from how much of the picture has the colour of skin.

namespace {

constexpr int MostCells = 1800000;
constexpr int MostFactor = 16;  // 256 bytes add up to less than 65536
constexpr int Slack = 16;       // a kernel reads and writes whole groups behind the end of a row
constexpr int MaxHalf = 16;

double Env(const char* name, double otherwise) {
    const char* text = std::getenv(name);
    return text ? std::atof(text) : otherwise;
}

// Planes of floats of one size, from the allocator of bitmaps, since fresh pages cost more than the work.
class Planes {
  public:
    Planes(int count, int width, int height)
        : m_pitch((width + Slack + 15) / 16 * 16),
          m_height(height),
          m_bytes(std::size_t(count) * m_pitch * height * sizeof(float)),
          m_values(reinterpret_cast<float*>(BlockAllocator::Take(m_bytes))) {}
    ~Planes() { BlockAllocator::Give(reinterpret_cast<std::uint8_t*>(m_values), m_bytes); }
    Planes(const Planes&) = delete;
    Planes& operator=(const Planes&) = delete;

    float* Row(int plane, int y) { return m_values + (std::ptrdiff_t{plane} * m_height + y) * m_pitch; }

  private:
    std::ptrdiff_t m_pitch;
    int m_height;
    std::size_t m_bytes;
    float* m_values;
};

struct Gaussian {
    int half = 1;
    std::array<float, MaxHalf + 1> weights{};

    explicit Gaussian(double sigma) : half(std::clamp(static_cast<int>(std::ceil(2.6 * sigma)), 1, MaxHalf)) {
        double sum = 0.0;
        for (int i = 0; i <= half; ++i) sum += (i ? 2.0 : 1.0) * std::exp(-0.5 * i * i / (sigma * sigma));
        for (int i = 0; i <= half; ++i) weights[i] = static_cast<float>(std::exp(-0.5 * i * i / (sigma * sigma)) / sum);
    }
};

class SkinSmoother {
  public:
    SkinSmoother(std::uint8_t* pixels, int width, int height, float sigma, const std::uint8_t* mask)
        : m_pixels(pixels),
          m_width(width),
          m_height(height),
          m_mask(mask),
          m_sigma(sigma),
          m_factor(FactorOf(width, height)),
          m_columns((width + m_factor - 1) / m_factor),
          m_rows((height + m_factor - 1) / m_factor),
          m_copy(Colours, m_columns, m_rows),
          m_fine(Colours + 1, m_columns, m_rows) {}

    void MakeCopy();
    void MakeFine();
    void MakeCorrection();
    bool Correct(const ProgressSpan& span);

  private:
    static constexpr int Colours = 3;
    static constexpr int Guide = 3;  // the plane of m_fine behind its colours
    static int FactorOf(int width, int height) {
        const double cells = double(width) * height / MostCells;
        return std::clamp(static_cast<int>(std::ceil(std::sqrt(cells))), 1, MostFactor);
    }
    double FaceWidth();
    const std::uint8_t* Pixels(int y) const { return m_pixels + std::ptrdiff_t{4} * m_width * y; }

    std::uint8_t* m_pixels;
    int m_width, m_height;
    const std::uint8_t* m_mask;
    float m_sigma;
    int m_factor;
    int m_columns, m_rows;
    double m_face = 1.0;
    float m_range = 0.0f;
    float m_binLevels = 1.0f;
    Planes m_copy;  // the copy, later the correction
    Planes m_fine;
};

void SkinSmoother::MakeCopy() {
    ForEachBand(m_rows, GrainOf(m_width * m_factor), [&](int first, int last) {
        std::vector<std::uint16_t> sums(std::size_t{4} * m_width);
        for (int y = first; y < last; ++y) {
            const int top = y * m_factor, bottom = std::min(top + m_factor, m_height);
            std::fill(sums.begin(), sums.end(), std::uint16_t{0});
            for (int row = top; row < bottom; ++row) Kernels().addRow(Pixels(row), 4 * m_width, sums.data());
            float* const red = m_copy.Row(0, y);
            float* const green = m_copy.Row(1, y);
            float* const blue = m_copy.Row(2, y);
            for (int x = 0; x < m_columns; ++x) {
                const int left = x * m_factor, right = std::min(left + m_factor, m_width);
                unsigned b = 0, g = 0, r = 0;
                for (int i = left; i < right; ++i) {
                    b += sums[4 * i];
                    g += sums[4 * i + 1];
                    r += sums[4 * i + 2];
                }
                const float share = 1.0f / static_cast<float>((right - left) * (bottom - top));
                red[x] = static_cast<float>(r) * share;
                green[x] = static_cast<float>(g) * share;
                blue[x] = static_cast<float>(b) * share;
            }
        }
    });
    m_face = FaceWidth();
}

// The width of the face in cells of the copy: half way between that of a usual portrait and what the amount of skin in
// the picture says, so that neither a crop nor skin-coloured clothes lead far astray.
double SkinSmoother::FaceWidth() {
    const int step = std::max(1, std::max(m_columns, m_rows) / 256);
    const int columns = (m_columns - 1) / step + 1;
    std::vector<std::uint8_t> row(std::size_t{4} * columns);
    std::vector<float> skin(columns);
    double sum = 0.0;
    for (int y = 0; y < m_rows; y += step) {
        for (int x = 0; x < columns; ++x)
            for (int c = 0; c < 3; ++c)
                row[4 * x + c] = static_cast<std::uint8_t>(m_copy.Row(2 - c, y)[x * step] + 0.5f);
        Kernels().skinRow(row.data(), columns, skin.data());
        // Hair has the colour of skin, but not its evenness.
        const float* const here = m_copy.Row(1, y);
        const float* const below = m_copy.Row(1, std::min(y + step, m_rows - 1));
        for (int i = 0; i < columns; ++i) {
            const int x = i * step, next = std::min(x + step, m_columns - 1);
            const float across = here[next] - here[x], down = below[x] - here[x];
            sum += skin[i] / (1.0f + (across * across + down * down) * 0.01f);
        }
    }
    const double side = std::sqrt(double(m_columns) * m_rows);
    return 0.5 * (0.42 * side + 1.1 * std::sqrt(sum) * step);
}

void SkinSmoother::MakeFine() {
    const Gaussian blur(std::max(0.3, Env("SK_FINE", 0.0027) * m_face));
    const int half = blur.half;
    // Shadows count more than lights, as the eye has it: a blotch is a part of the light that falls on it.
    std::array<float, 1025> guide;
    const float knee = 40.0f, range = static_cast<float>(Env("SK_RANGE", 11.0) + Env("SK_RANGES", 2.0) * m_sigma);
    // One bin is `range` levels at level 180.
    const float scale = (180.0f + knee) / range;
    for (int i = 0; i <= 1024; ++i) guide[i] = scale * std::log(1.0f + 0.25f * static_cast<float>(i) / knee);
    m_range = guide[1024] + 1.0f;
    m_binLevels = range;
    ForEachBand(m_rows, GrainOf(m_columns), [&](int first, int last) {
        std::vector<float> line(m_columns + 2 * half + Slack);
        std::array<const float*, 2 * MaxHalf + 1> rows;
        GaussianTaps taps{rows.data(), blur.weights.data(), half};
        for (int y = first; y < last; ++y) {
            for (int c = 0; c < Colours; ++c) {
                for (int k = -half; k <= half; ++k) rows[k + half] = m_copy.Row(c, std::clamp(y + k, 0, m_rows - 1));
                float* const middle = line.data() + half;
                Kernels().gaussianRow(taps, m_columns, middle);
                std::fill(line.data(), middle, middle[0]);
                std::fill(middle + m_columns, middle + m_columns + half, middle[m_columns - 1]);
                for (int k = -half; k <= half; ++k) rows[k + half] = middle + k;
                Kernels().gaussianRow(taps, m_columns, m_fine.Row(c, y));
            }
            const float* const green = m_fine.Row(1, y);
            float* const out = m_fine.Row(Guide, y);
            for (int x = 0; x < m_columns; ++x)
                out[x] = guide[static_cast<int>(std::clamp(green[x], 0.0f, 255.0f) * 4.0f + 0.5f)];
        }
    });
}

void SkinSmoother::MakeCorrection() {
    const float most = static_cast<float>(std::sqrt(double(m_columns) * m_rows / 60000.0));
    const float side = std::max({static_cast<float>(Env("SK_SIDE", 0.023) * m_face), most, 1.0f});
    RangeGrid grid(m_columns, m_rows, side, m_range);
    ForEachBand(grid.CellRows(), 1, [&](int first, int last) {
        for (int row = first; row < last; ++row)
            for (int y = grid.FirstRowOf(row); y < grid.FirstRowOf(row + 1); ++y)
                grid.Add(row, m_fine.Row(Guide, y), m_fine.Row(0, y), m_fine.Row(1, y), m_fine.Row(2, y));
    });
    grid.Blur();
    const float strength = 1.0f - std::exp(-static_cast<float>(Env("SK_K", 0.7)) * m_sigma);
    const float pores = strength * static_cast<float>(Env("SK_PORES", 0.3));
    const int reach = std::max(1, static_cast<int>(std::lround(Env("SK_REACH", 0.008) * m_face)));
    const float edge = static_cast<float>(m_binLevels / Env("SK_EDGE", 30.0));
    ForEachBand(m_rows, GrainOf(m_columns), [&](int first, int last) {
        RangeGrid::Row mean(grid);
        for (int y = first; y < last; ++y) {
            mean.MoveTo(y);
            const float* const guide = m_fine.Row(Guide, y);
            const float* const above = m_fine.Row(Guide, std::max(y - reach, 0));
            const float* const below = m_fine.Row(Guide, std::min(y + reach, m_rows - 1));
            for (int x = 0; x < m_columns; ++x) {
                const float across = guide[std::min(x + reach, m_columns - 1)] - guide[std::max(x - reach, 0)];
                const float down = below[x] - above[x];
                const float steep = (across * across + down * down) * edge * edge;
                const float flat = 1.0f / (1.0f + steep * steep);
                const RangeGrid::Cell even = mean.Read(x, guide[x]);
                const float scale = 1.0f / even[0];
                for (int c = 0; c < Colours; ++c) {
                    const float fine = m_fine.Row(c, y)[x];
                    float& copy = m_copy.Row(c, y)[x];
                    copy = flat * (strength * (even[c + 1] * scale - fine) + pores * (fine - copy));
                }
            }
        }
    });
}

// Where each column of the picture lies between two cells.
struct Columns {
    std::vector<int> index;
    std::vector<float> part;

    Columns(int width, int factor, int cells) : index(width + Slack), part(width + Slack) {
        for (int x = 0; x < width; ++x) {
            const float at = std::clamp((static_cast<float>(x) - 0.5f * static_cast<float>(factor - 1)) /
                                            static_cast<float>(factor),
                                        0.0f, static_cast<float>(cells - 1));
            index[x] = static_cast<int>(at);
            part[x] = at - static_cast<float>(index[x]);
        }
    }
};

bool SkinSmoother::Correct(const ProgressSpan& span) {
    const Columns columns(m_width, m_factor, m_columns);
    for (int c = 0; c < Colours; ++c)
        for (int y = 0; y < m_rows; ++y) m_copy.Row(c, y)[m_columns] = m_copy.Row(c, y)[m_columns - 1];
    return RunRows(span, m_height, std::max(GrainOf(m_width), 4 * m_factor), [&](int first, int last) {
        const std::size_t length = m_width + Slack;
        std::vector<float> wide(2 * Colours * length);
        std::array<int, 2> held{-1, -1};
        const auto widened = [&](int y) {
            float* const rows = wide.data() + (y & 1) * Colours * length;
            if (held[y & 1] != y)
                for (int c = 0; c < Colours; ++c)
                    Kernels().widenRow(m_copy.Row(c, y), columns.index.data(), columns.part.data(), m_width,
                                       rows + c * length);
            held[y & 1] = y;
            return rows;
        };
        for (int y = first; y < last; ++y) {
            const float at = std::clamp((static_cast<float>(y) - 0.5f * static_cast<float>(m_factor - 1)) /
                                            static_cast<float>(m_factor),
                                        0.0f, static_cast<float>(m_rows - 1));
            const int cell = static_cast<int>(at);
            const float* const above = widened(cell);
            const float* const below = widened(std::min(cell + 1, m_rows - 1));
            CorrectionRow row;
            row.part = at - static_cast<float>(cell);
            row.mask = m_mask ? m_mask + std::ptrdiff_t{m_width} * y : nullptr;
            for (int c = 0; c < Colours; ++c) {
                row.above[c] = above + c * length;
                row.below[c] = below + c * length;
            }
            Kernels().correctRow(m_pixels + std::ptrdiff_t{4} * m_width * y, m_width, row);
        }
    });
}

}  // namespace

bool SmoothSkin(std::uint8_t* pixels, int width, int height, float sigma, const std::uint8_t* mask,
                const ProgressSpan& span) {
    const auto [copying, fining, evening, correcting] = Split<4>(span, {2, 2, 4, 4});
    if (!copying.CanContinue()) return false;
    SkinSmoother smoother(pixels, width, height, sigma, mask);
    smoother.MakeCopy();
    copying.Report(1, 1);
    if (!fining.CanContinue()) return false;
    smoother.MakeFine();
    fining.Report(1, 1);
    if (!evening.CanContinue()) return false;
    smoother.MakeCorrection();
    evening.Report(1, 1);
    return smoother.Correct(correcting);
}
