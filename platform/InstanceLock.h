// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sys/types.h>

#include <chrono>
#include <QtCore/QString>

// A lock file that one process at a time holds and that the system frees when that process ends, however it ends. The
// file stays. One object per file and process, since closing a second one would free the lock of the first.
class InstanceLock {
  public:
    enum class State { Taken, Held, Failed };

    explicit InstanceLock(const QString& path);
    ~InstanceLock();
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;

    // Takes the lock if it is free; never waits. Failed when the file cannot be made or locked.
    State Take();

    // The process that holds the lock now, as the system tells it; 0 when it is free or held where this process cannot
    // see (another machine or container).
    pid_t Holder() const;

    // Ends the holder when it is `holder`, of the same user and in the same network, and waits until it is gone. False
    // when it was not ended; nothing but the holder is ever touched.
    bool EndHolder(pid_t holder, std::chrono::milliseconds patience) const;

  private:
    int m_file = -1;
};
