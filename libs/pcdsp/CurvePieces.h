// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Kernels.h"

// Where a curve is read: at whole levels, as the bytes of a picture hold them, or between them too.
enum class CurveReading { WholeLevels, BetweenLevels };

// The cubics that come nearest to a curve (between its levels: to the straight line from one to the next), by least
// squares. Of several ways to divide the levels the first that is near enough is taken, else the best. They are good
// when no level is off by more than a tenth, and when whole levels never fall. Black and white are met closely.
CurvePieces FitPieces(const PointCurve& curve, CurveReading reading);
