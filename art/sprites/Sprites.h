// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

// The small pictures of the windows. Each function writes below `folder` (the staged Images folder) and returns false
// when something can not be written. The same bytes on every run.

// TextureBrush/TextureBrush.jpg and @2x: the tile behind pictures with transparency, 16 × 16 logical pixels.
bool DrawTexture(const QString& folder);
// Loading/: the translucent panel of the progress window, 300 × 100, and the strip of eleven spinner frames, 27 × 27
// each.
bool DrawLoading(const QString& folder);
// ThumbWnd/: ground of the navigator (187 × 216) and its close box (15 × 15), plain and hovered.
bool DrawNavigator(const QString& folder);
// Button/: grounds of the compare buttons (174 × 42 and 104 × 42), plain and hovered, and the strips of three frames
// (held, plain, hovered; 32 × 32 each) of the text box's delete and rotate handles.
bool DrawButtons(const QString& folder);
// Icons/quince_<size>.png from the program's drawing, 16 to 256 pixels.
bool DrawProgramIcons(const QString& folder, const QString& svgPath);
