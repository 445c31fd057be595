// SPDX-License-Identifier: GPL-3.0-or-later
// Slimming, eye enlarging and one-click beauty in the real main window, by mouse and keyboard events only.
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLabel>

#include "BeautyLooks.h"
#include "CEffect.h"
#include "CEffectListView.h"
#include "CHistoryManager.h"
#include "CLeftPanel.h"
#include "CLookListPanel.h"
#include "CSetAlphaWnd.h"
#include "CWarpWnd.h"
#include "FrameFixture.h"
#include "PlainWarp.h"
#include "Strokes.h"
#include "TestPictures.h"

namespace {

class ShapeTools : public FrameTest {
  protected:
    static CHistoryManager& History() { return CHistoryManager::Instance(); }
    Bitmap OnShow() { return Mid().Canvas()->GetShowBitmap(); }
    void Enter(const char* tab, const char* button, int number) {
        Driver::Click(QStringLiteral("btnMeiRong"));
        Driver::Click(QLatin1String(tab));
        if (*button) Driver::Click(QLatin1String(button));
        ASSERT_EQ(Mid().Tool(), number);
    }
    void TakePlain(const Bitmap& picture, int brush, int strength) {
        plain = std::make_unique<Plain::WarpField>(picture);
        plain->SetRadius(static_cast<int>((brush + 10) / Mid().Canvas()->GetZoom() + 0.5));
        plain->amount = strength / 100.0;
        half = brush / 2;
    }
    // Where a place of the canvas lies in the picture, as the tools count.
    QPoint ImageAt(QPoint at) {
        QRectF source;
        QRect place;
        Mid().Canvas()->GetViewRects(&source, &place);
        const double zoom = Mid().Canvas()->GetZoom();
        const auto along = [&](int screen) {
            return static_cast<int>((screen - half) / zoom) + static_cast<int>(half / zoom);
        };
        return {along(at.x() - place.left()), along(at.y() - place.top())};
    }
    // By mouse, and in the twin: a drag begins at its first move.
    void DragIt(const std::vector<QPoint>& places) {
        Strokes::Draw(*Mid().Canvas(), places);
        QPoint last = ImageAt(places[1]);
        for (std::size_t i = 1; i < places.size(); ++i) {
            const QPoint to = ImageAt(places[i]);
            plain->Deform(to.x(), to.y(), last.x(), last.y(), 2);
            last = to;
        }
    }
    void ClickIt(QPoint at) {
        Strokes::Draw(*Mid().Canvas(), {at});
        const QPoint to = ImageAt(at);
        plain->Deform(to.x(), to.y(), 0, 0, 0);
    }
    QPoint Middle() { return Mid().Canvas()->rect().center(); }
    void MoveInHistory(const char* button) { Driver::Click(QLatin1String(button)); }

    // One-click beauty.
    CLookListPanel& Looks() { return *static_cast<CLookListPanel*>(Frame().LeftPanel().Panel(8)); }
    void Choose(int row) {
        Driver::WaitForRows(QStringLiteral("ListViewBeauty"), 8);
        Driver::ClickRow(QStringLiteral("ListViewBeauty"), row);
        Driver::WaitFor(QStringLiteral("the look"), [&] { return !Mid().IsBusy(); });
    }
    static Bitmap With(Bitmap picture, int preset, int percent = 100) {
        Bitmap source = picture;
        EXPECT_TRUE(BeautyLooks::Run(picture, preset, BeautyLooks::Folder()));
        if (percent < 100)
            CEffect::Effect_AlphaAdJust(picture.MutablePixels(), source.MutablePixels(), picture.Width(),
                                        picture.Height(), 1.0 - percent * 0.01);
        return picture;
    }
    static QString StrengthText() {
        return qobject_cast<QLabel*>(Driver::Find(QStringLiteral("TextSetAlpha")))->text();
    }

    std::unique_ptr<Plain::WarpField> plain;
    int half = 0;
};

}  // namespace

