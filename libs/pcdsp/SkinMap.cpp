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

float LumaOf(const ReducedCopy& copy, int x, int y) {
    return 0.2126f * copy.Row(0, y)[x] + 0.7152f * copy.Row(1, y)[x] + 0.0722f * copy.Row(2, y)[x];
}

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

// In face widths: how far a cell's surroundings tell whether it lies in skin or in hair, and how far colours are mixed
// before they are judged, pores and spots being skin as well.
constexpr double Around = 0.045, Near = 0.01;
// How far the surroundings reach that tell whether a cell lies in a face.
constexpr double Wide = 0.11;
// Deviations of the skin of a face from its own mean: towards red and away from yellow (blush and shadow), and in parts
// of the mean the other way. Cloth falls short of red by more, and hair is yellower.
constexpr float OwnBlush = 0.24f, OwnGrey = 0.15f, OwnPale = 0.45f, OwnYellow = 0.5f, YellowLight = 0.13f;
// What skin surrounds within this many face widths may be this much yellower, and is skin too: warm light reflected
// into the shadow of a nose, make-up at its edge.
constexpr double Enclosed = 0.08;
constexpr float EnclosedYellow = 0.3f;

float Soft(float v, float zeroAt, float oneAt) {
    const float t = std::clamp((v - zeroAt) / (oneAt - zeroAt), 0.0f, 1.0f);
    return t * t * (3.0f - 2.0f * t);
}

int RadiusOf(double part, double face) {
    return std::max(1, static_cast<int>(std::lround(part * face)));
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
                rows[y].Add({weight, weight * ratios.p, weight * ratios.q, weight * LumaOf(copy, x, y)});
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

Plane SkinShares(const SkinMaps& maps, double face) {
    // Two boxes make soft borders.
    const Plane around = BoxMean(BoxMean(maps.even, RadiusOf(Around, face)), RadiusOf(Around / 2, face));
    Plane shares = BoxMean(BoxMean(maps.colour, RadiusOf(Near, face)), RadiusOf(Near, face));
    ForEachBand(shares.height, GrainOf(shares.width), [&](int first, int last) {
        for (int y = first; y < last; ++y)
            for (int x = 0; x < shares.width; ++x) {
                float& share = shares.Row(y)[x];
                share = Soft(around.Row(y)[x], 0.18f, 0.5f) * Soft(share, 0.25f, 0.75f);
            }
    });
    return shares;
}

Plane FaceShares(const ReducedCopy& copy, const SkinMaps& maps, double face) {
    const int width = copy.Columns(), height = copy.Rows();
    const Plane wide = BoxMean(BoxMean(maps.even, RadiusOf(Wide, face)), RadiusOf(Wide / 2, face));
    // Means over the evenest skin, in high powers, since cloth and walls may be even, but are less of its colour.
    std::vector<Sums> rows(height);
    std::vector<double> evenness(height, 0.0);
    const auto forRows = [&](const auto& body) {
        ForEachBand(height, GrainOf(width), [&](int first, int last) {
            for (int y = first; y < last; ++y)
                for (int x = 0; x < width; ++x) body(x, y);
        });
    };
    Plane anyone(width, height);
    ForEachBand(height, GrainOf(width), [&](int first, int last) {
        for (int y = first; y < last; ++y) copy.SkinOfRow(y, 1, anyone.Row(y));
    });
    forRows([&](int x, int y) {
        const double own = maps.even.Row(y)[x] * wide.Row(y)[x], any = anyone.Row(y)[x] * anyone.Row(y)[x];
        const double weight = own * own * any * any;
        const Ratios ratios(copy.Row(0, y)[x], copy.Row(1, y)[x], copy.Row(2, y)[x]);
        rows[y].Add({weight, weight * ratios.p, weight * ratios.q, weight * LumaOf(copy, x, y)});
        evenness[y] += weight * wide.Row(y)[x];
    });
    Sums all;
    double even = 0.0;
    for (int y = 0; y < height; ++y) {
        all.Add(rows[y]);
        even += evenness[y];
    }
    const double perWeight = 1.0 / std::max(all.weight, 1e-6);
    const auto usualP = static_cast<float>(all.p * perWeight), usualQ = static_cast<float>(all.q * perWeight);
    const float pale = std::max(0.05f, OwnPale * usualP), yellow = std::max(0.075f, OwnYellow * usualQ);
    const float perLuma = static_cast<float>(1.0 / std::max(all.luma * perWeight, 20.0));
    const float perEven = static_cast<float>(1.0 / std::max(even * perWeight, 0.05));

    Plane colour(width, height), inside(width, height), luma(width, height);
    forRows([&](int x, int y) {
        const Ratios ratios(copy.Row(0, y)[x], copy.Row(1, y)[x], copy.Row(2, y)[x]);
        const float redder = ratios.p - usualP, yellower = ratios.q - usualQ;
        const float p = redder / (redder > 0.0f ? OwnBlush : pale);
        // What is as light as skin may be yellower: make-up, warm light from one side.
        const float light = YellowLight * Soft(LumaOf(copy, x, y) * perLuma, 0.6f, 0.85f);
        const auto like = [p](float q) {
            const float away = p * p + q * q;
            return 1.0f / (1.0f + away * away * away);
        };
        const float own = yellower > 0.0f ? yellow + light : OwnGrey;
        colour.Row(y)[x] = maps.any ? like(yellower / own) : 0.0f;
        inside.Row(y)[x] = maps.any && yellower > 0.0f ? like(yellower / (own + EnclosedYellow)) : colour.Row(y)[x];
        luma.Row(y)[x] = LumaOf(copy, x, y) * perLuma;
    });
    const auto near = [&](const Plane& plane) {
        return BoxMean(BoxMean(plane, RadiusOf(Near, face)), RadiusOf(Near, face));
    };
    Plane shares = near(colour);
    luma = BoxMean(luma, RadiusOf(Near, face));
    const auto likely = [&](float like, int x, int y) {
        return Soft(wide.Row(y)[x] * perEven, 0.22f, 0.55f) * Soft(like, 0.2f, 0.7f) * Soft(luma.Row(y)[x], 0.3f, 0.6f);
    };
    forRows([&](int x, int y) { shares.Row(y)[x] = likely(shares.Row(y)[x], x, y); });
    const Plane around = BoxMean(BoxMean(shares, RadiusOf(Enclosed, face)), RadiusOf(Enclosed / 2, face));
    inside = near(inside);
    forRows([&](int x, int y) {
        float& share = shares.Row(y)[x];
        share = std::max(share, Soft(around.Row(y)[x], 0.35f, 0.6f) * likely(inside.Row(y)[x], x, y));
    });
    return shares;
}
