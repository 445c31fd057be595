// SPDX-License-Identifier: GPL-3.0-or-later
#include "HttpTool.h"

#include <algorithm>
#include <cstring>
#include <QtCore/QFileInfo>

#include "HttpEncoder.h"
#include "HttpSend.h"
#include "HttpUrl.h"

namespace Tamar {
namespace {

[[noreturn]] void Throw(HttpErrorCode code, const char* method, const QString& what, int lastError = 0) {
    throw httpclientexceptionW(code, QStringLiteral("CHttpToolW::%1: %2").arg(QLatin1String(method), what), lastError);
}

void NotNull(const void* pointer, const char* method, const char* argument) {
    if (!pointer)
        Throw(HttpErrorCode::BadArgument, method, QLatin1String(argument) + QStringLiteral(" can not be NULL."));
}

void NotEmpty(const QString& text, const char* method, const char* argument) {
    if (text.isEmpty())
        Throw(HttpErrorCode::BadArgument, method,
              QLatin1String(argument) + QStringLiteral(" can not be an empty string."));
}

// A line break in a header would begin another one.
bool IsOneLine(const QString& text) {
    return !text.contains(u'\r') && !text.contains(u'\n') && !text.contains(QChar(0));
}

}  // namespace

std::unique_ptr<HttpSession> CHttpToolW::InternetOpen(const QString& agent) {
    NotEmpty(agent, "InternetOpen", "szAgent");
    return std::make_unique<HttpSession>(HttpSession{agent});
}

std::unique_ptr<HttpConnection> CHttpToolW::OpenConnection(HttpSession* hInternet, const QString& host, int port) {
    NotNull(hInternet, "OpenConnection", "hInternet");
    NotEmpty(host, "OpenConnection", "szHostAddr");
    return std::make_unique<HttpConnection>(HttpConnection{hInternet, host, port});
}

std::unique_ptr<HttpRequest> CHttpToolW::OpenRequest(HttpConnection* hConnection, const QString& method,
                                                     const QString& path, unsigned flags, unsigned codePage) {
    NotNull(hConnection, "OpenRequest", "hConnection");
    NotEmpty(method, "OpenRequest", "szMethod");
    NotEmpty(path, "OpenRequest", "szURI");
    if (codePage == CodePageUtf8 || codePage == CodePageUtf7)
        Throw(HttpErrorCode::BadArgument, "OpenRequest", QStringLiteral("CP_UTF8 and CP_UTF7 can not be used"));
    auto request = std::make_unique<HttpRequest>();
    const QLatin1String scheme(flags & SecureFlag ? "https" : "http");
    request->job.method = method.toStdString();
    request->job.agent = hConnection->session->agent.toStdString();
    request->job.url = QStringLiteral("%1://%2:%3%4")
                           .arg(scheme, hConnection->host, QString::number(hConnection->port), path)
                           .toStdString();
    return request;
}

void CHttpToolW::AddHeader(HttpRequest* hRequest, const QString& name, const QString& value) {
    NotNull(hRequest, "AddHeader", "hRequest");
    NotEmpty(name, "AddHeader", "szName");
    if (!IsOneLine(name + value))
        Throw(HttpErrorCode::BadArgument, "AddHeader", QStringLiteral("a header is one line."));
    hRequest->job.headers.push_back((name + QStringLiteral(": ") + value).toStdString());
}

void CHttpToolW::SendRequestEx(HttpRequest* hRequest, qint64 totalBytes) {
    NotNull(hRequest, "SendRequestEx", "hRequest");
    hRequest->expected = totalBytes;
    hRequest->job.body.clear();
}

void CHttpToolW::InternetWriteFile(HttpRequest* hRequest, const char* data, qint64 size) {
    NotNull(hRequest, "InternetWriteFile", "hRequest");
    NotNull(data, "InternetWriteFile", "lpBuffer");
    const qint64 written = SafeSum(static_cast<qint64>(hRequest->job.body.size()), size);
    if (written > hRequest->expected)
        Throw(HttpErrorCode::BadArgument, "InternetWriteFile", QStringLiteral("more than was announced."));
    hRequest->job.body.append(data, static_cast<std::size_t>(size));
}

void CHttpToolW::EndRequest(HttpRequest* hRequest) {
    NotNull(hRequest, "EndRequest", "hRequest");
    hRequest->answer = HttpSend(hRequest->job);
    hRequest->readAt = 0;
    if (hRequest->answer.error != 0)
        Throw(HttpErrorCode::Failed, "EndRequest", QString::fromStdString(hRequest->answer.errorText),
              hRequest->answer.error);
}

qint64 CHttpToolW::InternetReadFile(HttpRequest* hRequest, char* buffer, qint64 size) {
    NotNull(hRequest, "InternetReadFile", "hRequest");
    NotNull(buffer, "InternetReadFile", "lpBuffer");
    const std::string& body = hRequest->answer.body;
    const std::size_t count =
        std::min(body.size() - hRequest->readAt, static_cast<std::size_t>(std::max<qint64>(size, 0)));
    std::memcpy(buffer, body.data() + hRequest->readAt, count);
    hRequest->readAt += count;
    return static_cast<qint64>(count);
}

qint64 CHttpToolW::GetFileSize(const QString& path) {
    NotEmpty(path, "GetFileSize", "szFilePath");
    const QFileInfo file(path);
    if (!file.isFile()) Throw(HttpErrorCode::Failed, "GetFileSize", path);
    return file.size();
}

}  // namespace Tamar
