// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "Bench.h"

class QWidget;

// Drags the slider `control` of a panel to and fro and adds a row each for the median and the worst event: from the
// mouse's move until the window is painted. Without the skin beside the program nothing is measured, and it says so.
void ReportSliderDrag(BenchReport& report, const std::string& name, const QWidget& panel, const char* control);
