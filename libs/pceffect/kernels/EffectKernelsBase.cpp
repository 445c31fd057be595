// SPDX-License-Identifier: GPL-3.0-or-later
#define QUINCE_KERNEL_TABLE g_effectKernelsBase
#define QUINCE_KERNEL_NAME "baseline"
#include "EffectKernelTable.h"
