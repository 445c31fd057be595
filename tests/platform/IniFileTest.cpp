// SPDX-License-Identifier: GPL-3.0-or-later
#include "IniFile.h"

#include <sys/stat.h>

#include <QtCore/QStringEncoder>
#include <random>
#include <thread>

#include "FreshHome.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Path = u"\\Config.ini"_s;

QByteArray Encoded(const QString& text, QStringConverter::Encoding encoding, bool mark) {
    QStringEncoder encode(encoding, mark ? QStringConverter::Flag::WriteBom : QStringConverter::Flag::Default);
    return encode(text);
}

}  // namespace

class IniFile : public FreshHome {
  protected:
    static QString Text(const QString& section, const QString& key, const QString& defaultValue = u"default"_s) {
        return GetProfileString(section, key, defaultValue, AppPath(Path));
    }
    static int Number(const QString& key, int defaultValue = -7) {
        return GetProfileInt(u"Main"_s, key, defaultValue, AppPath(Path));
    }
    static bool Write(const QString& section, const QString& key, const QString& value) {
        return WriteProfileString(section, key, value, AppPath(Path));
    }
};

TEST_F(IniFile, MissingFileSectionOrKeyGivesTheDefault) {
    EXPECT_EQ(Text(u"Main"_s, u"Version"_s), u"default"_s);
    EXPECT_EQ(Number(u"newversion"_s, 3), 3);
    Put(Path, "[Main]\r\nother=1\r\n");
    EXPECT_EQ(Text(u"Main"_s, u"Version"_s), u"default"_s);
    EXPECT_EQ(Text(u"None"_s, u"other"_s), u"default"_s);
    EXPECT_EQ(Number(u"newversion"_s, 3), 3);
}

TEST_F(IniFile, EmptyValueIsAValue) {
    Put(Path, "[Main]\nVersion=\n");
    EXPECT_EQ(Text(u"Main"_s, u"Version"_s), QString());
    EXPECT_EQ(Number(u"Version"_s), 0);
}

TEST_F(IniFile, EveryEncodingIsRead) {
    const QString text = u"; note\r\n[Title]\r\nids_Name = 照片 Quince é\r\n"_s;
    for (const QByteArray& bytes :
         {text.toUtf8(), Encoded(text, QStringConverter::Utf8, true), Encoded(text, QStringConverter::Utf16LE, true),
          Encoded(text, QStringConverter::Utf16BE, true)}) {
        Put(Path, bytes);
        EXPECT_EQ(Text(u"Title"_s, u"ids_Name"_s), u"照片 Quince é"_s) << bytes.left(4).toHex().toStdString();
    }
}

TEST_F(IniFile, NamesIgnoreCase) {
    Put(Path, "[MAIN]\nNewVersion=1\n");
    EXPECT_EQ(Text(u"Main"_s, u"newversion"_s), u"1"_s);
    ASSERT_TRUE(Write(u"main"_s, u"NEWVERSION"_s, u"2"_s));
    EXPECT_EQ(Number(u"newversion"_s), 2);
    EXPECT_EQ(Get(Path).toLower().count("newversion"), 1);
}

TEST_F(IniFile, FirstOfSeveralValuesCounts) {
    Put(Path, "[Main]\na=1\na=2\n");
    EXPECT_EQ(Text(u"Main"_s, u"a"_s), u"1"_s);
}

TEST_F(IniFile, QuotesAroundAValueAreNotPartOfIt) {
    Put(Path, "[Main]\na=\" x \"\nb='y'\nc=\"z\n");
    EXPECT_EQ(Text(u"Main"_s, u"a"_s), u" x "_s);
    EXPECT_EQ(Text(u"Main"_s, u"b"_s), u"y"_s);
    EXPECT_EQ(Text(u"Main"_s, u"c"_s), u"\"z"_s);
    EXPECT_EQ(Text(u"Main"_s, u"none"_s, u"\"d\""_s), u"\"d\""_s);
}

