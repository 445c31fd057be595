// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGui/QCursor>

// The cursor of a pen of so many logical pixels on a screen of `scale` physical ones each: a dark disc with a white
// edge that shows what lies under it; below 4 a cross, since no disc could be seen. Main thread.
QCursor PenCursor(int pen, double scale);
