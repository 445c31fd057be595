// SPDX-License-Identifier: GPL-3.0-or-later
#include "SceneJudge.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "Kernels.h"

namespace {

constexpr SceneRecipe Portrait{.levels = 0.6,
                               .levelsLimit = 16,
                               .balance = 0.5,
                               .balanceLimit = 1.08,
                               .warmth = 1.0,
                               .median = 126,
                               .medianPull = 0.35,
                               .contrast = 8,
                               .shadowLift = 5,
                               .baseDetail = 1.04f,
                               .fineDetail = 1.12f,
                               .skinBase = 0.94f,
                               .skinFine = 0.42f,
                               .saturation = 0.08f,
                               .skinSaturation = 0.0f,
                               .sky = 0.06f,
                               .foliage = 0.02f,
                               .warm = 0.0f,
                               .skinWarm = 1.8f,
                               .neutral = 0.0f};
constexpr SceneRecipe Food{.levels = 0.8,
                           .levelsLimit = 24,
                           .balance = 0.5,
                           .balanceLimit = 1.10,
                           .warmth = 1.025,
                           .median = 130,
                           .medianPull = 0.35,
                           .contrast = 14,
                           .shadowLift = 4,
                           .baseDetail = 1.15f,
                           .fineDetail = 1.25f,
                           .skinBase = 1.0f,
                           .skinFine = 1.0f,
                           .saturation = 0.14f,
                           .skinSaturation = 0.08f,
                           .sky = 0.0f,
                           .foliage = 0.14f,
                           .warm = 0.28f,
                           .skinWarm = 1.0f,
                           .neutral = 0.0f};
constexpr SceneRecipe Objects{.levels = 0.9,
                              .levelsLimit = 28,
                              .balance = 0.85,
                              .balanceLimit = 1.16,
                              .warmth = 1.0,
                              .median = 128,
                              .medianPull = 0.25,
                              .contrast = 12,
                              .shadowLift = 6,
                              .baseDetail = 1.18f,
                              .fineDetail = 1.5f,
                              .skinBase = 1.04f,
                              .skinFine = 1.0f,
                              .saturation = 0.06f,
                              .skinSaturation = 0.0f,
                              .sky = 0.0f,
                              .foliage = 0.0f,
                              .warm = 0.0f,
                              .skinWarm = 0.0f,
                              .neutral = 0.5f};
constexpr SceneRecipe Scenery{.levels = 0.9,
                              .levelsLimit = 28,
                              .balance = 0.4,
                              .balanceLimit = 1.10,
                              .warmth = 1.0,
                              .median = 122,
                              .medianPull = 0.25,
                              .contrast = 6,
                              .shadowLift = 10,
                              .baseDetail = 1.4f,
                              .fineDetail = 1.3f,
                              .skinBase = 1.1f,
                              .skinFine = 1.0f,
                              .saturation = 0.16f,
                              .skinSaturation = 0.06f,
                              .sky = 0.26f,
                              .foliage = 0.22f,
                              .warm = 0.06f,
                              .skinWarm = 0.0f,
                              .neutral = 0.0f};

// A histogram with weights, and the value below which a share of it lies.
struct Histogram {
    std::array<double, 256> counts{};
    double total = 0.0;

    void Add(double level, double weight) {
        counts[std::clamp(static_cast<int>(level), 0, 255)] += weight;
        total += weight;
    }
    double Below(double share) const {
        double sum = 0.0;
        for (int i = 0; i < 256; ++i) {
            if (counts[i] > 0.0 && sum + counts[i] >= share * total) return i + (share * total - sum) / counts[i];
            sum += counts[i];
        }
        return 255.0;
    }
};

double Faded(double v, double zeroAt, double oneAt) {
    return std::clamp((v - zeroAt) / (oneAt - zeroAt), 0.0, 1.0);
}

// Bends values past black and white instead of cutting them.
double Soft(double v) {
    constexpr double bend = 0.05;
    if (v < bend) return bend * std::exp(v / bend - 1.0);
    if (v > 1.0 - bend) return 1.0 - bend * std::exp((1.0 - v) / bend - 1.0);
    return v;
}

}  // namespace

