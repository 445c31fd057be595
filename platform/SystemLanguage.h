// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QLocale>

// The decimal number that stands for a language and region: 1028 Traditional Chinese in Taiwan, 2052 Simplified
// Chinese, 3076 Hong Kong, 4100 Singapore, 5124 Macau, 1033 English; 4096, "no number", for all others.
int LanguageNumber(const QLocale& locale);

// The number of the user's interface language. Any thread.
int SystemLanguageNumber();
