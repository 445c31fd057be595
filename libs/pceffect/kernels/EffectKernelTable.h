// SPDX-License-Identifier: GPL-3.0-or-later
// Makes the table of one instruction set. Included once by each of the EffectKernels*.cpp, which name the table.
#pragma once

#include "BlendKernels.h"
#include "FadeKernels.h"
#include "LookKernels.h"
#include "OverKernels.h"
#include "PlaceKernels.h"

extern const EffectKernels QUINCE_KERNEL_TABLE;
const EffectKernels QUINCE_KERNEL_TABLE = {QUINCE_KERNEL_NAME, LookRow,        SpreadRow, SumBlocks, FadeRow,
                                           BlendRow,           PremultiplyRow, OverRow};
