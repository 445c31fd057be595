// SPDX-License-Identifier: GPL-3.0-or-later
#include "ReducedCopy.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "Kernels.h"
#include "Rows.h"

namespace {

constexpr int MostFactor = 16;      // 16 x 16 bytes add up to less than 65536
constexpr double UsualFace = 0.42;  // the width of a face in a portrait, in parts of the root of the picture's area
constexpr double FaceOfSkin = 1.1;  // the same in parts of the root of the area of skin

int FactorOf(int width, int height, int mostCells) {
    return std::clamp(static_cast<int>(std::ceil(std::sqrt(double(width) * height / mostCells))), 1, MostFactor);
}

}  // namespace

ReducedCopy::ReducedCopy(const std::uint8_t* pixels, int width, int height, int mostCells)
    : m_factor(FactorOf(width, height, mostCells)),
      m_planes(Colours, (width + m_factor - 1) / m_factor, (height + m_factor - 1) / m_factor) {
    Fill(pixels, width, height);
}

void ReducedCopy::Fill(const std::uint8_t* pixels, int width, int height) {
    const std::ptrdiff_t stride = std::ptrdiff_t{4} * width;
    // A coarse cell has pixels enough without reading all of them.
    const int step = std::max(1, m_factor / 3);
    ForEachBand(Rows(), std::max(1, GrainOf(width) / m_factor), [&](int first, int last) {
        std::vector<std::uint16_t> sums(stride);
        for (int y = first; y < last; ++y) {
            const int top = y * m_factor, bottom = std::min(top + m_factor, height);
            std::fill(sums.begin(), sums.end(), std::uint16_t{0});
            for (int row = top; row < bottom; row += step)
                Kernels().addRow(pixels + row * stride, static_cast<int>(stride), sums.data());
            float* const cells[Colours] = {Row(0, y), Row(1, y), Row(2, y)};
            for (int x = 0; x < Columns(); ++x) {
                const int left = x * m_factor, right = std::min(left + m_factor, width);
                unsigned b = 0, g = 0, r = 0;
                for (int i = left; i < right; ++i) {
                    b += sums[4 * i];
                    g += sums[4 * i + 1];
                    r += sums[4 * i + 2];
                }
                const float share = 1.0f / static_cast<float>((right - left) * ((bottom - top + step - 1) / step));
                cells[0][x] = static_cast<float>(r) * share;
                cells[1][x] = static_cast<float>(g) * share;
                cells[2][x] = static_cast<float>(b) * share;
            }
        }
    });
}

void ReducedCopy::SkinOfRow(int y, int step, float* skin) const {
    const int count = (Columns() - 1) / step + 1;
    std::vector<std::uint8_t> pixels(std::size_t{4} * count);
    for (int c = 0; c < Colours; ++c) {
        const float* const cells = Row(2 - c, y);
        for (int x = 0; x < count; ++x) pixels[4 * x + c] = static_cast<std::uint8_t>(cells[x * step] + 0.5f);
    }
    Kernels().skinRow(pixels.data(), count, skin);
}

double ReducedCopy::FaceWidth() const {
    const int step = std::max(1, std::max(Columns(), Rows()) / 256);
    const int count = (Columns() - 1) / step + 1;
    std::vector<float> skin(count);
    double sum = 0.0;
    for (int y = 0; y < Rows(); y += step) {
        SkinOfRow(y, step, skin.data());
        // Hair has the colour of skin, but not its evenness.
        const float* const here = Row(1, y);
        const float* const below = Row(1, std::min(y + step, Rows() - 1));
        for (int i = 0; i < count; ++i) {
            const int x = i * step, next = std::min(x + step, Columns() - 1);
            const float across = here[next] - here[x], down = below[x] - here[x];
            sum += skin[i] * skin[i] / (1.0f + (across * across + down * down) * 0.01f);
        }
    }
    const double side = std::sqrt(double(Columns()) * Rows());
    const double bySkin = FaceOfSkin * std::sqrt(sum) * step;
    const double guess = std::max(0.5 * (UsualFace * side + bySkin), 0.9 * bySkin);
    // Next to no skin says nothing about its person.
    const double trust = std::min(1.0, bySkin / (0.2 * side));
    return UsualFace * side + trust * (guess - UsualFace * side);
}
