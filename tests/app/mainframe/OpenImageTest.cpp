// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QScopeGuard>
#include <QtGui/QClipboard>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>

#include "AppPaths.h"
#include "BitmapView.h"
#include "CBaseWnd.h"
#include "CHistoryManager.h"
#include "FrameFixture.h"
#include "IniFile.h"
#include "Language.h"
#include "TestPictures.h"

namespace {

class OpenImage : public FrameTest {
  protected:
    // What the statistics get about the last opened picture.
    void Listen() {
        Mid().SetOpenListener([this](const OpenedImage& image) { m_opened = image; });
    }
    int StoredChoice() {
        return GetProfileInt(QStringLiteral("Tip"), QStringLiteral("DlgOpenImageLessen"), 0,
                             AppPath(QStringLiteral("Config.ini")));
    }
    // Where the open dialog begins.
    static QString FolderOfOpenDialog() {
        QString folder;
        LookAtOpenDialog([] { Driver::Key(Qt::Key_O, Qt::ControlModifier); },
                         [&](QFileDialog& dialog) { folder = dialog.directory().absolutePath(); });
        return folder;
    }
    // Opens the save window, chooses to overwrite the opened file, runs `save` and closes the window.
    static void CoverFromSaveWindow(const std::function<void()>& save) {
        Driver::Modal([] { Driver::Key(Qt::Key_S, Qt::ControlModifier); }, QStringLiteral("EdtPath"),
                      [&] {
                          Driver::Click(QStringLiteral("BtnCover"));
                          save();
                          Driver::Click(QStringLiteral("BtnSaveClose"));
                      });
    }
    OpenedImage m_opened;
};

}  // namespace

TEST_F(OpenImage, APictureBecomesTheFirstStepAndIsOnShow) {
    Show(Photo());
    const auto& history = CHistoryManager::Instance();
    EXPECT_EQ(history.m_count, 1);
    EXPECT_TRUE(history.IsOriginal());
    EXPECT_EQ(history.ReadOrigin(), PhotoPixels());
    EXPECT_EQ(Mid().Canvas()->GetShowBitmap(), PhotoPixels());
    EXPECT_EQ(CurrentImagePath(), Mid().HeldPath());
}

TEST_F(OpenImage, TheBottomBarShowsNameAndSizes) {
    Show(Photo());
    EXPECT_EQ(qobject_cast<QLabel*>(Driver::Find(QStringLiteral("TextPicName")))->text(), QStringLiteral("photo.png"));
    EXPECT_EQ(qobject_cast<QLabel*>(Driver::Find(QStringLiteral("TextPicSize")))->text(), QStringLiteral("900 x 1200"));
    EXPECT_FALSE(qobject_cast<QLabel*>(Driver::Find(QStringLiteral("TextFileSize")))->text().isEmpty());
}

TEST_F(OpenImage, HistoryAndCompareButtonsAreOffAfterOpening) {
    Show(Photo());
    for (const char* name : {"BtnUndo", "BtnRedo", "BtnOriginal", "BtnCompare", "BtnMenuCompare"})
        EXPECT_FALSE(Driver::Find(QLatin1String(name))->isEnabled()) << name;
}

TEST_F(OpenImage, AFailureTellsTheUserAndLeavesTheSession) {
    Show(Photo());
    const QString held = Mid().HeldPath();
    const QString missing = m_folder + QStringLiteral("/none.jpg");
    EXPECT_EQ(MessageOf([&] { EXPECT_FALSE(Frame().OpenFile(missing)); }),
              LanguageText(QStringLiteral("ids_openerror")));
    EXPECT_EQ(CurrentImagePath(), missing);
    EXPECT_EQ(Mid().HeldPath(), held);
    EXPECT_EQ(Mid().Canvas()->GetShowBitmap(), PhotoPixels());
    EXPECT_EQ(CHistoryManager::Instance().m_count, 1);
}

TEST_F(OpenImage, AnEmptyPathFailsLikeAnUnreadableFile) {
    Show(Photo());
    EXPECT_EQ(MessageOf([&] { EXPECT_FALSE(Frame().OpenFile({})); }), LanguageText(QStringLiteral("ids_openerror")));
}

