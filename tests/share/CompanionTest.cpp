// SPDX-License-Identifier: GPL-3.0-or-later
// The companion as a program: found, brought up and never started twice.
#include <gtest/gtest.h>

#include <QtCore/QProcess>
#include <QtNetwork/QLocalServer>
#include <QtTest/QTest>
#include <QtWidgets/QWidget>

#include "Companions.h"
#include "X11Windows.h"

namespace {

// A companion that the test started; ended with the object.
class Started {
  public:
    explicit Started(const char* name) {
        m_process.setProcessChannelMode(QProcess::ForwardedChannels);
        m_process.start(QStringLiteral(QUINCE_BIN "/") + QLatin1String(name), {QStringLiteral("/no/such.png")});
        EXPECT_TRUE(m_process.waitForStarted());
    }
    ~Started() {
        m_process.kill();
        m_process.waitForFinished();
    }
    QProcess& Process() { return m_process; }

  private:
    QProcess m_process;
};

bool Comes(Companion companion) {
    return QTest::qWaitFor([=] { return RaiseCompanion(companion); }, 20000);
}

}  // namespace

TEST(Companion, RowsAreTheOnesThatWereAgreed) {
    const CompanionRow& twitter = RowOf(Companion::Twitter);
    EXPECT_STREQ(twitter.semaphore, "vantu_quince_twitter_process");
    EXPECT_STREQ(twitter.program, "Twitter.exe");
    EXPECT_STREQ(twitter.windowClass, "Twitter");
    EXPECT_STREQ(twitter.windowTitle, "QUINCE Twitter");
    const CompanionRow& facebook = RowOf(Companion::Facebook);
    EXPECT_STREQ(facebook.semaphore, "vantu_quince_facebook_process");
    EXPECT_STREQ(facebook.program, "FaceBook.exe");
    EXPECT_STREQ(facebook.windowClass, "Facebook");
    EXPECT_STREQ(facebook.windowTitle, "QUINCE Facebook");
    EXPECT_EQ(CompanionNamed(QStringLiteral("FaceBook")), Companion::Facebook);
    EXPECT_EQ(CompanionNamed(QStringLiteral("Twitter")), Companion::Twitter);
    EXPECT_EQ(CompanionNamed(QStringLiteral("quince-share")), Companion::Twitter);
}

TEST(Companion, OneThatDoesNotRunIsNotUp) {
    EXPECT_FALSE(RaiseCompanion(Companion::Twitter));
    EXPECT_FALSE(RaiseOpenCompanion());
}

TEST(Companion, RunsUnderBothNamesEachOnce) {
    const std::pair<const char*, Companion> names[] = {{"Twitter", Companion::Twitter},
                                                       {"FaceBook", Companion::Facebook}};
    for (const auto& [name, companion] : names) {
        Started first(name);
        ASSERT_TRUE(Comes(companion)) << name;
        const CompanionRow& row = RowOf(companion);
        EXPECT_TRUE(RaiseX11Window(row.windowClass, row.windowTitle)) << "class and title are those of the row";
        EXPECT_TRUE(RaiseOpenCompanion());
        Started second(name);
        ASSERT_TRUE(second.Process().waitForFinished(20000));
        EXPECT_EQ(second.Process().exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(second.Process().exitCode(), 0);
        EXPECT_EQ(first.Process().state(), QProcess::Running) << "it was brought up, not ended";
    }
    EXPECT_FALSE(RaiseCompanion(Companion::Twitter)) << "a lock without its process is free";
    Started again("Twitter");
    EXPECT_TRUE(Comes(Companion::Twitter));
}

TEST(Companion, AWindowIsFoundByClassAndTitleInEitherOrder) {
    const QString before = QCoreApplication::applicationName();
    QCoreApplication::setApplicationName(QStringLiteral("QUINCE Facebook"));
    QWidget window;
    window.setWindowTitle(QStringLiteral("Facebook"));
    EXPECT_FALSE(RaiseCompanion(Companion::Facebook));
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    EXPECT_TRUE(RaiseCompanion(Companion::Facebook));
    EXPECT_FALSE(RaiseCompanion(Companion::Twitter));
    window.setWindowTitle(QStringLiteral("Something else"));
    QTest::qWait(50);
    EXPECT_FALSE(RaiseCompanion(Companion::Facebook));
    window.setWindowTitle(QStringLiteral("Facebook"));
    window.hide();
    QTest::qWait(50);
    EXPECT_FALSE(RaiseCompanion(Companion::Facebook));
    QCoreApplication::setApplicationName(before);
}

// Nor does it, then, keep this editor from closing.
TEST(Companion, OneOfAnotherDataFolderIsNotUp) {
    const QString here = CompanionSocketName(Companion::Twitter);
    const QByteArray home = qgetenv("QUINCE_HOME");
    qputenv("QUINCE_HOME", home + "/..");
    const QString there = CompanionSocketName(Companion::Twitter);
    qputenv("QUINCE_HOME", home + "/.");
    const QString spelled = CompanionSocketName(Companion::Twitter);
    qputenv("QUINCE_HOME", home);
    EXPECT_NE(there, here);
    EXPECT_EQ(spelled, here);
}

TEST(Companion, AListenerThatSaysNothingIsNotUp) {
    QLocalServer silent;
    silent.setSocketOptions(QLocalServer::AbstractNamespaceOption);
    ASSERT_TRUE(silent.listen(CompanionSocketName(Companion::Twitter)));
    EXPECT_FALSE(RaiseCompanion(Companion::Twitter, std::chrono::milliseconds(50)));
}
