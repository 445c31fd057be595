// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <QtCore/QSize>

// The proportions of the crop tool. A ratio is height divided by width, above 0.

// The ratios of the panel's list, by the item's index; 0 for the free selection. The item after these is the desktop's.
constexpr std::array<double, 11> CropRatios{0.0,     1.0,     3.0 / 2,  4.0 / 3,   5.0 / 3, 5.0 / 4,
                                            6.0 / 4, 7.0 / 5, 9.0 / 16, 10.0 / 16, 2.0 / 5};

// The largest size of this ratio within the picture.
QSize FitRatio(QSize picture, double ratio);
// `size` with its sides exchanged; the side that then passes the picture's is held there and the other one follows.
QSize Swapped(QSize size, QSize picture);
