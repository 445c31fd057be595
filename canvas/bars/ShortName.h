// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

// A file name shortened for display. The stem before the last dot, when it has 10 characters or more, becomes its first
// 3 + "..." + its last 3; the extension stays. A name without a dot, when it has 11 or more, becomes its first 3 +
// "..."
// + its last 7. Any thread.
QString ShortenName(const QString& name);
