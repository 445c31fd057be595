// SPDX-License-Identifier: GPL-3.0-or-later
// The inner loop of a displacement step: one table of functions per instruction set, chosen once for the machine. All
// sets give the same bits.
#pragma once

#include <cstddef>
#include <cstdint>

#include "InstructionSets.h"

// A field lies in squares of this side: pairs of floats, row by row.
constexpr int WarpTileShift = 7;
constexpr int WarpTileSide = 1 << WarpTileShift;

struct WarpFieldView {
    const float* const* tiles = nullptr;
    int columns = 0;  // tiles in a row

    const float* At(int x, int y) const {
        const float* const tile = tiles[std::ptrdiff_t{y >> WarpTileShift} * columns + (x >> WarpTileShift)];
        return tile + 2 * ((y & (WarpTileSide - 1)) * WarpTileSide + (x & (WarpTileSide - 1)));
    }
};

// One step of a deformation about (x, y), as CWarpField::ApplyAt has it.
struct WarpStep {
    WarpFieldView field;
    const std::uint8_t* source = nullptr;
    std::uint8_t* output = nullptr;
    int width = 0, height = 0;
    int x = 0, y = 0;
    int mode = 2;
    bool bilinear = true;
    bool deferred = false;  // the output is left for sampleRow
    double amount = 0.0;
    double dx = 0.0, dy = 0.0;
    double border = 1.0;                // how many pixels inside the border the displacement is whole
    const double* fallOff = nullptr;    // `length` entries
    double length = 1.0, square = 1.0;  // k = (xi^2 + yi^2) * length / square; both whole numbers
};

struct WarpKernels {
    const char* name;

    // The pixels from column `first` to `last` (against x) of the row yi (against y), all of them inside the picture
    // and the disc: writes the new pairs of the field to `pairs` and the pixels to the output.
    // Of a deferred step only pixels that point to nothing any more are written, with the colour that they had.
    void (*warpRow)(const WarpStep& step, int yi, int first, int last, float* pairs);
    // The output of `count` pixels of the picture's row y from x on, all in one square, as the field has them now. Of
    // the step field, pictures and size are read.
    void (*sampleRow)(const WarpStep& step, int y, int x, int count);
};

// The table in use, and that of one instruction set by its number in InstructionSets.h.
const WarpKernels& WarpKernelsInUse();
const WarpKernels& WarpKernelSet(int index);
