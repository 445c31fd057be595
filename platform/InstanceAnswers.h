// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <QtCore/QByteArray>
#include <thread>

// What another process hears of a running instance.
enum class InstanceState {
    Starting,  // it has no window yet
    Shown,     // its window is up
    Ending     // it is about to end: whoever wants its place waits for it
};

// The answering side of SingleInstance. It has a thread of its own, so that others hear of this process however long
// its main thread is at work. One line asks and one line answers: "visible?" gets "no", "yes" or "ending", and "raise"
// gets "done" at once. Only processes of the same user are answered, one at a time and each for a second at most.
//
// It uses the system's sockets and no Qt object: the thread then shares nothing with the program but what stands below.
class InstanceAnswers {
  public:
    // Answers under the abstract name of a local socket from now on. `raise` is called on the answering thread.
    InstanceAnswers(QByteArray name, std::function<void()> raise);
    // Nothing is answered, and `raise` not called, afterwards.
    ~InstanceAnswers();
    InstanceAnswers(const InstanceAnswers&) = delete;
    InstanceAnswers& operator=(const InstanceAnswers&) = delete;

    // Any thread.
    void Say(InstanceState state) { m_state = state; }

  private:
    void Run() const;
    bool IsStopped() const;
    // False when there is nothing to read in time, and once the end is asked for.
    bool WaitToRead(int file, std::chrono::milliseconds patience) const;
    void Answer(int visitor) const;
    bool Reply(int visitor, const QByteArray& request) const;

    const QByteArray m_name;
    const std::function<void()> m_raise;
    std::atomic<InstanceState> m_state{InstanceState::Starting};
    // Readable once the thread is to end; below 0, without a thread, when the system has no handle left for it.
    const int m_stop;
    std::thread m_thread;
};
