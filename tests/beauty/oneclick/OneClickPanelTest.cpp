// SPDX-License-Identifier: GPL-3.0-or-later
// The list of looks and the strength window of one-click beauty with real events.
#include <QtWidgets/QLabel>

#include "AppPaths.h"
#include "BeautyLooks.h"
#include "CMeiRongMeiYan.h"
#include "CMRYiJianMeiYanWnd.h"
#include "LookTestHost.h"
#include "ThumbnailCrop.h"

namespace {

class LooksHost : public LookTestHost<CMRYiJianMeiYanWnd, CMeiRongMeiYan> {
  public:
    using LookTestHost::LookTestHost;

    void Fill(const Bitmap& picture) {
        panel->OnFrameMessage(LeavingToolMessage{CMRYiJianMeiYanWnd::Facts.number});
        Open(picture);
        ASSERT_TRUE(WaitLoaded(1));
    }
    CEffectListView& List() const { return *LookTestHost::List(1); }
    void Choose(int row) const { LookTestHost::Choose(1, row); }
};

class LooksPanel : public testing::Test {
  protected:
    void SetUp() override { host.Fill(picture); }
    Bitmap OnShow() { return host.canvas->GetShowBitmap(); }
    Bitmap With(Bitmap bitmap, int preset) {
        EXPECT_TRUE(BeautyLooks::Run(bitmap, preset, BeautyLooks::Folder()));
        return bitmap;
    }

    const Bitmap picture = TestPictures::Face(300, 360);
    LooksHost host{QStringLiteral("1033")};
};

}  // namespace

TEST_F(LooksPanel, EightRowsShowTheLooksOnThePictureWithTheirNames) {
    ASSERT_EQ(host.List().count(), 8);
    const QString overlay = QStringLiteral("file='%1' dest='0,0,70,96' ")
                                .arg(ResourcePath(QStringLiteral("I18N/Images/EffectBk/film/1.png")));
    for (int row = 0; row < 8; ++row) {
        EXPECT_EQ(host.List().Row(row)->Name(), BeautyLooks::Name(row + 1));
        const auto* thumb = host.List().Row(row)->Find<CEffectThumb>(QStringLiteral("HorLayEffect"));
        EXPECT_EQ(thumb->Image(), overlay) << row;
    }
    EXPECT_EQ(host.List().SelectedItem(), -1);
    EXPECT_FALSE(host.IsStrengthShown());
}

TEST_F(LooksPanel, AChoiceIsALookAtFullStrength) {
    host.Choose(2);
    EXPECT_TRUE(OnShow() == With(picture, 3));
    EXPECT_EQ(host.List().SelectedItem(), 2);
    EXPECT_TRUE(host.IsStrengthShown());
    EXPECT_EQ(host.Slider()->value(), 100);
    EXPECT_EQ(host.tasks, 1);
    EXPECT_EQ(host.history.m_count, 2);
    host.DragStrength(35);
    EXPECT_EQ(host.canvas->Alpha(), 35);
    EXPECT_FALSE(OnShow() == With(picture, 3));
    host.Choose(6);
    EXPECT_TRUE(OnShow() == With(picture, 7)) << "in place of the former, at full strength";
    EXPECT_EQ(host.Slider()->value(), 100);
    EXPECT_EQ(host.history.m_count, 2);
}

TEST_F(LooksPanel, EscPutsBackLookStrengthAndRow) {
    host.Choose(1);
    host.DragStrength(60);
    const Bitmap before = OnShow();
    host.cancelAt = 0.0f;
    host.Choose(5);
    host.cancelAt.reset();
    EXPECT_TRUE(OnShow() == before);
    EXPECT_EQ(host.canvas->Look(), 2);
    EXPECT_EQ(host.List().SelectedItem(), 1);
    EXPECT_EQ(host.Slider()->value(), 60);
    EXPECT_EQ(host.history.m_count, 2);
}

TEST_F(LooksPanel, UndoAndRedoBringStrengthAndRowBack) {
    host.Choose(4);
    host.DragStrength(45);
    const Bitmap faded = OnShow();
    host.canvas->OnUndo();
    host.Refresh();
    EXPECT_TRUE(OnShow() == picture);
    EXPECT_EQ(host.List().SelectedItem(), -1);
    EXPECT_FALSE(host.IsStrengthShown());
    host.canvas->OnRedo();
    host.Refresh();
    EXPECT_TRUE(OnShow() == faded);
    EXPECT_EQ(host.List().SelectedItem(), 4);
    EXPECT_EQ(host.Slider()->value(), 45);
    host.DragStrength(100);
    EXPECT_TRUE(OnShow() == With(picture, 5));
}

TEST_F(LooksPanel, LeavingStopsTheFillAndHidesTheStrength) {
    host.Choose(0);
    ASSERT_TRUE(host.IsStrengthShown());
    host.panel->OnFrameMessage(LeavingToolMessage{host.tool});
    EXPECT_FALSE(host.IsStrengthShown());
    EXPECT_FALSE(host.panel->IsFilling());
    host.panel->OnFrameMessage(RefreshPanelMessage{host.tool});
    host.panel->OnFrameMessage(LeavingToolMessage{host.tool});  // in the middle of a fill
    EXPECT_FALSE(host.panel->IsFilling());
    QTest::qWait(20);
    EXPECT_EQ(host.List().count(), 0) << "no row of it comes later";
}
