// SPDX-License-Identifier: GPL-3.0-or-later
#define QUINCE_KERNEL_TABLE g_effectKernelsAvx512
#define QUINCE_KERNEL_NAME "avx512"
#include "EffectKernelTable.h"
