// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CEditXiuGaiChiCun.h"
#include "CSizeWnd.h"
#include "EditHost.h"

using ResizeHost = EditHost<CSizeWnd, CEditXiuGaiChiCun>;
