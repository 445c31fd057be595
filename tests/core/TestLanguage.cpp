// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

#include "AppPaths.h"
#include "Language.h"

namespace {

// Puts a small language file of the tests' own into their home folder, in which the text of a key is "<key>!".
void UseTestLanguage() {
    // A link to the staged resources, if it is there at all.
    QFile::remove(AppPath(QStringLiteral("I18N")));
    const QString folder = AppPath(LanguageDirName());
    ASSERT_TRUE(QDir().mkpath(folder));
    QFile file(folder + QStringLiteral("/CoreStringLanguage.ini"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Language]\n");
    for (const char* key :
         {"ids_openimage", "ids_originalimage", "ids_bianji", "ids_caijian", "ids_progress_1", "ids_progress_2"})
        file.write(QByteArray(key) + "=" + key + "!\n");
}

class LanguageForAllTests : public testing::Environment {
    void SetUp() override { UseTestLanguage(); }
};

const testing::Environment* const g_language = testing::AddGlobalTestEnvironment(new LanguageForAllTests);

}  // namespace
