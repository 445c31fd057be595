// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtCore/QFile>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>

#include "AppPaths.h"
#include "ClickCount.h"
#include "FrameFixture.h"
#include "Language.h"
#include "TestPictures.h"
#include "ToyTool.h"

namespace {

class Welcome : public FrameTest {
  protected:
    static bool IsOpen() { return Driver::IsThere(QStringLiteral("BtnExit")); }
};

// The start page called up over a picture that was changed and not saved.
class WelcomeOverWork : public Welcome {
  protected:
    // The built-in tools and one that stands for the beauty section, so that all of its buttons can be pressed.
    ToolTable WithBeauty() {
        std::vector<ToolRow> rows = BuiltInTools().Rows();
        if (BuiltInTools().FirstOf(SectionBeauty) == 0) {
            ToolRow beauty;
            beauty.facts.number = 8;
            beauty.facts.section = SectionBeauty;
            beauty.makeCanvas = [this, number = beauty.facts.number](QWidget* parent, ToolHost& host) -> CBaseWnd* {
                return new ToyTool(host, number, parent, m_told);
            };
            rows.push_back(beauty);
        }
        return ToolTable(rows);
    }
    QStringList m_told;
};

}  // namespace

TEST_F(Welcome, ShowsWithoutAPictureAndGoesWithOne) {
    Show();
    EXPECT_TRUE(IsOpen());
    ASSERT_TRUE(Frame().OpenFile(Photo()));
    EXPECT_FALSE(IsOpen());
}

TEST_F(Welcome, ShowsWhenThePictureOfTheCommandLineIsMissing) {
    EXPECT_EQ(MessageOf([&] { Show(m_folder + QStringLiteral("/none.jpg")); }),
              LanguageText(QStringLiteral("ids_openerror")));
    EXPECT_TRUE(IsOpen());
}

TEST_F(Welcome, TheSampleIsCopiedAndOpened) {
    Show();
    Driver::Click(QStringLiteral("BtnExit"));
    Driver::WaitFor(QStringLiteral("the sample"), [&] { return Mid().HasImage(); });
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Mid().HeldPath(), AppPath(QStringLiteral("Temp/default.jpg")));
    EXPECT_EQ(Clicks("8880104"), 1);
}

TEST_F(Welcome, ACancelledOpenEnablesTheButtonsAgain) {
    Show();
    Driver::Modal([] { Driver::Click(QStringLiteral("BtnWelEdit")); }, QStringLiteral("fileNameEdit"),
                  [] { qobject_cast<QFileDialog*>(QApplication::activeModalWidget())->reject(); });
    EXPECT_TRUE(IsOpen());
    EXPECT_TRUE(Driver::Find(QStringLiteral("BtnWelEdit"))->isEnabled());
    EXPECT_EQ(Clicks("8880101"), 1);
}

TEST_F(Welcome, BasicEditingOpensAPictureInTheAdjustTool) {
    Show();
    const QString photo = Photo();
    Driver::Modal([] { Driver::Click(QStringLiteral("BtnWelEdit")); }, QStringLiteral("fileNameEdit"),
                  [&] { Driver::ChooseFile(photo); });
    EXPECT_EQ(Mid().HeldPath(), photo);
    EXPECT_EQ(Mid().Tool(), 1);
    EXPECT_FALSE(IsOpen());
}

TEST_F(Welcome, ToolsThatAreNotThereAreDisabledAndSaySo) {
    Show({}, ToolTable({*BuiltInTools().Row(1)}));
    for (const char* name :
         {"BtnWelTeXiao", "BtnWelMeiRong", "btnTexiao", "btnMeiRong", "btnTab2", "btnTab3", "btnTab4"}) {
        const QWidget* control = Driver::Find(QLatin1String(name));
        EXPECT_FALSE(control->isEnabled()) << name;
        EXPECT_EQ(control->toolTip(), LanguageText(QStringLiteral("ids_notyet"))) << name;
    }
}

TEST_F(Welcome, TheStartButtonShowsItWithoutCounting) {
    Show(Photo());
    const auto before = ClickCounts().Counts();
    Driver::Click(QStringLiteral("btnStart"));
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(ClickCounts().Counts(), before);
}

TEST_F(WelcomeOverWork, EveryWayToAnotherPictureAsksFirst) {
    ShowChanged(WithBeauty());
    Driver::Click(QStringLiteral("btnStart"));
    const Bitmap work = Mid().Canvas()->GetShowBitmap();
    for (const char* way : {"BtnExit", "BtnWelEdit", "BtnWelTeXiao", "BtnWelMeiRong"}) {
        AnswerSaveQuestion([=] { Driver::Click(QLatin1String(way)); }, "Esc");
        EXPECT_TRUE(IsOpen()) << way;
        EXPECT_TRUE(Driver::Find(QLatin1String(way))->isEnabled()) << way;
        EXPECT_EQ(Mid().Canvas()->GetShowBitmap(), work) << way;
    }
}

TEST_F(WelcomeOverWork, NoGoesOnToTheSample) {
    ShowChanged();
    Driver::Click(QStringLiteral("btnStart"));
    AnswerSaveQuestion([] { Driver::Click(QStringLiteral("BtnExit")); }, "BtnCancel");
    EXPECT_EQ(Mid().HeldPath(), AppPath(QStringLiteral("Temp/default.jpg")));
    EXPECT_FALSE(IsOpen());
}

TEST_F(WelcomeOverWork, NoGoesOnToTheChosenFileAndItsSection) {
    ShowChanged();
    Driver::Click(QStringLiteral("btnStart"));
    const QString other = WritePicture(QStringLiteral("other.png"), TestPictures::Ramp(640, 480));
    AnswerSaveQuestion(
        [&] {
            Driver::Modal([] { Driver::Click(QStringLiteral("BtnWelTeXiao")); }, QStringLiteral("fileNameEdit"),
                          [&] { Driver::ChooseFile(other); });
        },
        "BtnCancel");
    EXPECT_EQ(Mid().HeldPath(), other);
    EXPECT_EQ(Mid().Tool(), 7);
    EXPECT_FALSE(IsOpen());
}

TEST_F(WelcomeOverWork, SavingFirstLeavesTheStartPageReadyForTheChoice) {
    ShowChanged();
    Driver::Click(QStringLiteral("btnStart"));
    const QString held = Mid().HeldPath();
    AnswerSaveQuestion(
        [&] {
            Driver::Modal([] { Driver::Click(QStringLiteral("BtnExit")); }, QStringLiteral("EdtPath"),
                          [&] { SaveAs(QStringLiteral("kept")); });
        },
        "BtnSave");
    EXPECT_TRUE(QFile::exists(m_folder + QStringLiteral("/kept.jpg")));
    EXPECT_EQ(Mid().HeldPath(), held);
    ASSERT_TRUE(IsOpen());
    Driver::Click(QStringLiteral("BtnExit"));
    EXPECT_EQ(Mid().HeldPath(), AppPath(QStringLiteral("Temp/default.jpg"))) << "what was saved needs no question";
}
