// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <QtCore/QString>
#include <string>
#include <thread>
#include <vector>

// A web server of the test's own on 127.0.0.1 that answers one visitor after another, well or badly, and remembers what
// it was asked.
class LoopbackServer {
  public:
    enum class Manner {
        Answer,       // status and body
        Hang,         // takes the request and says nothing
        CloseAtOnce,  // closes without reading
        Broken,       // a heading that promises more than comes
        Garbage,      // no HTTP at all
        Endless,      // a body without an end
        Drip,         // one byte now and then, without an end
        Redirect      // to `body`
    };

    struct Request {
        std::string line;  // "GET /path HTTP/1.1"
        std::map<std::string, std::string> headers;
        std::string body;
    };

    LoopbackServer();
    ~LoopbackServer();
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;

    // "http://127.0.0.1:<port>".
    QString Address() const;
    // From the next visitor on.
    void Reply(Manner manner, const std::string& body = {}, int status = 200);

    std::vector<Request> Requests() const;
    // The request lines so far, without their version: "GET /path".
    std::vector<std::string> Lines() const;
    // Waits until so many requests were taken; false after ten seconds.
    bool WaitForRequests(std::size_t count) const;

  private:
    void Run();
    void Serve(int visitor);
    bool ReadRequest(int visitor, Request& request) const;
    void Misbehave(int visitor, Manner manner, const std::string& body) const;
    bool Wait(int file, int milliseconds) const;

    int m_listen = -1;
    int m_stop = -1;
    int m_port = 0;
    mutable std::mutex m_lock;
    Manner m_manner = Manner::Answer;
    std::string m_body;
    int m_status = 200;
    std::vector<Request> m_requests;
    std::thread m_thread;
};
