// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QSize>

// The question whether a large picture is to be made smaller when it is opened.
namespace SizeCheck {

// A side above this makes a picture large.
constexpr int LargeSide = 2000;

// What the settings say for large pictures ([Tip] DlgOpenImageLessen).
enum Choice { Ask = 0, Reduce = 1, Keep = 2 };

bool IsLarge(QSize picture);
// The picture's size with its longer side at LargeSide and the other in proportion, truncated, at least 1.
QSize Reduced(QSize picture);
// The stored choice: 0 asks, 1 reduces, every other number keeps.
int StoredChoice();

}  // namespace SizeCheck
