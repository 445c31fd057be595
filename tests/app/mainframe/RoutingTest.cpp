// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtCore/QFile>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractSlider>

#include "CHistoryManager.h"
#include "ClickCount.h"
#include "FrameFixture.h"
#include "Language.h"
#include "TestPictures.h"
#include "ToyTool.h"

namespace {

class Routing : public FrameTest {
  protected:
    static bool IsEnabled(const char* name) { return Driver::Find(QLatin1String(name))->isEnabled(); }
    static int SliderAt(const char* name) {
        return qobject_cast<QAbstractSlider*>(Driver::Find(QLatin1String(name)))->value();
    }
};

}  // namespace

TEST_F(Routing, TheFrameIs1024By730AndTitled) {
    Show();
    EXPECT_EQ(Frame().size(), QSize(1024, 730));
    EXPECT_EQ(Frame().windowTitle(), AppTitle());
}

TEST_F(Routing, ACommitEnablesUndoAndCompare) {
    Show(Photo());
    Driver::DragSlider(QStringLiteral("Liangdu"), 30);
    for (const char* name : {"BtnUndo", "BtnOriginal", "BtnCompare", "BtnMenuCompare"})
        EXPECT_TRUE(IsEnabled(name)) << name;
    EXPECT_FALSE(IsEnabled("BtnRedo"));
}

TEST_F(Routing, UndoAndRedoTakeThePanelAlong) {
    Show(Photo());
    Driver::DragSlider(QStringLiteral("Liangdu"), 30);
    Driver::Click(QStringLiteral("BtnUndo"));
    EXPECT_EQ(SliderAt("Liangdu"), 0);
    EXPECT_FALSE(IsEnabled("BtnUndo"));
    EXPECT_TRUE(IsEnabled("BtnRedo"));
    EXPECT_FALSE(IsEnabled("BtnCompare"));
    Driver::Click(QStringLiteral("BtnRedo"));
    EXPECT_EQ(SliderAt("Liangdu"), 30);
    EXPECT_FALSE(IsEnabled("BtnRedo"));
}

TEST_F(Routing, ShortcutsOfTheHistory) {
    Show(Photo());
    Driver::DragSlider(QStringLiteral("Liangdu"), 30);
    Driver::Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Mid().Canvas()->GetShowBitmap(), PhotoPixels());
    Driver::Key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_NE(Mid().Canvas()->GetShowBitmap(), PhotoPixels());
}

TEST_F(Routing, ZoomKeysAndTheirSlider) {
    Show(Photo());
    Driver::Key(Qt::Key_1, Qt::ControlModifier);
    EXPECT_EQ(SliderAt("SliderProportion"), 100);
    Driver::Key(Qt::Key_Plus);
    EXPECT_EQ(SliderAt("SliderProportion"), 110);
    Driver::Key(Qt::Key_Minus);
    Driver::Key(Qt::Key_Minus);
    EXPECT_NEAR(SliderAt("SliderProportion"), 90, 1);
    Driver::Key(Qt::Key_0, Qt::ControlModifier);
    EXPECT_LT(SliderAt("SliderProportion"), 90);
}

