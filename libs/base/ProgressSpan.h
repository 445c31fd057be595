// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>

#include "CObjProgress.h"

// A part of a progress bar, in percent. It carries the sink so that a caller hands on one value.
struct ProgressSpan {
    CObjProgress* sink = nullptr;
    int start = 0;
    int end = 100;

    // Reports the share `done` of `total` of this span. No effect without a sink.
    void Report(double done, double total) const {
        if (sink) sink->SetValue(static_cast<float>(start + (end - start) * (total > 0 ? done / total : 1.0)));
    }
    // False once the sink asks to stop.
    bool CanContinue() const { return !sink || sink->CanContinue() != 0; }
};

// Divides start..end by weights, so that nobody works out percentages by hand:
//     const auto [first, second] = Split<2>(span, {3, 1});
template <std::size_t N>
std::array<ProgressSpan, N> Split(const ProgressSpan& span, const std::array<int, N>& weights) {
    long total = 0;
    for (int weight : weights) total += weight;
    std::array<ProgressSpan, N> parts;
    long before = 0;
    for (std::size_t i = 0; i < N; ++i) {
        const long after = before + weights[i];
        const auto at = [&](long w) {
            return span.start + static_cast<int>((span.end - span.start) * w / (total > 0 ? total : 1));
        };
        parts[i] = {span.sink, at(before), at(after)};
        before = after;
    }
    return parts;
}
