// SPDX-License-Identifier: GPL-3.0-or-later
#include "HttpClient.h"

#include <gmock/gmock.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>

#include "HttpSend.h"
#include "LoopbackServer.h"

using namespace Qt::Literals::StringLiterals;
using namespace Tamar;
using Manner = LoopbackServer::Manner;

namespace {

using Stat = CHttpPostStatT<httpclientexceptionW>;

// The text that `act` throws with; empty when it throws nothing.
template <class Act>
std::string Thrown(Act act) {
    try {
        act();
    } catch (const httpclientexceptionW& error) {
        return error.what();
    }
    return {};
}

// The response of a post to the server, which must come.
std::unique_ptr<CHttpClient::Response> Post(CHttpClient& client, const QString& url, unsigned flags = 0) {
    client.BeginPost(url, flags);
    std::unique_ptr<CHttpClient::Response> response;
    while (!response) response = client.Proceed();
    return response;
}

QByteArray Content(CHttpClient::Response& response, qint64 block) {
    QByteArray all, buffer(block, '\0');
    for (qint64 size = response.ReadContent(buffer.data(), block); size > 0;
         size = response.ReadContent(buffer.data(), block))
        all += buffer.left(size);
    return all;
}

}  // namespace

// ---- addresses ----

TEST(HttpUrl, IsSplitIntoItsParts) {
    const auto url = CHttpUrlAnalyzer::Analyze(u"http://example.org:8080/a/b?c=d"_s);
    EXPECT_TRUE(url.IsValid());
    EXPECT_EQ(url.Host(), u"example.org");
    EXPECT_EQ(url.Port(), 8080);
    EXPECT_EQ(url.Path(), u"/a/b?c=d");
    EXPECT_EQ(url.Flags(0x84400F00), 0x84400F00u);
}

TEST(HttpUrl, TheSecureSchemeSetsItsFlagInAnyCase) {
    for (const char* text : {"https://example.org", "HTTPS://example.org", "HttpS://example.org"}) {
        const auto url = CHttpUrlAnalyzer::Analyze(QLatin1String(text));
        EXPECT_TRUE(url.IsValid()) << text;
        EXPECT_EQ(url.Flags(0x10), 0x800010u) << text;
        EXPECT_EQ(url.Port(), 443) << text;
    }
}

TEST(HttpUrl, AnEmptyPathIsASlash) {
    EXPECT_EQ(CHttpUrlAnalyzer::Analyze(u"http://example.org"_s).Path(), u"/");
    EXPECT_EQ(CHttpUrlAnalyzer::Analyze(u"http://example.org?a=1"_s).Path(), u"/?a=1");
    EXPECT_EQ(CHttpUrlAnalyzerT<std::string>::Analyze("http://[::1]").Path(), "/");
}

TEST(HttpUrl, ThisMachineIsKnown) {
    for (const char* host : {"localhost", "LOCALHOST", "127.0.0.1", "127.255.0.3", "::1", "[::1]"})
        EXPECT_TRUE(IsLoopbackHost(QLatin1String(host))) << host;
    for (const char* host : {"", "128.0.0.1", "127.0.0", "127.0.0.1.org", "127.0.0.", "127.0.0.-1", "127.0.0.0x1",
                             "localhost.org", "::", "[::2]", "127.0.0.1000"})
        EXPECT_FALSE(IsLoopbackHost(QLatin1String(host))) << host;
}

// ---- the one door ----

class HttpDoor : public testing::Test {
  protected:
    HttpAnswer Get(const std::string& path = "/", int timeoutMs = 10000) {
        HttpJob job;
        job.url = m_server.Address().toStdString() + path;
        job.agent = "test";
        job.timeoutMs = timeoutMs;
        job.mostBytes = 100000;
        return HttpSend(job);
    }
    LoopbackServer m_server;
};

TEST_F(HttpDoor, GivesTheReplyAndItsStatus) {
    m_server.Reply(Manner::Answer, "hello", 404);
    const HttpAnswer answer = Get("/a?b=c");
    EXPECT_EQ(answer.error, 0);
    EXPECT_EQ(answer.status, 404);
    EXPECT_EQ(answer.body, "hello");
    EXPECT_THAT(m_server.Lines(), testing::ElementsAre("GET /a?b=c"));
}

