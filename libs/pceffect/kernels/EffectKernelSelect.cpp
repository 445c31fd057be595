// SPDX-License-Identifier: GPL-3.0-or-later
#include "EffectKernels.h"

extern const EffectKernels g_effectKernelsBase;
extern const EffectKernels g_effectKernelsAvx2;
extern const EffectKernels g_effectKernelsAvx512;

const EffectKernels& EffectKernelSet(int index) {
    static const EffectKernels* const sets[] = {&g_effectKernelsBase, &g_effectKernelsAvx2, &g_effectKernelsAvx512};
    return *sets[index];
}

const EffectKernels& EffectKernelsInUse() {
    return EffectKernelSet(SelectedKernelSet());
}
