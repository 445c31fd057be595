// SPDX-License-Identifier: GPL-3.0-or-later
#include "Kernels.h"

extern const PcDspKernels g_kernelsBase;
extern const PcDspKernels g_kernelsAvx2;
extern const PcDspKernels g_kernelsAvx512;

const PcDspKernels& KernelSet(int index) {
    static const PcDspKernels* const sets[] = {&g_kernelsBase, &g_kernelsAvx2, &g_kernelsAvx512};
    return *sets[index];
}

const PcDspKernels& Kernels() {
    return KernelSet(SelectedKernelSet());
}
