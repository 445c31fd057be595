// SPDX-License-Identifier: GPL-3.0-or-later
// The inner loops of the brushes: one table of functions per instruction set, chosen once for the machine. All sets
// give the same bytes.
#pragma once

#include <cstdint>

#include "InstructionSets.h"

// Mixes are plain double arithmetic, processed * weight + base * (1 - weight), cut off behind the point. The alpha of
// what is written stays.
struct BrushKernels {
    const char* name;

    // Lays the mix of `count` pixels over `out` by a disc's alphas, rounded to the nearest.
    void (*stampRow)(const std::uint8_t* base, const std::uint8_t* processed, double weight, const std::uint8_t* alphas,
                     int count, std::uint8_t* out);
    // The same for mask bytes and one level.
    void (*coverRow)(std::uint8_t level, const std::uint8_t* alphas, int count, std::uint8_t* mask);

    // Replaces the pixels of `out`, which holds the base, whose mask is not 0 by the mix of weight mask * scale.
    void (*mixRow)(const std::uint8_t* base, const std::uint8_t* processed, const std::uint8_t* mask, double scale,
                   int count, std::uint8_t* out);
    // The same where the mask is a row of grey pixels.
    void (*mixRowByGrey)(const std::uint8_t* base, const std::uint8_t* processed, const std::uint8_t* mask,
                         double scale, int count, std::uint8_t* out);
};

// The table in use, and that of one instruction set by its number in InstructionSets.h.
const BrushKernels& BrushKernelsInUse();
const BrushKernels& BrushKernelSet(int index);
