// SPDX-License-Identifier: GPL-3.0-or-later
#include "SavePlan.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include "AppPaths.h"
#include "TestHome.h"

namespace {

const QString Default = QStringLiteral("/docs/QUINCE");

class SavePlanTest : public testing::Test {
  protected:
    void SetUp() override { SetLastSaveFolder({}); }
    void TearDown() override { SetLastSaveFolder({}); }

    SavePlan Opened(const QString& path) {
        SavePlan plan;
        plan.SetSource(path, Default);
        return plan;
    }
};

QString Touch(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(path);
    return path;
}

}  // namespace

TEST_F(SavePlanTest, SplitsTheSource) {
    const SavePlan plan = Opened(QStringLiteral("/home/me/portrait.jpg"));
    EXPECT_EQ(plan.SourceFolder(), QStringLiteral("/home/me"));
    EXPECT_EQ(plan.SourceName(), QStringLiteral("portrait"));
    EXPECT_EQ(plan.SourceSuffix(), QStringLiteral(".jpg"));
    EXPECT_EQ(plan.CurrentName(), QStringLiteral("portrait_copy"));
    EXPECT_EQ(plan.ShownName(), QStringLiteral("portrait_copy"));
    EXPECT_EQ(plan.ShownFolder(), Default);
}

TEST_F(SavePlanTest, SourceWithoutADotProposesJustCopy) {
    const SavePlan plan = Opened(QStringLiteral("/home/me/portrait"));
    EXPECT_EQ(plan.SourceName(), QString());
    EXPECT_EQ(plan.CurrentName(), QStringLiteral("_copy"));
    EXPECT_EQ(plan.SourceSuffix(), QStringLiteral("rait"));
    EXPECT_FALSE(plan.CanCover());
}

TEST_F(SavePlanTest, ADotInTheFolderIsNotASuffix) {
    const SavePlan plan = Opened(QStringLiteral("/home/me.jpg/portrait"));
    EXPECT_EQ(plan.SourceFolder(), QStringLiteral("/home/me.jpg"));
    EXPECT_EQ(plan.CurrentName(), QStringLiteral("_copy"));
}

TEST_F(SavePlanTest, NameEndsAtItsLastDot) {
    EXPECT_EQ(Opened(QStringLiteral("/a/b.c.d.png")).SourceName(), QStringLiteral("b.c.d"));
    EXPECT_EQ(Opened(QStringLiteral("/a/.jpg")).CurrentName(), QStringLiteral("_copy"));
}

TEST_F(SavePlanTest, BothKindsOfSlashesSeparate) {
    const SavePlan plan = Opened(QStringLiteral("\\nowhere\\me\\\\portrait.png"));
    EXPECT_EQ(plan.SourceFolder(), QStringLiteral("/nowhere/me"));
    EXPECT_EQ(plan.SourceName(), QStringLiteral("portrait"));
}

TEST_F(SavePlanTest, AFileInTheRootKeepsItsFolder) {
    EXPECT_EQ(Opened(QStringLiteral("/portrait.png")).SourceFolder(), QStringLiteral("/"));
}

TEST_F(SavePlanTest, NoSourceIsLegal) {
    const SavePlan plan = Opened({});
    EXPECT_EQ(plan.CurrentName(), QStringLiteral("_copy"));
    EXPECT_EQ(plan.SourceSuffix(), QString());
    EXPECT_FALSE(plan.CanCover());
}

TEST_F(SavePlanTest, OnlyThreeSuffixesCanBeCovered) {
    for (const char* name : {"a.jpg", "a.JPG", "a.Png", "a.bmp", "a.BMP"})
        EXPECT_TRUE(Opened(QStringLiteral("/p/") + QLatin1String(name)).CanCover()) << name;
    for (const char* name : {"a.jpeg", "a.jpe", "a.gif", "a.tif", "a.webp", "a", "jpg", "a.jpg~"})
        EXPECT_FALSE(Opened(QStringLiteral("/p/") + QLatin1String(name)).CanCover()) << name;
}

TEST_F(SavePlanTest, UpperCaseSuffixIsLowered) {
    EXPECT_EQ(Opened(QStringLiteral("/p/A.JPG")).SourceSuffix(), QStringLiteral(".jpg"));
    EXPECT_EQ(Opened(QStringLiteral("/p/A.JPEG")).SourceSuffix(), QStringLiteral("jpeg"));
}

