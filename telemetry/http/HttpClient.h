// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <new>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QUuid>

#include "HttpEncoder.h"
#include "HttpMap.h"
#include "HttpPostStat.h"
#include "HttpTool.h"
#include "HttpUrl.h"

namespace Tamar {

// The answer to a post: its bytes, read in blocks.
template <class Tool>
class CHttpResponseT {
  public:
    explicit CHttpResponseT(std::unique_ptr<HttpRequest> request) : m_request(std::move(request)) {}

    int StatusCode() const { return m_request->answer.status; }
    // Fills the buffer with up to `size` bytes and tells how many; 0 at the end.
    qint64 ReadContent(char* buffer, qint64 size) { return Tool::InternetReadFile(m_request.get(), buffer, size); }

  private:
    std::unique_ptr<HttpRequest> m_request;
};

// A client for posts: AddParam and AddFile, BeginPost, Proceed until it gives the response, ReadContent until it gives
// 0. Without a file the post is a form, with one it is multipart. Errors throw Tool::Exception; the client can be used
// again afterwards. The body is held in memory, so files are for small ones. One thread; no locks.
template <class Tool, class Encoder>
class CHttpClientT {
  public:
    using Text = typename Tool::Text;
    using Exception = typename Tool::Exception;
    using Response = CHttpResponseT<Tool>;

    // What goes out before an activity of a post; the same limits as for every request.
    void SetAgent(const Text& agent) { m_agent = agent; }
    void SetTimeout(int milliseconds) { m_timeoutMs = milliseconds; }
    void SetCanContinue(std::function<bool()> canContinue) { m_canContinue = std::move(canContinue); }
    void SetProxyAccount(const Text& name, const Text& password) {
        m_proxyName = name;
        m_proxyPassword = password;
    }

    // Parameters as UTF-8 rather than in the system's encoding.
    void SetUseUtf8(bool use) {
        Allow("SetUseUtf8");
        m_useUtf8 = use;
    }
    void SetAnsiCodePage(unsigned codePage) {
        Allow("SetAnsiCodePage");
        m_codePage = codePage;
    }
    void AddParam(const Text& name, const Text& value) {
        Allow("AddParam");
        m_params.Add(name, value);
    }
    void AddFile(const Text& name, const Text& path) {
        Allow("AddFile");
        m_params.Add(name, path, true);
    }
    void AddRequestHeader(const Text& name, const Text& value) {
        Allow("AddRequestHeader");
        m_headers.Add(name, value);
    }

    // Opens the request and counts what is to be posted. Nothing is sent yet.
    void BeginPost(const Text& url, unsigned flags) {
        Allow("BeginPost");
        const auto parts = CHttpUrlAnalyzerT<Text>::Analyze(url);
        if (!parts.IsValid()) throw Exception(HttpErrorCode::BadUrl, Named("BeginPost", "the URL can not be used."));
        try {
            OpenConnection(parts.Host(), parts.Port());
            OpenRequest(parts.Path(), parts.Flags(flags));
            _WritePost();
        } catch (const std::bad_alloc&) {
            Close();
            throw Exception(HttpErrorCode::OutOfMemory, Text(QStringLiteral("Out of memory")));
        } catch (...) {
            Close();
            throw;
        }
    }

    // Posts the next block. The response once all is posted and answered, null before.
    std::unique_ptr<Response> Proceed() {
        if (!m_stat.IsActive()) throw Exception(HttpErrorCode::NotAllowed, Named("Proceed", NotNow));
        try {
            if (_ProceedPostContext()) return nullptr;
            Tool::EndRequest(m_request.get());
        } catch (...) {
            Close();
            throw;
        }
        auto response = std::make_unique<Response>(std::move(m_request));
        Close();
        return response;
    }

    const CHttpPostStatT<Exception>& Stat() const { return m_stat; }

  private:
    static constexpr const char* NotNow = "It is not allowed to call this method";
    static constexpr qint64 BlockSize = 16384;

    // A piece of the body: bytes, or a file that is read when its turn comes.
    struct Piece {
        QByteArray bytes;
        QString file;
        qint64 size = 0;
        bool endsParam = false;
    };

    static Text Named(const char* method, const char* text) {
        return QStringLiteral("CHttpClientT::%1: %2").arg(QLatin1String(method), QLatin1String(text));
    }
    void Allow(const char* method) const {
        if (m_stat.IsActive()) throw Exception(HttpErrorCode::NotAllowed, Named(method, NotNow));
    }

    void OpenConnection(const Text& host, int port) {
        m_session = Tool::InternetOpen(m_agent);
        m_connection = Tool::OpenConnection(m_session.get(), host, port);
    }
    void OpenRequest(const Text& path, unsigned flags) {
        m_request = Tool::OpenRequest(m_connection.get(), QStringLiteral("POST"), path, flags, m_codePage);
        m_request->job.timeoutMs = m_timeoutMs;
        m_request->job.canContinue = m_canContinue;
        Tool::AddHeader(m_request.get(), QStringLiteral("Cache-Control"), QStringLiteral("no-cache"));
        for (std::size_t i = 0; i < m_headers.Count(); ++i)
            Tool::AddHeader(m_request.get(), m_headers.At(i).name, m_headers.At(i).value);
        ApplyProxyAccount();
    }
    void ApplyProxyAccount() {
        if (m_proxyName.isEmpty()) return;
        const QByteArray account = Encode(m_proxyName + u':' + m_proxyPassword).toBase64();
        Tool::AddHeader(m_request.get(), QStringLiteral("Proxy-Authorization"),
                        QStringLiteral("Basic ") + QString::fromLatin1(account));
    }

