// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPlainTextEdit>

#include "AppPaths.h"
#include "CAdviseDlg.h"
#include "CDlgProgressCtrl.h"
#include "IniFile.h"
#include "Language.h"
#include "LoopbackServer.h"
#include "ModalScript.h"
#include "RunTask.h"
#include "Style.h"

using Manner = LoopbackServer::Manner;

namespace {

class Advise : public testing::Test {
  public:
    void SetUp() override {
        SetLanguage(QStringLiteral("1033"));
        Style::Apply(*qApp);
        QFile::remove(ConfigIni());
        m_owner.setGeometry(200, 100, 1024, 730);
        m_owner.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_owner));
        SetProgressWindowFactory([this] { return std::make_unique<CDlgProgressCtrl>(&m_owner); });
        m_server.Reply(Manner::Answer, R"({"result":true})");
    }
    void TearDown() override {
        SetProgressWindowFactory({});
        SetLanguage(QStringLiteral("1033"));
    }

    Advise& Do(std::function<void(QWidget&)> act) {
        m_script.On<CAdviseDlg>([act = std::move(act)](CAdviseDlg& dialog) { act(dialog); });
        return *this;
    }
    // Answers the message box that is up, which must say this.
    Advise& Expect(const QString& text) {
        m_script.On<QMessageBox>([text](QMessageBox& box) {
            EXPECT_EQ(box.text(), text) << box.text().toStdString();
            QTest::mouseClick(box.findChild<QWidget*>(QStringLiteral("BtnOk")), Qt::LeftButton);
        });
        return *this;
    }
    void Show() { CAdviseDlg(m_server.Address()).ShowModal(&m_owner, QStringLiteral("AdviseDlg")); }

    static void Write(QWidget& window, const QString& remark,
                      const QString& contact = QStringLiteral("anna@example.org")) {
        auto& edit = Control<QPlainTextEdit>(window, "EditReason");
        edit.setFocus();
        QTest::keyClicks(&edit, remark);
        TypeInto(window, "EditAddr", contact);
    }
    static QString Word(const char* key) { return LanguageText(QLatin1String(key), QStringLiteral("AdviseDlg")); }
    static int Reminded() { return GetProfileInt(QStringLiteral("Advise"), QStringLiteral("Email"), 0, ConfigIni()); }
    std::string Body() const { return m_server.Requests().back().body; }

    LoopbackServer m_server;
    QWidget m_owner;
    ModalScript m_script;
};

void Send(QWidget& window) {
    Click(window, "BtnCommit");
}

void ExpectTexts(QWidget& window, const QString& remark) {
    EXPECT_EQ(Control<QPlainTextEdit>(window, "EditReason").toPlainText(), remark);
    EXPECT_EQ(Control<QLineEdit>(window, "EditAddr").text(), u"anna@example.org");
}

}  // namespace

TEST_F(Advise, ARemarkIsSentAndTheWindowCloses) {
    Do([](QWidget& window) {
        EXPECT_FALSE(Control(window, "TextNoAddress").isVisible());
        Write(window, QStringLiteral("Fine program"));
        Send(window);
    });
    Show();
    ASSERT_EQ(m_server.Requests().size(), 1u);
    EXPECT_NE(Body().find("&content=Fine%20program&contact=anna%40example.org&"), std::string::npos);
}

TEST_F(Advise, WithoutARemarkItAsksForOne) {
    Do(Send).Expect(Word("ids_advise")).Do([](QWidget& window) {
        EXPECT_EQ(window.focusWidget()->objectName(), u"EditReason");
        Click(window, "BtnClose");
    });
    Show();
    EXPECT_TRUE(m_server.Requests().empty());
}

TEST_F(Advise, TheDefaultTextIsNoRemarkUnlessItWasTypedOverAnother) {
    const auto typeDefault = [](QWidget& window, const char* first) {
        auto& edit = Control<QPlainTextEdit>(window, "EditReason");
        edit.setFocus();
        QTest::keyClicks(&edit, QLatin1String(first));
        edit.selectAll();
        edit.insertPlainText(edit.placeholderText());
        TypeInto(window, "EditAddr", QStringLiteral("a"));
        Send(window);
    };
    Do([&](QWidget& window) { typeDefault(window, ""); }).Expect(Word("ids_advise")).Do([](QWidget& window) {
        Click(window, "BtnClose");
    });
    Show();
    EXPECT_TRUE(m_server.Requests().empty());
    Do([&](QWidget& window) { typeDefault(window, "x"); });
    Show();
    EXPECT_EQ(m_server.Requests().size(), 1u);
}

