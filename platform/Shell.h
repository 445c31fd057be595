// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

// Starting of other programs. Main thread.

// The file that a program's path stands for: "<anything>/Update.exe" is the companion "Update" beside the program
// file, and nowhere else; other paths stay.
QString ProgramFileFor(const QString& path);

// Starts a program on its own; it outlives this one. False when the file is missing or cannot be run.
bool StartProgram(const QString& path, const QStringList& arguments);

// Shows a folder in the desktop's file manager; false when it does not exist or nothing can show it.
bool OpenFolder(const QString& path);

// Opens a file with the program that the desktop has for it; false when it does not exist or nothing can open it.
bool OpenFile(const QString& path);

// Opens an https page in the user's browser; false for any other address, or without a browser.
bool OpenPage(const QString& address);

// Opens the user's mail program on a new message with a file attached; nothing is sent by this. False without one.
bool WriteMail(const QString& subject, const QString& attachment);
