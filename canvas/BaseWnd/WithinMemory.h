// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

class ToolHost;

// The one policy for want of memory: the act has not happened, the user is told once, and the program goes on. Runs
// `act`, which throws std::bad_alloc with everything as it was; false when it did. Main thread.
bool WithinMemory(ToolHost& host, const std::function<void()>& act);