TEST_F(HttpDoor, PlainHttpLeadsToThisMachineOnly) {
    for (const char* url : {"http://example.org/", "http://192.0.2.1/", "ftp://127.0.0.1/", "file:///etc/passwd", "",
                            "http://127.0.0.1@example.org/"}) {
        HttpJob job;
        job.url = url;
        EXPECT_EQ(HttpSend(job).error, HttpAnswer::Refused) << url;
    }
}

TEST_F(HttpDoor, AReplyThatIsTooLongIsAFailure) {
    m_server.Reply(Manner::Answer, std::string(100000, 'x'));
    EXPECT_EQ(Get().error, 0);
    m_server.Reply(Manner::Answer, std::string(100001, 'x'));
    EXPECT_GT(Get().error, 0);
    m_server.Reply(Manner::Endless);
    EXPECT_GT(Get().error, 0);
}

TEST_F(HttpDoor, AServerThatSaysNothingIsGivenUpAfterTheTime) {
    for (const Manner manner : {Manner::Hang, Manner::Drip}) {
        m_server.Reply(manner);
        const HttpAnswer answer = Get("/", 100);
        EXPECT_GT(answer.error, 0);
        EXPECT_FALSE(answer.errorText.empty());
    }
    EXPECT_EQ(HttpJob().timeoutMs, 10000);
}

TEST_F(HttpDoor, ACancelIsHeardWhileTheServerHangs) {
    m_server.Reply(Manner::Hang);
    HttpJob job;
    job.url = m_server.Address().toStdString();
    job.canContinue = [this] { return m_server.Requests().empty(); };
    EXPECT_EQ(HttpSend(job).error, HttpAnswer::Cancelled);
}

TEST_F(HttpDoor, ProxiesOfTheEnvironmentAreNotAskedForThisMachine) {
    qputenv("http_proxy", "http://127.0.0.1:1");
    m_server.Reply(Manner::Answer, "hello");
    EXPECT_EQ(Get().body, "hello");
    qunsetenv("http_proxy");
}

// ---- the client ----

class HttpClientPost : public testing::Test {
  protected:
    void SetUp() override { m_server.Reply(Manner::Answer, "the answer"); }
    LoopbackServer::Request Last() const { return m_server.Requests().back(); }

    LoopbackServer m_server;
    CHttpClient m_client;
};

TEST_F(HttpClientPost, AFormIsEncodedAndItsAnswerReadInBlocks) {
    m_client.SetUseUtf8(true);
    m_client.AddParam(u"a b"_s, u"c&d"_s);
    m_client.AddParam(u"e"_s, u"榅"_s);
    m_client.AddParam(u"empty"_s, {});
    const auto response = Post(m_client, m_server.Address() + u"/post?x=1"_s);
    EXPECT_EQ(response->StatusCode(), 200);
    EXPECT_EQ(Content(*response, 4), "the answer");
    EXPECT_EQ(Last().line, "POST /post?x=1 HTTP/1.1");
    EXPECT_EQ(Last().body, "a%20b=c%26d&e=%E6%A6%85&empty=");
    EXPECT_EQ(Last().headers.at("content-type"), "application/x-www-form-urlencoded");
    EXPECT_EQ(Last().headers.at("cache-control"), "no-cache");
    EXPECT_EQ(Last().headers.at("user-agent"), "Tamar HTTP Client Class");
}

TEST_F(HttpClientPost, HeadersAndTheProxysAccountAreAdded) {
    m_client.AddRequestHeader(u"X-Own"_s, u"7"_s);
    m_client.SetProxyAccount(u"anna"_s, u"secret"_s);
    Post(m_client, m_server.Address());
    EXPECT_EQ(Last().line, "POST / HTTP/1.1");
    EXPECT_EQ(Last().headers.at("x-own"), "7");
    EXPECT_EQ(Last().headers.at("proxy-authorization"), "Basic YW5uYTpzZWNyZXQ=");
}

