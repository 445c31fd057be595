// SPDX-License-Identifier: GPL-3.0-or-later
// The frame tool in the real main window, with the frames that come with the program, by mouse and keyboard events
// only.
#include <QtWidgets/QLabel>

#include "AppPaths.h"
#include "CBasePanelFrame.h"
#include "CEffect.h"
#include "CEffectListView.h"
#include "CHistoryManager.h"
#include "CImageFrameWnd.h"
#include "CLeftPanel.h"
#include "CSetAlphaWnd.h"
#include "FrameFixture.h"
#include "FrameParams.h"
#include "Language.h"
#include "TestPictures.h"

namespace {

class FrameToolWindow : public FrameTest {
  protected:
    Bitmap OnShow() { return Mid().Canvas()->GetShowBitmap(); }
    CBasePanelFrame& Panel() { return *static_cast<CBasePanelFrame*>(Frame().LeftPanel().Panel(6)); }

    // Chooses the frame of that name.
    void Choose(int kind, const char* stem) {
        const bool ornate = kind == FrameOrnate;
        const QString list = ornate ? QStringLiteral("BorderListViewXuanCai") : QStringLiteral("BorderListViewJianDan");
        if (Panel().Category() != kind)
            Driver::Click(ornate ? QStringLiteral("BtnXuanCai") : QStringLiteral("BtnJianDan"));
        Driver::WaitForRows(list, 12);
        const QString name = LanguageText(QStringLiteral("ids_frame_") + QLatin1String(stem));
        int row = 0;
        while (row < 12 && Panel().List(kind)->Row(row)->Name() != name) ++row;
        ASSERT_LT(row, 12) << stem;
        Driver::ClickRow(list, row);
        Driver::WaitFor(QStringLiteral("the frame"), [&] { return !Mid().IsBusy(); });
    }
    static bool IsStrengthShown() { return Driver::IsThere(QStringLiteral("SliderSetAlpha")); }
    static QString StrengthText() {
        return qobject_cast<QLabel*>(Driver::Find(QStringLiteral("TextSetAlpha")))->text();
    }

    static Bitmap With(const Bitmap& picture, int kind, const char* file) {
        FrameParams params;
        params.FramePath = ResourcePath((kind == FrameOrnate ? QStringLiteral("Sucai/Biankuang/XuanCai/")
                                                             : QStringLiteral("Sucai/Biankuang/JianDan/")) +
                                        QLatin1String(file));
        params.FrameType = kind;
        return params.Apply(picture, 1.0f);
    }
    static Bitmap Faded(const Bitmap& source, Bitmap framed, int percent) {
        Bitmap below = source;
        CEffect::Effect_AlphaAdJust(framed.MutablePixels(), below.MutablePixels(), framed.Width(), framed.Height(),
                                    1.0 - percent * 0.01);
        return framed;
    }
};

}  // namespace

