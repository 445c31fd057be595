// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CEditXiuGaiChiCun.h"
#include "EditHost.h"
#include "SizeWnd.h"

using ResizeHost = EditHost<CSizeWnd, CEditXiuGaiChiCun>;