TEST_F(OpenImage, TextInAPicturesClothesIsRefused) {
    Show(Photo());
    const QString path = m_folder + QStringLiteral("/lie.jpg");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("not a picture at all");
    file.close();
    EXPECT_EQ(MessageOf([&] { EXPECT_FALSE(Frame().OpenFile(path)); }), LanguageText(QStringLiteral("ids_openerror")));
}

TEST_F(OpenImage, OpeningAgainKeepsTheToolAndReplacesTheHistory) {
    Show(Photo());
    Driver::DragSlider(QStringLiteral("Liangdu"), 30);
    Driver::Click(QStringLiteral("btnTab2"));
    Driver::Click(QStringLiteral("BtnXuanZhuan"));
    const int rotate = Mid().Tool();
    ASSERT_NE(rotate, 1) << "not the tool that the program begins with";
    const CBaseWnd* canvas = Mid().Canvas();
    ASSERT_GT(CHistoryManager::Instance().m_count, 1);
    const QString other = WritePicture(QStringLiteral("other.png"), TestPictures::Ramp(640, 480));
    ASSERT_TRUE(Frame().OpenFile(other));
    EXPECT_EQ(Mid().Tool(), rotate);
    EXPECT_EQ(Mid().Canvas(), canvas);
    EXPECT_TRUE(Driver::IsThere(QStringLiteral("BtnXuanZhuan"))) << "its panel is still on show";
    EXPECT_EQ(CHistoryManager::Instance().m_count, 1);
    EXPECT_EQ(Mid().Canvas()->GetShowBitmap(), TestPictures::Ramp(640, 480));
}

TEST_F(OpenImage, TheDialogStartsInTheFolderOfThePictureOnShow) {
    Show(Photo());
    EXPECT_EQ(FolderOfOpenDialog(), m_folder);
}

TEST_F(OpenImage, AfterTheSampleOrAPasteTheDialogStartsInThePicturesFolder) {
    const QString home = m_folder + QStringLiteral("/home");
    const QByteArray formerly = qgetenv("HOME");
    const auto restore = qScopeGuard([&] { qputenv("HOME", formerly); });
    ASSERT_TRUE(MakeDirs(home + QStringLiteral("/Pictures")));
    qputenv("HOME", home.toUtf8());
    Show();
    EXPECT_EQ(FolderOfOpenDialog(), home + QStringLiteral("/Pictures")) << "without a picture";
    Driver::Click(QStringLiteral("BtnExit"));
    EXPECT_EQ(FolderOfOpenDialog(), home + QStringLiteral("/Pictures")) << "after the sample";
    ASSERT_TRUE(Frame().OpenFile(Photo()));
    QApplication::clipboard()->setImage(ViewOf(TestPictures::Ramp(320, 200)));
    Driver::Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(FolderOfOpenDialog(), home + QStringLiteral("/Pictures")) << "after a paste";
    ASSERT_TRUE(QDir(home + QStringLiteral("/Pictures")).removeRecursively());
    EXPECT_EQ(FolderOfOpenDialog(), home) << "without a pictures folder";
}

TEST_F(OpenImage, CoveringAReducedPictureAsksOnce) {
    Configure("Tip", "DlgOpenImageLessen", QStringLiteral("1"));
    const QString path = WritePicture(QStringLiteral("wide.png"), TestPictures::Ramp(2500, 100));
    Show(path);
    ASSERT_EQ(Mid().Canvas()->GetShowBitmap().Width(), 2000);
    CoverFromSaveWindow([] {
        EXPECT_EQ(MessageOf([] { Driver::Click(QStringLiteral("BtnSave")); }, QStringLiteral("BtnNo")),
                  LanguageText(QStringLiteral("ids_msg_fileexist"), QStringLiteral("MessageBox")));
    });
    EXPECT_EQ(Load(path).Width(), 2500) << "No keeps the larger one";
    CoverFromSaveWindow([] { MessageOf([] { Driver::Click(QStringLiteral("BtnSave")); }, QStringLiteral("BtnYes")); });
    EXPECT_EQ(Load(path).Width(), 2000);
    Driver::DragSlider(QStringLiteral("Liangdu"), 30);
    CoverFromSaveWindow([] { Driver::Click(QStringLiteral("BtnSave")); });
    EXPECT_EQ(Load(path), Mid().Canvas()->GetShowBitmap()) << "the larger one is gone: nothing is left to ask about";
}