TEST_F(Routing, FitOfAHugePictureKeepsItsZoomThoughTheSliderShowsTwenty) {
    Show(WritePicture(QStringLiteral("huge.png"), TestPictures::Plain(6000, 400, 0xFF336699)));
    Driver::Key(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(SliderAt("SliderProportion"), 20);
    EXPECT_LT(Mid().Canvas()->GetZoom(), 0.2);
    Driver::Wait(30);
    EXPECT_LT(Mid().Canvas()->GetZoom(), 0.2) << "showing the zoom is no request to change it";
}

TEST_F(Routing, CompareByKeyShowsTheOriginalWhileHeld) {
    Show(Photo());
    Driver::DragSlider(QStringLiteral("Liangdu"), 30);
    QTest::keyPress(&Frame(), Qt::Key_Backslash);
    EXPECT_EQ(Mid().CompareMode(), 1);
    QTest::keyRelease(&Frame(), Qt::Key_Backslash);
    EXPECT_EQ(Mid().CompareMode(), 0);
}

TEST_F(Routing, EscLeavesSideBySide) {
    Show(Photo());
    Driver::DragSlider(QStringLiteral("Liangdu"), 30);
    Mid().SetCompareMode(2);
    EXPECT_EQ(Mid().CompareMode(), 2);
    QTest::keyClick(&Frame(), Qt::Key_Escape);
    EXPECT_EQ(Mid().CompareMode(), 0);
}

TEST_F(Routing, CompareWithoutAReadableOriginalStaysInModeNoneAndTellsOnce) {
    Show(Photo());
    Driver::DragSlider(QStringLiteral("Liangdu"), 30);
    QFile::remove(CHistoryManager::Instance().m_originPath);
    EXPECT_EQ(MessageOf([&] { Mid().SetCompareMode(2); }), LanguageText(QStringLiteral("ids_historyread")));
    EXPECT_EQ(Mid().CompareMode(), 0);
    Mid().SetCompareMode(2);
    EXPECT_EQ(Mid().CompareMode(), 0);
}

TEST_F(Routing, AnyHistoryOrZoomRequestLeavesCompareFirst) {
    Show(Photo());
    Driver::DragSlider(QStringLiteral("Liangdu"), 30);
    for (const char* button : {"BtnZoomIn", "BtnUndo"}) {
        Mid().SetCompareMode(2);
        Driver::Click(QLatin1String(button));
        EXPECT_EQ(Mid().CompareMode(), 0) << button;
    }
}

TEST_F(Routing, WithoutAPictureSavingIsOffAndTheKeysOfAPictureDoNothing) {
    Show();
    EXPECT_FALSE(IsEnabled("btnSave"));
    const double zoom = Mid().Canvas()->GetZoom();
    for (const Qt::Key key : {Qt::Key_S, Qt::Key_Z, Qt::Key_Y, Qt::Key_0, Qt::Key_1}) {
        Driver::Key(key, Qt::ControlModifier);
        EXPECT_TRUE(ClickCounts().Counts().empty()) << key;
        EXPECT_FALSE(Driver::IsThere(QStringLiteral("EdtPath"))) << key;
        EXPECT_EQ(Mid().Canvas()->GetZoom(), zoom) << key;
        EXPECT_EQ(CHistoryManager::Instance().m_count, 0) << key;
    }
    ASSERT_TRUE(Frame().OpenFile(Photo()));
    EXPECT_TRUE(IsEnabled("btnSave"));
    Driver::Key(Qt::Key_1, Qt::ControlModifier);
    EXPECT_EQ(Mid().Canvas()->GetZoom(), 1.0) << "with a picture they do";
}

TEST_F(Routing, RevertIsUndoable) {
    Show(Photo());
    Driver::DragSlider(QStringLiteral("Liangdu"), 30);
    const Bitmap adjusted = Mid().Canvas()->GetShowBitmap();
    Driver::Click(QStringLiteral("BtnOriginal"));
    EXPECT_EQ(Mid().Canvas()->GetShowBitmap(), PhotoPixels());
    for (const char* name : {"BtnOriginal", "BtnCompare", "BtnMenuCompare", "BtnRedo"})
        EXPECT_FALSE(IsEnabled(name)) << name;
    EXPECT_TRUE(IsEnabled("BtnUndo"));
    Driver::Click(QStringLiteral("BtnUndo"));
    EXPECT_EQ(Mid().Canvas()->GetShowBitmap(), adjusted);
}

TEST_F(Routing, SideBySideSavesThroughItsOwnButton) {
    Show(Photo());
    Driver::DragSlider(QStringLiteral("Liangdu"), 30);
    Mid().SetCompareMode(2);
    Driver::Modal([] { Driver::Click(QStringLiteral("BtnCompareSave")); }, QStringLiteral("EdtPath"),
                  [] { Driver::Click(QStringLiteral("BtnSaveClose")); });
    Driver::Click(QStringLiteral("BtnCompareCancel"));
    EXPECT_EQ(Mid().CompareMode(), 0);
}
