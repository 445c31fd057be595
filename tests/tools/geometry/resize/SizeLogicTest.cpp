// SPDX-License-Identifier: GPL-3.0-or-later
#include "CSizeLogic.h"

#include <gtest/gtest.h>

#include <memory>
#include <QtCore/QDir>
#include <QtCore/QFile>

#include "CObjProgress.h"
#include "ImageParams.h"
#include "Language.h"
#include "PC_Dsp.h"
#include "PC_File.h"
#include "TestHome.h"
#include "TestPictures.h"

namespace {

struct SizeLogicTest : testing::Test {
    SizeLogicTest() : history(TestHome::Path() + QStringLiteral("/Temp/UndoTemp/")) {
        SetLanguage(QStringLiteral("1033"));
        NewLogic();
    }
    void NewLogic() {
        logic = nullptr;
        logic = std::make_unique<CSizeLogic>(history);
        logic->SetViewSize(800, 600);
    }
    void Open(const Bitmap& opened) {
        picture = opened;
        ASSERT_TRUE(history.OpenImage(picture));
        logic->SetSource(picture);
    }
    bool ResizeAndCommit(int w, int h) { return logic->Resize(w, h) && logic->CommitStep(); }
    Bitmap InFile() const { return PC_File::ImageReadFrombinary(logic->TempFilePath().toStdWString()); }

    CHistoryManager history;
    std::unique_ptr<CSizeLogic> logic;
    Bitmap picture;
};

// Asks to stop once a percentage is reached.
class Stopping : public CObjProgress {
  public:
    explicit Stopping(float at) : m_at(at) {}
    int CanContinue() override { return m_fValue < m_at ? 1 : 0; }

