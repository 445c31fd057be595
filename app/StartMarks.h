// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QLoggingCategory>

// Moments that measurements of the start wait for: "window painted" and "picture painted". Silent unless the category
// quince.start is turned on (QT_LOGGING_RULES).
Q_DECLARE_LOGGING_CATEGORY(startMarks)
