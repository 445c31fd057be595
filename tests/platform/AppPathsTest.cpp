// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtCore/QCoreApplication>
#include <QtCore/QStandardPaths>

#include "FreshHome.h"

using namespace Qt::Literals::StringLiterals;

class AppPaths : public FreshHome {};

TEST_F(AppPaths, HomeVariableMovesTheDataFolder) {
    EXPECT_EQ(GetAppDir(), qEnvironmentVariable("QUINCE_HOME"));
    EXPECT_FALSE(GetAppDir().endsWith(u'/'));
}

TEST_F(AppPaths, HomeWithSlashAtTheEndLosesIt) {
    const QString home = GetAppDir();
    qputenv("QUINCE_HOME", (home + u"/"_s).toUtf8());
    EXPECT_EQ(GetAppDir(), home);
}

TEST_F(AppPaths, WithoutHomeTheProgramsFolderIsTheDataFolder) {
    qunsetenv("QUINCE_HOME");
    EXPECT_EQ(GetAppDir(), QCoreApplication::applicationDirPath());
}

TEST_F(AppPaths, EmptyNameIsTheFolderItself) {
    EXPECT_EQ(AppPath(QString()), GetAppDir());
}

TEST_F(AppPaths, BothSlashesAndDoubledOnesAreOne) {
    EXPECT_EQ(AppPath(u"\\Temp\\\\UndoTemp"_s), GetAppDir() + u"/Temp/UndoTemp"_s);
    EXPECT_EQ(NativePath(u"a\\b//c\\/d"_s), u"a/b/c/d"_s);
    EXPECT_EQ(NativePath(u"\\\\x"_s), u"/x"_s);
    EXPECT_EQ(NativePath(QString()), QString());
}

TEST_F(AppPaths, ResourceInTheDataFolderComesBeforeTheProgramsOwn) {
    const QString installed = QCoreApplication::applicationDirPath() + u"/AppPathsTest.res"_s;
    QFile file(installed);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    EXPECT_EQ(ResourcePath(u"AppPathsTest.res"_s), installed);
    Put(u"AppPathsTest.res"_s, "x");
    EXPECT_EQ(ResourcePath(u"\\AppPathsTest.res"_s), AppPath(u"AppPathsTest.res"_s));
    QFile::remove(installed);
}

TEST_F(AppPaths, ResourceThatIsNowhereIsNamedInTheDataFolder) {
    EXPECT_EQ(ResourcePath(u"Images/none.png"_s), AppPath(u"Images/none.png"_s));
}

TEST_F(AppPaths, DocumentsFolderIsMadeWhenMissing) {
    const QByteArray home = qgetenv("HOME");
    const QByteArray config = qgetenv("XDG_CONFIG_HOME");
    qputenv("HOME", GetAppDir().toUtf8());
    qputenv("XDG_CONFIG_HOME", AppPath(u".config"_s).toUtf8());
    const QString folder = GetDocumentsDir(u"Quince\\Pictures"_s);
    EXPECT_TRUE(folder.endsWith(u"/Quince/Pictures"_s));
    EXPECT_TRUE(QFileInfo(folder).isDir());
    // Where the documents folder is a file no folder can be found or made.
    ASSERT_TRUE(QDir(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)).removeRecursively());
    Put(QFileInfo(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)).fileName(), "in the way");
    EXPECT_EQ(GetDocumentsDir(u"Quince"_s), QString());
    qputenv("HOME", home);
    if (config.isNull())
        qunsetenv("XDG_CONFIG_HOME");
    else
        qputenv("XDG_CONFIG_HOME", config);
}

TEST_F(AppPaths, PicturesAreToldByTheirLastLettersInAnyCase) {
    for (const char* name : {"bmp", "gif", "jpg", "jpeg", "png", "mng", "jng", "tif",  "tiff", "tga", "pcx", "wbmp",
                             "wmf", "emf", "j2k", "jp2",  "jbg", "j2c", "jpc", "pgx",  "pnm",  "pgm", "ppm", "ras",
                             "jpe", "jxl", "dng", "cr2",  "nef", "arw", "raf", "webp", "heic", "avif"}) {
        const QString path = u"/pictures/a."_s + QLatin1String(name);
        EXPECT_TRUE(IsSupportedImage(path)) << name;
        EXPECT_TRUE(IsSupportedImage(path.toUpper())) << name;
    }
    for (const QString& path : {u"a.txt"_s, u"a.exe"_s, u"a.jpg.zip"_s, u"a"_s, QString(), u"a.psd"_s, u"/a.png/"_s})
        EXPECT_FALSE(IsSupportedImage(path)) << path.toStdString();
}

TEST_F(AppPaths, FrameFileIsTheFirstKindThatExists) {
    const QString folder = AppPath(u"Sucai"_s) + u'\\';
    EXPECT_EQ(FrameFileFor(folder, u"a"_s), QString());
    Put(u"Sucai/a.vnbkwz"_s, "");
    EXPECT_EQ(FrameFileFor(folder, u"a"_s), AppPath(u"Sucai/a.vnbkwz"_s));
    Put(u"Sucai/a.nlf"_s, "");
    EXPECT_EQ(FrameFileFor(folder, u"a"_s), AppPath(u"Sucai/a.nlf"_s));
    EXPECT_EQ(OrnateFrameFileFor(folder, u"a"_s), QString());
    Put(u"Sucai/a.vnbkxc"_s, "");
    EXPECT_EQ(OrnateFrameFileFor(folder, u"a"_s), AppPath(u"Sucai/a.vnbkxc"_s));
}

TEST_F(AppPaths, CurrentImagePathIsKeptAsGiven) {
    SetCurrentImagePath(u"/a/no such.jpg"_s);
    EXPECT_EQ(CurrentImagePath(), u"/a/no such.jpg"_s);
    SetCurrentImagePath(QString());
    EXPECT_TRUE(CurrentImagePath().isEmpty());
}
