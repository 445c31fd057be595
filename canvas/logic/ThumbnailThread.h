// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

// The thread that makes a list's pictures one after the other. Every call on the same thread, the main one.
//
// A step touches pixels, numbers and files that are its own, and posts what it made; it never waits for the main
// thread, so that stopping takes no longer than one step and cannot lock.
class ThumbnailThread {
  public:
    using Step = std::function<void()>;

    ThumbnailThread() = default;
    // Stops.
    ~ThumbnailThread() { Stop(); }
    ThumbnailThread(const ThumbnailThread&) = delete;
    ThumbnailThread& operator=(const ThumbnailThread&) = delete;

    // Stops what still runs and begins with these, in order. A step that runs out of memory is skipped.
    void Start(std::vector<Step> steps);
    // Waits for the step that runs; those behind it are dropped.
    void Stop();
    // Started, and neither stopped nor through with its last step.
    bool IsRunning() const { return m_thread.joinable() && !m_done; }

  private:
    void Run(const std::vector<Step>& steps);

    std::thread m_thread;
    std::atomic<bool> m_cancel{false};
    std::atomic<bool> m_done{false};
};