TEST_F(FrameToolWindow, ASessionWithASimpleAndTwoOrnateFramesAmongOtherTools) {
    const Bitmap photo = PhotoPixels();
    auto& history = CHistoryManager::Instance();
    Show(Photo());

    // Another tool before: the frame lies around its result.
    Driver::DragSlider(QStringLiteral("Liangdu"), 20);
    const Bitmap bright = OnShow();
    Driver::Click(QStringLiteral("btnTab4"));
    EXPECT_EQ(Mid().Tool(), 6);
    EXPECT_EQ(OnShow(), bright);
    EXPECT_FALSE(IsStrengthShown());

    Choose(FrameSimple, "MatWhite");
    const Bitmap matted = With(bright, FrameSimple, "MatWhite.vnbkwz");
    EXPECT_EQ(OnShow(), matted);
    EXPECT_GT(matted.Width(), photo.Width());
    EXPECT_FALSE(IsStrengthShown());
    EXPECT_EQ(Clicks("888020402"), 1);
    Driver::Click(QStringLiteral("BtnUndo"));
    EXPECT_EQ(OnShow(), bright);
    Driver::Click(QStringLiteral("BtnRedo"));
    EXPECT_EQ(OnShow(), matted);
    const int steps = history.m_count;

    // Away and back: the frame is part of the picture now.
    Driver::Click(QStringLiteral("btnTab2"));
    Driver::Click(QStringLiteral("BtnXuanZhuan"));
    EXPECT_EQ(OnShow(), matted);
    Driver::Click(QStringLiteral("BtnYouXuanZhuan"));
    Driver::WaitFor(QStringLiteral("the turn"), [&] { return !Mid().IsBusy(); });
    const Bitmap turned = OnShow();
    EXPECT_EQ(turned.Width(), matted.Height());
    Driver::Click(QStringLiteral("btnTab4"));

    // Two ornate ones: the second takes the place of the first.
    Choose(FrameOrnate, "Lace");
    EXPECT_EQ(OnShow(), With(turned, FrameOrnate, "Lace.vnbkxc"));
    EXPECT_EQ(StrengthText(), QStringLiteral("100%"));
    Choose(FrameOrnate, "SunFlare");
    const Bitmap flared = With(turned, FrameOrnate, "SunFlare.vnbkxc");
    EXPECT_EQ(OnShow(), flared);
    EXPECT_EQ(Clicks("888020403"), 2);
    Driver::DragSlider(QStringLiteral("SliderSetAlpha"), 45);
    const Bitmap faded = Faded(turned, flared, 45);
    EXPECT_EQ(OnShow(), faded);
    EXPECT_EQ(history.m_count, steps + 2);

    Driver::Click(QStringLiteral("BtnUndo"));
    EXPECT_EQ(OnShow(), turned);
    EXPECT_FALSE(IsStrengthShown());
    Driver::Click(QStringLiteral("BtnRedo"));
    EXPECT_EQ(OnShow(), faded);
    EXPECT_EQ(StrengthText(), QStringLiteral("45%"));
    EXPECT_EQ(Panel().Category(), FrameOrnate);

    // Compare shows the opened picture beside it; choosing leaves it.
    Mid().SetCompareMode(2);
    EXPECT_EQ(Mid().CompareMode(), 2);
    Mid().SetCompareMode(0);
    EXPECT_EQ(OnShow(), faded);

    Driver::Click(QStringLiteral("btnTexiao"));
    EXPECT_EQ(Mid().Tool(), 7);
    EXPECT_FALSE(IsStrengthShown());
    EXPECT_EQ(OnShow(), faded);
    EXPECT_EQ(Clicks("888020401"), 2) << "left twice with a changed picture";

    EXPECT_EQ(Saved(QStringLiteral("framed")), faded);
    Driver::Click(QStringLiteral("BtnOriginal"));
    EXPECT_EQ(OnShow(), photo);
}

TEST_F(FrameToolWindow, TheViewAndTheStatusFollowTheNewSize) {
    Show(Photo());
    Driver::Click(QStringLiteral("btnTab4"));
    Choose(FrameSimple, "Wood");
    QRectF source;
    QRect place;
    Mid().Canvas()->GetViewRects(&source, &place);
    EXPECT_EQ(source.size().toSize(), QSize(1400, 1700)) << "all of it is in view";
    int width = 0, height = 0;
    Mid().Canvas()->GetImageSize(&width, &height);
    EXPECT_EQ(QSize(width, height), QSize(1400, 1700));
    bool told = false;
    for (const QLabel* label : Frame().findChildren<QLabel*>())
        told = told || label->text().contains(QStringLiteral("1700"));
    EXPECT_TRUE(told) << "the bar says the size";
}

TEST_F(FrameToolWindow, OpeningAnotherPictureTakesTheFrameAway) {
    Show(Photo());
    const QString other = WritePicture(QStringLiteral("other.png"), TestPictures::Face(640, 480));
    Driver::Click(QStringLiteral("btnTab4"));
    Choose(FrameOrnate, "Snow");
    ASSERT_TRUE(IsStrengthShown());
    ASSERT_TRUE(Mid().OpenImage(other));
    EXPECT_FALSE(IsStrengthShown());
    EXPECT_EQ(OnShow().Width(), 640);
    EXPECT_EQ(Panel().List(FrameOrnate)->SelectedItem(), -1);
    EXPECT_EQ(Panel().List(FrameOrnate)->count(), 12) << "the rows stay as they were made";
}
