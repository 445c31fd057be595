// SPDX-License-Identifier: GPL-3.0-or-later
#include "Log.h"

#include <QtCore/QRegularExpression>
#include <thread>
#include <vector>

#include "FreshHome.h"

using namespace Qt::Literals::StringLiterals;

class LogFile : public FreshHome {
  protected:
    static QList<QByteArray> Lines() {
        QList<QByteArray> lines = Get(u"dbg.log"_s).split('\n');
        EXPECT_TRUE(lines.isEmpty() || lines.last().isEmpty()) << "the last line is ended";
        lines.removeLast();
        return lines;
    }
    // The text of a line behind its 21 characters of time.
    static QString TextOf(const QByteArray& line) {
        EXPECT_TRUE(line.endsWith('\r'));
        return QString::fromUtf8(line.mid(21).chopped(1));
    }
};

TEST_F(LogFile, LineHasTimeTextAndCarriageReturn) {
    Log("[QUINCE][Line:%d]%s", 142, "照片");
    const QString text = QString::fromUtf8(Get(u"dbg.log"_s));
    const QRegularExpression form(
        u"^\\[\\d{4}:\\d{2}:\\d{2}-\\d{2}:\\d{2}:\\d{2}\\]\\[QUINCE\\]\\[Line:142\\]照片\r\n$"_s);
    EXPECT_TRUE(form.match(text).hasMatch()) << text.toStdString();
}

TEST_F(LogFile, LinesAreAppended) {
    Log("one");
    Log("two");
    ASSERT_EQ(Lines().size(), 2);
    EXPECT_EQ(TextOf(Lines()[1]), u"two"_s);
}

TEST_F(LogFile, TextLongerThan1024CharactersIsCut) {
    Log("%s", QByteArray(1024, 'a').constData());
    Log("%s", QByteArray(1025, 'b').constData());
    Log("%s", QByteArray(100000, 'c').constData());
    Log("%s", QString(2000, u'图').toUtf8().constData());
    ASSERT_EQ(Lines().size(), 4);
    EXPECT_EQ(TextOf(Lines()[0]), QString(1024, u'a'));
    EXPECT_EQ(TextOf(Lines()[1]), QString(1024, u'b'));
    EXPECT_EQ(TextOf(Lines()[2]), QString(1024, u'c'));
    EXPECT_EQ(TextOf(Lines()[3]), QString(1024, u'图'));
}

TEST_F(LogFile, CutNeverSplitsACharacter) {
    const QString pairs = u"a"_s + QString::fromUtf8("\xF0\x9F\x8E\xA8").repeated(600);
    Log("%s", pairs.toUtf8().constData());
    EXPECT_EQ(TextOf(Lines()[0]), pairs.left(1023));
}

TEST_F(LogFile, FileThatCannotBeOpenedLosesTheLineSilently) {
    ASSERT_TRUE(QDir().mkpath(AppPath(u"dbg.log"_s)));
    Log("lost");
    EXPECT_TRUE(QFileInfo(AppPath(u"dbg.log"_s)).isDir());
}

TEST_F(LogFile, LinesOfWorkersDoNotMix) {
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([t] {
            for (int i = 0; i < 50; ++i) Log("%s", QByteArray(900, static_cast<char>('a' + t)).constData());
        });
    for (std::thread& thread : threads) thread.join();
    ASSERT_EQ(Lines().size(), 200);
    for (const QByteArray& line : Lines()) EXPECT_EQ(TextOf(line), QString(900, TextOf(line).at(0)));
}
