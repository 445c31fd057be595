// SPDX-License-Identifier: GPL-3.0-or-later
#include "Feedback.h"

#include <gmock/gmock.h>

#include "FreshHome.h"
#include "IniFile.h"
#include "Language.h"
#include "LoopbackServer.h"
#include "MachineFacts.h"
#include "Version.h"

using namespace Qt::Literals::StringLiterals;
using Manner = LoopbackServer::Manner;

namespace {

const QString General = u"It could not be sent."_s;

}  // namespace

class Feedback : public FreshHome {
  protected:
    void SetUp() override {
        FreshHome::SetUp();
        SetLanguage(u"1033"_s);
        Put(u"I18N/1033/CoreStringLanguage.ini"_s, "[AdviseDlg]\nids_commiterror=" + General.toUtf8() + "\n");
        WriteProfileString(u"Language"_s, u"ID"_s, u"2052"_s, ConfigIni());
    }
    FeedbackResult Send(const FeedbackForm& form = {u"remark"_s, u"contact"_s, {1920, 1080}}) {
        return SendFeedback(m_server.Address(), form, [this] { return m_go.load(); });
    }
    static void ExpectFailure(const FeedbackResult& result, const QString& error = General) {
        EXPECT_FALSE(result.sent);
        EXPECT_EQ(result.error, error) << result.error.toStdString();
    }

    LoopbackServer m_server;
    std::atomic<bool> m_go{true};
};

TEST_F(Feedback, GoesOutWordForWordAndSucceeds) {
    m_server.Reply(Manner::Answer, R"({"result":true})");
    const FeedbackResult result = Send({u"多谢 & a=b"_s, u"anna@example.org"_s, {1920, 1080}});
    EXPECT_TRUE(result.sent);
    EXPECT_EQ(result.error, QString());
    ASSERT_EQ(m_server.Requests().size(), 1u);
    const LoopbackServer::Request request = m_server.Requests().front();
    EXPECT_EQ(request.line, "POST /feedbacks/create.json HTTP/1.1");
    EXPECT_EQ(request.headers.at("content-type"), "application/x-www-form-urlencoded");
    EXPECT_EQ(request.headers.at("cache-control"), "no-cache");
    EXPECT_EQ(request.headers.at("user-agent"), "Tamar HTTP Client Class");
    const QByteArray processor = ProcessorName().toUtf8().toPercentEncoding();
    const std::string head =
        "soft=quince_pc&content=%E5%A4%9A%E8%B0%A2%20%26%20a%3Db&contact=anna%40example.org"
        "&version=" +
        GetVersionText().toStdString() + "&lang=2052&os=&resolution=1920%2A1080&cpu=" + processor.toStdString() +
        "&memory=" + std::to_string(Memory().totalMb) + "&virtual_memory=";
    EXPECT_EQ(request.body.substr(0, head.size()), head);
    EXPECT_GT(std::stoi(request.body.substr(head.size())), 0);
}

TEST_F(Feedback, IsCutToWhatTheServerTakes) {
    m_server.Reply(Manner::Answer, R"({"result":true})");
    Send({QString(1501, u'r'), QString(101, u'c'), {}});
    const std::string body = m_server.Requests().front().body;
    EXPECT_NE(body.find("content=" + std::string(1500, 'r') + "&"), std::string::npos);
    EXPECT_NE(body.find("contact=" + std::string(100, 'c') + "&"), std::string::npos);
}

TEST_F(Feedback, ACutNeverSplitsACharacter) {
    EXPECT_EQ(CutRemark(QString(1499, u'r') + u"😀"_s), QString(1499, u'r'));
    EXPECT_EQ(CutRemark(QString(1498, u'r') + u"😀"_s), QString(1498, u'r') + u"😀"_s);
    EXPECT_EQ(CutContact(QString(99, u'c') + u"😀x"_s), QString(99, u'c'));
    EXPECT_EQ(CutContact(QString(100, u'c')), QString(100, u'c'));
}

TEST_F(Feedback, AWordedErrorIsTold) {
    m_server.Reply(Manner::Answer, R"({"result":false,"error":"Too many remarks today"})");
    ExpectFailure(Send(), u"Too many remarks today"_s);
    m_server.Reply(Manner::Answer, "{\"result\":false,\"error\":\"太多\"}", 500);
    ExpectFailure(Send(), u"太多"_s);
}

TEST_F(Feedback, RepliesOfAnyUnexpectedKindAreTheGeneralFailure) {
    for (const char* reply : {"",
                              "no JSON",
                              "[]",
                              "[true]",
                              "7",
                              "\"text\"",
                              "true",
                              "null",
                              "{}",
                              "{\"result\":1}",
                              "{\"result\":\"true\"}",
                              "{\"result\":null}",
                              "{\"result\":[true]}",
                              "{\"error\":7}",
                              "{\"error\":\"\"}",
                              "{\"error\":\"  \"}",
                              "{\"error\":{\"a\":1}}",
                              "{\"result\":true",
                              "{\"result\":true}x",
                              "{\"result\":true,}",
                              "\xFF\xFE{}",
                              "{\"result\":false}"})
        ExpectFailure(ReadFeedbackReply(reply));
    const QByteArray deep = QByteArray(100000, '[') + QByteArray(100000, ']');
    ExpectFailure(ReadFeedbackReply("{\"result\":" + deep + "}"));
}

TEST_F(Feedback, AnErrorIsCutToWhatABoxShows) {
    const QString error = ReadFeedbackReply("{\"error\":\"" + QByteArray(5000, 'e') + "\"}").error;
    EXPECT_EQ(error, QString(500, u'e'));
}

TEST_F(Feedback, ServersThatBehaveBadlyAreTheGeneralFailure) {
    for (const Manner manner : {Manner::CloseAtOnce, Manner::Broken, Manner::Garbage, Manner::Endless}) {
        m_server.Reply(manner, R"({"result":true})");
        ExpectFailure(Send());
    }
}

TEST_F(Feedback, ARedirectionIsNotFollowed) {
    LoopbackServer other;
    other.Reply(Manner::Answer, R"({"result":true})");
    m_server.Reply(Manner::Redirect, other.Address().toStdString() + "/");
    ExpectFailure(Send());
    EXPECT_TRUE(other.Requests().empty());
}

TEST_F(Feedback, GivingUpEndsIt) {
    for (const Manner manner : {Manner::Hang, Manner::Drip}) {
        const std::size_t before = m_server.Requests().size();
        m_server.Reply(manner);
        m_go = true;
        std::thread user([&] {
            m_server.WaitForRequests(before + 1);
            m_go = false;
        });
        ExpectFailure(Send());
        user.join();
    }
}

TEST_F(Feedback, WithoutAServerItFails) {
    const FeedbackResult result = SendFeedback(u"http://127.0.0.1:1"_s, {}, {});
    ExpectFailure(result);
    ExpectFailure(SendFeedback({}, {}, {}));
}