TEST_F(ShapeTools, ASessionOfSlimming) {
    const Bitmap photo = PhotoPixels();
    Show(Photo());
    Enter("BtnSouShen", "", 16);
    Driver::DragSlider(QStringLiteral("SliderSouShenPenSize"), 40);
    Driver::DragSlider(QStringLiteral("SliderSouShenLiDu"), 55);
    EXPECT_EQ(qobject_cast<QLabel*>(Driver::Find(QStringLiteral("TextSouShenPenSizeVal")))->text(),
              QStringLiteral("40"));
    EXPECT_EQ(qobject_cast<QLabel*>(Driver::Find(QStringLiteral("TextSouShenLiDuVal")))->text(), QStringLiteral("55%"));
    EXPECT_EQ(static_cast<CWarpWnd*>(Mid().Canvas())->PenSize(), 80);
    EXPECT_TRUE(OnShow() == photo);
    TakePlain(photo, 80, 55);

    DragIt(Strokes::Line(Middle() - QPoint(80, 30), Middle() - QPoint(20, 20), 15));
    EXPECT_TRUE(OnShow() == plain->output);
    EXPECT_FALSE(OnShow() == photo);
    EXPECT_EQ(History().m_count, 2);
    const Bitmap first = OnShow();
    DragIt(Strokes::Line(Middle() + QPoint(70, 40), Middle() + QPoint(10, 10), 9));
    EXPECT_TRUE(OnShow() == plain->output) << "both are one sample of the photo";
    EXPECT_EQ(History().m_count, 3);
    const Bitmap second = OnShow();

    // The button names the size in another way, and pushes as before.
    EXPECT_TRUE(Driver::Find(QStringLiteral("TextSouShenPenSize"))->isVisible());
    Driver::Click(QStringLiteral("BtnSouShenErase"));
    EXPECT_TRUE(Driver::Find(QStringLiteral("TextSouShenEraseSize"))->isVisible());
    EXPECT_FALSE(Driver::IsThere(QStringLiteral("TextSouShenPenSize")));
    EXPECT_TRUE(OnShow() == second);

    Driver::Click(QStringLiteral("BtnUndo"));
    EXPECT_TRUE(OnShow() == first);
    Driver::Click(QStringLiteral("BtnUndo"));
    EXPECT_TRUE(OnShow() == photo);
    Driver::Click(QStringLiteral("BtnRedo"));
    Driver::Click(QStringLiteral("BtnRedo"));
    EXPECT_TRUE(OnShow() == second);
    Driver::Click(QStringLiteral("BtnOriginal"));
    EXPECT_TRUE(OnShow() == photo);
    Driver::Click(QStringLiteral("BtnUndo"));
    EXPECT_TRUE(OnShow() == second);

    // Compare, with a drag that leaves it to begin.
    Mid().SetCompareMode(2);
    EXPECT_FALSE(Mid().Canvas()->isVisible());
    Driver::DragSlider(QStringLiteral("SliderSouShenLiDu"), 30);
    EXPECT_EQ(Mid().CompareMode(), 0);

    Driver::Click(QStringLiteral("btnJichubianji"));
    EXPECT_TRUE(OnShow() == second);
    Enter("BtnSouShen", "", 16);
    EXPECT_TRUE(OnShow() == second);
    EXPECT_EQ(static_cast<CWarpWnd*>(Mid().Canvas())->PenSize(), 80) << "the panel's values hold";
    EXPECT_EQ(static_cast<CWarpWnd*>(Mid().Canvas())->Strength(), 30);
    TakePlain(second, 80, 30);
    DragIt(Strokes::Line(Middle(), Middle() + QPoint(0, 40), 10));
    EXPECT_TRUE(OnShow() == plain->output);
    EXPECT_TRUE(Saved(QStringLiteral("slim")) == plain->output);
}

TEST_F(ShapeTools, ASessionOfEnlarging) {
    const Bitmap photo = PhotoPixels();
    Show(Photo());
    Enter("BtnEyes", "BtnEyesZoom", 12);
    EXPECT_FALSE(Mid().Canvas()->IsImageChanged());
    const int clicks = Clicks("888040301");
    Driver::DragSlider(QStringLiteral("SliderEyesZoomPenSize"), 50);
    Driver::DragSlider(QStringLiteral("SliderEyesZoomLiDu"), 80);
    TakePlain(photo, 100, 80);
    ClickIt(Middle() - QPoint(50, 30));
    EXPECT_TRUE(OnShow() == plain->output);
    const Bitmap one = OnShow();
    ClickIt(Middle() + QPoint(50, -30));
    ClickIt(Middle() + QPoint(48, -28));
    EXPECT_TRUE(OnShow() == plain->output);
    EXPECT_EQ(History().m_count, 4);
    const Bitmap three = OnShow();
    Driver::Key(Qt::Key_Z, Qt::ControlModifier);
    Driver::Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(OnShow() == one);
    Driver::Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    Driver::Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(OnShow() == three);
    // To slimming, which goes on with it.
    Enter("BtnSouShen", "", 16);
    EXPECT_EQ(Clicks("888040301"), clicks + 1);
    EXPECT_TRUE(OnShow() == three);
    EXPECT_TRUE(Saved(QStringLiteral("eyes")) == three);
}

