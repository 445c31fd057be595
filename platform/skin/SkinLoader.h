// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <QtCore/QString>

class QWidget;

// Makes a control that a window builds by itself; null leaves it to the loader. The widget is owned by `parent`.
using ControlFactory = std::function<QWidget*(const QString& className, QWidget* parent, const QString& name)>;

// Builds the widget tree of the skin `name` ("MainFrame.xml") of the present language below `parent`; null when the
// file is missing or damaged (a log line tells). Applies the skin's own properties: `iconName` (icon of a button),
// and gives every control without an accessible name one from its tooltip or text. Main thread.
QWidget* LoadSkin(const QString& name, QWidget* parent, const ControlFactory& factory);
