// SPDX-License-Identifier: GPL-3.0-or-later
#define QUINCE_KERNEL_TABLE g_warpKernelsAvx512
#define QUINCE_KERNEL_NAME "avx512"
#include "WarpRow.h"
