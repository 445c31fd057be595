// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

// Data parallelism over rows: one pool of threads for the process, started on first use.
//
// A loop body must give the same bytes however the rows are divided; the number of threads then never shows in a
// result. Calls may come from any thread, several at a time; a call from inside a loop body runs on its own thread.

// Calls body(first, last) for disjoint ranges that cover 0 to count, each at least `grain` long where count allows, on
// all workers; returns when all are done. The first exception of a body is thrown again here. Nothing for count < 1.
void ForEachBand(int count, int grain, const std::function<void(int first, int last)>& body);

// Threads that take part in a loop, the caller included; the machine's cores unless set. Tests set 1 to 16.
int WorkerCount();
// For tests and programs that share the machine; n below 1 restores the default. Not during a loop.
void SetWorkerCount(int n);
