// SPDX-License-Identifier: GPL-3.0-or-later
#define QUINCE_KERNEL_TABLE g_brushKernelsAvx2
#define QUINCE_KERNEL_NAME "avx2"
#include "BrushRows.h"