TEST_F(ShapeTools, ASessionWithThreeLooks) {
    const Bitmap photo = PhotoPixels();
    Show(Photo());
    Driver::Click(QStringLiteral("btnMeiRong"));
    ASSERT_EQ(Mid().Tool(), 8) << "the looks are the first tab of beauty";
    EXPECT_FALSE(Driver::IsThere(QStringLiteral("SliderSetAlpha")));
    const int clear = Clicks("888040108"), fair = Clicks("888040105"), rosy = Clicks("888040101");

    Choose(0);
    EXPECT_TRUE(OnShow() == With(photo, 1));
    EXPECT_EQ(Looks().List(1)->SelectedItem(), 0);
    Choose(7);
    EXPECT_TRUE(OnShow() == With(photo, 8));
    Choose(4);
    EXPECT_TRUE(OnShow() == With(photo, 5));
    EXPECT_EQ(History().m_count, 2) << "one step for the looks of a visit";
    EXPECT_EQ(StrengthText(), QStringLiteral("100%"));
    Driver::DragSlider(QStringLiteral("SliderSetAlpha"), 62);
    EXPECT_EQ(StrengthText(), QStringLiteral("62%"));
    const Bitmap faded = With(photo, 5, 62);
    EXPECT_TRUE(OnShow() == faded);

    Driver::Click(QStringLiteral("BtnUndo"));
    EXPECT_TRUE(OnShow() == photo);
    EXPECT_FALSE(Driver::IsThere(QStringLiteral("SliderSetAlpha")));
    Driver::Click(QStringLiteral("BtnRedo"));
    EXPECT_TRUE(OnShow() == faded);
    EXPECT_EQ(StrengthText(), QStringLiteral("62%"));
    EXPECT_EQ(Looks().List(1)->SelectedItem(), 4);
    Mid().SetCompareMode(2);
    Driver::DragSlider(QStringLiteral("SliderSetAlpha"), 40);
    EXPECT_EQ(Mid().CompareMode(), 0);
    Driver::DragSlider(QStringLiteral("SliderSetAlpha"), 62);

    // To the effects and back: each has the other's result, and neither reads the other's file.
    Driver::Click(QStringLiteral("btnTexiao"));
    EXPECT_FALSE(Driver::IsThere(QStringLiteral("SliderSetAlpha")));
    EXPECT_TRUE(OnShow() == faded);
    Driver::WaitForRows(QStringLiteral("ListViewFilm"), 8);
    Driver::ClickRow(QStringLiteral("ListViewFilm"), 3);
    Driver::WaitFor(QStringLiteral("the effect"), [&] { return !Mid().IsBusy(); });
    const Bitmap filmed = OnShow();
    EXPECT_FALSE(filmed == faded);
    Driver::Click(QStringLiteral("btnMeiRong"));
    EXPECT_TRUE(OnShow() == filmed);
    EXPECT_EQ(Clicks("888040105"), fair + 1) << "the look in force when it was left";
    EXPECT_EQ(Clicks("888040108"), clear);
    Choose(2);
    EXPECT_TRUE(OnShow() == With(filmed, 3));
    Driver::Click(QStringLiteral("BtnUndo"));
    Driver::Click(QStringLiteral("BtnUndo"));
    EXPECT_TRUE(OnShow() == faded);
    Driver::Click(QStringLiteral("BtnRedo"));
    EXPECT_TRUE(OnShow() == filmed);
    Driver::Click(QStringLiteral("BtnRedo"));
    EXPECT_TRUE(OnShow() == With(filmed, 3));

    Driver::Click(QStringLiteral("BtnOriginal"));
    EXPECT_TRUE(OnShow() == photo);
    Driver::Click(QStringLiteral("BtnUndo"));
    EXPECT_TRUE(OnShow() == With(filmed, 3));
    EXPECT_TRUE(Saved(QStringLiteral("looks")) == With(filmed, 3));
    EXPECT_EQ(Clicks("888040101"), rosy) << "a look that another replaced is not counted";
}
