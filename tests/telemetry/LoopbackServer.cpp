// SPDX-License-Identifier: GPL-3.0-or-later
#include "LoopbackServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <chrono>

namespace {

constexpr int Forever = -1;
constexpr int PatienceMs = 10000;

bool Send(int visitor, const std::string& bytes) {
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        const ssize_t count = ::send(visitor, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (count <= 0) return false;
        sent += static_cast<std::size_t>(count);
    }
    return true;
}

std::string Heading(int status, const std::string& more) {
    return "HTTP/1.1 " + std::to_string(status) + " Said\r\n" + more + "\r\n";
}

}  // namespace

LoopbackServer::LoopbackServer() : m_listen(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)), m_stop(::eventfd(0, 0)) {
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof(address);
    if (::bind(m_listen, reinterpret_cast<sockaddr*>(&address), size) != 0 || ::listen(m_listen, 64) != 0) std::abort();
    ::getsockname(m_listen, reinterpret_cast<sockaddr*>(&address), &size);
    m_port = ntohs(address.sin_port);
    m_thread = std::thread([this] { Run(); });
}

LoopbackServer::~LoopbackServer() {
    ::eventfd_write(m_stop, 1);
    m_thread.join();
    ::close(m_listen);
    ::close(m_stop);
}

QString LoopbackServer::Address() const {
    return QStringLiteral("http://127.0.0.1:%1").arg(m_port);
}

void LoopbackServer::Reply(Manner manner, const std::string& body, int status) {
    const std::lock_guard<std::mutex> guard(m_lock);
    m_manner = manner;
    m_body = body;
    m_status = status;
}

std::vector<LoopbackServer::Request> LoopbackServer::Requests() const {
    const std::lock_guard<std::mutex> guard(m_lock);
    return m_requests;
}

std::vector<std::string> LoopbackServer::Lines() const {
    std::vector<std::string> lines;
    for (const Request& request : Requests()) lines.push_back(request.line.substr(0, request.line.rfind(' ')));
    return lines;
}

bool LoopbackServer::WaitForRequests(std::size_t count) const {
    for (int waited = 0; waited < PatienceMs; waited += 5) {
        if (Requests().size() >= count) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return false;
}

// True when there is something to read, or the visitor has gone; false after the time and at the end.
bool LoopbackServer::Wait(int file, int milliseconds) const {
    pollfd entries[] = {{m_stop, POLLIN, 0}, {file, POLLIN, 0}};
    return ::poll(entries, 2, milliseconds) > 0 && entries[0].revents == 0;
}

void LoopbackServer::Run() {
    while (Wait(m_listen, Forever)) {
        const int visitor = ::accept(m_listen, nullptr, nullptr);
        if (visitor < 0) continue;
        Serve(visitor);
        ::close(visitor);
    }
}

bool LoopbackServer::ReadRequest(int visitor, Request& request) const {
    std::string bytes;
    std::size_t head = std::string::npos, length = 0;
    while (head == std::string::npos || bytes.size() < head + 4 + length) {
        char block[4096];
        if (!Wait(visitor, PatienceMs)) return false;
        const ssize_t count = ::recv(visitor, block, sizeof(block), 0);
        if (count <= 0) return false;
        bytes.append(block, static_cast<std::size_t>(count));
        if (head != std::string::npos || (head = bytes.find("\r\n\r\n")) == std::string::npos) continue;
        std::size_t at = bytes.find("\r\n");
        request.line = bytes.substr(0, at);
        while (at < head) {
            const std::size_t end = bytes.find("\r\n", at + 2);
            const std::string line = bytes.substr(at + 2, end - at - 2);
            const std::size_t colon = line.find(": ");
            std::string name = line.substr(0, colon);
            std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::tolower(c); });
            if (colon != std::string::npos) request.headers[name] = line.substr(colon + 2);
            at = end;
        }
        if (request.headers.contains("content-length")) length = std::stoul(request.headers["content-length"]);
    }
    request.body = bytes.substr(head + 4, length);
    return true;
}

void LoopbackServer::Serve(int visitor) {
    Manner manner;
    std::string body;
    int status = 0;
    {
        const std::lock_guard<std::mutex> guard(m_lock);
        manner = m_manner;
        body = m_body;
        status = m_status;
    }
    if (manner == Manner::CloseAtOnce) return;
    Request request;
    if (!ReadRequest(visitor, request)) return;
    {
        const std::lock_guard<std::mutex> guard(m_lock);
        m_requests.push_back(request);
    }
    if (manner == Manner::Answer)
        Send(visitor, Heading(status, "Content-Length: " + std::to_string(body.size()) + "\r\n") + body);
    else
        Misbehave(visitor, manner, body);
}

void LoopbackServer::Misbehave(int visitor, Manner manner, const std::string& body) const {
    const std::string block(65536, 'x');
    switch (manner) {
        case Manner::Hang:
            Wait(visitor, Forever);
            break;
        case Manner::Broken:
            Send(visitor, Heading(200, "Content-Length: 1000\r\n") + body);
            break;
        case Manner::Garbage:
            Send(visitor, "\x01\x02 this is no answer\r\n\r\n");
            break;
        case Manner::Endless:
            Send(visitor, Heading(200, ""));
            while (Send(visitor, block)) {
            }
            break;
        case Manner::Drip:
            Send(visitor, Heading(200, ""));
            while (Send(visitor, "x") && !Wait(visitor, 20)) {
                pollfd stop = {m_stop, POLLIN, 0};
                if (::poll(&stop, 1, 0) != 0) break;
            }
            break;
        case Manner::Redirect:
            Send(visitor, Heading(302, "Location: " + body + "\r\nContent-Length: 0\r\n"));
            break;
        case Manner::Answer:
        case Manner::CloseAtOnce:
            break;
    }
}
