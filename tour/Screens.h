// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

// Takes the pictures of the documentation in the present language and at the screen's present scale, into `folder`;
// each file's name ends in `suffix`.
void TourScreens(const QString& picture, const QString& folder, const QString& suffix);
