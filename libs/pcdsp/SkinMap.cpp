// SPDX-License-Identifier: GPL-3.0-or-later
#include "SkinMap.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "Rows.h"

namespace {

constexpr double Reaches[] = {0.006, 0.015};  // in face widths
constexpr float Uneven = 28.0f;               // the contrast in levels, at level 180, that halves the likelihood
// Deviations of one person's skin in the two ratios of kernels/SkinTone.h, shadow and blush included.
constexpr float SpreadP = 0.26f, SpreadQ = 0.11f;

struct Ratios {
    float p, q;
    Ratios(float r, float g, float b) : p((r - g) / std::max(r, 1.0f)), q((g - b) / std::max(r, 1.0f)) {}
};

// Sums of a row, added up in the order of rows so that threads do not show.
struct Sums {
    double weight = 0.0, p = 0.0, q = 0.0;
};

float Evenness(const ReducedCopy& copy, int x, int y, int reach) {
    const float* const here = copy.Row(1, y);
    const int right = std::min(x + reach, copy.Columns() - 1), left = std::max(x - reach, 0);
    const float across = here[right] - here[left];
    const float down = copy.Row(1, std::min(y + reach, copy.Rows() - 1))[x] - copy.Row(1, std::max(y - reach, 0))[x];
    // A part of the light, as the eye has it.
    const float limit = Uneven * (here[x] + 40.0f) / 220.0f;
    const float steep = (across * across + down * down) / (limit * limit);
    return 1.0f / (1.0f + steep * steep);
}

}  // namespace

Plane SkinMap(const ReducedCopy& copy, double face) {
    Plane skin(copy.Columns(), copy.Rows());
    std::vector<Sums> rows(skin.height);
    ForEachBand(skin.height, GrainOf(skin.width), [&](int first, int last) {
        for (int y = first; y < last; ++y) {
            float* const out = skin.Row(y);
            copy.SkinOfRow(y, 1, out);
            const float* const red = copy.Row(0, y);
            const float* const green = copy.Row(1, y);
            const float* const blue = copy.Row(2, y);
            for (int x = 0; x < skin.width; ++x) {
                if (out[x] == 0.0f) continue;
                for (const double reach : Reaches)
                    out[x] *= Evenness(copy, x, y, std::max(1, static_cast<int>(std::lround(reach * face))));
                const Ratios ratios(red[x], green[x], blue[x]);
                const double weight = double(out[x]) * out[x];
                rows[y].weight += weight;
                rows[y].p += weight * ratios.p;
                rows[y].q += weight * ratios.q;
            }
        }
    });
    Sums all;
    for (const Sums& row : rows) {
        all.weight += row.weight;
        all.p += row.p;
        all.q += row.q;
    }
    if (all.weight <= 0.0) return skin;
    const auto meanP = static_cast<float>(all.p / all.weight), meanQ = static_cast<float>(all.q / all.weight);
    ForEachBand(skin.height, GrainOf(skin.width), [&](int first, int last) {
        for (int y = first; y < last; ++y) {
            float* const out = skin.Row(y);
            for (int x = 0; x < skin.width; ++x) {
                const Ratios ratios(copy.Row(0, y)[x], copy.Row(1, y)[x], copy.Row(2, y)[x]);
                const float p = (ratios.p - meanP) / SpreadP, q = (ratios.q - meanQ) / SpreadQ;
                const float away = p * p + q * q;
                out[x] /= 1.0f + away * away;
            }
        }
    });
    return skin;
}
