// SPDX-License-Identifier: GPL-3.0-or-later
#include "InstanceAnswers.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <QtCore/QDeadlineTimer>
#include <utility>

#include "LocalPeer.h"

namespace {

using std::chrono::milliseconds;

constexpr qsizetype LongestRequest = 32;
constexpr int Waiting = 16;
constexpr milliseconds VisitorPatience{1000};
// The name of a holder that was ended just now may be taken for a moment longer than its lock.
constexpr milliseconds ListenPause{50};
constexpr milliseconds Ever{-1};

class File {
  public:
    explicit File(int file) : m_file(file) {}
    ~File() {
        if (m_file >= 0) ::close(m_file);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    int Get() const { return m_file; }

  private:
    const int m_file;
};

// In the abstract namespace, whose names begin with a zero and go with their process.
bool Listen(int socket, const QByteArray& name) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const auto length = static_cast<std::size_t>(name.size());
    if (socket < 0 || length + 1 > sizeof(address.sun_path)) return false;
    std::memcpy(address.sun_path + 1, name.constData(), length);
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + length);
    return ::bind(socket, reinterpret_cast<const sockaddr*>(&address), size) == 0 && ::listen(socket, Waiting) == 0;
}

const char* Text(InstanceState state) {
    switch (state) {
        case InstanceState::Shown:
            return "yes\n";
        case InstanceState::Ending:
            return "ending\n";
        case InstanceState::Starting:
            break;
    }
    return "no\n";
}

bool Send(int visitor, const char* line) {
    const auto length = static_cast<ssize_t>(std::strlen(line));
    return ::send(visitor, line, static_cast<std::size_t>(length), MSG_NOSIGNAL | MSG_DONTWAIT) == length;
}

}  // namespace

InstanceAnswers::InstanceAnswers(QByteArray name, std::function<void()> raise)
    : m_name(std::move(name)), m_raise(std::move(raise)), m_stop(::eventfd(0, EFD_CLOEXEC)) {
    if (m_stop >= 0) m_thread = std::thread([this] { Run(); });
}

InstanceAnswers::~InstanceAnswers() {
    if (m_stop < 0) return;
    ::eventfd_write(m_stop, 1);
    m_thread.join();
    ::close(m_stop);
}

void InstanceAnswers::Run() const {
    while (!IsStopped()) {
        const File server(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
        if (!Listen(server.Get(), m_name)) {
            WaitToRead(m_stop, ListenPause);
            continue;
        }
        while (WaitToRead(server.Get(), Ever)) {
            const File visitor(::accept4(server.Get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
            if (visitor.Get() >= 0)
                Answer(visitor.Get());
            else
                WaitToRead(m_stop, ListenPause);
        }
    }
}

bool InstanceAnswers::WaitToRead(int file, milliseconds patience) const {
    pollfd entries[] = {{m_stop, POLLIN, 0}, {file, POLLIN, 0}};
    int ready = 0;
    do {
        ready = ::poll(entries, 2, static_cast<int>(patience.count()));
    } while (ready < 0 && errno == EINTR);
    return ready > 0 && entries[0].revents == 0 && entries[1].revents != 0;
}

bool InstanceAnswers::IsStopped() const {
    pollfd entry = {m_stop, POLLIN, 0};
    return ::poll(&entry, 1, 0) != 0;
}

void InstanceAnswers::Answer(int visitor) const {
    ucred peer = {};
    if (!PeerOf(visitor, peer) || peer.uid != ::geteuid()) return;
    const QDeadlineTimer deadline(VisitorPatience);
    QByteArray heard;
    while (heard.size() < LongestRequest && WaitToRead(visitor, milliseconds(Remaining(deadline)))) {
        char bytes[LongestRequest];
        const ssize_t count = ::read(visitor, bytes, sizeof(bytes));
        if (count <= 0) return;
        heard.append(bytes, count);
        for (qsizetype end = heard.indexOf('\n'); end >= 0; end = heard.indexOf('\n')) {
            if (!Reply(visitor, heard.left(end).trimmed())) return;
            heard.remove(0, end + 1);
        }
    }
}

// False when the visitor has gone.
bool InstanceAnswers::Reply(int visitor, const QByteArray& request) const {
    if (request == "visible?") return Send(visitor, Text(m_state));
    if (request != "raise") return true;
    m_raise();
    return Send(visitor, "done\n");
}
