// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QSize>

// Size of the user's first screen in its own pixels; null without a screen. Main thread.
QSize ScreenPixels();