TEST_F(SavePlanTest, NothingUnderTempCanBeCovered) {
    ASSERT_TRUE(MakeDirs(AppPath(QStringLiteral("Temp/UndoTemp"))));
    const QString inside = Touch(AppPath(QStringLiteral("Temp/default.jpg")));
    EXPECT_FALSE(Opened(inside).CanCover());
    EXPECT_FALSE(Opened(AppPath(QStringLiteral("Temp/UndoTemp/gone.png"))).CanCover());
    EXPECT_FALSE(Opened(AppPath(QStringLiteral("Images/../Temp/default.jpg"))).CanCover());
    EXPECT_TRUE(Opened(AppPath(QStringLiteral("Temperature.jpg"))).CanCover());
}

TEST_F(SavePlanTest, ALinkIntoTempCannotBeCovered) {
    ASSERT_TRUE(MakeDirs(AppPath(QStringLiteral("Temp"))));
    const QString inside = Touch(AppPath(QStringLiteral("Temp/linked.jpg")));
    QTemporaryDir elsewhere;
    ASSERT_TRUE(QFile::link(inside, elsewhere.filePath(QStringLiteral("innocent.jpg"))));
    EXPECT_FALSE(Opened(elsewhere.filePath(QStringLiteral("innocent.jpg"))).CanCover());
    ASSERT_TRUE(QFile::link(AppPath(QStringLiteral("Temp")), elsewhere.filePath(QStringLiteral("folder"))));
    EXPECT_FALSE(Opened(elsewhere.filePath(QStringLiteral("folder/linked.jpg"))).CanCover());
}

TEST_F(SavePlanTest, LastSaveFolderGoesBeforeTheDefault) {
    EXPECT_EQ(Opened(QStringLiteral("/p/a.jpg")).CurrentFolder(), Default);
    SetLastSaveFolder(QStringLiteral("/saved/here"));
    EXPECT_EQ(Opened(QStringLiteral("/p/a.jpg")).CurrentFolder(), QStringLiteral("/saved/here"));
}

TEST_F(SavePlanTest, CoverShowsTheSourceAndGivesTheFieldsBack) {
    SavePlan plan = Opened(QStringLiteral("/p/a.jpg"));
    plan.ToggleCover(Default, QStringLiteral("a_copy"));
    EXPECT_EQ(plan.CoverState(), SavePlan::Cover::On);
    EXPECT_EQ(plan.ShownFolder(), QStringLiteral("/p"));
    EXPECT_EQ(plan.ShownName(), QStringLiteral("a"));
    plan.ToggleCover(QStringLiteral("/p"), QStringLiteral("a"));
    EXPECT_EQ(plan.CoverState(), SavePlan::Cover::Off);
    EXPECT_EQ(plan.ShownFolder(), Default);
    EXPECT_EQ(plan.ShownName(), QStringLiteral("a_copy"));
}

TEST_F(SavePlanTest, WhatWasTypedSurvivesCoverAndAFailedSave) {
    SavePlan plan = Opened(QStringLiteral("/p/a.jpg"));
    plan.ToggleCover(QStringLiteral("/typed"), QStringLiteral("name"));
    plan.Read(plan.ShownFolder(), plan.ShownName());
    plan.ToggleCover(plan.ShownFolder(), plan.ShownName());
    EXPECT_EQ(plan.ShownFolder(), QStringLiteral("/typed"));
    EXPECT_EQ(plan.ShownName(), QStringLiteral("name"));
}

TEST_F(SavePlanTest, CoverWritesTheVeryFileWhateverItsCase) {
    SavePlan plan = Opened(QStringLiteral("/p/A.JPG"));
    plan.ToggleCover(Default, QStringLiteral("A_copy"));
    plan.Read(plan.ShownFolder(), plan.ShownName());
    EXPECT_EQ(plan.FullPath(QStringLiteral(".jpg")), QStringLiteral("/p/A.JPG"));
}

TEST_F(SavePlanTest, FullPathJoinsFolderNameAndSuffix) {
    SavePlan plan = Opened(QStringLiteral("/p/a.jpg"));
    EXPECT_EQ(plan.FullPath(QStringLiteral(".png")), QStringLiteral("/docs/QUINCE/a_copy.png"));
    plan.Read(QStringLiteral("/x/y/"), QStringLiteral("n.v2"));
    EXPECT_EQ(plan.FullPath(QStringLiteral(".bmp")), QStringLiteral("/x/y/n.v2.bmp"));
    plan.Read(QStringLiteral("\\x\\\\y\\"), QStringLiteral("n"));
    EXPECT_EQ(plan.FullPath(QStringLiteral(".bmp")), QStringLiteral("/x/y/n.bmp"));
    plan.Read(QStringLiteral("/"), QStringLiteral("n"));
    EXPECT_EQ(plan.FullPath(QStringLiteral(".jpg")), QStringLiteral("/n.jpg"));
}

