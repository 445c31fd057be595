// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

class QLabel;

// Puts a value into the label beside its slider; one other than "no change" stands out (property `changed` of the style
// sheet). Nothing for a null label. Main thread.
void ShowValue(QLabel* label, const QString& text, bool changed);
