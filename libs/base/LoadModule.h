// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The function of that name in a module of the program (a shared library that is loaded when it is first needed). The
// module is looked for beside the program, in the library folder of an installation, then wherever the loader looks,
// and is never unloaded: libraries in it may hold threads and thread-local data. Null when it is not there. Any thread.
void* FindInModule(const char* module, const char* function);
