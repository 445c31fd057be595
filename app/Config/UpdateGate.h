// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <QtCore/QString>
#include <QtCore/QStringList>

// What the gate asks of the machine.
struct UpdateServices {
    std::function<qint64()> now;  // seconds since the epoch
    std::function<bool()> networkAlive;
    std::function<bool(const QString& path, const QStringList& arguments)> startProgram;
};

// Update gate: hands over to the updater when Config.ini says that there is a new version ([Main] newversion is 1), the
// last activation ([RunOnce] NewVersionCheckActive, seconds since the epoch in 32 bits) is at least a day away in
// either direction, and there is a network. The time is written before the updater starts, so that it runs once a day
// however it ends. True when the updater was started: this program then ends without a window. Main thread.
bool RunUpdateGate(const UpdateServices& services);

// The second hand-off, once the main window stands: on every run but the first, with an address for updates and with a
// network, the updater looks for a new version beside the running program. Whether it starts is not checked. Main
// thread.
void RunUpdateCheck(const UpdateServices& services, const QString& address, bool firstRun);
