// SPDX-License-Identifier: GPL-3.0-or-later
#include "SizeCheck.h"

#include <gtest/gtest.h>

#include "AppPaths.h"
#include "IniFile.h"

TEST(SizeCheck, ASideAboveTwoThousandIsLargeAndExactlyTwoThousandIsNot) {
    EXPECT_TRUE(SizeCheck::IsLarge({2001, 1}));
    EXPECT_TRUE(SizeCheck::IsLarge({10, 2001}));
    EXPECT_FALSE(SizeCheck::IsLarge({2000, 2000}));
}

TEST(SizeCheck, TheLongerSideBecomesTwoThousandAndTheOtherIsTruncated) {
    EXPECT_EQ(SizeCheck::Reduced({6000, 4000}), QSize(2000, 1333));
    EXPECT_EQ(SizeCheck::Reduced({4000, 6000}), QSize(1333, 2000));
    EXPECT_EQ(SizeCheck::Reduced({3000, 3000}), QSize(2000, 2000));
    // 2000.0 / 2999 * 2998 is 1999.33, and never rounded up.
    EXPECT_EQ(SizeCheck::Reduced({2999, 2998}), QSize(2000, 1999));
}

TEST(SizeCheck, ASideIsNeverBelowOne) {
    EXPECT_EQ(SizeCheck::Reduced({9000, 1}), QSize(2000, 1));
}

TEST(SizeCheck, TheStoredChoiceIsReadFromTheSettings) {
    const QString config = AppPath(QStringLiteral("Config.ini"));
    EXPECT_EQ(SizeCheck::StoredChoice(), SizeCheck::Ask);
    for (const int choice : {1, 2, 0}) {
        WriteProfileString(QStringLiteral("Tip"), QStringLiteral("DlgOpenImageLessen"), QString::number(choice),
                           config);
        EXPECT_EQ(SizeCheck::StoredChoice(), choice);
    }
}
