// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <QtCore/QString>

#include "InstanceLock.h"

class QLocalServer;
class QLocalSocket;

// What entering found, and so what the process does next.
enum class InstanceEntry {
    First,        // no other instance: go on
    Replaced,     // the other one was silent and has been ended: go on
    Raised,       // the other one answered and came to the front: quit
    Unreachable,  // another one holds the lock and is neither to be asked nor to be ended: quit
    Failed        // the lock cannot be made: say "Create Semaphore error!" and quit
};

// One running instance per user and data folder: a lock that dies with its process, and a local socket under the same
// name through which a second instance asks the first whether its window is visible and to bring it to the front. An
// instance that answers is never ended. Main thread; the answering side needs the event loop.
class SingleInstance {
  public:
    // How long a holder may be silent before it is ended.
    explicit SingleInstance(std::chrono::milliseconds silence = std::chrono::seconds(5));
    ~SingleInstance();

    // Takes the lock or deals with its holder; waits up to the silence. Afterwards (First, Replaced) others are
    // answered.
    InstanceEntry Enter();

    // The window: whether it is visible, and how to restore it and bring it to the front. A request that came before is
    // carried out now. Until then the answer is "not visible". The functions must stay valid as long as this object.
    void Serve(std::function<bool()> visible, std::function<void()> raise);

  private:
    enum class Answer { None, Given, Stranger };

    Answer Ask(std::chrono::milliseconds patience) const;
    void Listen();
    void Accept();
    void Reply(QLocalSocket* socket);
    void Raise();

    QString m_name;
    InstanceLock m_lock;
    std::chrono::milliseconds m_silence;
    std::unique_ptr<QLocalServer> m_server;
    std::function<bool()> m_visible;
    std::function<void()> m_raise;
    bool m_raiseAsked = false;
};
