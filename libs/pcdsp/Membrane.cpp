// SPDX-License-Identifier: GPL-3.0-or-later
#include "Membrane.h"

#include <memory>

namespace {

constexpr int Sweeps = 10;
constexpr float Overshoot = 1.5f;  // of successive over-relaxation

// Half the size: a cell is known where one of its pixels is, and is the mean of those.
void Reduce(const Planes& fine, int count, const HoleMap& hole, Planes& coarse, HoleMap& coarseHole) {
    for (int y = 0; y < coarseHole.height; ++y) {
        const int top = 2 * y, bottom = std::min(top + 2, hole.height);
        for (int x = 0; x < coarseHole.width; ++x) {
            const int left = 2 * x, right = std::min(left + 2, hole.width);
            int known = 0;
            for (int v = top; v < bottom; ++v)
                for (int u = left; u < right; ++u) known += !hole.Row(v)[u];
            coarseHole.Row(y)[x] = known == 0;
            for (int c = 0; c < count; ++c) {
                float sum = 0.0f;
                for (int v = top; v < bottom; ++v)
                    for (int u = left; u < right; ++u)
                        if (!hole.Row(v)[u]) sum += fine.Row(c, v)[u];
                coarse.Row(c, y)[x] = known ? sum / static_cast<float>(known) : 0.0f;
            }
        }
    }
}

// Holes take the coarse values, linearly between their middles.
void Enlarge(const Planes& coarse, int count, const HoleMap& hole, Planes& fine) {
    const int lastColumn = coarse.Width() - 1, lastRow = coarse.Height() - 1;
    for (int y = 0; y < hole.height; ++y) {
        const int near = y / 2, far = std::clamp(near + (y % 2 ? 1 : -1), 0, lastRow);
        for (int x = 0; x < hole.width; ++x) {
            if (!hole.Row(y)[x]) continue;
            const int column = x / 2, beside = std::clamp(column + (x % 2 ? 1 : -1), 0, lastColumn);
            for (int c = 0; c < count; ++c) {
                const float* const a = coarse.Row(c, near);
                const float* const b = coarse.Row(c, far);
                fine.Row(c, y)[x] = 0.5625f * a[column] + 0.1875f * (a[beside] + b[column]) + 0.0625f * b[beside];
            }
        }
    }
}

void Relax(Planes& planes, int count, const HoleMap& hole, float spring, const Pace& pace) {
    const int right = hole.width - 1, bottom = hole.height - 1;
    for (int c = 0; c < count; ++c)
        for (int sweep = 0; sweep < Sweeps && pace.GoesOn(); ++sweep) {
            // The last sweep only settles, or the overshoot would stay as noise.
            const float step = sweep + 1 < Sweeps ? Overshoot : 1.0f;
            for (int y = 0; y <= bottom; ++y) {
                const std::uint8_t* const holes = hole.Row(y);
                float* const here = planes.Row(c, y);
                const float* const above = y > 0 ? planes.Row(c, y - 1) : nullptr;
                const float* const below = y < bottom ? planes.Row(c, y + 1) : nullptr;
                for (int x = 0; x <= right; ++x) {
                    if (!holes[x]) continue;
                    float sum = 0.0f, weight = spring;
                    const auto add = [&](float value) {
                        sum += value;
                        weight += 1.0f;
                    };
                    if (above) add(above[x]);
                    if (below) add(below[x]);
                    if (x > 0) add(here[x - 1]);
                    if (x < right) add(here[x + 1]);
                    if (weight > 0.0f) here[x] += step * (sum / weight - here[x]);
                }
            }
        }
}

void Solve(Planes& planes, int count, const HoleMap& hole, float spring, const Pace& pace) {
    if (std::all_of(hole.holes.begin(), hole.holes.end(), [](std::uint8_t h) { return h == 0; })) return;
    if (hole.width == 1 && hole.height == 1) {
        for (int c = 0; c < count; ++c) planes.Row(c, 0)[0] = 0.0f;
        return;
    }
    HoleMap coarseHole((hole.width + 1) / 2, (hole.height + 1) / 2);
    Planes coarse(count, coarseHole.width, coarseHole.height);
    Reduce(planes, count, hole, coarse, coarseHole);
    Solve(coarse, count, coarseHole, 4.0f * spring, pace);
    if (!pace.GoesOn()) return;
    Enlarge(coarse, count, hole, planes);
    Relax(planes, count, hole, spring, pace);
}

}  // namespace

void FillWithMembrane(Planes& planes, int count, const HoleMap& hole, float reach, const Pace& pace) {
    Solve(planes, count, hole, reach > 0.0f ? 1.0f / (reach * reach) : 0.0f, pace);
}