SceneStatistics::SceneStatistics(const PixelView& reduced) {
    Histogram luma, skinLuma;
    std::array<double, 256> linear;
    for (int i = 0; i < 256; ++i) linear[i] = PointCurves::ToLinear(i / 255.0);
    double light[3] = {1e-6, 1e-6, 1e-6};
    double greyWeight = 0.0, skinWeight = 0.0, weights = 0.0;
    std::vector<float> skin(reduced.width);
    for (int y = 0; y < reduced.height; ++y) {
        const std::uint8_t* p = reduced.pixels + y * reduced.stride;
        Kernels().skinRow(p, reduced.width, skin.data());
        for (int x = 0; x < reduced.width; ++x, p += 4) {
            const double alpha = p[3] / 255.0;
            const double value = 0.2126 * p[2] + 0.7152 * p[1] + 0.0722 * p[0];
            weights += alpha;
            luma.Add(value, alpha);
            const double skinPart = alpha * skin[x];
            skinLuma.Add(value, skinPart);
            skinWeight += skinPart;
            // Grey under a cast is still nearly grey; what is too dark, too bright or of skin colour tells nothing.
            const int high = std::max({p[0], p[1], p[2]}), low = std::min({p[0], p[1], p[2]});
            const double grey = alpha * Faded(double(high - low) / std::max(high, 1), 0.26, 0.06) *
                                Faded(value, 24, 60) * Faded(high, 252, 236) * (1.0 - skin[x]);
            greyWeight += grey;
            for (int c = 0; c < 3; ++c) light[c] += grey * linear[p[2 - c]];
        }
    }
    if (weights <= 0.0) return;
    black = luma.Below(0.005);
    median = luma.Below(0.5);
    bright = luma.Below(0.95);
    white = luma.Below(0.995);
    const double mean = std::cbrt(light[0] * light[1] * light[2]);
    castR = light[0] / mean;
    castG = light[1] / mean;
    castB = light[2] / mean;
    greyShare = greyWeight / weights;
    skinShare = skinWeight / weights;
    if (skinLuma.total > 0.0) {
        skinMedian = skinLuma.Below(0.5);
        skinBright = skinLuma.Below(0.95);
    }
}

const SceneRecipe* RecipeOf(eScenarioType type) {
    switch (type) {
        case ScenarioPortrait:
            return &Portrait;
        case ScenarioFood:
            return &Food;
        case ScenarioObjects:
            return &Objects;
        case ScenarioScenery:
            return &Scenery;
    }
    return nullptr;
}

SceneCurves::SceneCurves(const SceneStatistics& statistics, const SceneRecipe& recipe) {
    // Few grey pixels are weak evidence.
    const double balance = recipe.balance * Faded(statistics.greyShare, 0.0, 0.08);
    const auto gain = [&](double cast) {
        return std::clamp(std::pow(cast, -balance), 1.0 / recipe.balanceLimit, recipe.balanceLimit);
    };
    double gains[3] = {gain(statistics.castR) * recipe.warmth, gain(statistics.castG),
                       gain(statistics.castB) / recipe.warmth};
    const double light = 0.2126 * gains[0] + 0.7152 * gains[1] + 0.0722 * gains[2];
    for (double& channel : gains) channel /= light;

    const double black = std::min(recipe.levels * statistics.black, recipe.levelsLimit) / 255.0;
    // Pale skin is often the brightest thing: stretched to white its red would bend first, and its hue with it.
    const double skinWhite =
        Faded(statistics.skinShare, 0.0, 0.04) * std::min(1.0, (statistics.skinBright + 40.0) / 255.0);
    const double white =
        std::max(skinWhite, 1.0 - std::min(recipe.levels * (255.0 - statistics.white), recipe.levelsLimit) / 255.0);
    // The middle moves by a curve that leaves both ends; where there is much skin, skin is the middle that matters.
    const double skin = Faded(statistics.skinShare, 0.04, 0.25) * 0.5;
    const double middle = statistics.median + (std::max(statistics.skinMedian, 70.0) * 0.85 - statistics.median) * skin;
    const double from = std::clamp((middle / 255.0 - black) / (white - black), 0.1, 0.9);
    const double to = from + (recipe.median / 255.0 - from) * recipe.medianPull;
    double slope = std::clamp(to * (1.0 - from) / (from * (1.0 - to)), 0.72, 1.55);
    // What is bright already, skin before all, is not to be washed out by a dark background.
    const double bright = std::max(statistics.bright, skin > 0.0 ? statistics.skinBright + 15.0 : 0.0);
    if (slope > 1.0) slope = 1.0 + (slope - 1.0) * Faded(bright, 248, 200);

    LevelCurve* const curves[3] = {&r, &g, &b};
    for (int c = 0; c < 3; ++c) {
        const auto stretched = [&](double x) {
            return Soft((PointCurves::ToCoded(PointCurves::ToLinear(x) * gains[c]) - black) / (white - black));
        };
        // Black stays black; white stays as white as its channel's light allows.
        const double low = stretched(0.0), high = std::max(stretched(1.0), Soft(1.0));
        for (int i = 0; i < 256; ++i) {
            const double x = (stretched(i / 255.0) - low) / (high - low);
            (*curves[c])[i] = static_cast<float>(255.0 * x * slope / (1.0 + (slope - 1.0) * x));
        }
    }
}

PointCurve SceneTone(const SceneRecipe& recipe) {
    LevelCurve curve;
    for (int i = 0; i < 256; ++i) {
        const double x = i / 255.0;
        // The lift peaks at a sixth of the range and leaves black alone.
        const double lift = recipe.shadowLift * 6.0 * x * std::exp(1.0 - 6.0 * x);
        curve[i] = static_cast<float>(std::min(255.0, 255.0 * PointCurves::Contrast(x, recipe.contrast) + lift));
    }
    return PackCurve(curve);
}
