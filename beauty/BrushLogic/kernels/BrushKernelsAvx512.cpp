// SPDX-License-Identifier: GPL-3.0-or-later
#define QUINCE_KERNEL_TABLE g_brushKernelsAvx512
#define QUINCE_KERNEL_NAME "avx512"
#include "BrushRows.h"
