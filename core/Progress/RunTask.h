// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

#include "CObjProgress.h"

class CShowProgress;
class ProgressWindow;

// Long work. One task runs at a time: its worker has the pictures and the history to itself, while the main thread
// stands in the window's modal loop.
//
//   on the worker                                    on the main thread
//                                                    the window is shown, the worker started, the modal loop entered
//   waits until the window is ready
//   shows "ids_progress_1", does the work
//   says that it is over                             joins the worker, closes the window, leaves the loop

// Runs `work` as a task with `progress` for its sink and returns when the worker is joined and the window closed. True
// when the work ran and nobody cancelled; false after Cancel or Esc: the caller then puts back what it had and commits
// nothing. An exception of the work is thrown again here.
//
// - On the main thread while a task runs (from inside the modal loop): false, and `work` does not run.
// - On a worker: `work` runs there at once and reports to the window already up, else to nobody; no window is opened.
// Its
//   cancel is the running task's.
// - A window that is closed early does not end the task: the main thread then waits for the worker, painting and
//   taking the worker's calls, but no user input.
//
// Needs an application object.
bool RunTask(CShowProgress& progress, const std::function<void(CObjProgress&)>& work);

// The same with a window from the installed factory.
bool RunTask(const std::function<void(CObjProgress&)>& work);

// Called on the main thread for each task's window. Without one, tasks run with a HeadlessProgressWindow. Set at
// start, on the main thread.
using ProgressWindowFactory = std::function<std::unique_ptr<ProgressWindow>()>;
void SetProgressWindowFactory(ProgressWindowFactory factory);

// A task runs at this moment. Any thread.
bool IsTaskRunning();
