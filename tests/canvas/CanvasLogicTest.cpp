// SPDX-License-Identifier: GPL-3.0-or-later
#include "CanvasLogic.h"

#include <gtest/gtest.h>

#include "PC_Dsp.h"
#include "TestPictures.h"
#include "ToySnapshots.h"

namespace {

using TestPictures::PixelAt;

struct CanvasLogicTest : testing::Test, OpenedHistory {
    CanvasLogicTest() : view(history) { view.SetViewSize(200, 150); }
    void ExpectDrawnFor(const Bitmap& picture) {
        const ViewGeometry geometry = view.Geometry();
        Bitmap expected;
        DrawVisiblePart(picture, geometry, ViewQuality::Settled, expected);
        EXPECT_TRUE(view.View().bitmap == expected);
        EXPECT_EQ(view.View().dest, geometry.ScreenRect());
    }
    HalvingLogic view;
};

TEST_F(CanvasLogicTest, ShowsNothingWithoutAPicture) {
    EXPECT_TRUE(view.View().bitmap.IsNull());
    EXPECT_TRUE(view.Overview({50, 50}).IsNull());
    view.SetSource({});
    view.FitToWindow();
    EXPECT_TRUE(view.View().bitmap.IsNull());
}

TEST_F(CanvasLogicTest, TheFirstPictureIsFittedAndDrawnAtTheSizeOfItsPlace) {
    const Bitmap picture = TestPictures::Face(800, 600);
    view.SetSource(picture);
    EXPECT_TRUE(view.Geometry().AtFit());
    EXPECT_EQ(QSize(view.View().bitmap.Width(), view.View().bitmap.Height()), view.View().dest.size());
    ExpectDrawnFor(picture);
}

TEST_F(CanvasLogicTest, APictureOfTheSameSizeKeepsTheViewAndAnotherSizeIsFitted) {
    view.SetSource(TestPictures::Face(800, 600));
    ViewGeometry zoomed = view.Geometry();
    zoomed.SetZoom(1.3);
    zoomed.PanBy(-30, 20);
    view.SetGeometry(zoomed, ViewQuality::Settled);
    const Bitmap second = TestPictures::Noise(800, 600, 3);
    view.SetSource(second);
    EXPECT_EQ(view.Geometry(), zoomed);
    ExpectDrawnFor(second);
    view.SetSource(TestPictures::Face(600, 800));
    EXPECT_TRUE(view.Geometry().AtFit());
}

TEST_F(CanvasLogicTest, APictureAndItsGeometryChangeTogether) {
    view.SetSource(TestPictures::Face(800, 600));
    const Bitmap next = TestPictures::Face(300, 500);
    ViewGeometry geometry = view.Geometry();
    geometry.SetImage({300, 500});
    geometry.SetZoom(0.7);
    view.Replace(next, geometry, false);
    EXPECT_EQ(view.Geometry(), geometry);
    ExpectDrawnFor(next);
}

TEST_F(CanvasLogicTest, AMovingViewIsDrawnAgainWhenItSettles) {
    const Bitmap picture = TestPictures::Noise(90, 70, 1);
    view.SetSource(picture);
    ViewGeometry geometry = view.Geometry();
    geometry.SetZoom(3.3);
    view.SetGeometry(geometry, ViewQuality::Moving);
    const Bitmap moving = view.View().bitmap.Clone();
    view.SetGeometry(geometry, ViewQuality::Settled);
    EXPECT_FALSE(view.View().bitmap == moving);
    ExpectDrawnFor(picture);
    // A well drawn view is not spoilt by a quick drawing of the same.
    view.SetGeometry(geometry, ViewQuality::Moving);
    ExpectDrawnFor(picture);
}

TEST_F(CanvasLogicTest, AFittedPictureStaysFittedInAnotherClient) {
    view.SetSource(TestPictures::Face(800, 600));
    view.SetViewSize(0, 90);
    EXPECT_EQ(view.Geometry().Client(), QSize(200, 150));
    view.SetViewSize(400, 150);
    EXPECT_TRUE(view.Geometry().AtFit());
    EXPECT_EQ(view.View().dest, view.Geometry().ScreenRect());
}

TEST_F(CanvasLogicTest, TellsWhetherAnythingShowsThrough) {
    view.SetSource(TestPictures::Plain(60, 40, 0xFF102030));
    EXPECT_TRUE(view.View().opaque);
    view.SetSource(TestPictures::Plain(60, 40, 0x80102030));
    EXPECT_FALSE(view.View().opaque);
}

TEST_F(CanvasLogicTest, AnOverviewLiesWithinItsBoundsAndNeverEnlarges) {
    view.SetSource(TestPictures::Plain(800, 400, 0xFF405060));
    const Bitmap overview = view.Overview({100, 100});
    EXPECT_EQ(QSize(overview.Width(), overview.Height()), QSize(100, 50));
    EXPECT_EQ(PixelAt(overview, 50, 25), 0xFF405060);
    const Bitmap whole = view.Overview({5000, 5000});
    EXPECT_EQ(QSize(whole.Width(), whole.Height()), QSize(800, 400));
}

TEST_F(CanvasLogicTest, TheNextToolTakesTheViewUpWithItsPixels) {
    const Bitmap picture = TestPictures::Face(800, 600);
    Open(picture);
    view.SetSource(picture);
    ViewGeometry geometry = view.Geometry();
    geometry.SetZoom(1.5);
    geometry.PanBy(40, -25);
    view.SetGeometry(geometry, ViewQuality::Moving);
    view.Apply();
    ExpectDrawnFor(picture);  // handed on in the settled quality
    HalvingLogic next(history);
    next.SetViewSize(200, 150);
    ASSERT_TRUE(next.TakeViewState());
    EXPECT_EQ(next.Geometry(), view.Geometry());
    EXPECT_TRUE(next.View().bitmap.SharesPixelsWith(view.View().bitmap));
}

TEST_F(CanvasLogicTest, AViewOfAnotherSizeIsDrawnFromThePicture) {
    const Bitmap picture = TestPictures::Face(800, 600);
    Open(picture);
    view.SetSource(picture);
    view.Apply();
    HalvingLogic next(history);
    next.SetViewSize(500, 400);
    ASSERT_TRUE(next.TakeViewState());
    EXPECT_EQ(next.View().bitmap.Width(), next.Geometry().ScreenRect().width());
    EXPECT_DOUBLE_EQ(next.Geometry().Zoom(), view.Geometry().Zoom());
}

TEST_F(CanvasLogicTest, APartThatChangedIsDrawnAsTheWholeWouldBe) {
    const Bitmap before = TestPictures::Face(800, 600);
    Bitmap after = before;
    for (int y = 300; y < 340; ++y)
        for (int x = 410; x < 470; ++x)
            reinterpret_cast<std::uint32_t*>(after.MutablePixels())[y * 800 + x] = 0xFF3060A0;
    for (const double zoom : {0.2, 0.5, 1.0, 2.3}) {
        view.SetSource(before);
        view.SetZoom(zoom);
        const ViewGeometry geometry = view.Geometry();
        view.Replace(after, geometry, true);
        const Bitmap whole = view.View().bitmap;
        view.Replace(before, geometry, true);
        view.Exchange(after);
        const QRect painted = view.ShowPart({410, 300, 60, 40});
        EXPECT_LE(TestPictures::LargestDifference(view.View().bitmap, whole), 1) << zoom;
        EXPECT_TRUE(view.View().dest.contains(painted)) << zoom;
        EXPECT_LE(painted.width(), 64 * zoom + 6) << "no more than changed is painted";
    }
}

TEST_F(CanvasLogicTest, APartOutsideTheViewNeedsNoPaint) {
    view.SetSource(TestPictures::Face(800, 600));
    view.SetZoom(4.0);
    EXPECT_TRUE(view.ShowPart({0, 0, 20, 20}).isEmpty());
}

TEST_F(CanvasLogicTest, ClearingForgetsThePictureAndKeepsTheClient) {
    view.SetSource(TestPictures::Face(800, 600));
    view.Reset();
    EXPECT_TRUE(view.Picture().IsNull());
    EXPECT_TRUE(view.View().bitmap.IsNull());
    EXPECT_EQ(view.Geometry().Client(), QSize(200, 150));
    EXPECT_DOUBLE_EQ(view.Geometry().Zoom(), 1.0);
}

TEST_F(CanvasLogicTest, AStandInShowsInThePlaceOfThePictureThatIsToCome) {
    const Bitmap old = TestPictures::Noise(800, 600, 3), coming = TestPictures::Face(1000, 500);
    const Bitmap standIn = PC_Dsp::Resample(coming, 250, 125);
    view.SetSource(old);
    ViewGeometry geometry = view.Geometry();
    geometry.SetImage({1000, 500});
    geometry.SetZoom(0.5);
    ASSERT_TRUE(geometry.CanDrag());
    view.ShowStandIn(standIn, geometry, false);
    EXPECT_EQ(view.Geometry(), geometry);
    EXPECT_TRUE(view.Picture() == old);
    ExpectDrawnFor(standIn);
    const Bitmap shown = view.View().bitmap;
    EXPECT_EQ(view.Overview({500, 500}).Width(), 250);
    view.Replace(coming, geometry, false);
    ExpectDrawnFor(coming);
    EXPECT_LE(TestPictures::LargestDifference(shown, view.View().bitmap), 60) << "the same part at the same place";
    EXPECT_EQ(view.Overview({500, 500}).Width(), 500);
}

}  // namespace
