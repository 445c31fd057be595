// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtGui/QIcon>

// The icon Images/Icons/<name>.svg, drawn at whatever size and scale is asked for: grey, accent when checked, pale when
// disabled. A missing file gives an empty icon. Main thread.
QIcon SkinIcon(const QString& name);
// The same in one colour, for buttons of a coloured ground.
QIcon SkinIcon(const QString& name, const QColor& color);
