// SPDX-License-Identifier: GPL-3.0-or-later
#include "Language.h"

#include "FreshHome.h"

using namespace Qt::Literals::StringLiterals;

class Language : public FreshHome {
  protected:
    void TearDown() override {
        SetLanguage(QString());
        SetAppTitle(QString());
        FreshHome::TearDown();
    }
};

TEST_F(Language, PathsFollowTheChosenLanguage) {
    SetLanguage(u"2052"_s);
    EXPECT_EQ(LanguageDirName(), u"/I18N/2052"_s);
    EXPECT_EQ(LanguageIni(), AppPath(u"I18N/2052/CoreStringLanguage.ini"_s));
    SetLanguage(u"1033"_s);
    EXPECT_EQ(LanguageIni(), AppPath(u"I18N/1033/CoreStringLanguage.ini"_s));
}

TEST_F(Language, NoChoiceIsEnglish) {
    EXPECT_EQ(LanguageId(), u"1033"_s);
}

TEST_F(Language, TextsComeFromTheirSection) {
    Put(u"I18N/2052/CoreStringLanguage.ini"_s,
        u"[Language]\nids_openimage=打开图片\n[SaveWnd]\nids_msg_pathinvaild=路径\n"_s.toUtf8());
    SetLanguage(u"2052"_s);
    EXPECT_EQ(LanguageText(u"ids_openimage"_s), u"打开图片"_s);
    EXPECT_EQ(LanguageText(u"ids_msg_pathinvaild"_s), QString());
    EXPECT_EQ(LanguageText(u"ids_msg_pathinvaild"_s, u"SaveWnd"_s), u"路径"_s);
}

TEST_F(Language, MissingFileMakesEveryTextEmpty) {
    SetLanguage(u"2052"_s);
    EXPECT_EQ(LanguageText(u"ids_openimage"_s), QString());
    EXPECT_EQ(LanguageText(u"ids_msg_saveerror"_s, u"MessageBox"_s), QString());
}

TEST_F(Language, TitleIsTheProgramsNameUntilSet) {
    EXPECT_EQ(AppTitle(), u"QUINCE"_s);
    SetAppTitle(u"榅桲"_s);
    EXPECT_EQ(AppTitle(), u"榅桲"_s);
}