TEST_F(HttpClientPost, AFileMakesItMultipart) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"picture \"1\".png"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QByteArray bytes(40000, 'p');
    file.write(bytes);
    file.close();
    m_client.AddParam(u"name"_s, u"value"_s);
    m_client.AddFile(u"file"_s, file.fileName());
    m_client.BeginPost(m_server.Address(), 0);
    int blocks = 0;
    bool sawFile = false;
    std::unique_ptr<CHttpClient::Response> response;
    while (!response) {
        const Stat& stat = m_client.Stat();
        sawFile = sawFile || (stat.CurrParamIsFile() && stat.CurrParamPostedByte() == 16384 &&
                              stat.CurrParamRemainByte() == 40000 - 16384 && !stat.CurrParamIsComplete());
        response = m_client.Proceed();
        ++blocks;
    }
    EXPECT_TRUE(sawFile);
    EXPECT_GT(blocks, 5);
    const std::string type = Last().headers.at("content-type");
    ASSERT_THAT(type, testing::StartsWith("multipart/form-data; boundary=----TAMUL-"));
    EXPECT_EQ(type.size(), std::string("multipart/form-data; boundary=----TAMUL--").size() + 32);
    const std::string mark = "--" + type.substr(type.find('=') + 1);
    EXPECT_EQ(Last().body, mark + "\r\nContent-Disposition: form-data; name=\"name\"\r\n\r\nvalue\r\n" + mark +
                               "\r\nContent-Disposition: form-data; name=\"file\"; filename=\"picture %221%22.png\"\r\n"
                               "Content-Type: application/octet-stream\r\n\r\n" +
                               bytes.toStdString() + "\r\n" + mark + "--\r\n");
}

TEST_F(HttpClientPost, ProgressIsToldOnlyWhileAPostIsActive) {
    const Stat& stat = m_client.Stat();
    EXPECT_EQ(Thrown([&] { stat.ActualTotalByte(); }),
              "CHttpPostStatT::ActualTotalByte: The post context is not active.");
    EXPECT_EQ(Thrown([&] { stat.TotalCount(); }), "CHttpPostStatT::TotalCount: The post context is not active.");
    EXPECT_NE(Thrown([&] { stat.ActualPostedByte(); }), "");
    EXPECT_NE(Thrown([&] { stat.PostedCount(); }), "");
    EXPECT_NE(Thrown([&] { stat.PostedFileCount(); }), "");
    EXPECT_NE(Thrown([&] { stat.CurrParamPostedByte(); }), "");
    EXPECT_NE(Thrown([&] { stat.CurrParamRemainByte(); }), "");
    EXPECT_NE(Thrown([&] { stat.CurrParamIsFile(); }), "");
    EXPECT_NE(Thrown([&] { stat.CurrParamIsComplete(); }), "");
    m_client.AddParam(u"a"_s, u"b"_s);
    m_client.AddParam(u"c"_s, u"d"_s);
    m_client.BeginPost(m_server.Address(), 0);
    EXPECT_EQ(stat.ActualTotalByte(), 7);
    EXPECT_EQ(stat.TotalCount(), 2);
    EXPECT_EQ(stat.PostedCount(), 0);
    EXPECT_FALSE(stat.CurrParamIsFile());
    EXPECT_EQ(m_client.Proceed(), nullptr);
    EXPECT_EQ(stat.ActualPostedByte(), 3);
    EXPECT_EQ(stat.PostedCount(), 1);
    EXPECT_EQ(stat.PostedFileCount(), 0);
    EXPECT_EQ(m_client.Proceed(), nullptr);
    EXPECT_NE(m_client.Proceed(), nullptr);
    EXPECT_NE(Thrown([&] { stat.TotalCount(); }), "");
}

TEST_F(HttpClientPost, ParametersAreClosedWhileAPostIsActive) {
    EXPECT_EQ(Thrown([&] { m_client.Proceed(); }), "CHttpClientT::Proceed: It is not allowed to call this method");
    m_client.BeginPost(m_server.Address(), 0);
    EXPECT_EQ(Thrown([&] { m_client.AddParam({}, {}); }),
              "CHttpClientT::AddParam: It is not allowed to call this method");
    EXPECT_EQ(Thrown([&] { m_client.SetUseUtf8(true); }),
              "CHttpClientT::SetUseUtf8: It is not allowed to call this method");
    EXPECT_NE(Thrown([&] { m_client.BeginPost(m_server.Address(), 0); }), "");
    EXPECT_NE(m_client.Proceed(), nullptr);
    EXPECT_EQ(Thrown([&] { m_client.AddParam({}, {}); }), "");
}

TEST_F(HttpClientPost, AFailureLeavesTheClientUsable) {
    m_server.Reply(Manner::CloseAtOnce);
    EXPECT_NE(Thrown([&] { Post(m_client, m_server.Address()); }), "");
    m_server.Reply(Manner::Answer, "again");
    EXPECT_EQ(Content(*Post(m_client, m_server.Address()), 100), "again");
    try {
        Post(m_client, u"http://127.0.0.1:1/"_s);
        FAIL();
    } catch (const httpclientexceptionW& error) {
        EXPECT_EQ(error.ErrorCode(), HttpErrorCode::Failed);
        EXPECT_GT(error.LastError(), 0);
        EXPECT_TRUE(error.errmsg().startsWith(u"CHttpToolW::EndRequest: "_s));
    }
}

