// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

// Opens `picture`, moves a slider so that a step is committed, and gives the most memory that the process held, in MB.
double TourMemory(const QString& picture);
