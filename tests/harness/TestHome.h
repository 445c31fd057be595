// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

// A home folder of the test program's own: QUINCE_HOME points to a fresh temporary folder in which the program's
// read-only resources appear as links, so that no test touches another's files or the build's.
namespace TestHome {

// Makes the folder and sets QUINCE_HOME; called by the test programs' main before anything else.
void Create();
// Removes it.
void Remove();
// Its path, native slashes, none at the end.
QString Path();

}  // namespace TestHome