TEST_F(IniFile, LookupIsCutToTheBuffer) {
    Put(Path, "[Main]\na=" + QByteArray(400, 'x') + "\nb=" + QByteArray(259, 'y') + "\n");
    EXPECT_EQ(Text(u"Main"_s, u"a"_s), QString(259, u'x'));
    EXPECT_EQ(Text(u"Main"_s, u"b"_s), QString(259, u'y'));
}

TEST_F(IniFile, NumbersAreTheLeadingDigitsInThirtyTwoBits) {
    Put(Path,
        "[Main]\na=12abc\nb=abc\nc=-5\nd= +8 \ne=4294967295\nf=4294967297\ng=2147483648\nh=1.9\ni=- "
        "5\nj=\xE4\xB8\x80\n");
    EXPECT_EQ(Number(u"a"_s), 12);
    EXPECT_EQ(Number(u"b"_s), 0);
    EXPECT_EQ(Number(u"c"_s), -5);
    EXPECT_EQ(Number(u"d"_s), 8);
    EXPECT_EQ(Number(u"e"_s), -1);
    EXPECT_EQ(Number(u"f"_s), 1);
    EXPECT_EQ(static_cast<unsigned>(Number(u"g"_s)), 2147483648u);
    EXPECT_EQ(Number(u"h"_s), 1);
    EXPECT_EQ(Number(u"i"_s), 0);
    EXPECT_EQ(Number(u"j"_s), 0);
}

TEST_F(IniFile, CreatedFileIsUtf16LittleEndianWithMark) {
    ASSERT_TRUE(Write(u"Language"_s, u"ID"_s, u"2052"_s));
    EXPECT_TRUE(Get(Path).startsWith("\xFF\xFE"));
    EXPECT_EQ(Get(Path).size() % 2, 0);
    EXPECT_TRUE(Get(Path).contains(Encoded(u"ID=2052\r\n"_s, QStringConverter::Utf16LE, false)));
    EXPECT_EQ(Text(u"Language"_s, u"ID"_s), u"2052"_s);
}

TEST_F(IniFile, WriteKeepsEncodingOtherValuesAndComments) {
    const QString text = u"; first note\r\n[Main]\r\n; of a\r\na=甲\r\n\r\n[Other]\r\nb=2\r\n"_s;
    struct Case {
        QStringConverter::Encoding encoding;
        bool mark;
    };
    for (const Case& c : {Case{QStringConverter::Utf8, false}, Case{QStringConverter::Utf8, true},
                          Case{QStringConverter::Utf16LE, true}, Case{QStringConverter::Utf16BE, true}}) {
        Put(Path, Encoded(text, c.encoding, c.mark));
        ASSERT_TRUE(Write(u"Main"_s, u"new"_s, u"新"_s));
        const QByteArray after = Get(Path);
        EXPECT_EQ(after.left(2), Encoded(text, c.encoding, c.mark).left(2));
        EXPECT_EQ(Text(u"Main"_s, u"new"_s), u"新"_s);
        EXPECT_EQ(Text(u"Main"_s, u"a"_s), u"甲"_s);
        EXPECT_EQ(Text(u"Other"_s, u"b"_s), u"2"_s);
        EXPECT_TRUE(after.contains(Encoded(u"; of a"_s, c.encoding, false)));
        EXPECT_TRUE(after.contains(Encoded(u"; first note"_s, c.encoding, false)));
    }
}

TEST_F(IniFile, SecondWriteReplacesTheFirst) {
    ASSERT_TRUE(Write(u"Main"_s, u"a"_s, u"1"_s));
    ASSERT_TRUE(Write(u"Main"_s, u"a"_s, u"2"_s));
    EXPECT_EQ(Text(u"Main"_s, u"a"_s), u"2"_s);
    EXPECT_EQ(Get(Path).count(Encoded(u"a="_s, QStringConverter::Utf16LE, false)), 1);
}

