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
constexpr float SpreadP = 0.22f, SpreadQ = 0.15f;

struct Ratios {
    float p, q;
    Ratios(float r, float g, float b) : p((r - g) / std::max(r, 1.0f)), q((g - b) / std::max(r, 1.0f)) {}
};

// Sums of a row, added up in the order of rows so that threads do not show.
struct Sums {
    double weight = 0.0, p = 0.0, q = 0.0, luma = 0.0;

    void Add(const Sums& other) {
        weight += other.weight;
        p += other.p;
        q += other.q;
        luma += other.luma;
    }
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

SkinMaps::SkinMaps(const ReducedCopy& copy, double face) : colour(copy.Columns(), copy.Rows()), even(colour) {
    const int width = copy.Columns(), height = copy.Rows();
    int reaches[2];
    for (int i = 0; i < 2; ++i) reaches[i] = std::max(1, static_cast<int>(std::lround(Reaches[i] * face)));
    std::vector<Sums> rows(height);
    ForEachBand(height, GrainOf(width), [&](int first, int last) {
        for (int y = first; y < last; ++y) {
            float* const skin = colour.Row(y);
            float* const out = even.Row(y);
            copy.SkinOfRow(y, 1, skin);
            for (int x = 0; x < width; ++x) {
                out[x] = Evenness(copy, x, y, reaches[0]) * Evenness(copy, x, y, reaches[1]);
                const Ratios ratios(copy.Row(0, y)[x], copy.Row(1, y)[x], copy.Row(2, y)[x]);
                // The fourth power, since walls and cloths are even too, but only faintly of the colour of skin.
                const double square = double(skin[x]) * skin[x], weight = square * square * out[x];
                rows[y].Add(
                    {weight, weight * ratios.p, weight * ratios.q,
                     weight * (0.2126 * copy.Row(0, y)[x] + 0.7152 * copy.Row(1, y)[x] + 0.0722 * copy.Row(2, y)[x])});
            }
        }
    });
    Sums all;
    for (const Sums& row : rows) all.Add(row);
    any = all.weight > 1.0;
    if (any) {
        meanP = static_cast<float>(all.p / all.weight);
        meanQ = static_cast<float>(all.q / all.weight);
        meanLuma = static_cast<float>(all.luma / all.weight);
    }
    ForEachBand(height, GrainOf(width), [&](int first, int last) {
        for (int y = first; y < last; ++y)
            for (int x = 0; x < width; ++x) {
                const Ratios ratios(copy.Row(0, y)[x], copy.Row(1, y)[x], copy.Row(2, y)[x]);
                const float p = (ratios.p - meanP) / SpreadP, q = (ratios.q - meanQ) / SpreadQ;
                const float away = p * p + q * q;
                // No skin at all, as in a picture of the sea, leaves nothing.
                colour.Row(y)[x] = any ? 1.0f / (1.0f + away * away * away) : 0.0f;
                even.Row(y)[x] *= colour.Row(y)[x];
            }
    });
}
