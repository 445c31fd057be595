// SPDX-License-Identifier: GPL-3.0-or-later
#include "AutoBeauty.h"

#include <algorithm>

#include "FaceRetouch.h"
#include "Rows.h"

namespace {

// Rows that go through both parts while they are in the cache.
constexpr int Together = 4;

}  // namespace

bool Beautify(std::uint8_t* pixels, int width, int height, const Look& look, const ProgressSpan& span) {
    const auto [judging, finishing] = Split<2>(span, {3, 2});
    if (!judging.CanContinue()) return false;
    FaceRetouch retouch(pixels, width, height, look.GetRecipe().face);
    if (!retouch.Work(judging)) return false;
    const LookRun run(look, pixels, width, height);
    const std::ptrdiff_t stride = std::ptrdiff_t{4} * width;
    return RunRows(finishing, height, retouch.Grain(), [&](int first, int last) {
        FaceRetouch::Rows rows(retouch);
        for (int y = first; y < last; y += Together) {
            const int end = std::min(y + Together, last);
            for (int row = y; row < end; ++row) rows.Apply(pixels + row * stride, row);
            run.Rows(pixels, y, end);
        }
    });
}
