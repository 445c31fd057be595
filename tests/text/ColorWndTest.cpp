// SPDX-License-Identifier: GPL-3.0-or-later
#include "PixelUnder.h"
#include "TextHost.h"

namespace {

class ColorWnd : public testing::Test {
  protected:
    ColorWnd() {
        host.Add(QStringLiteral("colours"));
        host.Drag(host.Middle(), host.Middle() + QPoint(0, 130));
    }
    ~ColorWnd() override {
        if (host.panel->ColorWnd()) host.panel->ColorWnd()->Close();
        if (CColorWnd::PickMode()) {
            CColorWnd& window = host.OpenColors();
            QTest::mouseClick(window.Find<QWidget>(QStringLiteral("BtnQuSe")), Qt::LeftButton);
            window.Close();
        }
    }
    CColorWnd& OpenToPick() {
        CColorWnd& window = host.OpenColors();
        if (!CColorWnd::PickMode()) QTest::mouseClick(window.Find<QWidget>(QStringLiteral("BtnQuSe")), Qt::LeftButton);
        QApplication::processEvents();
        return window;
    }
    // A point of the picture without a text and what it shows.
    QPoint Bare() const { return host.Logic().Geometry().ScreenRect().topLeft() + QPoint(150, 40); }
    QRgb Shown(QPoint at) const { return host.Painted().pixel(at) & 0xFFFFFF; }
    static QWidget* Control(CColorWnd& window, const char* name) { return window.Find<QWidget>(QLatin1String(name)); }

    TextHost host;
};

}  // namespace

TEST_F(ColorWnd, OpensUnderItsButtonInItsSize) {
    const CColorWnd& window = host.OpenColors();
    EXPECT_EQ(window.size(), QSize(131, 85));
    EXPECT_EQ(window.mapToGlobal(QPoint(0, 0)), host.Color()->mapToGlobal(QPoint(0, host.Color()->height() + 3)));
    EXPECT_TRUE(host.Color()->isChecked());
    EXPECT_EQ(window.objectName(), QStringLiteral("ColorWnd"));
}

TEST_F(ColorWnd, HasThreeRowsOfSevenColours) {
    CColorWnd& window = host.OpenColors();
    QSet<QRgb> colors;
    for (int row = 0; row < 3; ++row)
        for (int column = 1; column <= 7; ++column) {
            auto* button = window.Find<CColorButton>(QStringLiteral("BtnColor_%1%2").arg(row).arg(column));
            ASSERT_TRUE(button);
            colors.insert(button->Color());
        }
    EXPECT_EQ(colors.size(), 21);
}

TEST_F(ColorWnd, AColourOfThePaletteGoesToPanelAndTextAndIsChosenNextTime) {
    CColorWnd& window = host.OpenColors();
    auto* red = window.Find<CColorButton>(QStringLiteral("BtnColor_11"));
    QTest::mouseClick(red, Qt::LeftButton);
    EXPECT_EQ(host.Selected().GetColor(), red->Color());
    EXPECT_EQ(host.Color()->Color(), red->Color());
    EXPECT_EQ(host.panel->Style().colour, red->Color());
    EXPECT_FALSE(host.canvas->HasPendingWork());
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(host.Color()->isChecked());
    EXPECT_EQ(CColorWnd::Chosen(), QStringLiteral("BtnColor_11"));
    host.OpenColors();
    EXPECT_TRUE(red->isChecked());
    window.Close();
}

TEST_F(ColorWnd, ClosesOnEscAndWhenTheKeyboardGoesAndAtAPressBeside) {
    CColorWnd& window = host.OpenColors();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(host.Color()->isChecked());
    host.OpenColors();
    host.Size()->setFocus();
    EXPECT_FALSE(window.isVisible());
    host.OpenColors();
    QTest::mouseClick(host.canvas.get(), Qt::LeftButton, {}, Bare());
    EXPECT_FALSE(window.isVisible());
}

TEST_F(ColorWnd, TheButtonClosesItAgain) {
    CColorWnd& window = host.OpenColors();
    QTest::mouseClick(host.Color(), Qt::LeftButton);
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(host.Color()->isChecked());
}

TEST_F(ColorWnd, PickModeMakesItHigherAndIsKept) {
    CColorWnd& window = OpenToPick();
    EXPECT_EQ(window.size(), QSize(131, 145));
    EXPECT_TRUE(Control(window, "TextYanSeSePan")->isVisible());
    window.Close();
    host.OpenColors();
    EXPECT_EQ(window.size(), QSize(131, 145));
    QTest::mouseClick(Control(window, "BtnQuSe"), Qt::LeftButton);
    EXPECT_EQ(window.size(), QSize(131, 85));
    EXPECT_FALSE(Control(window, "TextYanSeSePan")->isVisible());
    window.Close();
}

