// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <QtCore/QPointF>
#include <QtGui/QRgb>

// The colour that a window of this program shows at a place of the desktop (logical pixels), 0xRRGGBB: that of the one
// physical pixel there. Nothing where no window of the program is. Main thread.
std::optional<QRgb> PixelUnder(QPointF global);
