// SPDX-License-Identifier: GPL-3.0-or-later
#include "AppFolders.h"

#include <sys/stat.h>

#include "FreshHome.h"

using namespace Qt::Literals::StringLiterals;

class AppFolders : public FreshHome {};

TEST_F(AppFolders, MissingFoldersAreMade) {
    EXPECT_TRUE(PrepareFolders());
    for (const QString& name : {u"Temp"_s, u"Temp/UndoTemp"_s, u"Temp/TeXiao"_s, u"Images/Example"_s,
                                u"Images/Button"_s, u"Images/Loading"_s, u"Images/TextureBrush"_s, u"I18N"_s,
                                u"Sucai/Biankuang/JianDan"_s, u"Sucai/Biankuang/XuanCai"_s, u"Resources"_s})
        EXPECT_TRUE(QFileInfo(ResourcePath(name)).isDir()) << name.toStdString();
    EXPECT_TRUE(Has(u"Temp/UndoTemp"_s));
    EXPECT_TRUE(PrepareFolders()) << "a second time";
}

TEST_F(AppFolders, TempIsForTheUserAlone) {
    ASSERT_TRUE(QDir().mkpath(AppPath(u"Temp/UndoTemp"_s)));
    ASSERT_EQ(::chmod(QFile::encodeName(AppPath(u"Temp"_s)).constData(), 0755), 0);
    ASSERT_TRUE(PrepareFolders());
    struct stat present = {};
    ASSERT_EQ(::stat(QFile::encodeName(AppPath(u"Temp"_s)).constData(), &present), 0);
    EXPECT_EQ(present.st_mode & 0777, 0700u);
}

TEST_F(AppFolders, WipeTakesTheFilesOfTempAndNothingElse) {
    Put(u"Temp/UndoTemp/undoredo3.bin"_s, "x");
    Put(u"Temp/thumb.jpg"_s, "x");
    Put(u"Config.ini"_s, "x");
    EXPECT_TRUE(WipeTemp());
    EXPECT_FALSE(Has(u"Temp/UndoTemp/undoredo3.bin"_s));
    EXPECT_FALSE(Has(u"Temp/thumb.jpg"_s));
    EXPECT_TRUE(Has(u"Temp/UndoTemp"_s));
    EXPECT_TRUE(Has(u"Config.ini"_s));
}

TEST_F(AppFolders, FolderThatCannotBeMadeIsTold) {
    Put(u"Resources"_s, "in the way");
    EXPECT_FALSE(PrepareFolders());
    EXPECT_TRUE(QFileInfo(AppPath(u"Temp/TeXiao"_s)).isDir()) << "the others are made";
}
