// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

// The open dialog's list of file kinds.

// As the program states it: pairs of a label and its patterns, all separated by "|".
QString OpenFilterText();
// The same in the form of QFileDialog. Case does not count in a pattern, on any system.
QString OpenFilter();
