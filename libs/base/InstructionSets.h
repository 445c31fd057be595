// SPDX-License-Identifier: GPL-3.0-or-later
// Which instruction set the kernels of the pixel libraries run with. A library compiles its kernels for each of them
// (quince_kernels in cmake/Quince.cmake) and keeps one table of functions per set, in this order:
// 0 baseline, 1 AVX2, 2 AVX-512.
#pragma once

#include <string_view>

// The number in use: the widest that this machine runs. Any thread.
int SelectedKernelSet();

// For tests and measurements: how many of the sets this machine runs, narrowest first, and the choice of one; an index
// outside of them restores the widest. Not while a call of a pixel library runs.
int KernelSetCount();
void SelectKernelSet(int index);

// What a person calls the sets, whether this machine runs them or not: "baseline", "avx2", "avx512".
// A number outside of 0 to 2 is refused with an empty name, any other name with -1.
std::string_view KernelSetName(int index);
int KernelSetByName(std::string_view name);