TEST_F(SavePlanTest, AFolderWithABackslashInItsNameIsMeantAsTyped) {
    QTemporaryDir home;
    const QString odd = home.filePath(QStringLiteral("odd\\name"));
    ASSERT_TRUE(QDir().mkpath(odd));
    SavePlan plan = Opened(QStringLiteral("/p/a.jpg"));
    plan.Read(odd, QStringLiteral("n"));
    EXPECT_EQ(plan.FullPath(QStringLiteral(".jpg")), odd + QStringLiteral("/n.jpg"));
    const QString source = Touch(odd + QStringLiteral("/s.jpg"));
    EXPECT_EQ(Opened(source).SourceFolder(), odd);
}

TEST(SaveName, RefusesTheNineCharacters) {
    for (const char c : std::string("\\/:*?\"<>|"))
        EXPECT_FALSE(IsValidSaveName(QStringLiteral("a%1b").arg(QLatin1Char(c)))) << c;
}

TEST(SaveName, RefusesEmptyDotsAndControlCharacters) {
    EXPECT_FALSE(IsValidSaveName({}));
    EXPECT_FALSE(IsValidSaveName(QStringLiteral(".")));
    EXPECT_FALSE(IsValidSaveName(QStringLiteral("..")));
    for (const ushort c : {0x00, 0x01, 0x0A, 0x1F, 0x7F, 0x85})
        EXPECT_FALSE(IsValidSaveName(QStringLiteral("a") + QChar(c) + QStringLiteral("b"))) << c;
}

TEST(SaveName, AcceptsEverythingElse) {
    for (const char16_t* name :
         {u"a", u"a.b", u"...", u".hidden", u"a b", u"portrait_copy", u"人像", u"é'&%$#@!;,+=[]{}", u"-"})
        EXPECT_TRUE(IsValidSaveName(QString::fromUtf16(name))) << qPrintable(QString::fromUtf16(name));
}

TEST(SaveTypes, IndexDecidesFormatAndQuality) {
    EXPECT_EQ(SaveTypeAt(0).format, 1);
    EXPECT_EQ(SaveTypeAt(1).format, 2);
    EXPECT_EQ(SaveTypeAt(2).format, 3);
    EXPECT_TRUE(SaveTypeAt(0).hasQuality);
    EXPECT_FALSE(SaveTypeAt(1).hasQuality);
    EXPECT_FALSE(SaveTypeAt(2).hasQuality);
    EXPECT_EQ(SaveTypeAt(-1).format, 1);
    EXPECT_EQ(SaveTypeAt(3).format, 1);
}

TEST(SaveSize, IsInKilobytesWithOneDecimal) {
    EXPECT_EQ(SaveSizeText(0), QStringLiteral("0.0KB"));
    EXPECT_EQ(SaveSizeText(1024), QStringLiteral("1.0KB"));
    EXPECT_EQ(SaveSizeText(1536), QStringLiteral("1.5KB"));
    EXPECT_EQ(SaveSizeText(2366874), QStringLiteral("2311.4KB"));
    EXPECT_EQ(SaveSizeText(4294967295u), QStringLiteral("4194304.0KB"));
}

struct ThumbnailCase {
    QSize picture;
    QRect place;
};

class SaveThumbnailTest : public testing::TestWithParam<ThumbnailCase> {};

TEST_P(SaveThumbnailTest, FitsAndCentres) {
    EXPECT_EQ(SaveThumbnail::For(GetParam().picture).place, GetParam().place);
}

// 180 × 140 is the room; the longer fit wins, the rest is halved and truncated.
INSTANTIATE_TEST_SUITE_P(Sizes, SaveThumbnailTest,
                         testing::Values(ThumbnailCase{{1800, 1400}, {0, 0, 180, 140}},   // the very shape
                                         ThumbnailCase{{6000, 4000}, {0, 10, 180, 120}},  // by its width
                                         ThumbnailCase{{4000, 6000}, {43, 0, 93, 140}},   // by its height
                                         ThumbnailCase{{90, 70}, {0, 0, 180, 140}},       // enlarged
                                         ThumbnailCase{{1, 1}, {20, 0, 140, 140}},
                                         ThumbnailCase{{5000, 1}, {0, 69, 180, 1}},  // a side is never 0
                                         ThumbnailCase{{1, 5000}, {89, 0, 1, 140}}));

TEST(SaveThumbnail, NamesFileAndRectangleForTheSkin) {
    EXPECT_EQ(SaveThumbnail::For({6000, 4000}).Attributes(QStringLiteral("/d/Temp/SaveTempThumb.jpg")),
              QStringLiteral("file='/d/Temp/SaveTempThumb.jpg' dest='0,10,180,130' "));
}
