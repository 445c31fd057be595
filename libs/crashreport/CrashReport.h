// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The crash reporter: when the program dies by a fault of its own, a text file says where. It is written by a signal
// handler on a stack of its own, with nothing but calls that are safe there, and then the signal takes its usual course
// (the exit status and a core file are those of the crash). Nothing is ever sent anywhere.

// Catches SIGSEGV, SIGABRT, SIGFPE, SIGILL and SIGBUS. `version` goes into the report (up to 255 bytes); `folder` is
// where reports go, as "crash-<time>-<process>.txt" (null or empty: nowhere, and only the standard error stream gets
// the text). Both are copied. A second call replaces both. False when a handler could not be installed.
bool Install(const char* version, const char* folder = nullptr);

// 0: crashes are no longer reported and take their usual course at once; other values: they are again. No effect before
// Install.
void TrySwitch(int on);
