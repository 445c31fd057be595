// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

// How a cluster of characters stands in a column: on its side, as letters of scripts that are written in lines;
// upright, as ideographs; or upright in the upper right of its cell, as the ideographic comma and full stop.
enum class UprightForm { Sideways, Upright, UpperRight };

// After the property Vertical_Orientation of the Unicode Standard (annex 50), by blocks.
UprightForm UprightFormOf(const QString& cluster);
