// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <functional>

#include "Parallel.h"
#include "ProgressSpan.h"

// ForEachBand with progress and cancel: with a sink the rows are done in about twenty groups, between which the calling
// thread reports and asks. False when it was asked to stop; the groups done by then are whole and the rest is
// untouched.
inline bool RunRows(const ProgressSpan& span, int rows, int grain, const std::function<void(int, int)>& body) {
    const int group = span.sink ? std::max(grain * 2, (rows + 19) / 20) : std::max(1, rows);
    for (int first = 0; first < rows; first += group) {
        if (!span.CanContinue()) return false;
        const int count = std::min(group, rows - first);
        ForEachBand(count, grain, [&](int a, int b) { body(first + a, first + b); });
        span.Report(first + count, rows);
    }
    return true;
}

// Rows that make a band worth a thread.
inline int GrainOf(int width) {
    return std::max(1, 32768 / std::max(1, width));
}
