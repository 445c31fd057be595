// SPDX-License-Identifier: GPL-3.0-or-later
#include "StartUp.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QtCore/QFile>

#include "ClickCount.h"
#include "FreshHome.h"
#include "IniFile.h"
#include "Language.h"
#include "Version.h"

using namespace Qt::Literals::StringLiterals;

class StartUp : public FreshHome {
  protected:
    void SetUp() override {
        FreshHome::SetUp();
        m_services.languageNumber = [this] { return m_language; };
        m_services.update = {[] { return 1'700'000'000; }, [] { return true; },
                             [this](const QString&, const QStringList&) {
                                 ++m_updates;
                                 return m_updaterStarts;
                             }};
    }
    void TearDown() override {
        SetLanguage(QString());
        SetAppTitle(QString());
        ClickCounts().Clear();
        FreshHome::TearDown();
    }
    StartUpResult Run(const QStringList& arguments = {}) { return RunStartUp(arguments, m_services); }
    static QString Config(const QString& section, const QString& key) {
        return GetProfileString(section, key, u"none"_s, ConfigIni());
    }
    static void PutTitle(const QString& id, const QString& title) {
        Put(u"I18N/"_s + id + u"/CoreStringLanguage.ini"_s, (u"[Title]\nids_Name="_s + title + u'\n').toUtf8());
    }

    StartUpServices m_services;
    int m_language = 1033;
    int m_updates = 0;
    bool m_updaterStarts = true;
};

TEST_F(StartUp, EveryChineseChoosesTheChineseFolder) {
    for (const int number : {1028, 2052, 3076, 4100, 5124}) EXPECT_EQ(LanguageFor(number), u"2052"_s) << number;
    for (const int number : {1033, 1031, 2057, 1041, 4096, 0, -1}) EXPECT_EQ(LanguageFor(number), u"1033"_s) << number;
}

TEST_F(StartUp, LanguageIsWrittenAtEveryStartOverAHandMadeOne) {
    ASSERT_TRUE(WriteProfileString(u"Language"_s, u"ID"_s, u"1033"_s, ConfigIni()));
    m_language = 3076;
    Run();
    EXPECT_EQ(Config(u"Language"_s, u"ID"_s), u"2052"_s);
    EXPECT_EQ(LanguageId(), u"2052"_s);
    EXPECT_EQ(LanguageDirName(), u"/I18N/2052"_s);
}

// A whole-file save gives the file a new number.
TEST_F(StartUp, ASecondStartWritesNoSettings) {
    const auto number = [] {
        struct stat status {};
        EXPECT_EQ(stat(QFile::encodeName(ConfigIni()).constData(), &status), 0);
        return status.st_ino;
    };
    PutTitle(u"1033"_s, u"Quince"_s);
    Run();
    const auto first = number();
    // Keeps the number from being given again.
    const int kept =
        ::link(QFile::encodeName(ConfigIni()).constData(), QFile::encodeName(ConfigIni() + u".kept"_s).constData());
    ASSERT_EQ(kept, 0);
    Run();
    EXPECT_EQ(number(), first);
    m_language = 2052;
    Run();
    EXPECT_NE(number(), first);
}

TEST_F(StartUp, VersionIsWrittenAndGivenToTheCrashReporter) {
    std::string version;
    std::string folder;
    m_services.installCrashReporter = [&](const std::string& v, const std::string& f) {
        version = v;
        folder = f;
        EXPECT_FALSE(Has(u"dbg.log"_s)) << "before the first line of the log";
    };
    Run();
    EXPECT_EQ(Config(u"Main"_s, u"Version"_s), GetVersionText());
    EXPECT_EQ(version, GetVersionText().toStdString());
    EXPECT_EQ(folder, GetAppDir().toStdString());
}

TEST_F(StartUp, StartIsLogged) {
    Run();
    EXPECT_TRUE(Get(u"dbg.log"_s).endsWith("]============[QUINCE]AppInit=================\r\n"));
}

TEST_F(StartUp, TitleComesFromTheLanguageAndIsLeftInTheSettings) {
    PutTitle(u"2052"_s, u"榅桲"_s);
    m_language = 2052;
    Run();
    EXPECT_EQ(AppTitle(), u"榅桲"_s);
    EXPECT_EQ(Config(u"Title"_s, u"ids_Name"_s), u"榅桲"_s);
}

TEST_F(StartUp, MissingLanguageFileMakesTextsEmptyAndOnlyTheTitleFallsBack) {
    Run();
    EXPECT_EQ(AppTitle(), u"QUINCE"_s);
    EXPECT_EQ(Config(u"Title"_s, u"ids_Name"_s), u"QUINCE"_s);
    EXPECT_EQ(LanguageText(u"ids_openerror"_s), QString());
}

TEST_F(StartUp, EmptyTitleFallsBackToo) {
    PutTitle(u"1033"_s, QString());
    Run();
    EXPECT_EQ(AppTitle(), u"QUINCE"_s);
}

TEST_F(StartUp, MissingPictureIsHandedOnWithoutAMessage) {
    EXPECT_EQ(Run({u"/no such/photo.jpg"_s}).picture, u"/no such/photo.jpg"_s);
    EXPECT_EQ(Run().picture, QString());
}

TEST_F(StartUp, WhatACrashLeftInTempIsWiped) {
    Put(u"Temp/UndoTemp/origin.bin"_s, "left");
    Run();
    EXPECT_FALSE(Has(u"Temp/UndoTemp/origin.bin"_s));
    EXPECT_TRUE(Has(u"Temp/UndoTemp"_s));
}

TEST_F(StartUp, UpdaterThatStartsEndsTheStartBeforeTheTitle) {
    ASSERT_TRUE(WriteProfileString(u"Main"_s, u"newversion"_s, u"1"_s, ConfigIni()));
    EXPECT_TRUE(Run().updating);
    EXPECT_EQ(m_updates, 1);
    EXPECT_EQ(Config(u"Title"_s, u"ids_Name"_s), u"none"_s);
}

TEST_F(StartUp, UpdaterThatDoesNotStartLeavesANormalStart) {
    ASSERT_TRUE(WriteProfileString(u"Main"_s, u"newversion"_s, u"1"_s, ConfigIni()));
    m_updaterStarts = false;
    EXPECT_FALSE(Run().updating);
    EXPECT_EQ(m_updates, 1);
    EXPECT_EQ(Config(u"Title"_s, u"ids_Name"_s), u"QUINCE"_s);
}

TEST_F(StartUp, SettingsThatCannotBeWrittenLeaveTheDefaults) {
    ASSERT_TRUE(QDir().mkpath(ConfigIni()));  // a folder in place of the file
    m_language = 2052;
    const StartUpResult result = Run({u"a.jpg"_s});
    EXPECT_FALSE(result.updating);
    EXPECT_EQ(result.picture, u"a.jpg"_s);
    EXPECT_EQ(LanguageId(), u"1033"_s) << "the choice cannot be read back";
    EXPECT_EQ(AppTitle(), u"QUINCE"_s);
    EXPECT_EQ(m_updates, 0);
}

TEST_F(StartUp, HandMadeLanguageNeverBecomesAPath) {
    ASSERT_TRUE(WriteProfileString(u"Language"_s, u"ID"_s, u"../../etc"_s, ConfigIni()));
    SettleLanguage();
    EXPECT_EQ(LanguageDirName(), u"/I18N/1033"_s);
}

TEST_F(StartUp, OtherSettingsStayAsTheyAre) {
    ASSERT_TRUE(WriteProfileString(u"Tip"_s, u"DlgOpenImageLessen"_s, u"2"_s, ConfigIni()));
    Run();
    EXPECT_EQ(Config(u"Tip"_s, u"DlgOpenImageLessen"_s), u"2"_s);
}

TEST_F(StartUp, ClickCountsGoOnFromRunToRun) {
    Run();
    CountClick(u"8880501"_s);
    RunShutDown();
    ClickCounts().Clear();
    Run();
    CountClick(u"8880501"_s);
    EXPECT_EQ(ClickCounts().Counts().at(u"8880501"_s), 2);
}

TEST_F(StartUp, ShutDownWipesTempAndKeepsTheRest) {
    Run();
    Put(u"Temp/UndoTemp/undoredo1.bin"_s, "x");
    Put(u"Temp/TeXiao/1.jpg"_s, "x");
    RunShutDown();
    EXPECT_FALSE(Has(u"Temp/UndoTemp/undoredo1.bin"_s));
    EXPECT_FALSE(Has(u"Temp/TeXiao/1.jpg"_s));
    EXPECT_TRUE(Has(u"Config.ini"_s));
    EXPECT_TRUE(Has(u"dbg.log"_s));
}

TEST_F(StartUp, ServicesOfThisMachineAreComplete) {
    const StartUpServices services = SystemServices();
    EXPECT_GT(services.languageNumber(), 0);
    EXPECT_GT(services.update.now(), 1'700'000'000);
    EXPECT_FALSE(services.update.startProgram(AppPath(u"Update.exe"_s), {}));
    EXPECT_TRUE(services.update.networkAlive);
}
