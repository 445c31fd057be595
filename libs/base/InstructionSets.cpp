// SPDX-License-Identifier: GPL-3.0-or-later
#include "InstructionSets.h"

#include <algorithm>
#include <array>
#include <atomic>

namespace {

constexpr std::array<std::string_view, 3> Names = {"baseline", "avx2", "avx512"};

int CountRunnable() {
    __builtin_cpu_init();
    if (!__builtin_cpu_supports("avx2") || !__builtin_cpu_supports("fma")) return 1;
    const bool wide = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
                      __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl");
    return wide ? 3 : 2;
}

std::atomic<int> g_selected{-1};

}  // namespace

int KernelSetCount() {
    static const int count = CountRunnable();
    return count;
}

int SelectedKernelSet() {
    const int selected = g_selected.load(std::memory_order_relaxed);
    return selected >= 0 ? selected : KernelSetCount() - 1;
}

void SelectKernelSet(int index) {
    g_selected = index >= 0 && index < KernelSetCount() ? index : -1;
}

std::string_view KernelSetName(int index) {
    return index >= 0 && index < static_cast<int>(Names.size()) ? Names[index] : std::string_view();
}

int KernelSetByName(std::string_view name) {
    const auto found = std::find(Names.begin(), Names.end(), name);
    return found == Names.end() ? -1 : static_cast<int>(found - Names.begin());
}
