// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

#include "ProgressSpan.h"
#include "ResampleTaps.h"

// Pixels that belong to somebody else.
struct PixelView {
    const std::uint8_t* pixels = nullptr;
    int width = 0;
    int height = 0;
    std::ptrdiff_t stride = 0;
};

// Draws what the two axes' taps describe into `out` (columns.starts.size() wide, rows.starts.size() high, without
// padding). `source` and `out` must not overlap. False when cancelled; `out` is then partly written.
bool ResampleInto(const PixelView& source, const ResampleTaps& columns, const ResampleTaps& rows, std::uint8_t* out,
                  const ProgressSpan& span);

// What the fourth byte of a source pixel is: its alpha, by which its colour counts, or one more channel, as in pixels
// whose colours are multiplied by their alpha.
enum class FourthByte { Alpha, Channel };

// Calls use(y, row) for the rows first to last - 1 of what ResampleInto draws, in order, on the calling thread alone.
// The row may be written; its memory holds the next one afterwards.
void ResampleRows(const PixelView& source, const ResampleTaps& columns, const ResampleTaps& rows, int first, int last,
                  FourthByte fourth, const std::function<void(int y, std::uint8_t* row)>& use);