TEST_F(HttpClientPost, WhatIsNoAddressIsRefused) {
    for (const char* url : {"", "example.org", "ftp://example.org/", "http://a b/"})
        EXPECT_EQ(Thrown([&] { m_client.BeginPost(QLatin1String(url), 0); }),
                  "CHttpClientT::BeginPost: the URL can not be used.");
}

TEST_F(HttpClientPost, CodePagesThatAreNoCharacterSetAreRefused) {
    for (const unsigned page : {65000u, 65001u}) {
        m_client.SetAnsiCodePage(page);
        EXPECT_EQ(Thrown([&] { m_client.BeginPost(m_server.Address(), 0); }),
                  "CHttpToolW::OpenRequest: CP_UTF8 and CP_UTF7 can not be used");
    }
}

// ---- the platform's calls ----

TEST(HttpTool, ArgumentsAreChecked) {
    const auto session = CHttpToolW::InternetOpen(u"agent"_s);
    const auto connection = CHttpToolW::OpenConnection(session.get(), u"127.0.0.1"_s, 80);
    const auto request = CHttpToolW::OpenRequest(connection.get(), u"GET"_s, u"/"_s, 0, 0);
    char byte = 0;
    EXPECT_EQ(Thrown([] { CHttpToolW::OpenConnection(nullptr, u"h"_s, 80); }),
              "CHttpToolW::OpenConnection: hInternet can not be NULL.");
    EXPECT_EQ(Thrown([&] { CHttpToolW::OpenConnection(session.get(), {}, 80); }),
              "CHttpToolW::OpenConnection: szHostAddr can not be an empty string.");
    EXPECT_EQ(Thrown([&] { CHttpToolW::OpenRequest(connection.get(), {}, u"/"_s, 0, 0); }),
              "CHttpToolW::OpenRequest: szMethod can not be an empty string.");
    EXPECT_EQ(Thrown([] { CHttpToolW::AddHeader(nullptr, u"a"_s, u"b"_s); }),
              "CHttpToolW::AddHeader: hRequest can not be NULL.");
    EXPECT_EQ(Thrown([&] { CHttpToolW::AddHeader(request.get(), {}, u"b"_s); }),
              "CHttpToolW::AddHeader: szName can not be an empty string.");
    EXPECT_NE(Thrown([&] { CHttpToolW::AddHeader(request.get(), u"a"_s, u"b\r\nX: y"_s); }), "");
    EXPECT_EQ(Thrown([] { CHttpToolW::SendRequestEx(nullptr, 1); }),
              "CHttpToolW::SendRequestEx: hRequest can not be NULL.");
    EXPECT_EQ(Thrown([&] { CHttpToolW::InternetWriteFile(request.get(), nullptr, 1); }),
              "CHttpToolW::InternetWriteFile: lpBuffer can not be NULL.");
    EXPECT_NE(Thrown([&] { CHttpToolW::InternetWriteFile(request.get(), &byte, 1); }), "") << "none was announced";
    EXPECT_EQ(Thrown([] { CHttpToolW::EndRequest(nullptr); }), "CHttpToolW::EndRequest: hRequest can not be NULL.");
    EXPECT_EQ(Thrown([] { CHttpToolW::GetFileSize({}); }),
              "CHttpToolW::GetFileSize: szFilePath can not be an empty string.");
    EXPECT_NE(Thrown([] { CHttpToolW::GetFileSize(u"/no such file"_s); }), "");
}

TEST(HttpTool, LengthsThatLeaveTheirRangeThrow) {
    EXPECT_EQ(SafeSum(1, 2), 3);
    EXPECT_THROW(SafeSum(std::numeric_limits<qint64>::max(), 1), SafeIntException);
    EXPECT_THROW(SafeSum(-1, 1), SafeIntException);
}

TEST(HttpEncoder, TextsBecomeBytes) {
    EXPECT_EQ(CHttpEncoderW::Utf8Encode(u"榅"_s), "\xE6\xA6\x85");
    EXPECT_EQ(CHttpEncoderW::AnsiEncodeLen(u"abc"_s), 3);
    EXPECT_EQ(CHttpEncoderW::UrlEncodeA("aZ09-._~ +/%\n"), "aZ09-._~%20%2B%2F%25%0A");
}