    QByteArray Encode(const Text& text) const {
        return m_useUtf8 ? Encoder::Utf8Encode(text) : Encoder::AnsiEncode(text);
    }
    QByteArray UrlEncode(const Text& text) const { return Encoder::UrlEncodeA(Encode(text)); }

    // The body's pieces, its length, and the header that says what it is.
    void _WritePost() {
        m_pieces.clear();
        m_next = 0;
        m_at = 0;
        const bool multipart = m_params.HasFile();
        const QByteArray boundary = multipart ? Boundary() : QByteArray();
        if (multipart)
            WriteParts(boundary);
        else
            WriteForm();
        Tool::AddHeader(m_request.get(), QStringLiteral("Content-Type"),
                        multipart ? QStringLiteral("multipart/form-data; boundary=") + QString::fromLatin1(boundary)
                                  : QStringLiteral("application/x-www-form-urlencoded"));
        qint64 total = 0;
        for (const Piece& piece : m_pieces) total = SafeSum(total, piece.size);
        Tool::SendRequestEx(m_request.get(), total);
        m_stat.Begin(total, static_cast<qint64>(m_params.Count()));
        if (!m_pieces.empty()) BeginPiece();
    }
    void WriteForm() {
        for (std::size_t i = 0; i < m_params.Count(); ++i) {
            const auto& param = m_params.At(i);
            AddBytes((i ? "&" : "") + UrlEncode(param.name) + '=' + UrlEncode(param.value), true);
        }
    }
    void WriteParts(const QByteArray& boundary) {
        for (std::size_t i = 0; i < m_params.Count(); ++i) {
            const auto& param = m_params.At(i);
            QByteArray head =
                "--" + boundary + "\r\nContent-Disposition: form-data; name=\"" + Quoted(param.name) + '"';
            if (!param.isFile) {
                AddBytes(head + "\r\n\r\n" + Encode(param.value) + "\r\n", true);
                continue;
            }
            head += "; filename=\"" + Quoted(QFileInfo(param.value).fileName()) + '"';
            AddBytes(head + "\r\nContent-Type: application/octet-stream\r\n\r\n", false);
            m_pieces.push_back({{}, param.value, Tool::GetFileSize(param.value), true});
            AddBytes("\r\n", false);
        }
        AddBytes("--" + boundary + "--\r\n", false);
    }
    // A quote or a line break would end the name.
    QByteArray Quoted(const Text& text) const {
        return Encode(text).replace('"', "%22").replace('\r', "%0D").replace('\n', "%0A");
    }
    void AddBytes(const QByteArray& bytes, bool endsParam) { m_pieces.push_back({bytes, {}, bytes.size(), endsParam}); }

    static QByteArray Boundary() {
        const QUuid id = QUuid::createUuid();
        if (id.isNull()) return "----TAMAR-FB3B405B7EAE495aB0C0295C54D4E096-";
        const auto* d = id.data4;
        return QString::asprintf("----TAMUL-%.08x%.04x%.04x%.02x%.02x%.02x%.02x%.02x%.02x%.02x%.02x-", id.data1,
                                 id.data2, id.data3, d[0], d[1], d[2], d[3], d[4], d[5], d[6], d[7])
            .toLatin1();
    }

    void BeginPiece() {
        const Piece& piece = m_pieces[m_next];
        m_at = 0;
        m_stat.BeginParam(piece.size, !piece.file.isEmpty());
        if (piece.file.isEmpty()) return;
        m_file.setFileName(piece.file);
        if (!m_file.open(QIODevice::ReadOnly))
            throw Exception(HttpErrorCode::Failed, Named("Proceed", "the file can not be read."));
    }
    // Writes one block; false when there is none left.
    bool _ProceedPostContext() {
        if (m_next == m_pieces.size()) return false;
        const Piece& piece = m_pieces[m_next];
        const qint64 size = std::min(BlockSize, piece.size - m_at);
        const QByteArray block = piece.file.isEmpty() ? piece.bytes.mid(m_at, size) : m_file.read(size);
        if (block.size() != size) throw Exception(HttpErrorCode::Failed, Named("Proceed", "the file can not be read."));
        if (size > 0) Tool::InternetWriteFile(m_request.get(), block.constData(), size);
        m_at += size;
        m_stat.Advance(size);
        if (m_at < piece.size) return true;
        if (piece.endsParam) m_stat.EndParam();
        m_file.close();
        ++m_next;
        if (m_next < m_pieces.size()) BeginPiece();
        return true;
    }

    void Close() {
        m_stat.End();
        m_file.close();
        m_pieces.clear();
        m_request.reset();
        m_connection.reset();
        m_session.reset();
    }

    Text m_agent = QStringLiteral("Tamar HTTP Client Class");
    int m_timeoutMs = HttpJob().timeoutMs;
    std::function<bool()> m_canContinue;
    Text m_proxyName, m_proxyPassword;
    bool m_useUtf8 = false;
    unsigned m_codePage = CodePageSystem;
    CHttpClientMapT<Text> m_headers;
    CHttpClientMapT<Text> m_params;
    CHttpPostStatT<Exception> m_stat;

    std::unique_ptr<HttpSession> m_session;
    std::unique_ptr<HttpConnection> m_connection;
    std::unique_ptr<HttpRequest> m_request;
    std::vector<Piece> m_pieces;
    std::size_t m_next = 0;
    qint64 m_at = 0;
    QFile m_file;
};

using CHttpClient = CHttpClientT<CHttpToolW, CHttpEncoderW>;

}  // namespace Tamar
