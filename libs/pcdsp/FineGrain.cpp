// SPDX-License-Identifier: GPL-3.0-or-later
#include "FineGrain.h"

#include <cmath>

namespace {

constexpr float RingPart = 0.6f;     // width of the skin that is looked at, in radii of the hole
constexpr int LeastRing = 4;         // and in pixels
constexpr float MostSquare = 14.0f;  // times the middle one: 2.5 deviations of what is spread as grain is
constexpr float RingSteps = 12.0f;   // samples to a radius: grain is much the same everywhere

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

Plane FineLuma(const Planes& colours, const Pace& pace) {
    Plane fine(colours.Width(), colours.Height());
    for (int y = 0; y < fine.height; ++y)
        for (int x = 0; x < fine.width; ++x) fine.Row(y)[x] = LumaAt(colours, x, y);
    Plane blurred = fine;
    Blur(
        fine.width, fine.height, Weights(GrainSigma), [&](int y) { return blurred.Row(y); }, pace);
    for (std::size_t i = 0; i < fine.values.size(); ++i) fine.values[i] -= blurred.values[i];
    return fine;
}

float GrainAround(const SpotPlace& place) {
    const std::vector<float> weights = Weights(GrainSigma);
    const int half = static_cast<int>(weights.size()) - 1;
    const int ring = std::max(LeastRing, static_cast<int>(RingPart * place.radius));
    const int step = std::max(1, static_cast<int>(place.radius / RingSteps));
    const PixelRect bounds = place.holes.Bounds(), box = place.hole.Grown(ring).Within(bounds);
    std::vector<float> squares;
    for (int y = box.top; y < box.bottom; y += step)
        for (int x = box.left; x < box.right; x += step) {
            if (place.holes.Row(y)[x]) continue;
            float sum = 0.0f, total = 0.0f;
            const PixelRect near = PixelRect{x, y, x + 1, y + 1}.Grown(half).Within(bounds);
            for (int v = near.top; v < near.bottom; ++v)
                for (int u = near.left; u < near.right; ++u) {
                    if (place.holes.Row(v)[u]) continue;
                    const float weight = weights[std::abs(u - x)] * weights[std::abs(v - y)];
                    sum += weight * LumaAt(place.colours, u, v);
                    total += weight;
                }
            const float d = LumaAt(place.colours, x, y) - sum / total;
            squares.push_back(d * d);
        }
    return std::sqrt(HeldMean(squares));
}

float HeldMean(std::vector<float>& squares) {
    if (squares.empty()) return 0.0f;
    const auto middle = squares.begin() + static_cast<std::ptrdiff_t>(squares.size() / 2);
    std::nth_element(squares.begin(), middle, squares.end());
    const float most = MostSquare * *middle;
    float sum = 0.0f;
    for (const float square : squares) sum += std::min(square, most);
    return sum / static_cast<float>(squares.size());
}
