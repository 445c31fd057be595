// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <QtCore/QString>

// The sharing companions: programs of their own that take a picture to a service. A companion that runs listens on a
// local socket named after its window and the user, and answers "visible?" and "raise" as this program does.

// When a companion's window is visible: restores it, brings it to the front and yields true. Asks the windows in a
// fixed order and waits up to `patience` for each that listens; one that does not run costs nothing. Main thread.
bool RaiseOpenCompanion(std::chrono::milliseconds patience = std::chrono::milliseconds(500));

// The socket that a companion window listens on.
QString CompanionSocketName(const QString& window);
