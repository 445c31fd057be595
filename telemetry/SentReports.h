// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

// What this program has sent last, word for word, for its user to read: AppDir/Resources/LastReport.txt holds the
// requests of the last run that sent any, and does not exist before the first. Any thread.

// Adds a request to the report; `body` is that of a post.
void NoteSent(const QString& method, const QString& url, const QString& body = {});
// The report; empty when nothing was ever sent.
QString LastSent();
// Begins a new report with the next request; a run does so by itself.
void BeginSentReport();
