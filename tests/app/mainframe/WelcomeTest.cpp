// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>

#include "AppPaths.h"
#include "FrameFixture.h"
#include "Language.h"

namespace {

class Welcome : public FrameTest {
  protected:
    static bool IsOpen() { return Driver::IsThere(QStringLiteral("BtnExit")); }
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
    Driver::Click(QStringLiteral("btnStart"));
    EXPECT_TRUE(IsOpen());
    EXPECT_TRUE(Clicks("88802") == 0);
}
