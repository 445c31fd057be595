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
// For the same reason nothing here is made by the worker that happens to send first.

namespace {

struct Letter {
    QPointer<QObject> guard;
    bool guarded = false;
    std::function<void()> call;
};

class Mailbox : public QObject {
  public:
    void customEvent(QEvent*) override;
};

std::mutex mailLock;
std::deque<Letter> letters;
// Lives as long as the application object, on its thread; null when there is none.
std::unique_ptr<Mailbox> mailbox;

// One call for each event; none when the queue was cleared in between.
Letter TakeLetter() {
    const std::lock_guard lock(mailLock);
    if (letters.empty()) return {};
    Letter letter = std::move(letters.front());
    letters.pop_front();
    return letter;
}

void Mailbox::customEvent(QEvent*) {
    const Letter letter = TakeLetter();
    if (letter.call && (letter.guard || !letter.guarded)) letter.call();
}

// Drops every call; whoever waits for one of them goes on.
void CloseMailbox() {
    std::deque<Letter> dropped;
    std::unique_ptr<Mailbox> closed;
    const std::lock_guard lock(mailLock);
    dropped.swap(letters);
    closed.swap(mailbox);
}

void OpenMailbox() {
    qAddPostRoutine(CloseMailbox);
    const std::lock_guard lock(mailLock);
    mailbox = std::make_unique<Mailbox>();
}

Q_COREAPP_STARTUP_FUNCTION(OpenMailbox)

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
    const std::lock_guard lock(mailLock);
    if (!mailbox) return;
    letters.push_back({guard, guard != nullptr, std::move(call)});
    QCoreApplication::postEvent(mailbox.get(), new QEvent(QEvent::User));
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
