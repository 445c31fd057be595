// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

// Opens `picture` in the real main window, retouches it as a person would, saves the result as `folder`/retouched.jpg
// and leaves a shot of the window in `folder`/window.png. False when no file came out.
bool TourRetouch(const QString& picture, const QString& folder);
