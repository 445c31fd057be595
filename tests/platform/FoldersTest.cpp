// SPDX-License-Identifier: GPL-3.0-or-later
#include <sys/stat.h>

#include "FreshHome.h"

using namespace Qt::Literals::StringLiterals;

namespace {

unsigned ModeOf(const QString& path) {
    struct stat present = {};
    return ::stat(QFile::encodeName(path).constData(), &present) == 0 ? present.st_mode & 0777 : 0;
}

}  // namespace

class Folders : public FreshHome {};

TEST_F(Folders, MissingParentsAreMade) {
    EXPECT_TRUE(MakeDirs(AppPath(u"a\\b\\c"_s)));
    EXPECT_TRUE(QFileInfo(AppPath(u"a/b/c"_s)).isDir());
    EXPECT_TRUE(MakeDirs(AppPath(u"a/b/c"_s))) << "one that exists is fine";
}

TEST_F(Folders, FileInTheWayOfAFolderFails) {
    Put(u"a"_s, "x");
    EXPECT_FALSE(MakeDirs(AppPath(u"a"_s)));
    EXPECT_FALSE(MakeDirs(AppPath(u"a/b"_s)));
    EXPECT_EQ(Get(u"a"_s), "x");
}

TEST_F(Folders, TemporaryFoldersAreForTheUserAlone) {
    ASSERT_TRUE(MakeDirs(AppPath(u"Temp/UndoTemp"_s)));
    EXPECT_EQ(ModeOf(AppPath(u"Temp"_s)), 0700u);
    EXPECT_EQ(ModeOf(AppPath(u"Temp/UndoTemp"_s)), 0700u);
}

TEST_F(Folders, OpenTemporaryFolderIsClosedToOthers) {
    ASSERT_TRUE(QDir().mkpath(AppPath(u"Temp"_s)));
    ASSERT_EQ(::chmod(QFile::encodeName(AppPath(u"Temp"_s)).constData(), 0777), 0);
    EXPECT_TRUE(MakeTempPrivate());
    EXPECT_EQ(ModeOf(AppPath(u"Temp"_s)), 0700u);
}

TEST_F(Folders, LinkInPlaceOfTheTemporaryFolderIsReplacedAndItsTargetStays) {
    Put(u"elsewhere/kept.txt"_s, "kept");
    ASSERT_TRUE(QFile::link(AppPath(u"elsewhere"_s), AppPath(u"Temp"_s)));
    EXPECT_TRUE(MakeTempPrivate());
    EXPECT_FALSE(QFileInfo(AppPath(u"Temp"_s)).isSymLink());
    EXPECT_EQ(Get(u"elsewhere/kept.txt"_s), "kept");
}

TEST_F(Folders, WipeDeletesFilesAtEveryDepthAndKeepsFolders) {
    Put(u"Temp/a.bin"_s, "x");
    Put(u"Temp/UndoTemp/origin.bin"_s, "x");
    Put(u"Temp/UndoTemp/deep/er/.hidden"_s, "x");
    EXPECT_TRUE(WipeDir(AppPath(u"\\Temp\\"_s)));
    EXPECT_FALSE(Has(u"Temp/a.bin"_s));
    EXPECT_FALSE(Has(u"Temp/UndoTemp/origin.bin"_s));
    EXPECT_FALSE(Has(u"Temp/UndoTemp/deep/er/.hidden"_s));
    EXPECT_TRUE(QFileInfo(AppPath(u"Temp/UndoTemp/deep/er"_s)).isDir());
}

TEST_F(Folders, WipeDeletesLinksAndNotWhatTheyLeadTo) {
    Put(u"kept/picture.jpg"_s, "kept");
    ASSERT_TRUE(QDir().mkpath(AppPath(u"Temp"_s)));
    ASSERT_TRUE(QFile::link(AppPath(u"kept"_s), AppPath(u"Temp/folder"_s)));
    ASSERT_TRUE(QFile::link(AppPath(u"kept/picture.jpg"_s), AppPath(u"Temp/file"_s)));
    ASSERT_TRUE(QFile::link(AppPath(u"nowhere"_s), AppPath(u"Temp/broken"_s)));
    EXPECT_TRUE(WipeDir(AppPath(u"Temp"_s)));
    EXPECT_EQ(Get(u"kept/picture.jpg"_s), "kept");
    EXPECT_TRUE(QDir(AppPath(u"Temp"_s)).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).isEmpty());
}

TEST_F(Folders, WipeThroughALinkIsRefused) {
    Put(u"kept/inner/picture.jpg"_s, "kept");
    ASSERT_TRUE(QFile::link(AppPath(u"kept"_s), AppPath(u"Temp"_s)));
    EXPECT_FALSE(WipeDir(AppPath(u"Temp"_s)));
    EXPECT_FALSE(WipeDir(AppPath(u"Temp/inner"_s)));
    EXPECT_EQ(Get(u"kept/inner/picture.jpg"_s), "kept");
}

TEST_F(Folders, WipeOutsideTheDataFolderIsRefused) {
    QTemporaryDir outside;
    QFile file(outside.filePath(u"kept"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    Put(u"kept"_s, "kept");
    EXPECT_FALSE(WipeDir(outside.path()));
    EXPECT_FALSE(WipeDir(AppPath(u"Temp/../../"_s) + QFileInfo(outside.path()).fileName()));
    EXPECT_FALSE(WipeDir(AppPath(u"Temp/.."_s)));
    EXPECT_FALSE(WipeDir(GetAppDir()));
    EXPECT_FALSE(WipeDir(GetAppDir() + u"2"_s)) << "a name that only begins the same";
    EXPECT_FALSE(WipeDir(u"/"_s));
    EXPECT_FALSE(WipeDir(QString()));
    EXPECT_TRUE(file.exists());
    EXPECT_EQ(Get(u"kept"_s), "kept");
}

TEST_F(Folders, WipeOfAMissingFolderHasNothingToDo) {
    EXPECT_TRUE(WipeDir(AppPath(u"Temp"_s)));
    EXPECT_FALSE(Has(u"Temp"_s));
}

TEST_F(Folders, WhatLiesInTempIsToldFromWhatIsNamedAlike) {
    ASSERT_TRUE(MakeDirs(AppPath(u"Temp/UndoTemp"_s)));
    Put(u"Temp/a.jpg"_s, "x");
    EXPECT_TRUE(IsInTemp(AppPath(u"Temp/a.jpg"_s)));
    EXPECT_TRUE(IsInTemp(AppPath(u"Temp/UndoTemp/not there.png"_s)));
    EXPECT_TRUE(IsInTemp(AppPath(u"Images/../Temp/a.jpg"_s)));
    EXPECT_FALSE(IsInTemp(AppPath(u"Temperature.jpg"_s)));
    EXPECT_FALSE(IsInTemp(AppPath(u"Temp"_s))) << "the folder itself is no file of it";
    ASSERT_TRUE(QFile::link(AppPath(u"Temp/a.jpg"_s), AppPath(u"link.jpg"_s)));
    EXPECT_TRUE(IsInTemp(AppPath(u"link.jpg"_s)));
}
