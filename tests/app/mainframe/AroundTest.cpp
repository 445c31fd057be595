// SPDX-License-Identifier: GPL-3.0-or-later
// What stands around the picture, from the main window: information, settings, feedback.
#include <QtCore/QFile>
#include <QtTest/QTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QRadioButton>

#include "AppPaths.h"
#include "CAboutDlg.h"
#include "CAdviseDlg.h"
#include "CImageInfoWnd.h"
#include "CNetworkDlg.h"
#include "CSettingWnd.h"
#include "CSizeSettingDlg.h"
#include "FrameFixture.h"
#include "IniFile.h"
#include "Language.h"
#include "SizeCheck.h"
#include "TestPictures.h"

namespace {

class Around : public FrameTest {};

QString Fact(const char* name) {
    return qobject_cast<QLineEdit*>(Driver::Find(QLatin1String(name)))->text();
}

}  // namespace

TEST_F(Around, InformationOpensOverTheBottomBarAndKeepsUpWithThePicture) {
    for (const char* language : {"1033", "2052"}) {
        SetLanguage(QLatin1String(language));
        Show(Photo());
        Driver::Click(QStringLiteral("OptExif"));
        EXPECT_EQ(Fact("TextTuPianMingCheng"), u"photo.png");
        EXPECT_EQ(Fact("TextTuPianChiCun"), u"900 x 1200");
        EXPECT_EQ(Driver::Find(QStringLiteral("TextTuPianMingCheng"))->toolTip(),
                  m_folder + QStringLiteral("/photo.png"));
        Driver::Key(Qt::Key_Escape);
        EXPECT_FALSE(Driver::IsThere(QStringLiteral("TextTuPianChiCun")));
        Driver::Click(QStringLiteral("btnTab2"));
        Driver::Click(QStringLiteral("BtnXuanZhuan"));
        Driver::Click(QStringLiteral("BtnYouXuanZhuan"));
        Driver::Click(QStringLiteral("btnTab1"));
        Driver::Click(QStringLiteral("OptExif"));
        EXPECT_EQ(Fact("TextTuPianChiCun"), u"1200 x 900");
        Driver::Key(Qt::Key_Escape);
    }
    EXPECT_EQ(Clicks("8880508"), 4);
}

TEST_F(Around, WithoutAPictureInformationOpensNothingAndCounts) {
    Show();
    auto* option = Frame().findChild<QAbstractButton*>(QStringLiteral("OptExif"));
    ASSERT_TRUE(option);
    QTest::mouseClick(option, Qt::LeftButton);
    EXPECT_FALSE(option->isChecked());
    EXPECT_EQ(Clicks("8880508"), 1);
    EXPECT_FALSE(Driver::IsThere(QStringLiteral("TextTuPianMingCheng")));
}

TEST_F(Around, ASettingOfLargePicturesHoldsForTheNextOne) {
    Configure("Tip", "DlgOpenImageLessen", QStringLiteral("0"));
    Show(Photo());
    Driver::Click(QStringLiteral("btnSetting"));
    EXPECT_EQ(Clicks("88807"), 1);
    Driver::Modal([] { Driver::Click(QStringLiteral("ElementSetting")); }, QStringLiteral("Opt1"),
                  [] {
                      Driver::Find(QStringLiteral("Opt3"))->setFocus();
                      Driver::Key(Qt::Key_Up);
                      Driver::Key(Qt::Key_Up);
                      Driver::Click(QStringLiteral("BtnSave"));
                  });
    ASSERT_EQ(SizeCheck::StoredChoice(), SizeCheck::Reduce) << "a picture would ask, and nobody answers";
    const QString large = WritePicture(QStringLiteral("large.png"), TestPictures::Plain(2001, 10, 0xFF808080));
    ASSERT_TRUE(Frame().OpenFile(large));
    EXPECT_EQ(Mid().Canvas()->GetShowBitmap().Width(), 2000);
}

TEST_F(Around, EveryEntryOfTheSettingsOpensItsWindowAndTheFrameWaits) {
    Show(Photo());
    const std::pair<const char*, const char*> entries[] = {
        {"ElementAbout", "BtnWebSite"}, {"ElementNetwork", "OptSend"}, {"ElementSetting", "Opt1"}};
    for (const auto& [entry, control] : entries) {
        Driver::Click(QStringLiteral("btnSetting"));
        Driver::Modal([entry = entry] { Driver::Click(QLatin1String(entry)); }, QLatin1String(control),
                      [this] {
                          EXPECT_TRUE(Mid().IsBusy());
                          Driver::Key(Qt::Key_Escape);
                      });
        EXPECT_FALSE(Mid().IsBusy()) << entry;
    }
}

TEST_F(Around, WithoutAddressesTheEntriesThatNeedOneSayWhy) {
    Show(Photo());
    Driver::Click(QStringLiteral("btnSetting"));
    const QWidget* update = Driver::Find(QStringLiteral("ElementUpdate"));
    EXPECT_FALSE(update->isEnabled());
    EXPECT_EQ(update->toolTip(), LanguageText(QStringLiteral("ids_noupdateaddress")));
    Driver::Key(Qt::Key_Escape);
    Driver::Modal([] { Driver::Click(QStringLiteral("btnAdjust")); }, QStringLiteral("TextNoAddress"),
                  [] {
                      EXPECT_FALSE(Driver::Find(QStringLiteral("BtnCommit"))->isEnabled());
                      Driver::Key(Qt::Key_Escape);
                  });
    EXPECT_EQ(Clicks("8880702"), 1);
}

TEST_F(Around, AnUpdaterThatIsNotInstalledIsToldByHand) {
    // The staged file is a link, which a write would follow.
    const QString file = AppPath(QStringLiteral("Addresses.ini"));
    const QString staged = QFile::symLinkTarget(file);
    QFile::remove(file);
    ASSERT_TRUE(WriteProfileString(QStringLiteral("Addresses"), QStringLiteral("Update"),
                                   QStringLiteral("https://u.example/"), file));
    Show(Photo());
    Driver::Click(QStringLiteral("btnSetting"));
    EXPECT_EQ(MessageOf([] { Driver::Click(QStringLiteral("ElementUpdate")); }),
              LanguageText(QStringLiteral("ids_noupdater")));
    QFile::remove(file);
    if (!staged.isEmpty()) QFile::link(staged, file);
}
