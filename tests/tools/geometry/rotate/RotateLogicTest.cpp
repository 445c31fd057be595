// SPDX-License-Identifier: GPL-3.0-or-later
#include <climits>

#include "ActFailure.h"
#include "RotateFixture.h"

namespace {

class RotateLogic : public RotateFixture {};

double ShownWidth(const CRotateLogic& logic) {
    return logic.Geometry().Zoom() * logic.Geometry().Image().width();
}

}  // namespace

TEST_F(RotateLogic, AtEntryTheResultIsTheSource) {
    Open(TestPictures::Noise(60, 40, 1));
    EXPECT_TRUE(Result() == picture);
    EXPECT_TRUE(logic->State().IsUnchanged());
    EXPECT_FALSE(logic->HasUnrecorded());
    EXPECT_FALSE(logic->CanRestore());
    EXPECT_FALSE(logic->IsImageChanged());
}

TEST_F(RotateLogic, TurnsAndFlipsAreExact) {
    Open(TestPictures::Noise(60, 40, 1));
    logic->TurnRight();
    EXPECT_TRUE(Result() == Reoriented(picture, Rotate90FlipNone));
    logic->TurnLeft();
    logic->TurnLeft();
    EXPECT_TRUE(Result() == Reoriented(picture, Rotate270FlipNone));
    logic->TurnRight();
    logic->FlipLeftRight();
    EXPECT_TRUE(Result() == Reoriented(picture, RotateNoneFlipX));
    logic->FlipLeftRight();
    logic->FlipTopBottom();
    EXPECT_TRUE(Result() == Reoriented(picture, RotateNoneFlipY));
}

TEST_F(RotateLogic, FourRightTurnsLeaveTheToolUnchanged) {
    Open(TestPictures::Noise(60, 40, 1));
    for (int i = 0; i < 3; ++i) {
        logic->TurnRight();
        EXPECT_TRUE(logic->HasUnrecorded());
    }
    logic->TurnRight();
    EXPECT_TRUE(logic->State().IsUnchanged());
    EXPECT_FALSE(logic->HasUnrecorded());
    EXPECT_TRUE(Result() == picture);
}

TEST_F(RotateLogic, AFlipNegatesTheAngle) {
    Open(TestPictures::Noise(60, 40, 1));
    logic->SetAngle(15);
    logic->FlipLeftRight();
    EXPECT_EQ(logic->State().Angle(), -15);
    EXPECT_TRUE(Result() == Turned(Reoriented(picture, RotateNoneFlipX), -15));
    logic->FlipTopBottom();
    EXPECT_EQ(logic->State().Angle(), 15);
}

TEST_F(RotateLogic, AFlipTwiceWithAnAngleOfZeroIsUnchangedAgain) {
    Open(TestPictures::Noise(60, 40, 1));
    logic->FlipLeftRight();
    logic->FlipLeftRight();
    EXPECT_EQ(logic->State().FlipX(), 1);
    EXPECT_TRUE(logic->State().IsUnchanged());
    EXPECT_TRUE(Result() == picture);
}

TEST_F(RotateLogic, TheAngleIsAppliedLastAndOnlyOnce) {
    Open(TestPictures::Noise(60, 40, 1));
    logic->SetAngle(20);
    logic->SetAngle(33);
    EXPECT_TRUE(Result() == Turned(picture, 33));
    logic->TurnRight();
    EXPECT_TRUE(Result() == Turned(Reoriented(picture, Rotate90FlipNone), 33)) << "a free angle survives the turn";
    logic->TurnLeft();
    logic->SetAngle(0);
    EXPECT_TRUE(Result() == picture);
    EXPECT_FALSE(logic->HasUnrecorded());
}

TEST_F(RotateLogic, TakesAnyAngle) {
    Open(TestPictures::Noise(30, 20, 1));
    for (const int angle : {-180, 180, 360, 725, -1000, INT_MAX, INT_MIN}) {
        logic->SetAngle(angle);
        EXPECT_TRUE(Result() == Turned(picture, angle)) << angle;
    }
}

TEST_F(RotateLogic, ADragTurnsOnlyTheSourceAtItsSizeOnTheScreen) {
    Open(TestPictures::Face(1600, 1000), 400, 300);
    const double zoom = logic->Geometry().Zoom();
    logic->DragAngle(10);
    EXPECT_TRUE(logic->IsDragging());
    EXPECT_TRUE(logic->HasUnrecorded());
    // The reduced picture is turned in the place and the size in which the full one will be shown.
    const Bitmap reduced = PC_Dsp::Resample(picture, static_cast<int>(1600 * zoom), static_cast<int>(1000 * zoom));
    const double scale = reduced.Width() / (1600 * logic->Geometry().Zoom());
    const Bitmap expected = PC_Dsp::MultiRotateInto(reduced, 10, scale, ViewSize().width(), ViewSize().height());
    EXPECT_TRUE(logic->View().bitmap == expected);
}

