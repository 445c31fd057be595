// SPDX-License-Identifier: GPL-3.0-or-later
#include "PlaneBlur.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

// Half of a Gaussian, middle first, sum 1 over both halves.
std::vector<float> Weights(float sigma) {
    std::vector<float> weights(static_cast<std::size_t>(std::ceil(2.5f * sigma)) + 1);
    float total = 0.0f;
    for (std::size_t i = 0; i < weights.size(); ++i) {
        const auto away = static_cast<float>(i);
        weights[i] = std::exp(-0.5f * away * away / (sigma * sigma));
        total += i ? 2.0f * weights[i] : weights[i];
    }
    for (float& weight : weights) weight /= total;
    return weights;
}

// One plane; row(y) gives its rows.
template <class Rows>
void Blur(int width, int height, const std::vector<float>& weights, const Rows& row, const Pace& pace) {
    const int half = static_cast<int>(weights.size()) - 1;
    std::vector<float> across(std::size_t(width) * height);
    pace.ForRows(height, GrainOf(width), [&](int first, int last) {
        std::vector<float> line(width + 2 * half);
        for (int y = first; y < last; ++y) {
            const float* const in = row(y);
            std::fill_n(line.begin(), half, in[0]);
            std::copy_n(in, width, line.begin() + half);
            std::fill_n(line.begin() + half + width, half, in[width - 1]);
            float* const out = across.data() + std::size_t(width) * y;
            const float* const middle = line.data() + half;
            for (int x = 0; x < width; ++x) out[x] = weights[0] * middle[x];
            for (int k = 1; k <= half; ++k)
                for (int x = 0; x < width; ++x) out[x] += weights[k] * (middle[x - k] + middle[x + k]);
        }
    });
    const auto at = [&](int y) { return across.data() + std::size_t(width) * std::clamp(y, 0, height - 1); };
    pace.ForRows(height, GrainOf(width), [&](int first, int last) {
        for (int y = first; y < last; ++y) {
            float* const out = row(y);
            for (int x = 0; x < width; ++x) out[x] = weights[0] * at(y)[x];
            for (int k = 1; k <= half; ++k) {
                const float* const above = at(y - k);
                const float* const below = at(y + k);
                for (int x = 0; x < width; ++x) out[x] += weights[k] * (above[x] + below[x]);
            }
        }
    });
}

}  // namespace

void BlurPlanes(Planes& planes, float sigma, const Pace& pace) {
    const std::vector<float> weights = Weights(sigma);
    for (int c = 0; c < SpotPlace::Colours; ++c)
        Blur(
            planes.Width(), planes.Height(), weights, [&](int y) { return planes.Row(c, y); }, pace);
}
