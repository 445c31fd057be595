// SPDX-License-Identifier: GPL-3.0-or-later
#include "ClickCount.h"

#include <limits>
#include <QtCore/QStringEncoder>
#include <thread>
#include <vector>

#include "FreshHome.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using Counts = std::map<QString, int>;

QByteArray Units(const QString& text) {
    QStringEncoder encode(QStringConverter::Utf16LE);
    return encode(text);
}

Counts Loaded(const QString& text) {
    CClickCount counter;
    counter.LoadBytes(Units(text));
    return counter.Counts();
}

}  // namespace

class ClickCount : public FreshHome {};

TEST_F(ClickCount, ClicksAddUp) {
    CClickCount counter;
    counter.Add(u"8880501"_s);
    counter.Add(u"8880501"_s);
    counter.Add(u"88801"_s, 5);
    EXPECT_EQ(counter.Counts(), (Counts{{u"88801"_s, 5}, {u"8880501"_s, 2}}));
}

TEST_F(ClickCount, CallOfAWindowCountsInTheProgramsCounter) {
    CountClick(u"8880601"_s);
    EXPECT_EQ(ClickCounts().Counts().at(u"8880601"_s), 1);
    ClickCounts().Clear();
    EXPECT_TRUE(ClickCounts().Counts().empty());
}

TEST_F(ClickCount, FileIsInTheResourcesFolderAndItsFolderIsMade) {
    EXPECT_EQ(CClickCount::FilePath(), GetAppDir() + u"/Resources/Action.dat"_s);
    EXPECT_TRUE(CClickCount().Save());
    EXPECT_TRUE(Has(u"Resources/Action.dat"_s));
}

TEST_F(ClickCount, FileHasOneLineForEachCodeInAscendingOrder) {
    CClickCount counter;
    counter.Add(u"8880601"_s, 3);
    counter.Add(u"888060601"_s, 12);
    counter.Add(u"88801"_s);
    ASSERT_TRUE(counter.Save());
    EXPECT_EQ(Get(u"Resources/Action.dat"_s), Units(u"88801#1|\n8880601#3|\n888060601#12|\n"_s));
}

TEST_F(ClickCount, WithoutClicksTheFileIsEmpty) {
    Put(u"Resources/Action.dat"_s, "old");
    ASSERT_TRUE(CClickCount().Save());
    EXPECT_TRUE(Has(u"Resources/Action.dat"_s));
    EXPECT_EQ(Get(u"Resources/Action.dat"_s), QByteArray());
}

TEST_F(ClickCount, CountsGoOnInTheNextRun) {
    CClickCount first;
    first.Add(u"8880501"_s, 4);
    ASSERT_TRUE(first.Save());
    CClickCount second;
    second.Load();
    second.Add(u"8880501"_s);
    EXPECT_EQ(second.Counts(), (Counts{{u"8880501"_s, 5}}));
}

TEST_F(ClickCount, MissingFileLoadsNothing) {
    CClickCount counter;
    counter.Load();
    EXPECT_TRUE(counter.Counts().empty());
}

TEST_F(ClickCount, LineWithoutItsEndMarkIsIgnoredAndTheRestLoads) {
    EXPECT_EQ(Loaded(u"88801#1|\n88802#2\n88803#3|\n"_s), (Counts{{u"88801"_s, 1}, {u"88803"_s, 3}}));
    EXPECT_EQ(Loaded(u"88801 1|\n88803#3|\n"_s), (Counts{{u"88803"_s, 3}}));
    EXPECT_EQ(Loaded(u"\n\n88803#3|"_s), (Counts{{u"88803"_s, 3}})) << "the last line needs no line feed";
}

TEST_F(ClickCount, SameCodeTwiceAddsUp) {
    EXPECT_EQ(Loaded(u"88801#1|\n88802#7|\n88801#30|\n"_s), (Counts{{u"88801"_s, 31}, {u"88802"_s, 7}}));
}

TEST_F(ClickCount, CountIsTheIntegerAfterTheSeparator) {
    EXPECT_EQ(Loaded(u"a#12x|\n"_s).at(u"a"_s), 12);
    EXPECT_EQ(Loaded(u"a#x|\n"_s).at(u"a"_s), 0);
    EXPECT_EQ(Loaded(u"a#-4|\n"_s).at(u"a"_s), -4);
    EXPECT_EQ(Loaded(u"a#|\n"_s).at(u"a"_s), 0);
    EXPECT_EQ(Loaded(u"a#1#2|\n"_s).at(u"a"_s), 1);
}

TEST_F(ClickCount, NumbersBeyondAnIntegerStayAtItsEnd) {
    constexpr int most = std::numeric_limits<int>::max();
    EXPECT_EQ(Loaded(u"a#99999999999999999999|\n"_s).at(u"a"_s), most);
    EXPECT_EQ(Loaded(u"a#2147483647|\na#1|\n"_s).at(u"a"_s), most);
}

TEST_F(ClickCount, LongLineIsTakenInPieces) {
    // The first piece of 260 units has no end mark; the second one is a line of its own.
    const QString text = QString(259, u'x') + u"#"_s + u"88801#2|\n"_s;
    EXPECT_EQ(Loaded(text), (Counts{{u"88801"_s, 2}}));
}

TEST_F(ClickCount, MarkOfAnEditorIsNotPartOfTheFirstCode) {
    EXPECT_EQ(Loaded(u"\uFEFF88801#2|\n"_s), (Counts{{u"88801"_s, 2}}));
}

TEST_F(ClickCount, HalfACodeUnitAtTheEndIsHarmless) {
    CClickCount counter;
    counter.LoadBytes(Units(u"88801#2|\n"_s) + 'x');
    EXPECT_EQ(counter.Counts().at(u"88801"_s), 2);
}

TEST_F(ClickCount, FileThatCannotBeWrittenKeepsTheCounts) {
    Put(u"Resources"_s, "in the way");
    CClickCount counter;
    counter.Add(u"88801"_s);
    EXPECT_FALSE(counter.Save());
    EXPECT_EQ(counter.Counts().size(), 1u);
}

TEST_F(ClickCount, ThreadsMayCountWhileOthersReadAndSave) {
    CClickCount counter;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&] {
            for (int i = 0; i < 500; ++i) counter.Add(u"88801%1"_s.arg(i % 7));
        });
    for (int i = 0; i < 10; ++i) EXPECT_TRUE(counter.Save());
    for (std::thread& thread : threads) thread.join();
    int total = 0;
    for (const auto& [code, count] : counter.Counts()) total += count;
    EXPECT_EQ(total, 2000);
}
