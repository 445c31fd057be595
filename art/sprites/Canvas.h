// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>
#include <QtGui/QImage>
#include <QtGui/QPainter>

#include <functional>

// Draws one sprite at 1× and at 2× from the same description and writes both: "name.png" and "name@2x.png".
// `width` and `height` are in logical pixels; the painter is scaled, antialiased, and starts on transparent ground.
// False when a folder or a file can not be written.
bool WriteSprite(const QString& folder, const QString& name, int width, int height,
                 const std::function<void(QPainter&)>& draw);