  private:
    float m_at;
};

TEST_F(SizeLogicTest, TheEntryPictureLiesInItsFileUntilTheToolGoes) {
    Open(TestPictures::Face(120, 90));
    EXPECT_TRUE(logic->TempFilePath().endsWith(QStringLiteral("/Temp/UndoTemp/Sizetmp.bin")));
    EXPECT_TRUE(InFile() == picture);
    const QString path = logic->TempFilePath();
    logic = nullptr;
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(SizeLogicTest, ASizeIsResampledFromTheEntryPicture) {
    Open(TestPictures::Face(120, 90));
    ASSERT_TRUE(logic->Resize(60, 70));
    EXPECT_TRUE(logic->RenderResult() == PC_Dsp::Resample(picture, 60, 70));
    EXPECT_TRUE(logic->HasUnrecorded());
    EXPECT_EQ(logic->ImageSize(), QSize(60, 70));
    EXPECT_TRUE(InFile() == picture);
}

TEST_F(SizeLogicTest, SmallerAndThenLargerAtOnceRestoresDetail) {
    Open(TestPictures::Noise(120, 90, 3));
    ASSERT_TRUE(ResizeAndCommit(12, 9));
    ASSERT_TRUE(ResizeAndCommit(120, 90));
    EXPECT_TRUE(logic->RenderResult() == picture);
    ASSERT_TRUE(ResizeAndCommit(240, 180));
    EXPECT_TRUE(logic->RenderResult() == PC_Dsp::Resample(picture, 240, 180));
}

TEST_F(SizeLogicTest, TheNextSizeStartsFromWhatUndoBrought) {
    Open(TestPictures::Noise(120, 90, 3));
    ASSERT_TRUE(ResizeAndCommit(12, 9));
    const Bitmap small = logic->RenderResult();
    ASSERT_TRUE(ResizeAndCommit(60, 45));
    ASSERT_TRUE(logic->Undo());
    EXPECT_TRUE(InFile() == small);
    ASSERT_TRUE(logic->Resize(60, 45));
    EXPECT_TRUE(logic->RenderResult() == PC_Dsp::Resample(small, 60, 45));
}

TEST_F(SizeLogicTest, AnotherVisitStartsFromThePictureAsItIsThen) {
    Open(TestPictures::Noise(120, 90, 3));
    ASSERT_TRUE(ResizeAndCommit(12, 9));
    const Bitmap small = logic->RenderResult();
    logic->Apply();
    NewLogic();
    ASSERT_TRUE(logic->TakeViewState());
    ASSERT_TRUE(logic->Resize(120, 90));
    EXPECT_TRUE(logic->RenderResult() == PC_Dsp::Resample(small, 120, 90));
}

TEST_F(SizeLogicTest, ThePresentSizeIsNoChange) {
    Open(TestPictures::Face(120, 90));
    EXPECT_FALSE(logic->Resize(120, 90));
    EXPECT_FALSE(logic->CommitStep());
    EXPECT_EQ(history.m_count, 1);
}

TEST_F(SizeLogicTest, SizesBeyondTheLimitsAreRefused) {
    Open(TestPictures::Face(120, 90));
    for (const QSize size : {QSize(0, 90), QSize(120, 0), QSize(-5, 90), QSize(10001, 90), QSize(120, 10001)}) {
        EXPECT_FALSE(logic->Resize(size.width(), size.height())) << size.width() << " x " << size.height();
        EXPECT_EQ(logic->ImageSize(), QSize(120, 90));
    }
    EXPECT_TRUE(logic->Resize(1, 10000));
    EXPECT_TRUE(logic->Resize(10000, 1));
    EXPECT_TRUE(logic->Resize(1, 1));
}

TEST_F(SizeLogicTest, TheLimitHoldsForASideThatChanges) {
    Open(TestPictures::Ramp(12000, 10));
    EXPECT_TRUE(logic->Resize(12000, 5));
    EXPECT_EQ(logic->ImageSize(), QSize(12000, 5));
    EXPECT_FALSE(logic->Resize(11000, 5));
    EXPECT_TRUE(logic->Resize(9000, 5));
}

TEST_F(SizeLogicTest, AnEntryPictureThatCannotBeWrittenIsKeptInMemory) {
    // A folder in the file's place refuses it.
    QDir().mkpath(logic->TempFilePath() + QStringLiteral("/x"));
    Open(TestPictures::Noise(120, 90, 3));
    ASSERT_TRUE(ResizeAndCommit(12, 9));
    ASSERT_TRUE(logic->Resize(120, 90));
    EXPECT_TRUE(logic->RenderResult() == picture);
    QDir(logic->TempFilePath()).removeRecursively();
}

TEST_F(SizeLogicTest, AnEntryPictureThatCannotBeReadMakesTheOperationDoNothing) {
    Open(TestPictures::Face(120, 90));
    ASSERT_TRUE(ResizeAndCommit(60, 45));
    const Bitmap before = logic->RenderResult();
    ASSERT_TRUE(QFile::remove(logic->TempFilePath()));
    EXPECT_FALSE(logic->Resize(30, 20));
    EXPECT_TRUE(logic->RenderResult() == before);
    EXPECT_FALSE(logic->HasUnrecorded());
    // Damaged is refused as well.
    QFile file(logic->TempFilePath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no picture");
    file.close();
    EXPECT_FALSE(logic->Resize(30, 20));
    EXPECT_EQ(history.m_count, 2);
}

TEST_F(SizeLogicTest, ACancelLeavesEverythingAsItWas) {
    Open(TestPictures::Face(1200, 900));
    Stopping sink(1.0f);
    EXPECT_FALSE(logic->Resize(2000, 1500, &sink));
    EXPECT_TRUE(logic->RenderResult().SharesPixelsWith(picture));
    EXPECT_EQ(logic->ImageSize(), QSize(1200, 900));
    EXPECT_FALSE(logic->HasUnrecorded());
    EXPECT_TRUE(logic->Resize(2000, 1500));
}

TEST_F(SizeLogicTest, EachSizeIsAStepOfItsOwn) {
    Open(TestPictures::Face(120, 90));
    ASSERT_TRUE(ResizeAndCommit(60, 45));
    ASSERT_TRUE(ResizeAndCommit(30, 20));
    EXPECT_EQ(history.m_count, 3);
    const auto step = history.CloneCurrent();
    EXPECT_EQ(step->GetName(), QStringLiteral("Resize"));
    ASSERT_EQ(step->Params().size(), 1u);
    EXPECT_EQ(step->Image()->order, 0);
    EXPECT_TRUE(step->ReadImage() == logic->RenderResult());
    ASSERT_TRUE(logic->Revert());
    EXPECT_TRUE(logic->RenderResult() == picture);
    EXPECT_FALSE(logic->IsImageChanged());
}

TEST_F(SizeLogicTest, AlphaSurvives) {
    Open(TestPictures::Plain(120, 90, 0x40C08040));
    ASSERT_TRUE(logic->Resize(31, 23));
    EXPECT_TRUE(logic->RenderResult() == TestPictures::Plain(31, 23, 0x40C08040));
}

TEST_F(SizeLogicTest, NothingHappensWithoutAPicture) {
    EXPECT_FALSE(logic->Resize(30, 20));
    EXPECT_FALSE(QFile::exists(logic->TempFilePath()));
}

}  // namespace
