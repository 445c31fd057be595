// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <functional>

#include "Parallel.h"
#include "ProgressSpan.h"

// Whether work in many small pieces is to go on. It asks the sink each time and keeps to its first no, so that the
// pieces that follow are left out too; what they were to make is then of no use. Asked on the calling thread alone.
class Pace {
  public:
    // Goes on to the end.
    Pace() = default;
    explicit Pace(const ProgressSpan& span) : m_span(span) {}

    bool GoesOn() const {
        m_isStopped = m_isStopped || !m_span.CanContinue();
        return !m_isStopped;
    }

    // ForEachBand in groups of rows, between which it asks.
    void ForRows(int rows, int grain, const std::function<void(int, int)>& body) const {
        const int group = m_span.sink ? std::max(2 * grain, (rows + Groups - 1) / Groups) : rows;
        for (int first = 0; first < rows && GoesOn(); first += group)
            ForEachBand(std::min(group, rows - first), grain, [&](int a, int b) { body(first + a, first + b); });
    }

  private:
    static constexpr int Groups = 20;

    ProgressSpan m_span;
    mutable bool m_isStopped = false;
};
