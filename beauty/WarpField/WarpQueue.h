// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

#include "ProgressSpan.h"

// One step of a stroke on the full picture, with the brush as it was at that moment: a slider or a zoom that comes
// before the step is worked changes nothing of it.
struct WarpEntry {
    int x1 = 0, y1 = 0, x0 = 0, y0 = 0;
    int mode = 0;
    int radius = 1;
    double amount = 0.0;
};

// Steps that wait for the end of a stroke, and the thread that works them then. While the mouse is held entries are
// only added, so that the full picture does not slow down the hand; Release starts the thread, Wait lasts until it is
// done. `work` runs on that thread alone, and so does `rest`, which follows when nothing that was released is left;
// neither runs while Wait has returned and nothing was released since.
//
// Every operation may be called from any thread, Wait from one at a time.
class WarpQueue {
  public:
    WarpQueue(
        std::function<void(const WarpEntry&)> work, std::function<void()> rest = [] {});
    // Drops what is not begun and waits for what is, without a limit.
    ~WarpQueue();
    WarpQueue(const WarpQueue&) = delete;
    WarpQueue& operator=(const WarpQueue&) = delete;

    // Appends an entry. Throws std::bad_alloc.
    void Add(const WarpEntry& entry);
    // Lets the thread work all that was added; what is added while it works waits for the next release.
    void Release();
    // Waits until everything that was released is done, at once where that is nothing. Reports to the span and asks its
    // sink after each entry; when that wants to stop the entries that are not begun are dropped. False when entries
    // were dropped. Throws what `work` or `rest` threw, which drops what waits too.
    bool Wait(const ProgressSpan& span);
    // Drops all entries that are not begun, released or not, and waits for the one that is.
    void Clear();

    // Entries that are not done.
    std::size_t Size() const;

  private:
    void Serve();
    // One act of the thread, without the lock.
    void Run(const std::function<void()>& act, std::unique_lock<std::mutex>& guard);
    void Drop();  // the lock is held

    const std::function<void(const WarpEntry&)> m_work;
    const std::function<void()> m_rest;
    mutable std::mutex m_lock;
    std::condition_variable m_wake;  // there is work, or the end
    std::condition_variable m_done;  // an entry is done
    std::deque<WarpEntry> m_entries;
    std::size_t m_released = 0;  // how many of the first entries may be worked
    std::size_t m_finished = 0;  // since the last release onto an idle thread
    bool m_dropped = false;
    bool m_busy = false;
    bool m_stop = false;
    std::exception_ptr m_error;
    std::thread m_thread;  // last, since it uses all the others
};
