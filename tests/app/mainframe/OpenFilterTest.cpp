// SPDX-License-Identifier: GPL-3.0-or-later
#include "OpenFilter.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QStringList>

TEST(OpenFilter, HasAKindForEachPairOfTheText) {
    const QStringList filters = OpenFilter().split(QStringLiteral(";;"));
    ASSERT_EQ(filters.size(), 5);
    EXPECT_EQ(filters[0], QStringLiteral("All File (*)"));
    EXPECT_TRUE(filters[1].startsWith(QStringLiteral("Jpeg File (")));
    EXPECT_TRUE(filters[4].startsWith(QStringLiteral("Png文件 (")));
}

TEST(OpenFilter, PatternsIgnoreCase) {
    const QString jpeg = OpenFilter().split(QStringLiteral(";;"))[1];
    const QString patterns = jpeg.section(QLatin1Char('('), 1).chopped(1);
    for (const char* name : {"a.jpg", "A.JPG", "b.JpEg", "c.jpe"})
        EXPECT_TRUE(QDir::match(patterns.split(QLatin1Char(' ')), QLatin1String(name))) << name;
    EXPECT_FALSE(QDir::match(patterns.split(QLatin1Char(' ')), QStringLiteral("a.png")));
}