TEST_F(RotateLogic, TheDragComesNearToItsRelease) {
    Open(TestPictures::Face(1600, 1000), 400, 300);
    logic->DragAngle(-23);
    const CanvasView dragged = logic->View();
    const ViewGeometry geometry = logic->Geometry();
    logic->SetAngle(-23);
    EXPECT_TRUE(logic->Geometry() == geometry) << "nothing jumps at the release";
    const CanvasView released = logic->View();
    EXPECT_EQ(dragged.dest, released.dest);
    EXPECT_LT(MeanDifference(dragged.bitmap, released.bitmap), 2.0);
}

TEST_F(RotateLogic, ADragShowsTheWholePictureAndNeverEnlargesBeyondTheClient) {
    Open(TestPictures::Face(400, 300), 800, 600);
    for (const double zoom : {1.0, 2.5, 4.0, 0.3}) {
        ViewGeometry geometry = logic->Geometry();
        geometry.SetZoom(zoom);
        logic->SetGeometry(geometry, ViewQuality::Settled);
        const bool clipped = geometry.CanDrag();
        logic->DragAngle(logic->State().Angle() + 5);
        EXPECT_FALSE(logic->Geometry().CanDrag()) << zoom;
        if (!clipped) {
            EXPECT_DOUBLE_EQ(logic->Geometry().Zoom(), zoom);
        }
        logic->SetAngle(0);
    }
}

TEST_F(RotateLogic, ATinyPictureDragsWithAtLeastOnePixel) {
    Open(TestPictures::Plain(1, 1, 0xFF336699));
    ViewGeometry geometry = logic->Geometry();
    geometry.SetZoom(0.2);
    logic->SetGeometry(geometry, ViewQuality::Settled);
    logic->DragAngle(30);
    EXPECT_TRUE(logic->IsDragging());
    EXPECT_FALSE(logic->View().bitmap.IsNull());
    logic->SetAngle(30);
    EXPECT_TRUE(Result() == Turned(picture, 30));
}

TEST_F(RotateLogic, TheReleaseKeepsTheSizeOnTheScreen) {
    Open(TestPictures::Face(1600, 1000), 800, 600);
    logic->DragAngle(4);
    const double shown = ShownWidth(*logic);
    logic->SetAngle(4);
    EXPECT_NEAR(ShownWidth(*logic), shown, 1e-9);
    EXPECT_EQ(logic->Geometry().Image(), QSize(Result().Width(), Result().Height()));
}

TEST_F(RotateLogic, ReadingTheResultFinishesTheDrag) {
    Open(TestPictures::Face(900, 700), 300, 200);
    logic->DragAngle(12);
    ASSERT_TRUE(logic->IsDragging());
    EXPECT_TRUE(Result() == Turned(picture, 12));
    EXPECT_FALSE(logic->IsDragging());
    EXPECT_EQ(logic->State().Angle(), 12);
}

TEST_F(RotateLogic, AKeyOrTheWheelCountsAsDragAndRelease) {
    Open(TestPictures::Face(900, 700), 300, 200);
    logic->DragAngle(12);
    logic->SetAngle(12);
    const Bitmap dragged = Result();
    const ViewGeometry geometry = logic->Geometry();
    Open(TestPictures::Face(900, 700), 300, 200);
    logic->SetAngle(12);
    EXPECT_TRUE(Result() == dragged);
    EXPECT_TRUE(logic->Geometry() == geometry);
}

TEST_F(RotateLogic, ADragThatReturnsIsUnchanged) {
    Open(TestPictures::Face(900, 700), 300, 200);
    logic->DragAngle(12);
    logic->DragAngle(0);
    logic->SetAngle(0);
    EXPECT_TRUE(logic->State().IsUnchanged());
    EXPECT_FALSE(logic->HasUnrecorded());
    EXPECT_TRUE(Result() == picture);
}

