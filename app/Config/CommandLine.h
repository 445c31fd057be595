// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <QtCore/QString>
#include <QtCore/QStringList>

// The picture that the command line names; `arguments` without the program's own name.
//
// The whole text is one path if such a file exists, so that a name with blanks needs no quotes. Else the first argument
// that is no option is taken ("--" ends the options; a file URL stands for its path). Without one the whole text is the
// answer, which may be empty or no valid path: whoever opens it says so. A path that exists comes back absolute.
QString PictureFromCommandLine(const QStringList& arguments);

// The same with another way to tell whether a path exists.
QString PictureFromCommandLine(const QStringList& arguments, const std::function<bool(const QString&)>& exists);
