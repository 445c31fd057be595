// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine.h"

#include "FreshHome.h"

using namespace Qt::Literals::StringLiterals;

class CommandLine : public FreshHome {};

TEST_F(CommandLine, NothingIsEmpty) {
    EXPECT_EQ(PictureFromCommandLine({}), QString());
}

TEST_F(CommandLine, WholeTextIsOnePathIfItExists) {
    Put(u"my nice photo.jpg"_s, "");
    const QString path = AppPath(u"my nice photo.jpg"_s);
    EXPECT_EQ(PictureFromCommandLine(path.split(u' ')), path);
    EXPECT_EQ(PictureFromCommandLine({path}), path);
}

TEST_F(CommandLine, ElseTheFirstFileNameIsTaken) {
    const auto nothingExists = [](const QString&) { return false; };
    EXPECT_EQ(PictureFromCommandLine({u"-v"_s, u"a.jpg"_s, u"b.jpg"_s}, nothingExists), u"a.jpg"_s);
    EXPECT_EQ(PictureFromCommandLine({u"--"_s, u"-odd.jpg"_s}, nothingExists), u"-odd.jpg"_s);
    EXPECT_EQ(PictureFromCommandLine({QString(), u"a.jpg"_s}, nothingExists), u"a.jpg"_s);
}

TEST_F(CommandLine, MissingFileIsPassedOnAsItIs) {
    EXPECT_EQ(PictureFromCommandLine({u"/no such folder/a b.jpg"_s}), u"/no such folder/a b.jpg"_s);
}

TEST_F(CommandLine, OptionsAloneArePassedOnAsTheText) {
    EXPECT_EQ(PictureFromCommandLine({u"-a"_s, u"-b"_s}), u"-a -b"_s);
}

TEST_F(CommandLine, FileUrlStandsForItsPath) {
    Put(u"a b.jpg"_s, "");
    EXPECT_EQ(PictureFromCommandLine({u"file://"_s + GetAppDir() + u"/a%20b.jpg"_s}), AppPath(u"a b.jpg"_s));
    EXPECT_EQ(PictureFromCommandLine({u"file://"_s}), u"file://"_s);
}

TEST_F(CommandLine, RelativePathThatExistsComesBackAbsolute) {
    Put(u"a.jpg"_s, "");
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(GetAppDir()));
    EXPECT_EQ(PictureFromCommandLine({u"a.jpg"_s}), QDir::currentPath() + u"/a.jpg"_s);
    EXPECT_EQ(PictureFromCommandLine({u"./a.jpg"_s}), QDir::currentPath() + u"/a.jpg"_s);
    Put(u":b.jpg"_s, "");
    EXPECT_EQ(PictureFromCommandLine({u":b.jpg"_s}), QDir::currentPath() + u"/:b.jpg"_s);
    QDir::setCurrent(before);
}
