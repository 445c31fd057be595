// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemLanguage.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

TEST(SystemLanguage, ChineseRegionsHaveTheirNumbers) {
    EXPECT_EQ(LanguageNumber(QLocale(u"zh_TW"_s)), 1028);
    EXPECT_EQ(LanguageNumber(QLocale(u"zh_CN"_s)), 2052);
    EXPECT_EQ(LanguageNumber(QLocale(u"zh_HK"_s)), 3076);
    EXPECT_EQ(LanguageNumber(QLocale(u"zh_SG"_s)), 4100);
    EXPECT_EQ(LanguageNumber(QLocale(u"zh_MO"_s)), 5124);
    EXPECT_EQ(LanguageNumber(QLocale(u"zh"_s)), 2052);
    EXPECT_EQ(LanguageNumber(QLocale(u"zh-Hant-TW"_s)), 1028);
}

TEST(SystemLanguage, OtherLanguagesAreNotChinese) {
    EXPECT_EQ(LanguageNumber(QLocale(u"en_US"_s)), 1033);
    EXPECT_EQ(LanguageNumber(QLocale(u"en_GB"_s)), 1033);
    EXPECT_EQ(LanguageNumber(QLocale(u"de_DE"_s)), 4096);
    EXPECT_EQ(LanguageNumber(QLocale(u"ja_JP"_s)), 4096);
    EXPECT_EQ(LanguageNumber(QLocale::c()), 4096);
}