TEST_F(ColorWnd, TheMouseOverThePictureColoursTheTextBeforeAnyClick) {
    CColorWnd& window = OpenToPick();
    const QPoint at = Bare();
    const QRgb expected = Shown(at);
    TextHost::MoveOver(host.canvas.get(), at);
    EXPECT_EQ(host.Selected().GetColor(), expected);
    EXPECT_EQ(host.Color()->Color(), expected);
    EXPECT_TRUE(host.canvas->HasPendingWork());
    ASSERT_TRUE(QApplication::overrideCursor());
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::BitmapCursor);
    window.Close();
    EXPECT_FALSE(QApplication::overrideCursor());
    EXPECT_FALSE(host.canvas->HasPendingWork()) << "closing settles what was shown";
}

TEST_F(ColorWnd, AReleaseOverThePictureTakesItsColourAndKeepsTheSelection) {
    CColorWnd& window = OpenToPick();
    const QPoint at = Bare() + QPoint(40, 20);
    const QRgb expected = Shown(at);
    QTest::mousePress(host.canvas.get(), Qt::LeftButton, {}, at);
    EXPECT_EQ(host.Logic().Selected(), 0) << "the press is not the canvas's";
    QTest::mouseRelease(host.canvas.get(), Qt::LeftButton, {}, at);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(host.Logic().Selected(), 0);
    EXPECT_EQ(host.Selected().GetColor(), expected);
    EXPECT_FALSE(host.canvas->HasPendingWork());
}

TEST_F(ColorWnd, TheFieldGivesItsColourAndKeepsTheMarker) {
    CColorWnd& window = OpenToPick();
    auto* field = window.Find<CColorField>(QStringLiteral("TextYanSeSePan"));
    const QPoint at(80, 20);
    QTest::mouseClick(field, Qt::LeftButton, {}, at);
    EXPECT_FALSE(window.isVisible());
    const QColor taken = QColor::fromRgb(host.Selected().GetColor()), exact = QColor::fromRgb(field->ColorAt(at));
    EXPECT_LT(std::abs(taken.red() - exact.red()) + std::abs(taken.green() - exact.green()) +
                  std::abs(taken.blue() - exact.blue()),
              12);
    host.OpenColors();
    const QWidget* marker = Control(window, "TextYanSeCurPt");
    EXPECT_TRUE(marker->isVisible());
    EXPECT_EQ(marker->size(), QSize(5, 5));
    EXPECT_EQ(marker->mapTo(&window, QPoint(2, 2)), field->mapTo(&window, at));
    window.Close();
}

TEST_F(ColorWnd, ItsOwnSurfacesAreNeverTaken) {
    CColorWnd& window = OpenToPick();
    const QRgb before = host.Selected().GetColor();
    const QPoint ground = window.mapToGlobal(QPoint(3, 40));
    EXPECT_EQ(PixelUnder(QPointF(ground)), CColorWnd::Ground);
    EXPECT_EQ(PixelUnder(QPointF(window.mapToGlobal(QPoint(0, 40)))), CColorWnd::Edge);
    TextHost::MoveOver(&window, {3, 40});
    EXPECT_EQ(host.Selected().GetColor(), before);
    // A picture of that very grey.
    host.canvas->SetShowBitmap(TestPictures::Plain(600, 400, 0xFF000000 | CColorWnd::Ground));
    host.canvas->AddText(QStringLiteral("x"), {});
    const QRgb added = host.Selected().GetColor();
    TextHost::MoveOver(host.canvas.get(), Bare());
    EXPECT_EQ(host.Selected().GetColor(), added);
    window.Close();
}

TEST_F(ColorWnd, ElsewhereNothingChangesAndAPressCloses) {
    CColorWnd& window = OpenToPick();
    const QRgb before = host.Selected().GetColor();
    TextHost::MoveOver(host.panel, {5, 600});
    TextHost::MoveOver(window.Find<QWidget>(QStringLiteral("BtnColor_13")), {5, 5});
    EXPECT_EQ(host.Selected().GetColor(), before);
    EXPECT_FALSE(QApplication::overrideCursor());
    QTest::mouseClick(host.panel, Qt::LeftButton, {}, {5, 600});
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(host.Selected().GetColor(), before);
    EXPECT_FALSE(PixelUnder({-5000, -5000}).has_value());
}

TEST_F(ColorWnd, TheDesktopsMouseStaysFree) {
    const CColorWnd& window = OpenToPick();
    EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_FALSE(window.isWindow());
}
