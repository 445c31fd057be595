// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <QtCore/QString>
#include <string>

#include "Bitmap.h"
#include "ProgressSpan.h"

// The looks of one-click beauty. A look is known by its preset, 1 to 8 in the order of the list. Any thread.
namespace BeautyLooks {

inline constexpr int Count = 8;

// There is a look of that preset; 0 is the picture without one.
bool Exists(int preset);
// In the interface's language; empty for none.
QString Name(int preset);
// 0xAARRGGBB of the name strip.
std::uint32_t Colour(int preset);
// The program's folder with the recipes.
std::wstring Folder();
// Runs a look on the bitmap's own pixels at full strength. False for a null bitmap and for no look, and when it failed
// or the sink stopped it; the pixels are then undefined.
bool Run(Bitmap& picture, int preset, const std::wstring& folder, const ProgressSpan& span = {});

}  // namespace BeautyLooks
