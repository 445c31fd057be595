// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <QtCore/QObject>
#include <QtCore/QString>

#include "InstanceAnswers.h"
#include "InstanceLock.h"

// What entering found, and so what the process does next.
enum class InstanceEntry {
    First,        // no other instance: go on
    Replaced,     // the other one was silent and has been ended: go on
    Raised,       // the other one answered and came to the front: quit
    Unreachable,  // another one holds the lock and is neither to be asked nor to be ended: quit
    Failed        // the lock cannot be made: say "Create Semaphore error!" and quit
};

// One running instance per user and data folder: a lock that dies with its process, and a local socket under the same
// name through which a second instance asks the first whether its window is visible and to bring it to the front. The
// first answers on a thread of its own, so one that is merely busy answers too; an instance that answers is never
// ended. Main thread.
class SingleInstance {
  public:
    // How long a holder may be silent before it is ended.
    explicit SingleInstance(std::chrono::milliseconds silence = std::chrono::seconds(5));
    ~SingleInstance();

    // Takes the lock or deals with its holder; waits up to the silence, and as long again for one that is ending.
    // Afterwards (First, Replaced) others are answered.
    InstanceEntry Enter();

    // From now on the window is visible, and `raise` restores it and brings it to the front: once for each request, on
    // the main thread as soon as its event loop runs. A request that came before is carried out now.
    void Serve(std::function<void()> raise);
    // The window is gone and the process about to end: nothing is raised any more, and whoever starts now waits for the
    // place instead of being turned away.
    void Retire();

  private:
    enum class Answer { None, Given, Ending, Stranger };

    Answer Ask(std::chrono::milliseconds patience) const;
    void BeginToAnswer();
    void Raise();

    QString m_name;
    InstanceLock m_lock;
    std::chrono::milliseconds m_silence;
    std::function<void()> m_raise;
    bool m_raiseAsked = false;
    // What requests are posted to; the thread that posts them ends before it.
    QObject m_mainThread;
    std::unique_ptr<InstanceAnswers> m_answers;
};
