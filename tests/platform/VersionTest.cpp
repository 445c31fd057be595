// SPDX-License-Identifier: GPL-3.0-or-later
#include "Version.h"

#include <gtest/gtest.h>

#include <QtCore/QRegularExpression>

using namespace Qt::Literals::StringLiterals;

TEST(Version, IsNumbersWithDots) {
    EXPECT_TRUE(QRegularExpression(u"^\\d+(\\.\\d+)+$"_s).match(GetVersionText()).hasMatch());
}

TEST(Version, CommasBecomeDotsAndBlanksGo) {
    EXPECT_EQ(VersionTextFrom(u"1, 0, 12 ,3"_s), u"1.0.12.3"_s);
}

TEST(Version, ProgramWithoutVersionDataSaysSo) {
    EXPECT_EQ(VersionTextFrom(QString()), u"None VerSion Supprot"_s);
}
