// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

// The program's version, numbers with dots. Any thread.
QString GetVersionText();

// How version data becomes the text: commas become dots, blanks go; "None VerSion Supprot" when there is none.
QString VersionTextFrom(const QString& data);
