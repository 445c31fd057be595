// SPDX-License-Identifier: GPL-3.0-or-later
#include "Messages.h"

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <QtCore/QThread>

// The calls stand in a queue of our own and Qt's event only says that there is one: the lock that hands a call over is
// then ours, and the thread sanitizer sees it (Qt's own locks it cannot see, since the library is not built for it).

namespace {

class Mailbox : public QObject {
  public:
    void Put(QObject* guard, std::function<void()> call) {
        auto wake = std::make_unique<QEvent>(QEvent::User);
        {
            const std::lock_guard lock(m_lock);
            m_letters.push_back({guard, guard != nullptr, std::move(call)});
        }
        QCoreApplication::postEvent(this, wake.release());
    }
    // Drops every call; whoever waits for one of them goes on.
    void Clear() {
        std::deque<Letter> dropped;
        const std::lock_guard lock(m_lock);
        dropped.swap(m_letters);
    }
    void customEvent(QEvent*) override {
        const Letter letter = Take();
        if (letter.call && (letter.guard || !letter.guarded)) letter.call();
    }

  private:
    struct Letter {
        QPointer<QObject> guard;
        bool guarded = false;
        std::function<void()> call;
    };
    // One call for each event; none when the queue was cleared in between.
    Letter Take() {
        const std::lock_guard lock(m_lock);
        if (m_letters.empty()) return {};
        Letter letter = std::move(m_letters.front());
        m_letters.pop_front();
        return letter;
    }

    std::mutex m_lock;
    std::deque<Letter> m_letters;
};

// Lives on the main thread, whichever thread sends first.
Mailbox& MainMailbox() {
    static const std::unique_ptr<Mailbox> mailbox = [] {
        auto made = std::make_unique<Mailbox>();
        made->moveToThread(QCoreApplication::instance()->thread());
        qAddPostRoutine([] { MainMailbox().Clear(); });
        return made;
    }();
    return *mailbox;
}

// What a sender waits for. The call holds it, and it is done when the last holder lets go, whether the call ran or not.
class Receipt {
  public:
    void Wait() {
        std::unique_lock lock(m_lock);
        m_changed.wait(lock, [this] { return m_done; });
    }
    void Done() {
        const std::lock_guard lock(m_lock);
        m_done = true;
        m_changed.notify_all();
    }

  private:
    std::mutex m_lock;
    std::condition_variable m_changed;
    bool m_done = false;
};

}  // namespace

void MessageQueue::Post(QObject* guard, std::function<void()> call) {
    if (QCoreApplication::instance()) MainMailbox().Put(guard, std::move(call));
}

void MessageQueue::Send(std::function<void()> call) {
    Receipt receipt;
    std::shared_ptr<Receipt> held(&receipt, [](Receipt* done) { done->Done(); });
    Post(nullptr, [call = std::move(call), held = std::move(held)] { call(); });
    receipt.Wait();
}

bool OnMainThread() {
    const QCoreApplication* application = QCoreApplication::instance();
    return !application || QThread::currentThread() == application->thread();
}

void AssertMainThread() {
#ifdef QUINCE_DEBUG
    if (!OnMainThread()) qFatal("a window was touched by a worker thread");
#endif
}
