// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// Appends one line to AppDir/dbg.log: "[year:month:day-hour:minute:second]" in local time, the text, CR LF. The format
// is printf's, texts in UTF-8. A text of more than 1024 characters is cut. Any thread: a line is one write, so lines
// never mix. A file that cannot be opened loses the line silently.
void Log(const char* format, ...) __attribute__((format(printf, 1, 2)));
