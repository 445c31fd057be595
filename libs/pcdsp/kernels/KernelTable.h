// SPDX-License-Identifier: GPL-3.0-or-later
// Makes the table of one instruction set. Included once by each of the Kernels*.cpp, which name the table.
#pragma once

#include "FaceKernels.h"
#include "PointKernels.h"
#include "ResampleKernels.h"
#include "RetouchKernels.h"
#include "RotateKernels.h"
#include "SceneKernels.h"
#include "SmoothKernels.h"
#include "UsmKernels.h"

extern const PcDspKernels QUINCE_KERNEL_TABLE = {
    QUINCE_KERNEL_NAME, ReadsPieces,       PointRow,     LumaRow,           UsmRowInPlace, SumRows,         SumColumns,
    SumRowsByAlpha,     SumColumnsByAlpha, RotateOpaque, RotateTranslucent, SkinRow,       SceneRowInPlace, AddRow,
    GaussianRow,        WidenRow,          CorrectRow,   RecolourRow,       TintRow,       TeethRow,        FaceRow};
