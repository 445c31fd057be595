// SPDX-License-Identifier: GPL-3.0-or-later
#include "StartMarks.h"

Q_LOGGING_CATEGORY(startMarks, "quince.start", QtWarningMsg)
