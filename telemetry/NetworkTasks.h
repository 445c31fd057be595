// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

// Requests that nobody waits for, carried out one after another on a thread of their own, which starts with the first
// of them. A task owns all that it works with and asks `canContinue` before each step: it is false once the end has
// begun. Add and Stop on the main thread.
class NetworkTasks {
  public:
    using CanContinue = std::function<bool()>;
    using Task = std::function<void(const CanContinue& canContinue)>;

    NetworkTasks() = default;
    ~NetworkTasks();
    NetworkTasks(const NetworkTasks&) = delete;
    NetworkTasks& operator=(const NetworkTasks&) = delete;

    // Dropped after Stop, and while an unreachable server has left too many waiting.
    void Add(Task task);
    // Gives up the task that runs, drops the others and waits for the thread, which takes a moment at most.
    void Stop();
    // Waits until nothing is left to do; for tests.
    void WaitUntilIdle();
    bool HasThread() const { return m_thread.joinable(); }

  private:
    static constexpr std::size_t MostWaiting = 64;

    void Run();

    std::mutex m_lock;
    std::condition_variable m_changed;
    std::deque<Task> m_waiting;
    bool m_working = false;
    std::atomic<bool> m_stopped{false};
    std::thread m_thread;
};
