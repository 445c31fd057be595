// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

// What the open dialog begins with.

// The kinds of files to choose from, in the form of QFileDialog and in the program's language: the name people know,
// and the patterns. Meant for dialogs that show the names alone (QFileDialog::HideNameFilterDetails); each pattern is
// there in small and in capital letters, for the dialogs of systems that tell the cases apart.
QString OpenFilter();

// The folder to begin in: that of the picture on show, or the user's pictures folder when there is no such picture or
// it is one of the program's own (the sample, a paste).
QString FolderToOpenFrom(const QString& heldPath);
