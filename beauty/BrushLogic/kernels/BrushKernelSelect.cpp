// SPDX-License-Identifier: GPL-3.0-or-later
#include "BrushKernels.h"

extern const BrushKernels g_brushKernelsBase;
extern const BrushKernels g_brushKernelsAvx2;
extern const BrushKernels g_brushKernelsAvx512;

const BrushKernels& BrushKernelSet(int index) {
    static const BrushKernels* const sets[] = {&g_brushKernelsBase, &g_brushKernelsAvx2, &g_brushKernelsAvx512};
    return *sets[index];
}

const BrushKernels& BrushKernelsInUse() {
    return BrushKernelSet(SelectedKernelSet());
}
