// SPDX-License-Identifier: GPL-3.0-or-later
#include <thread>

#include <QtCore/QSemaphore>
#include <QtNetwork/QLocalServer>
#include <QtNetwork/QLocalSocket>
#include <QtTest/QTest>

#include "AppPaths.h"
#include "ClickCount.h"
#include "Companions.h"
#include "InstanceAnswers.h"
#include "SaveFixture.h"

namespace {

const char* const SharedFile = "Temp/SendImag.png";

class Sharing : public SaveWindow {
  protected:
    void SetUp() override {
        SaveWindow::SetUp();
        QFile::remove(File());
        m_request.startProgram = [this](const QString& path, const QStringList& arguments) {
            m_started << path + u' ' + arguments.join(u' ');
            return m_starts;
        };
    }
    static QString File() { return AppPath(QLatin1String(SharedFile)); }
    static QString Command(const char* program) { return AppPath(QLatin1String(program)) + u' ' + File(); }
    // Presses a button in the save window, and then closes it.
    void Share(const char* button, const std::function<void(CSaveWnd&)>& before = {}) {
        m_script.On<CSaveWnd>([=](CSaveWnd& window) {
            if (before) before(window);
            Click(window, button);
            EXPECT_EQ(QApplication::activeModalWidget(), &window) << "nothing is said";
            Click(window, "BtnSaveClose");
        });
        Run();
    }

    QStringList m_started;
    bool m_starts = true;
};

}  // namespace

TEST_F(Sharing, EachButtonStartsItsCompanionWithThePictureAsPath) {
    Share("BtnFaceBook");
    Share("BtnTwitter");
    EXPECT_EQ(m_started, QStringList({Command("FaceBook.exe"), Command("Twitter.exe")}));
    EXPECT_EQ(Load(File()).Width(), 320);
    EXPECT_TRUE(ClickCounts().Counts().empty());
}

TEST_F(Sharing, TheFileHoldsTheChosenFormatWhateverItsName) {
    Share("BtnTwitter");
    EXPECT_TRUE(IsJpeg(File()));
    Share("BtnTwitter", [](CSaveWnd& window) { ChooseType(window, 1); });
    EXPECT_TRUE(IsPng(File()));
    Share("BtnTwitter", [](CSaveWnd& window) { ChooseType(window, 2); });
    EXPECT_TRUE(IsBmp(File()));
}

TEST_F(Sharing, APictureThatCannotBeWrittenStartsTheCompanionWithoutAPath) {
    ASSERT_TRUE(QDir().mkpath(File()));
    Share("BtnTwitter");
    EXPECT_EQ(m_started, QStringList(AppPath(QStringLiteral("Twitter.exe")) + u' '));
    QDir().rmdir(File());
}

TEST_F(Sharing, ACompanionThatDoesNotStartGivesNoMessage) {
    m_starts = false;
    Share("BtnFaceBook");
    EXPECT_EQ(m_started.size(), 1);
}

// The buttons ask across: each looks for the other one's companion.
TEST_F(Sharing, TheOtherCompanionsWindowIsBroughtUpInsteadOfAStart) {
    int raised = 0;
    InstanceAnswers twitter(CompanionSocketName(Companion::Twitter).toUtf8(), [&] { ++raised; });
    twitter.Say(InstanceState::Shown);
    ASSERT_TRUE(QTest::qWaitFor([] { return RaiseCompanion(Companion::Twitter); }));
    raised = 0;
    Share("BtnFaceBook");
    EXPECT_EQ(raised, 1);
    EXPECT_TRUE(m_started.isEmpty());
    EXPECT_FALSE(QFile::exists(File())) << "nothing was written";
    Share("BtnTwitter");
    EXPECT_EQ(raised, 1);
    EXPECT_EQ(m_started, QStringList(Command("Twitter.exe")));
}

TEST_F(Sharing, ACompanionWithoutAWindowLetsTheStartGoOn) {
    InstanceAnswers twitter(CompanionSocketName(Companion::Twitter).toUtf8(), [] { ADD_FAILURE(); });
    Share("BtnFaceBook");
    EXPECT_EQ(m_started, QStringList(Command("FaceBook.exe")));
}
