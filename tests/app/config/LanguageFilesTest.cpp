// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QMap>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringDecoder>

#include "IniFile.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using Texts = QMap<QString, QString>;  // "section/key" to text

QString FileOf(const QString& id) {
    return QStringLiteral(QUINCE_RESOURCES) + u"/I18N/"_s + id + u"/CoreStringLanguage.ini"_s;
}

Texts TextsOf(const QString& id) {
    QFile file(FileOf(id));
    if (!file.open(QIODevice::ReadOnly)) return {};
    QStringDecoder decode(QStringConverter::Utf8);
    const QString all = decode(file.readAll());
    Texts texts;
    QString section;
    for (const QString& line : all.split(u'\n', Qt::SkipEmptyParts)) {
        const qsizetype equals = line.indexOf(u'=');
        if (line.startsWith(u'['))
            section = line.mid(1, line.size() - 2);
        else if (!line.startsWith(u';') && equals > 0)
            texts[section + u'/' + line.left(equals)] = line.mid(equals + 1);
    }
    return texts;
}

}  // namespace

TEST(LanguageFiles, BothHaveTheSameKeys) {
    EXPECT_GE(TextsOf(u"1033"_s).size(), 80);
    EXPECT_EQ(TextsOf(u"1033"_s).keys(), TextsOf(u"2052"_s).keys());
}

TEST(LanguageFiles, EveryTextIsFoundWholeByALookup) {
    for (const QString& id : {u"1033"_s, u"2052"_s}) {
        const Texts texts = TextsOf(id);
        for (auto text = texts.begin(); text != texts.end(); ++text) {
            const QString section = text.key().section(u'/', 0, 0);
            const QString key = text.key().section(u'/', 1);
            EXPECT_FALSE(text.value().isEmpty()) << text.key().toStdString();
            EXPECT_EQ(GetProfileString(section, key, QString(), FileOf(id)), text.value()) << text.key().toStdString();
        }
    }
}

TEST(LanguageFiles, PlaceholdersAreTheSameInBoth) {
    const Texts english = TextsOf(u"1033"_s);
    const Texts chinese = TextsOf(u"2052"_s);
    const QRegularExpression formatMark(u"%[0-9ds]"_s);
    for (auto text = english.begin(); text != english.end(); ++text)
        EXPECT_EQ(text.value().count(formatMark), chinese.value(text.key()).count(formatMark))
            << text.key().toStdString();
}

TEST(LanguageFiles, MessagesStandInTheirSections) {
    const Texts texts = TextsOf(u"1033"_s);
    for (const QString& key :
         {u"Title/ids_Name"_s, u"Language/ids_openerror"_s, u"Language/ids_openimage"_s,
          u"Language/ids_originalimage"_s, u"Language/ids_progress_1"_s, u"Language/ids_msg_openimage"_s,
          u"Language/ids_savetitle"_s, u"Language/ids_comparesave"_s, u"Language/ids_comparecancel"_s,
          u"Language/ids_desktopscreen"_s, u"Language/ids_edt_inputtext"_s, u"Language/ids_Scale"_s,
          u"SaveWnd/ids_msg_pathinvaild"_s, u"SaveWnd/ids_msg_fileinvaild"_s, u"MessageBox/ids_msg_fileexist"_s,
          u"MessageBox/ids_msg_saveerror"_s, u"AdviseDlg/ids_advise"_s, u"AdviseDlg/ids_addr"_s,
          u"AdviseDlg/ids_commiterror"_s})
        EXPECT_TRUE(texts.contains(key)) << key.toStdString();
}

TEST(LanguageFiles, EveryHistoryStepHasItsOwnName) {
    for (const QString& id : {u"1033"_s, u"2052"_s}) {
        const Texts texts = TextsOf(id);
        QStringList names;
        for (const char* key :
             {"ids_openimage",  "ids_originalimage", "ids_bianji",        "ids_caijian",          "ids_xuanzhuan",
              "ids_chicun",     "ids_wenzi",         "ids_biankuang",     "ids_texiao",           "ids_meirong",
              "ids_pifumeibai", "ids_mopi",          "ids_qudouquban",    "ids_shoulianshoushen", "ids_yanjingfangda",
              "ids_xiaochuhy",  "ids_xiaochuhyq",    "ids_yanjingbianse", "ids_chuncai",          "ids_yachimeibai"}) {
            const QString name = texts.value(u"Language/"_s + QLatin1String(key));
            EXPECT_FALSE(name.isEmpty()) << key;
            EXPECT_FALSE(names.contains(name)) << key;
            names += name;
        }
    }
}