TEST_F(IniFile, ValueThatIsThereAlreadyLeavesTheFileAlone) {
    ASSERT_TRUE(Write(u"Main"_s, u"a"_s, u"1"_s));
    const auto inode = [] {
        struct stat present = {};
        ::stat(QFile::encodeName(AppPath(Path)).constData(), &present);
        return present.st_ino;
    };
    const auto before = inode();
    EXPECT_TRUE(Write(u"Main"_s, u"a"_s, u"1"_s));
    EXPECT_EQ(inode(), before);
    EXPECT_TRUE(Write(u"Main"_s, u"a"_s, u"3"_s));
    EXPECT_NE(inode(), before);
}

TEST_F(IniFile, LineBreaksInAValueCannotForgeOtherKeys) {
    ASSERT_TRUE(Write(u"Advise"_s, u"Email"_s, u"a@b\r\n[Main]\nnewversion=1"_s));
    EXPECT_EQ(Number(u"newversion"_s), -7);
    EXPECT_EQ(Text(u"Advise"_s, u"Email"_s), u"a@b  [Main] newversion=1"_s);
}

TEST_F(IniFile, BrokenLinesAreKeptAsCommentsAndHarmNothing) {
    Put(Path, "[Mai\na=1\n[Main]\nb=2\njust words\n=3\n");
    EXPECT_EQ(Text(u"Main"_s, u"b"_s), u"2"_s);
    ASSERT_TRUE(Write(u"Main"_s, u"c"_s, u"4"_s));
    EXPECT_EQ(Text(u"Main"_s, u"b"_s), u"2"_s);
    EXPECT_TRUE(Get(Path).contains("; [Mai"));
    const QByteArray once = Get(Path);
    ASSERT_TRUE(Write(u"Main"_s, u"c"_s, u"5"_s));
    EXPECT_EQ(Get(Path).size(), once.size()) << "nothing grows from write to write";
}

TEST_F(IniFile, FileThatCannotBeReplacedIsReportedAndReadsAsDefaults) {
    ASSERT_TRUE(QDir().mkpath(AppPath(Path)));  // a folder of that name
    EXPECT_FALSE(Write(u"Main"_s, u"a"_s, u"1"_s));
    EXPECT_EQ(Text(u"Main"_s, u"a"_s), u"default"_s);
    EXPECT_FALSE(WriteProfileString(u"Main"_s, u"a"_s, u"1"_s, AppPath(u"no folder/Config.ini"_s)));
}

TEST_F(IniFile, HugeFileIsNotReadAndNotReplaced) {
    Put(Path, "[Main]\na=1\n" + QByteArray(5 << 20, ';'));
    EXPECT_EQ(Text(u"Main"_s, u"a"_s), u"default"_s);
    EXPECT_FALSE(Write(u"Main"_s, u"a"_s, u"2"_s));
    EXPECT_GT(Get(Path).size(), 5 << 20);
}

TEST_F(IniFile, ChangeByAnotherProgramIsSeen) {
    Put(Path, "[Main]\na=1\n");
    EXPECT_EQ(Number(u"a"_s), 1);
    Put(Path, "[Main]\na=22\n");
    EXPECT_EQ(Number(u"a"_s), 22);
    ASSERT_TRUE(QFile::remove(AppPath(Path)));
    EXPECT_EQ(Number(u"a"_s), -7);
}

TEST_F(IniFile, WritesFromSeveralThreadsAreAllKept) {
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([t] {
            for (int i = 0; i < 8; ++i) Write(u"S%1"_s.arg(t), u"k%1"_s.arg(i), QString::number(t * 100 + i));
        });
    for (std::thread& thread : threads) thread.join();
    for (int t = 0; t < 4; ++t)
        for (int i = 0; i < 8; ++i) EXPECT_EQ(Text(u"S%1"_s.arg(t), u"k%1"_s.arg(i)), QString::number(t * 100 + i));
}
