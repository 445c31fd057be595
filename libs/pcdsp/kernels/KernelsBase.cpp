// SPDX-License-Identifier: GPL-3.0-or-later
#define QUINCE_KERNEL_TABLE g_kernelsBase
#define QUINCE_KERNEL_NAME "baseline"
#include "KernelTable.h"
