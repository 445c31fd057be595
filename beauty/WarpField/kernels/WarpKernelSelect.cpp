// SPDX-License-Identifier: GPL-3.0-or-later
#include "WarpKernels.h"

extern const WarpKernels g_warpKernelsBase;
extern const WarpKernels g_warpKernelsAvx2;
extern const WarpKernels g_warpKernelsAvx512;

const WarpKernels& WarpKernelSet(int index) {
    static const WarpKernels* const sets[] = {&g_warpKernelsBase, &g_warpKernelsAvx2, &g_warpKernelsAvx512};
    return *sets[index];
}

const WarpKernels& WarpKernelsInUse() {
    return WarpKernelSet(SelectedKernelSet());
}