TEST_F(OpenImage, CoveringAPictureOfItsOwnSizeAsksNothingAlsoAfterAReducedOne) {
    Configure("Tip", "DlgOpenImageLessen", QStringLiteral("1"));
    Show(WritePicture(QStringLiteral("wide.png"), TestPictures::Ramp(2500, 100)));
    const QString small = WritePicture(QStringLiteral("small.png"), TestPictures::Ramp(640, 480));
    ASSERT_TRUE(Frame().OpenFile(small));
    Driver::DragSlider(QStringLiteral("Liangdu"), 30);
    CoverFromSaveWindow([] { Driver::Click(QStringLiteral("BtnSave")); });
    EXPECT_EQ(Load(small), Mid().Canvas()->GetShowBitmap());
}

TEST_F(OpenImage, ALargePictureRefusedToShrinkOpensAtFullSize) {
    Configure("Tip", "DlgOpenImageLessen", QStringLiteral("0"));
    Show();
    Listen();
    const QString path = WritePicture(QStringLiteral("wide.png"), TestPictures::Ramp(2001, 10));
    Driver::Modal([&] { EXPECT_TRUE(Frame().OpenFile(path)); }, QStringLiteral("BtnNot"),
                  [] { Driver::Click(QStringLiteral("BtnNot")); });
    EXPECT_EQ(Mid().Canvas()->GetShowBitmap().Width(), 2001);
    EXPECT_EQ(m_opened.bucket, 2);
    EXPECT_EQ(StoredChoice(), 0);
}

TEST_F(OpenImage, ALargePictureIsReducedWhenTheUserAgrees) {
    Configure("Tip", "DlgOpenImageLessen", QStringLiteral("0"));
    Show();
    Listen();
    const QString path = WritePicture(QStringLiteral("wide.png"), TestPictures::Ramp(4000, 1000));
    Driver::Modal([&] { EXPECT_TRUE(Frame().OpenFile(path)); }, QStringLiteral("BtnYes"),
                  [] { Driver::Click(QStringLiteral("BtnYes")); });
    EXPECT_EQ(Mid().Canvas()->GetShowBitmap().Width(), 2000);
    EXPECT_EQ(Mid().Canvas()->GetShowBitmap().Height(), 500);
    EXPECT_EQ(m_opened.bucket, 1);
    EXPECT_EQ(StoredChoice(), 0) << "asked again next time";
}

TEST_F(OpenImage, EscInTheSizeQuestionKeepsTheSizeAndStoresNothing) {
    Configure("Tip", "DlgOpenImageLessen", QStringLiteral("0"));
    Show();
    const QString path = WritePicture(QStringLiteral("wide.png"), TestPictures::Ramp(2100, 10));
    Driver::Modal([&] { EXPECT_TRUE(Frame().OpenFile(path)); }, QStringLiteral("BtnNot"),
                  [] {
                      Driver::Click(QStringLiteral("OptCheck"));
                      Driver::Key(Qt::Key_Escape);
                  });
    EXPECT_EQ(Mid().Canvas()->GetShowBitmap().Width(), 2100);
    EXPECT_EQ(StoredChoice(), 0);
}

TEST_F(OpenImage, AStoredYesReducesWithoutAsking) {
    Configure("Tip", "DlgOpenImageLessen", QStringLiteral("1"));
    Show(WritePicture(QStringLiteral("wide.png"), TestPictures::Ramp(2500, 100)));
    EXPECT_EQ(Mid().Canvas()->GetShowBitmap().Width(), 2000);
}

TEST_F(OpenImage, TwoThousandSquareIsNotAskedAbout) {
    Configure("Tip", "DlgOpenImageLessen", QStringLiteral("0"));
    Show(WritePicture(QStringLiteral("square.png"), TestPictures::Plain(2000, 2000, 0xFF808080)));
    EXPECT_EQ(Mid().Canvas()->GetShowBitmap().Width(), 2000);
}

TEST_F(OpenImage, StatisticsGetTheFacts) {
    Show();
    Listen();
    ASSERT_TRUE(Frame().OpenFile(WritePicture(QStringLiteral("default.jpg"), TestPictures::Ramp(640, 480))));
    EXPECT_EQ(m_opened.extension, QStringLiteral("jpg"));
    EXPECT_EQ(m_opened.width, 640);
    EXPECT_EQ(m_opened.height, 480);
    EXPECT_EQ(m_opened.bucket, 3);
    EXPECT_TRUE(m_opened.isDefault);
}
