// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

// Starting of other programs. Main thread.

// The file that a program's path stands for: "<anything>/Update.exe" is the companion "Update" in AppDir; other paths
// stay.
QString ProgramFileFor(const QString& path);

// Starts a program on its own; it outlives this one. False when the file is missing or cannot be run.
bool StartProgram(const QString& path, const QStringList& arguments);

// Shows a folder in the desktop's file manager; false when it does not exist or nothing can show it.
bool OpenFolder(const QString& path);