TEST_F(Advise, AMissingContactIsRemindedOfOnceInThePrograms) {
    Do([](QWidget& window) {
        Write(window, QStringLiteral("r"), {});
        Send(window);
    })
        .Expect(Word("ids_addr"))
        .Do([](QWidget& window) {
            EXPECT_EQ(Reminded(), 1);
            EXPECT_EQ(window.focusWidget()->objectName(), u"EditAddr");
            Send(window);
        });
    Show();
    ASSERT_EQ(m_server.Requests().size(), 1u);
    EXPECT_NE(Body().find("&content=r&contact=&"), std::string::npos);
    Do([](QWidget& window) {
        Write(window, QStringLiteral("s"), {});
        Send(window);
    });
    Show();
    EXPECT_EQ(m_server.Requests().size(), 2u);
}

TEST_F(Advise, ARemarkOf1501CharactersGoesOutWith1500) {
    Do([](QWidget& window) {
        Control<QPlainTextEdit>(window, "EditReason").insertPlainText(QString(1501, u'r'));
        TypeInto(window, "EditAddr", QString(101, u'c'));
        Send(window);
    });
    Show();
    EXPECT_NE(Body().find("&content=" + std::string(1500, 'r') + "&contact=" + std::string(100, 'c') + "&"),
              std::string::npos);
}

TEST_F(Advise, AWordedErrorIsToldAsPlainTextAndTheTextsStay) {
    m_server.Reply(Manner::Answer, R"({"result":false,"error":"<b>Too many</b>"})");
    Do([](QWidget& window) {
        Write(window, QStringLiteral("r"));
        Send(window);
    });
    m_script.On<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.text(), u"<b>Too many</b>");
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    Do([](QWidget& window) {
        ExpectTexts(window, QStringLiteral("r"));
        Click(window, "BtnClose");
    });
    Show();
}

TEST_F(Advise, NoJsonNoServerAndBrokenRepliesTellTheGeneralErrorInBothLanguages) {
    for (const char* language : {"1033", "2052"}) {
        SetLanguage(QLatin1String(language));
        for (const Manner manner : {Manner::Answer, Manner::CloseAtOnce, Manner::Broken}) {
            m_server.Reply(manner, "no JSON");
            Do([](QWidget& window) {
                Write(window, QStringLiteral("r"));
                Send(window);
            })
                .Expect(Word("ids_commiterror"))
                .Do([](QWidget& window) {
                    ExpectTexts(window, QStringLiteral("r"));
                    Click(window, "BtnClose");
                });
            Show();
        }
    }
}

TEST_F(Advise, EscGivesUpAServerThatHangsAndTheTextsStay) {
    m_server.Reply(Manner::Hang);
    Do([this](QWidget& window) {
        Write(window, QStringLiteral("r"));
        // Pressed once the server has the request, while the progress window holds everything else.
        auto* poll = new QTimer(&window);
        QObject::connect(poll, &QTimer::timeout, poll, [this, poll, &window] {
            if (m_server.Requests().empty() || !IsTaskRunning()) return;
            poll->stop();
            QTest::keyClick(&window, Qt::Key_Escape);
        });
        poll->start(5);
        Send(window);
        ExpectTexts(window, QStringLiteral("r"));
        EXPECT_FALSE(QApplication::activeModalWidget() &&
                     qobject_cast<QMessageBox*>(QApplication::activeModalWidget()));
        m_server.Reply(Manner::Answer, R"({"result":true})");
        Send(window);
    });
    Show();
    EXPECT_EQ(m_server.Requests().size(), 2u);
}

TEST_F(Advise, EscClosesTheWindow) {
    Do([](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); });
    Show();
    EXPECT_TRUE(m_server.Requests().empty());
}
