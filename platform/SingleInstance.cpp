// SPDX-License-Identifier: GPL-3.0-or-later
#include "SingleInstance.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QThread>
#include <QtNetwork/QLocalSocket>

#include "AppPaths.h"
#include "LocalPeer.h"
#include "Messages.h"

namespace {

using std::chrono::milliseconds;

constexpr char SemaphoreName[] = "Vantu_PixelOwl_Main_Process";
constexpr milliseconds RetryPause{20};
constexpr milliseconds EndPatience{2000};

// In the data folder, which a first start may have to make.
QString LockFile() {
    MakeDirs(GetAppDir());
    return LocalLockFile(SemaphoreName);
}

}  // namespace

SingleInstance::SingleInstance(milliseconds silence) : m_lock(LockFile()), m_silence(silence) {}

SingleInstance::~SingleInstance() = default;

InstanceEntry SingleInstance::Enter() {
    m_name = LocalSocketName(SemaphoreName);
    bool ended = false;
    bool ending = false;
    pid_t silent = 0;
    QDeadlineTimer deadline(m_silence);
    while (true) {
        const InstanceLock::State state = m_lock.Take();
        if (state == InstanceLock::State::Failed) return InstanceEntry::Failed;
        if (state == InstanceLock::State::Taken) {
            BeginToAnswer();
            return ended ? InstanceEntry::Replaced : InstanceEntry::First;
        }
        // Of several that wait for one silent holder, one takes its place; it then has all its own time to answer.
        const pid_t holder = m_lock.Holder();
        if (holder != silent) {
            deadline.setRemainingTime(m_silence);
            ending = false;
        }
        silent = holder;
        const Answer answer = Ask(milliseconds(Remaining(deadline)));
        if (answer == Answer::Given) return InstanceEntry::Raised;
        if (answer == Answer::Stranger) return InstanceEntry::Unreachable;
        if (answer == Answer::Ending && !ending) {
            deadline.setRemainingTime(m_silence);
            ending = true;
        }
        if (!deadline.hasExpired()) {
            QThread::msleep(static_cast<unsigned long>(RetryPause.count()));
            continue;
        }
        // It was alive and said so: at most its place is not to be had.
        if (ending) return InstanceEntry::Unreachable;
        const bool endedNow = m_lock.EndHolder(silent, EndPatience);
        if (!endedNow && m_lock.Holder() == silent) return InstanceEntry::Unreachable;
        ended = ended || endedNow;
    }
}

SingleInstance::Answer SingleInstance::Ask(milliseconds patience) const {
    const QDeadlineTimer deadline(patience);
    QLocalSocket socket;
    socket.setSocketOptions(QLocalSocket::AbstractNamespaceOption);
    socket.connectToServer(m_name);
    if (!socket.waitForConnected(Remaining(deadline))) return Answer::None;
    ucred peer = {};
    // A peer that is gone by now has said nothing.
    if (!PeerOf(static_cast<int>(socket.socketDescriptor()), peer)) return Answer::None;
    // The name of a socket is free for anyone to take; only the holder of the lock speaks for it.
    if (peer.uid != ::geteuid()) return Answer::Stranger;
    const pid_t holder = m_lock.Holder();
    if (holder != 0 && peer.pid != holder) return Answer::None;
    const QByteArray visible = Exchange(socket, "visible?", deadline);
    if (visible.isEmpty()) return Answer::None;
    if (visible == "ending") return Answer::Ending;
    Exchange(socket, "raise", deadline);
    return Answer::Given;
}

void SingleInstance::BeginToAnswer() {
    m_answers =
        std::make_unique<InstanceAnswers>(m_name.toUtf8(), [this] { PostToMain(&m_mainThread, [this] { Raise(); }); });
}

void SingleInstance::Raise() {
    m_raiseAsked = !m_raise;
    if (m_raise) m_raise();
}

void SingleInstance::Serve(std::function<void()> raise) {
    m_raise = std::move(raise);
    if (m_answers) m_answers->Say(InstanceState::Shown);
    if (m_raiseAsked) Raise();
}

void SingleInstance::Retire() {
    if (m_answers) m_answers->Say(InstanceState::Ending);
    m_raise = {};
}
