// SPDX-License-Identifier: GPL-3.0-or-later
#include "InstanceLock.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

// The header of glibc 2.36 forgets to say that its functions are C.
extern "C" {
#include <sys/pidfd.h>
}
#include <QtCore/QFile>

namespace {

struct flock WholeFileLock() {
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    return lock;
}

QByteArray ProcessFile(pid_t process, const char* name) {
    return "/proc/" + QByteArray::number(process) + name;
}

bool SameUser(pid_t process) {
    struct stat present = {};
    return ::stat(ProcessFile(process, "").constData(), &present) == 0 && present.st_uid == ::geteuid();
}

// A process in another network namespace cannot be asked, so its silence says nothing.
bool SameNetwork(pid_t process) {
    struct stat own = {};
    struct stat other = {};
    return ::stat("/proc/self/ns/net", &own) == 0 && ::stat(ProcessFile(process, "/ns/net").constData(), &other) == 0 &&
           own.st_dev == other.st_dev && own.st_ino == other.st_ino;
}

bool WaitForEnd(int process, std::chrono::milliseconds patience) {
    pollfd entry = {process, POLLIN, 0};
    return ::poll(&entry, 1, static_cast<int>(patience.count())) == 1;
}

}  // namespace

InstanceLock::InstanceLock(const QString& path)
    : m_file(::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600)) {}

InstanceLock::~InstanceLock() {
    if (m_file >= 0) ::close(m_file);
}

InstanceLock::State InstanceLock::Take() {
    struct flock lock = WholeFileLock();
    if (m_file < 0) return State::Failed;
    if (::fcntl(m_file, F_SETLK, &lock) == 0) return State::Taken;
    return errno == EACCES || errno == EAGAIN ? State::Held : State::Failed;
}

pid_t InstanceLock::Holder() const {
    struct flock lock = WholeFileLock();
    if (m_file < 0 || ::fcntl(m_file, F_GETLK, &lock) != 0 || lock.l_type == F_UNLCK) return 0;
    return lock.l_pid > 0 ? lock.l_pid : 0;
}

bool InstanceLock::EndHolder(pid_t holder, std::chrono::milliseconds patience) const {
    if (holder <= 0 || holder == ::getpid()) return false;
    // The handle stays with this very process even if its number is given to another one.
    const int process = ::pidfd_open(holder, 0);
    if (process < 0) return false;
    const bool holds = Holder() == holder;
    const bool sent =
        holds && SameUser(holder) && SameNetwork(holder) && ::pidfd_send_signal(process, SIGKILL, nullptr, 0) == 0;
    // Also for one that another start has ended in this moment: it can no longer be read, but may hold the lock still.
    const bool ended = holds && WaitForEnd(process, patience) && sent;
    ::close(process);
    return ended;
}
