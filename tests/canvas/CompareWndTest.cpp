// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QtWidgets/QPushButton>

#include "CanvasSupport.h"
#include "CCompareWnd.h"
#include "Language.h"

namespace {

using TestPictures::Noise;
using TestPictures::Plain;

struct ShownCompare {
    explicit ShownCompare(QSize size = {600, 400}) : view(host, nullptr) {
        SetLanguage(QStringLiteral("1033"));
        view.setWindowFlag(Qt::FramelessWindowHint);
        view.Place(QRect(QPoint(40, 40), size));
        view.show();
        if (!QTest::qWaitForWindowExposed(&view)) qFatal("the view did not come up");
    }
    QImage Grab() { return view.grab().toImage(); }
    QPushButton* Button(const char* name) { return view.findChild<QPushButton*>(QLatin1String(name)); }
    double Ratio() const { return view.PixelRatio(); }

    RecordingHost host;
    CCompareWnd view;
};

TEST(CompareOriginal, StandsInThePlaceOfTheToolsPicture) {
    ShownCompare shown;
    const QRect place(QPoint(30, 20), QSize(400, 300) * shown.Ratio());
    shown.view.ShowOriginal(Plain(1000, 800, 0xFF3060A0), QRectF(100, 50, 200, 150), place);
    EXPECT_EQ(shown.view.Mode(), 1);
    EXPECT_EQ(shown.view.BeforeRect(), place);
    EXPECT_TRUE(shown.view.AfterRect().isEmpty());
    const QImage grabbed = shown.Grab();
    EXPECT_EQ(grabbed.pixel(place.center()), 0xFF3060A0);
    EXPECT_EQ(grabbed.pixel(place.left() - 1, place.center().y()), 0xFFEBEBEB);
    EXPECT_EQ(grabbed.pixel(place.right(), place.bottom()), 0xFF3060A0);
    EXPECT_EQ(grabbed.pixel(place.right() + 1, place.bottom()), 0xFFEBEBEB);
    EXPECT_FALSE(shown.Button("BtnCompareSave")->isVisible());
}

TEST(CompareOriginal, ShowsThePartThatTheToolShows) {
    ShownCompare shown;
    const Bitmap picture = Noise(400, 300, 5);
    // Actual size: each pixel of the part is one on the screen.
    shown.view.ShowOriginal(picture, QRectF(120, 70, 200, 150), QRect(50, 40, 200, 150));
    const QImage grabbed = shown.Grab();
    for (const QPoint at : {QPoint(100, 75), QPoint(199, 149), QPoint(150, 0)})
        EXPECT_EQ(grabbed.pixel(QPoint(50, 40) + at), TestPictures::PixelAt(picture, 120 + at.x(), 70 + at.y()));
}

TEST(CompareOriginal, WithEmptyRectanglesStandsAtItsOwnFit) {
    ShownCompare shown;
    shown.view.ShowOriginal(Plain(3000, 1000, 0xFF3060A0), QRectF(), QRect());
    ViewGeometry fit;
    fit.SetClient(QSize(600, 400) * shown.Ratio());
    fit.SetImage({3000, 1000});
    fit.Fit();
    EXPECT_EQ(shown.view.BeforeRect(), fit.ScreenRect());
    shown.view.ShowOriginal(Plain(100, 50, 0xFF3060A0), QRectF(), QRect());
    EXPECT_EQ(shown.view.BeforeRect().size(), QSize(100, 50));
    EXPECT_EQ(shown.Grab().pixel(shown.view.BeforeRect().center()), 0xFF3060A0);
}

TEST(CompareSideBySide, BothPicturesFitAboveTheButtonsByOneScale) {
    for (const auto& [before, after] :
         {std::pair{QSize(1600, 1200), QSize(1600, 1200)}, std::pair{QSize(4000, 500), QSize(300, 2000)},
          std::pair{QSize(1, 1), QSize(3000, 3000)}, std::pair{QSize(90, 40), QSize(60, 80)}}) {
        ShownCompare shown;
        shown.view.ShowSideBySide(Plain(before.width(), before.height(), 0xFF3060A0),
                                  Plain(after.width(), after.height(), 0xFFA06030));
        const QRect a = shown.view.BeforeRect(), b = shown.view.AfterRect();
        const QRect area(QPoint(0, 0), QSize(600, 300) * shown.Ratio());
        EXPECT_TRUE(area.contains(a));
        EXPECT_TRUE(area.contains(b));
        EXPECT_LT(a.right(), b.left());
        const double scale = std::max(double(b.width()) / after.width(), double(b.height()) / after.height());
        EXPECT_LE(scale, 1.0);
        EXPECT_NEAR(a.width(), before.width() * scale, 2.0);
        EXPECT_NEAR(a.height(), before.height() * scale, 2.0);
        // Centred, up to the pixel that an odd rest leaves.
        EXPECT_NEAR(a.left(), area.width() - 1 - b.right(), 1.0);
        EXPECT_NEAR(a.center().y(), area.height() / 2.0, 1.5);
        const QImage grabbed = shown.Grab();
        EXPECT_EQ(grabbed.pixel(b.center()), 0xFFA06030);
        EXPECT_EQ(grabbed.pixel(area.center().x(), area.bottom() + 4), 0xFFEBEBEB);
    }
}

TEST(CompareSideBySide, TheTwoButtonsStandAtTheirPlaces) {
    ShownCompare shown;
    shown.view.ShowSideBySide(Plain(100, 100, 0xFF3060A0), Plain(100, 100, 0xFFA06030));
    EXPECT_EQ(shown.Button("BtnCompareSave")->geometry(), QRect(300 - 150, 400 - 70, 174, 42));
    EXPECT_EQ(shown.Button("BtnCompareCancel")->geometry(), QRect(300 + 50, 400 - 70, 104, 42));
    EXPECT_EQ(shown.Button("BtnCompareSave")->text(), LanguageText(QStringLiteral("ids_comparesave")));
    EXPECT_EQ(shown.Button("BtnCompareCancel")->text(), LanguageText(QStringLiteral("ids_comparecancel")));
    EXPECT_TRUE(shown.Button("BtnCompareSave")->isVisible());
}

TEST(CompareSideBySide, SaveHandsTheResultToTheFrame) {
    ShownCompare shown;
    const Bitmap result = Plain(100, 100, 0xFFA06030);
    shown.view.ShowSideBySide(Plain(100, 100, 0xFF3060A0), result);
    QTest::mouseClick(shown.Button("BtnCompareSave"), Qt::LeftButton);
    ASSERT_EQ(shown.host.Count<OpenSaveMessage>(), 1);
    EXPECT_TRUE(std::get<OpenSaveMessage>(shown.host.messages[0]).picture.SharesPixelsWith(result));
}

TEST(CompareSideBySide, CancelAndEscReturnToTheTool) {
    ShownCompare shown;
    shown.view.ShowSideBySide(Plain(100, 100, 0xFF3060A0), Plain(100, 100, 0xFFA06030));
    shown.host.compareMode = 2;
    QTest::mouseClick(shown.Button("BtnCompareCancel"), Qt::LeftButton);
    EXPECT_EQ(shown.host.compareMode, 0);
    shown.host.compareMode = 2;
    QTest::keyClick(&shown.view, Qt::Key_Escape);
    EXPECT_EQ(shown.host.compareMode, 0);
}

TEST(CompareSideBySide, FollowsANewSizeOfTheClient) {
    ShownCompare shown;
    shown.view.ShowSideBySide(Noise(1600, 1200, 1), Noise(1600, 1200, 2));
    const QRect before = shown.view.BeforeRect();
    shown.view.Place({40, 40, 900, 700});
    EXPECT_GT(shown.view.BeforeRect().width(), before.width());
    EXPECT_EQ(shown.Button("BtnCompareSave")->pos(), QPoint(450 - 150, 700 - 70));
}

TEST(CompareSideBySide, AClientTooSmallForPicturesShowsNone) {
    ShownCompare shown({200, 90});
    shown.view.ShowSideBySide(Noise(160, 120, 1), Noise(160, 120, 2));
    EXPECT_TRUE(shown.view.BeforeRect().isEmpty());
    EXPECT_EQ(shown.Grab().pixel(0, 0), 0xFFEBEBEB);
}

TEST(Compare, ClearLetsGoOfThePictures) {
    ShownCompare shown;
    shown.view.ShowSideBySide(Plain(100, 100, 0xFF3060A0), Plain(100, 100, 0xFFA06030));
    shown.view.Clear();
    EXPECT_EQ(shown.view.Mode(), 0);
    EXPECT_TRUE(shown.view.GetShowBitmap().IsNull());
    EXPECT_TRUE(shown.view.BeforeRect().isEmpty());
    EXPECT_FALSE(shown.Button("BtnCompareSave")->isVisible());
}

}  // namespace
