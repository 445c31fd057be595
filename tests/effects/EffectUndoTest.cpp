// SPDX-License-Identifier: GPL-3.0-or-later
#include "EffectHost.h"

namespace {

// What the panel shows after a move in the history.
class EffectUndo : public testing::Test {
  protected:
    void SetUp() override {
        picture = TestPictures::Face(400, 300);
        host.Open(picture);
        ASSERT_TRUE(host.WaitLoaded(1));
        host.Choose(1, 3);
        host.DragStrength(40);
        strength = host.panel->Strength()->Value();
    }
    void ExpectEffect(int category, int row, int percent) {
        EXPECT_EQ(host.panel->Category(), category);
        EXPECT_EQ(host.Selected(category), row);
        ASSERT_TRUE(host.IsStrengthShown());
        EXPECT_EQ(host.panel->Strength()->Value(), percent);
        EXPECT_EQ(host.canvas->Alpha(), percent);
        EXPECT_EQ(host.panel->Strength()->pos(), QPoint(260, host.frame.height() - 150));
    }
    void ExpectNone() {
        for (int category = 1; category <= 7; ++category) EXPECT_EQ(host.Selected(category), -1) << category;
        EXPECT_FALSE(host.IsStrengthShown());
    }

    Bitmap picture;
    int strength = 0;
    EffectHost host;
};

TEST_F(EffectUndo, UndoShowsNoEffectAndRedoShowsItWithItsStrength) {
    ASSERT_NEAR(strength, 40, 1);
    host.Undo();
    ExpectNone();
    EXPECT_TRUE(host.canvas->GetShowBitmap() == picture);
    host.Redo();
    ExpectEffect(1, 3, strength);
}

TEST_F(EffectUndo, RedoShowsTheCategoryOfTheEffect) {
    host.Undo();
    host.Click("BtnPola");
    ASSERT_TRUE(host.WaitLoaded(2));
    host.Redo();
    ExpectEffect(1, 3, strength);
    EXPECT_TRUE(host.Button("BtnFilm")->isChecked());
}

TEST_F(EffectUndo, AJumpShowsWhatItFinds) {
    host.MoveInHistory([](CBaseWnd& canvas) { canvas.OnHistoryJump(0); });
    ExpectNone();
    host.MoveInHistory([](CBaseWnd& canvas) { canvas.OnHistoryJump(1); });
    ExpectEffect(1, 3, strength);
}

TEST_F(EffectUndo, RevertAndItsUndoShowNoEffect) {
    const Bitmap result = host.canvas->GetShowBitmap();
    host.MoveInHistory([](CBaseWnd& canvas) { canvas.OnRevert(); });
    ExpectNone();
    EXPECT_TRUE(host.canvas->GetShowBitmap() == picture);
    host.Undo();
    ExpectNone();
    EXPECT_TRUE(host.canvas->GetShowBitmap() == result) << "reverting baked the effect at its strength";
}

TEST_F(EffectUndo, EnteringShowsNoEffectSinceLeavingBakedIt) {
    const Bitmap result = host.canvas->GetShowBitmap();
    host.Leave();
    host.Enter();
    ASSERT_TRUE(host.WaitLoaded(1));
    ExpectNone();
    EXPECT_TRUE(host.canvas->GetShowBitmap() == result);
}

// The opening of another picture failed: the panel was told to stop, and then to go on.
TEST_F(EffectUndo, AnOpeningThatCameToNothingBringsStrengthAndRowBack) {
    host.panel->OnFrameMessage(LeavingToolMessage{CEffectWnd::Facts.number});
    EXPECT_FALSE(host.IsStrengthShown());
    host.panel->OnFrameMessage(RefreshPanelMessage{CEffectWnd::Facts.number});
    ASSERT_TRUE(host.WaitLoaded(1));
    ExpectEffect(1, 3, strength);
}

TEST_F(EffectUndo, AFreshPictureShowsNoEffect) {
    host.Open(TestPictures::Face(300, 300));
    ASSERT_TRUE(host.WaitLoaded(1));
    ExpectNone();
}

}  // namespace
