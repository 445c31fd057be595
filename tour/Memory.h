// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>

// Opens `picture`, moves a slider so that a step is committed, and gives the most memory that the process held, in MB.
double TourMemory(const QString& picture);

// Opens `picture`, gives it this size in the resize tool, and gives the most memory that the process held, in MB; 0
// when it did not come to that size.
double TourResizeMemory(const QString& picture, QSize size);
// The same for the lip brush: ten strokes, and its strength moved. 0 when the strokes did not arrive.
double TourBrushMemory(const QString& picture);
// The same for slimming: one stroke of forty moves. 0 when it did not arrive.
double TourWarpMemory(const QString& picture);
