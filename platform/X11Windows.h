// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QByteArray>

// Looks on the X11 screen of this session for a top-level window that has one text for its class and the other for its
// title, whichever is which. A visible or minimised one is restored and brought to the front, and the answer is true;
// false without one, and where there is no X11 screen. Any thread.
bool RaiseX11Window(const QByteArray& first, const QByteArray& second);
