// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "HttpError.h"
#include "HttpModule.h"

namespace Tamar {

// A session names the program; a connection is a host and port within it. Neither touches the network: only a request
// that is ended does.
struct HttpSession {
    QString agent;
};
struct HttpConnection {
    HttpSession* session = nullptr;
    QString host;
    int port = 0;
};
// A request under way, and its reply once it is ended.
struct HttpRequest {
    HttpJob job;
    HttpAnswer answer;
    qint64 expected = 0;     // bytes of body that were announced
    std::size_t readAt = 0;  // of the reply
};

// The platform's calls with their arguments checked. A wrong argument throws httpclientexceptionW with the text
// "<class>::<method>: <argument> can not be NULL." or "... can not be an empty string."; an exchange that fails throws
// with the network library's number. Handles are owned by the caller. One thread for a request at a time.
class CHttpToolW {
  public:
    using Text = QString;
    using Exception = httpclientexceptionW;

    static std::unique_ptr<HttpSession> InternetOpen(const QString& agent);
    static std::unique_ptr<HttpConnection> OpenConnection(HttpSession* hInternet, const QString& host, int port);
    // `flags` may hold SecureFlag. `codePage` is that of the texts to come.
    static std::unique_ptr<HttpRequest> OpenRequest(HttpConnection* hConnection, const QString& method,
                                                    const QString& path, unsigned flags, unsigned codePage);
    static void AddHeader(HttpRequest* hRequest, const QString& name, const QString& value);
    // Announces a body of that many bytes, given by InternetWriteFile in any number of pieces.
    static void SendRequestEx(HttpRequest* hRequest, qint64 totalBytes);
    static void InternetWriteFile(HttpRequest* hRequest, const char* data, qint64 size);
    // The exchange itself; blocks until the reply is there.
    static void EndRequest(HttpRequest* hRequest);
    // Up to `size` bytes of the reply; 0 at its end.
    static qint64 InternetReadFile(HttpRequest* hRequest, char* buffer, qint64 size);
    static qint64 GetFileSize(const QString& path);
};

}  // namespace Tamar
