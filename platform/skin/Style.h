// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGui/QColor>

class QApplication;

// The look that code paints by itself; everything else is in the style sheet Style/quince.qss.
namespace Style {

inline const QColor Canvas(0xEB, 0xEB, 0xEB);
inline const QColor Panel(0xF7, 0xF8, 0xFA);
inline const QColor Text(0x2B, 0x2F, 0x36);
inline const QColor Secondary(0x6B, 0x72, 0x80);
inline const QColor Icon(0x4A, 0x51, 0x5C);
inline const QColor Hairline(0xE1, 0xE4, 0xE8);
inline const QColor Accent(0x20, 0xB8, 0xF1);
inline const QColor AccentDark(0x0E, 0x9F, 0xD6);
inline const QColor Disabled(0xC4, 0xC9, 0xD0);
inline const QColor Track(0xDD, 0xE1, 0xE6);
inline const QColor HandleLine(0xC4, 0xCA, 0xD2);
inline const QColor HandleHover(0xF4, 0xFB, 0xFE);
inline const QColor FocusRing(0x20, 0xB8, 0xF1, 60);

// Corner of top-level windows in logical pixels.
constexpr int WindowCorner = 15;

// Sets fonts (with a face for Chinese behind the Latin one) and the style sheet. Once, after the QApplication exists.
void Apply(QApplication& application);

}  // namespace Style
