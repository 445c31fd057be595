// SPDX-License-Identifier: GPL-3.0-or-later
#include "OpenFilter.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

#include "AppPaths.h"
#include "Language.h"

namespace {

class OpenFilterTest : public testing::TestWithParam<const char*> {
  protected:
    void SetUp() override {
        SetLanguage(QLatin1String(GetParam()));
        m_kinds = OpenFilter().split(QStringLiteral(";;"));
        ASSERT_EQ(m_kinds.size(), 5);
    }
    void TearDown() override { SetLanguage({}); }

    static QString NameOf(const QString& kind) { return kind.section(u'(', 0, 0).trimmed(); }
    static QStringList PatternsOf(const QString& kind) { return kind.section(u'(', 1).chopped(1).split(u' '); }

    QStringList m_kinds;
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Languages, OpenFilterTest, testing::Values("1033", "2052"));

TEST_P(OpenFilterTest, EveryKindHasANameOfItsOwnInTheLanguageAndNoPatternInIt) {
    const QRegularExpression chinese(QStringLiteral("\\p{Han}"));
    QStringList names;
    for (const QString& kind : m_kinds) {
        const QString name = NameOf(kind);
        EXPECT_FALSE(name.isEmpty());
        EXPECT_FALSE(name.contains(u'*') || name.contains(u'[')) << qPrintable(name);
        EXPECT_EQ(name.contains(chinese), LanguageId() == u"2052") << qPrintable(name);
        names << name;
    }
    EXPECT_EQ(names.removeDuplicates(), 0);
}

TEST_P(OpenFilterTest, NoPatternHasBrackets) {
    for (const QString& kind : m_kinds) {
        EXPECT_FALSE(PatternsOf(kind).isEmpty());
        EXPECT_FALSE(kind.contains(u'[')) << qPrintable(kind);
    }
}

TEST_P(OpenFilterTest, TheFirstKindIsEverythingAndTheOthersTakeTheirSuffixesInSmallAndInCapitals) {
    EXPECT_EQ(PatternsOf(m_kinds[0]), QStringList(QStringLiteral("*")));
    const QStringList suffixes[] = {{QStringLiteral("jpg"), QStringLiteral("jpeg"), QStringLiteral("jpe")},
                                    {QStringLiteral("bmp")},
                                    {QStringLiteral("gif")},
                                    {QStringLiteral("png")}};
    for (int kind = 1; kind < 5; ++kind) {
        QStringList expected;
        for (const QString& suffix : suffixes[kind - 1]) {
            expected << QStringLiteral("*.") + suffix << QStringLiteral("*.") + suffix.toUpper();
            EXPECT_TRUE(IsSupportedImage(QStringLiteral("a.") + suffix) || suffix == u"jpe") << qPrintable(suffix);
        }
        QStringList patterns = PatternsOf(m_kinds[kind]);
        patterns.sort();
        expected.sort();
        EXPECT_EQ(patterns, expected);
    }
}
