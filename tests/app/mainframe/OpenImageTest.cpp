// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtCore/QFile>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLabel>

#include "AppPaths.h"
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
    const QString other = WritePicture(QStringLiteral("other.png"), TestPictures::Ramp(640, 480));
    ASSERT_TRUE(Frame().OpenFile(other));
    EXPECT_EQ(Mid().Tool(), 1);
    EXPECT_EQ(CHistoryManager::Instance().m_count, 1);
    EXPECT_EQ(Mid().Canvas()->GetShowBitmap(), TestPictures::Ramp(640, 480));
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