TEST_F(RotateLogic, TurnsFlipsAndANewSourceDropTheReducedSource) {
    Open(TestPictures::Face(900, 700), 300, 200);
    const auto dragShows = [&](const Bitmap& source, int angle) {
        logic->DragAngle(angle);
        const Bitmap dragged = logic->View().bitmap;
        logic->SetAngle(angle);
        EXPECT_TRUE(Result() == Turned(source, angle));
        EXPECT_LT(MeanDifference(dragged, logic->View().bitmap), 2.0) << angle;
    };
    logic->DragAngle(3);
    logic->TurnRight();
    EXPECT_FALSE(logic->IsDragging());
    Bitmap source = Reoriented(picture, Rotate90FlipNone);
    dragShows(source, 5);
    logic->DragAngle(7);
    logic->FlipTopBottom();
    source = Reoriented(source, RotateNoneFlipY);
    EXPECT_EQ(logic->State().Angle(), -7);
    dragShows(source, 9);
    logic->DragAngle(11);
    const Bitmap other = TestPictures::Face(500, 400, 0xFF7A4B32, 2);
    logic->SetSource(other);
    EXPECT_FALSE(logic->IsDragging());
    dragShows(other, 2);
}

TEST_F(RotateLogic, ATurnFitsAndAFlipKeepsTheView) {
    Open(TestPictures::Face(900, 300), 300, 200);
    ViewGeometry geometry = logic->Geometry();
    geometry.SetZoom(1.5);
    geometry.PanBy(-40, 10);
    logic->SetGeometry(geometry, ViewQuality::Settled);
    const QPoint pan = logic->Geometry().Pan();
    ASSERT_NE(pan, QPoint());
    logic->FlipLeftRight();
    EXPECT_DOUBLE_EQ(logic->Geometry().Zoom(), 1.5);
    EXPECT_EQ(logic->Geometry().Pan(), pan);
    logic->TurnLeft();
    EXPECT_TRUE(logic->Geometry().AtFit());
    EXPECT_EQ(logic->Geometry().Image(), QSize(300, 900));
}

TEST_F(RotateLogic, RestoringGivesTheEntryPictureAndLeavesTheHistoryAlone) {
    Open(TestPictures::Noise(60, 40, 1));
    logic->TurnRight();
    logic->FlipTopBottom();
    logic->SetAngle(31);
    EXPECT_TRUE(logic->CanRestore());
    const auto stamp = history.CurrentStamp();
    EXPECT_TRUE(logic->RestoreEntry());
    EXPECT_TRUE(Result() == picture);
    EXPECT_TRUE(logic->State().IsUnchanged());
    EXPECT_FALSE(logic->HasUnrecorded());
    EXPECT_FALSE(logic->CanRestore());
    EXPECT_EQ(history.CurrentStamp(), stamp);
    EXPECT_EQ(history.m_count, 1);
    logic->SetAngle(5);
    EXPECT_TRUE(Result() == Turned(picture, 5));
}

TEST_F(RotateLogic, WithoutAPictureEveryOperationDoesNothing) {
    NewLogic();
    logic->DragAngle(5);
    logic->SetAngle(5);
    logic->TurnLeft();
    logic->TurnRight();
    logic->FlipLeftRight();
    logic->FlipTopBottom();
    EXPECT_FALSE(logic->RestoreEntry());
    EXPECT_TRUE(Result().IsNull());
    EXPECT_EQ(logic->BuildStep(true), nullptr);
    EXPECT_TRUE(logic->State().IsUnchanged());
    EXPECT_FALSE(logic->Undo());
}

TEST_F(RotateLogic, AResultThatCannotBeMadeIsRefusedAndEverythingStays) {
    // Its bounds at 45 degrees are more than a bitmap may have.
    Open(TestPictures::Plain(Bitmap::MaxSide, 1, 0xFF808080));
    EXPECT_THROW(logic->SetAngle(45), PictureTooLarge);
    EXPECT_EQ(logic->State().Angle(), 0);
    EXPECT_TRUE(Result() == picture);
    EXPECT_FALSE(logic->HasUnrecorded());
    EXPECT_FALSE(logic->CanRestore());
    logic->TurnRight();
    EXPECT_TRUE(Result() == Reoriented(picture, Rotate90FlipNone));
    EXPECT_TRUE(logic->Undo()) << "the history goes on";
    EXPECT_TRUE(Result() == picture);
}

TEST_F(RotateLogic, ADragWhoseReleaseCannotBeMadeGoesBackToWhereItBegan) {
    Open(TestPictures::Plain(Bitmap::MaxSide, 1, 0xFF808080));
    logic->DragAngle(30);
    logic->DragAngle(45);
    EXPECT_TRUE(logic->IsDragging()) << "what is dragged is small";
    EXPECT_THROW(logic->SetAngle(45), PictureTooLarge);
    EXPECT_FALSE(logic->IsDragging());
    EXPECT_EQ(logic->State().Angle(), 0);
    EXPECT_TRUE(Result() == picture);
    EXPECT_EQ(logic->Geometry().Image(), QSize(Bitmap::MaxSide, 1));
}
