// SPDX-License-Identifier: GPL-3.0-or-later
// Qt's own dialogs and menus beside the program's.
#include "QtTexts.h"

#include <QtCore/QMimeDatabase>
#include <QtCore/QRegularExpression>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>

#include "FrameFixture.h"
#include "Language.h"

namespace {

class QtSpeaks : public FrameTest, public testing::WithParamInterface<const char*> {
  protected:
    void SetUp() override {
        FrameTest::SetUp();
        SetLanguage(QLatin1String(GetParam()));
        m_texts = std::make_unique<QtTexts>();
    }
    void TearDown() override {
        FrameTest::TearDown();
        m_texts.reset();
        SetLanguage(QStringLiteral("1033"));
    }

    static void ExpectLanguage(const QStringList& texts) {
        static const QRegularExpression Letters(QStringLiteral("\\p{L}")), Chinese(QStringLiteral("\\p{Han}"));
        int judged = 0;
        for (const QString& text : texts) {
            if (!text.contains(Letters)) continue;
            ++judged;
            EXPECT_EQ(text.contains(Chinese), LanguageId() == u"2052") << qPrintable(text);
        }
        EXPECT_GT(judged, 2);
    }

  private:
    std::unique_ptr<QtTexts> m_texts;
};

QStringList TextsOf(const QFileDialog& dialog) {
    QStringList texts{dialog.windowTitle()};
    for (const auto* button : dialog.findChildren<QAbstractButton*>()) texts << button->text() << button->toolTip();
    for (const auto* label : dialog.findChildren<QLabel*>()) texts << label->text();
    const auto* kinds = dialog.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
    for (int i = 0; i < kinds->count(); ++i) texts << kinds->itemText(i);
    return texts;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Languages, QtSpeaks, testing::Values("1033", "2052"));

TEST_P(QtSpeaks, TheProgramsLanguageInTheOpenDialog) {
    Show(Photo());
    LookAtOpenDialog([] { Driver::Key(Qt::Key_O, Qt::ControlModifier); },
                     [](QFileDialog& dialog) { ExpectLanguage(TextsOf(dialog)); });
}

TEST_P(QtSpeaks, NoPatternsInTheListOfKindsOfTheOpenDialog) {
    Show(Photo());
    LookAtOpenDialog([] { Driver::Key(Qt::Key_O, Qt::ControlModifier); },
                     [](QFileDialog& dialog) {
                         const auto* kinds = dialog.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
                         ASSERT_EQ(kinds->count(), 5);
                         for (int i = 0; i < kinds->count(); ++i)
                             EXPECT_FALSE(kinds->itemText(i).contains(u'*')) << qPrintable(kinds->itemText(i));
                     });
}

TEST_P(QtSpeaks, TheProgramsLanguageInTheMenuOfAField) {
    QLineEdit edit;
    const std::unique_ptr<QMenu> menu(edit.createStandardContextMenu());
    QStringList texts;
    for (const QAction* action : menu->actions()) texts << action->text().section(u'\t', 0, 0);
    ExpectLanguage(texts);
}

TEST_P(QtSpeaks, TheProgramsLanguageInTheNamesOfKindsOfFiles) {
    QStringList texts;
    for (const char* type : {"image/png", "image/jpeg", "image/gif", "image/bmp"})
        texts << QMimeDatabase().mimeTypeForName(QLatin1String(type)).comment();
    ExpectLanguage(texts);
}
