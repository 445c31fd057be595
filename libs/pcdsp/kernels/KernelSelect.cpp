// SPDX-License-Identifier: GPL-3.0-or-later
#include <atomic>

#include "Kernels.h"

extern const PcDspKernels g_kernelsBase;
extern const PcDspKernels g_kernelsAvx2;
extern const PcDspKernels g_kernelsAvx512;

namespace {

const PcDspKernels* const g_sets[] = {&g_kernelsBase, &g_kernelsAvx2, &g_kernelsAvx512};

int CountRunnable() {
    __builtin_cpu_init();
    if (!__builtin_cpu_supports("avx2") || !__builtin_cpu_supports("fma")) return 1;
    const bool wide = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
                      __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl");
    return wide ? 3 : 2;
}

std::atomic<const PcDspKernels*> g_selected{nullptr};

}  // namespace

int KernelSetCount() {
    static const int count = CountRunnable();
    return count;
}

const PcDspKernels& KernelSet(int index) {
    return *g_sets[index];
}

const PcDspKernels& Kernels() {
    const PcDspKernels* selected = g_selected.load(std::memory_order_relaxed);
    return selected ? *selected : *g_sets[KernelSetCount() - 1];
}

void SelectKernelSet(int index) {
    g_selected = index >= 0 && index < KernelSetCount() ? g_sets[index] : nullptr;
}
