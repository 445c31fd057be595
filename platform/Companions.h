// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <QtCore/QString>

// The sharing companions: programs of their own that take a picture on. One that runs holds a lock and answers
// "visible?" and "raise" on a local socket, both named after its semaphore, as this program does itself. It is brought
// up but never ended by this program. Main thread.
enum class Companion { Twitter, Facebook };

struct CompanionRow {
    const char* semaphore;
    const char* program;  // file, to be looked for beside this program
    const char* windowClass;
    const char* windowTitle;
};
const CompanionRow& RowOf(Companion companion);
// The companion whose program has that stem; Twitter for any other name.
Companion CompanionNamed(const QString& stem);

// When the companion's window is visible: restores it, brings it to the front and yields true. The socket is asked
// first and given `patience`; then the screen is searched for a window of its class and title. One that does not run
// costs next to nothing.
bool RaiseCompanion(Companion companion, std::chrono::milliseconds patience = std::chrono::milliseconds(500));
// The same for the first of both that is up.
bool RaiseOpenCompanion(std::chrono::milliseconds patience = std::chrono::milliseconds(500));

// The socket and the lock that a companion holds.
QString CompanionSocketName(Companion companion);
QString CompanionLockFile(Companion companion);
