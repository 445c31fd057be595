// SPDX-License-Identifier: GPL-3.0-or-later
#include "PictureView.h"

#include <gtest/gtest.h>

#include "PC_Dsp.h"
#include "TestPictures.h"

namespace {

using TestPictures::PixelAt;

struct PictureViewTest : testing::Test {
    PictureViewTest() { view.SetClient(200, 150); }
    void ExpectDrawnFor(const Bitmap& picture) {
        const ViewGeometry geometry = view.Geometry();
        Bitmap expected;
        ASSERT_TRUE(DrawVisiblePart(picture, geometry, ViewQuality::Settled, expected));
        EXPECT_TRUE(view.View().bitmap == expected);
        EXPECT_EQ(view.View().dest, geometry.ScreenRect());
    }
    PictureView view;
};

TEST_F(PictureViewTest, ShowsNothingWithoutAPicture) {
    EXPECT_TRUE(view.View().bitmap.IsNull());
    EXPECT_TRUE(view.Overview({50, 50}).IsNull());
    EXPECT_EQ(view.MakeViewState(), nullptr);
    view.SetPicture({});
    view.Fit();
    EXPECT_TRUE(view.View().bitmap.IsNull());
}

TEST_F(PictureViewTest, TheFirstPictureIsFittedAndDrawnAtTheSizeOfItsPlace) {
    const Bitmap picture = TestPictures::Face(800, 600);
    view.SetPicture(picture);
    EXPECT_TRUE(view.Geometry().AtFit());
    EXPECT_EQ(QSize(view.View().bitmap.Width(), view.View().bitmap.Height()), view.View().dest.size());
    ExpectDrawnFor(picture);
}

TEST_F(PictureViewTest, APictureOfTheSameSizeKeepsTheViewAndAnotherSizeIsFitted) {
    view.SetPicture(TestPictures::Face(800, 600));
    ViewGeometry zoomed = view.Geometry();
    zoomed.SetZoom(1.3);
    zoomed.PanBy(-30, 20);
    view.SetGeometry(zoomed, ViewQuality::Settled);
    const Bitmap second = TestPictures::Noise(800, 600, 3);
    view.SetPicture(second);
    EXPECT_EQ(view.Geometry(), zoomed);
    ExpectDrawnFor(second);
    view.SetPicture(TestPictures::Face(600, 800));
    EXPECT_TRUE(view.Geometry().AtFit());
}

TEST_F(PictureViewTest, APictureAndItsGeometryChangeTogether) {
    view.SetPicture(TestPictures::Face(800, 600));
    const Bitmap next = TestPictures::Face(300, 500);
    ViewGeometry geometry = view.Geometry();
    geometry.SetImage({300, 500});
    geometry.SetZoom(0.7);
    view.SetPicture(next, geometry, ViewQuality::Settled);
    EXPECT_EQ(view.Geometry(), geometry);
    ExpectDrawnFor(next);
}

TEST_F(PictureViewTest, AMovingViewIsDrawnAgainWhenItSettles) {
    const Bitmap picture = TestPictures::Noise(90, 70, 1);
    view.SetPicture(picture);
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

TEST_F(PictureViewTest, AFittedPictureStaysFittedInAnotherClient) {
    view.SetPicture(TestPictures::Face(800, 600));
    view.SetClient(0, 90);
    EXPECT_EQ(view.Geometry().Client(), QSize(200, 150));
    view.SetClient(400, 150);
    EXPECT_TRUE(view.Geometry().AtFit());
    EXPECT_EQ(view.View().dest, view.Geometry().ScreenRect());
}

TEST_F(PictureViewTest, TellsWhetherAnythingShowsThrough) {
    view.SetPicture(TestPictures::Plain(60, 40, 0xFF102030));
    EXPECT_TRUE(view.View().opaque);
    view.SetPicture(TestPictures::Plain(60, 40, 0x80102030));
    EXPECT_FALSE(view.View().opaque);
}

TEST_F(PictureViewTest, AnOverviewLiesWithinItsBoundsAndNeverEnlarges) {
    view.SetPicture(TestPictures::Plain(800, 400, 0xFF405060));
    const Bitmap overview = view.Overview({100, 100});
    EXPECT_EQ(QSize(overview.Width(), overview.Height()), QSize(100, 50));
    EXPECT_EQ(PixelAt(overview, 50, 25), 0xFF405060);
    const Bitmap whole = view.Overview({5000, 5000});
    EXPECT_EQ(QSize(whole.Width(), whole.Height()), QSize(800, 400));
}

TEST_F(PictureViewTest, TheNextToolTakesTheViewUpWithItsPixels) {
    const Bitmap picture = TestPictures::Face(800, 600);
    view.SetPicture(picture);
    ViewGeometry geometry = view.Geometry();
    geometry.SetZoom(1.5);
    geometry.PanBy(40, -25);
    view.SetGeometry(geometry, ViewQuality::Moving);
    const auto state = view.MakeViewState();
    ASSERT_NE(state, nullptr);
    ExpectDrawnFor(picture);  // handed on in the settled quality
    PictureView next;
    next.SetClient(200, 150);
    next.TakeViewState(picture, *state);
    EXPECT_EQ(next.Geometry(), view.Geometry());
    EXPECT_TRUE(next.View().bitmap.SharesPixelsWith(view.View().bitmap));
}

TEST_F(PictureViewTest, AViewOfAnotherSizeIsDrawnFromThePicture) {
    const Bitmap picture = TestPictures::Face(800, 600);
    view.SetPicture(picture);
    const auto state = view.MakeViewState();
    PictureView next;
    next.SetClient(500, 400);
    next.TakeViewState(picture, *state);
    EXPECT_FALSE(IsViewOf(*state, next.Geometry()));
    EXPECT_EQ(next.View().bitmap.Width(), next.Geometry().ScreenRect().width());
    EXPECT_DOUBLE_EQ(next.Geometry().Zoom(), view.Geometry().Zoom());
}

TEST_F(PictureViewTest, ClearingForgetsThePictureAndKeepsTheClient) {
    view.SetPicture(TestPictures::Face(800, 600));
    view.Clear();
    EXPECT_TRUE(view.Picture().IsNull());
    EXPECT_TRUE(view.View().bitmap.IsNull());
    EXPECT_EQ(view.Geometry().Client(), QSize(200, 150));
    EXPECT_DOUBLE_EQ(view.Geometry().Zoom(), 1.0);
}

TEST_F(PictureViewTest, AStandInShowsInThePlaceOfThePictureThatIsToCome) {
    const Bitmap old = TestPictures::Noise(800, 600, 3), coming = TestPictures::Face(1000, 500);
    const Bitmap standIn = PC_Dsp::Resample(coming, 250, 125);
    view.SetPicture(old);
    ViewGeometry geometry = view.Geometry();
    geometry.SetImage({1000, 500});
    geometry.SetZoom(0.5);
    ASSERT_TRUE(geometry.CanDrag());
    view.ShowStandIn(standIn, geometry);
    EXPECT_EQ(view.Geometry(), geometry);
    EXPECT_TRUE(view.Picture() == old);
    ExpectDrawnFor(standIn);
    const Bitmap shown = view.View().bitmap;
    EXPECT_EQ(view.Overview({500, 500}).Width(), 250);
    view.SetPicture(coming, geometry, ViewQuality::Settled);
    ExpectDrawnFor(coming);
    EXPECT_LE(TestPictures::LargestDifference(shown, view.View().bitmap), 60) << "the same part at the same place";
    EXPECT_EQ(view.Overview({500, 500}).Width(), 500);
}

TEST_F(PictureViewTest, ANullStandInLeavesTheViewAsItIs) {
    const Bitmap picture = TestPictures::Face(800, 600);
    view.SetPicture(picture);
    view.ShowStandIn({}, view.Geometry());
    ExpectDrawnFor(picture);
}

}  // namespace
