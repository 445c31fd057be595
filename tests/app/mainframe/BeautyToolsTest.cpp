// SPDX-License-Identifier: GPL-3.0-or-later
// The brush tools in the real main window, by mouse and keyboard events only, against the plain arithmetic.
#include <QtCore/QCoreApplication>
#include <QtGui/QImage>

#include "BrushPlace.h"
#include "CBrushWnd.h"
#include "CHistoryManager.h"
#include "CMidTopEditTool.h"
#include "CSliderCtrl.h"
#include "FrameFixture.h"
#include "PC_Dsp.h"
#include "PlainBrush.h"
#include "Strokes.h"
#include "TestPictures.h"

namespace {

Bitmap Recoloured(Bitmap picture, int red, int green, int blue) {
    PC_Dsp::Color_Channel_Composite(picture, red, green, blue, nullptr, 0, 100);
    return picture;
}

struct BrushRow {
    int number;
    const char *tab, *button, *pen, *erase, *penLabel, *eraseLabel;
    // The effect's slider and the value that is set; empty for none.
    const char* effectSlider;
    int effectValue;
    const char* swatch;
    BrushTip::Shape shape;
    // A stamp's weight, and what is painted.
    double weight;
    std::function<Bitmap(Bitmap)> effect;
    bool mask;
};

std::ostream& operator<<(std::ostream& out, const BrushRow& row) {
    return out << row.button;
}

const BrushRow BrushRows[] = {
    {17, "BtnMouth", "BtnMouthColor", "SliderMouthColorPenSize", "BtnMouthColorErase", "TextMouthColorPenSize",
     "TextMouthColorEraseSize", "SliderMouthColorAlpha", 70, "BtnMouthColorVal3", PC_Dsp::Circle_Gradient_Alpha,
     255 * (0.7 / 255.0), [](const Bitmap& picture) { return Recoloured(picture, 193, 67, 79); }, true},
    {18, "BtnMouth", "BtnMouthBeauty", "SliderMouthBeautyPenSize", "BtnMouthBeautyErase", "TextMouthBeautyPenSize",
     "TextMouthBeautyEraseSize", "SliderMouthBeautyAlpha", 60, "", PC_Dsp::Circle_Gradient_Alpha2Eye,
     255 * (0.6 / 255.0),
     [](Bitmap picture) {
         PC_Dsp::MeiBaiYaChi(picture.MutablePixels(), picture.Width(), picture.Height(), nullptr, 0, 100);
         return picture;
     },
     true},
    {14, "BtnEyes", "BtnEyesBianSe", "SliderEyesColorPenSize", "BtnEyesColorErase", "TextEyesColorPenSize",
     "TextEyesColorEraseSize", "SliderEyesColorLiDu", 50, "BtnEyesColor5", PC_Dsp::Circle_Gradient_Alpha2Eye,
     255 * (0.5 / 255.0), [](const Bitmap& picture) { return Recoloured(picture, 44, 138, 255); }, true},
    {10, "BtnPiFu", "BtnMoPi", "SliderMoPiPenSize", "BtnMoPiErase", "TextMoPiPenSize", "TextMoPiEraseSize",
     "SliderMoPiLiDu", 35, "", PC_Dsp::Circle_Gradient_Alpha, 1.0,
     [](Bitmap picture) {
         const auto sigma = static_cast<float>(35 * 0.1);
         PC_Dsp::CannyDericheBlur(picture, sigma, sigma, nullptr, nullptr, 0, 100);
         return picture;
     },
     false},
    {9, "BtnPiFu", "BtnFuSe", "SliderFuSePenSize", "BtnFuSeErase", "TextFuSePenSize", "TextFuSeEraseSize", "", 0,
     "BtnColor5", PC_Dsp::Circle_Gradient_Alpha, 1.0,
     [](Bitmap picture) {
         PC_Dsp::CompositeColor(picture, 197, 99, 112, nullptr, 0, 100);
         return picture;
     },
     false},
};

class BeautyTools : public FrameTest, public testing::WithParamInterface<BrushRow> {
  protected:
    static CHistoryManager& History() { return CHistoryManager::Instance(); }
    Bitmap OnShow() { return Mid().Canvas()->GetShowBitmap(); }
    static QWidget* Label(const char* name) { return Driver::Find(QLatin1String(name)); }

    void Enter() {
        Driver::Click(QStringLiteral("btnMeiRong"));
        Driver::Click(QLatin1String(GetParam().tab));
        Driver::Click(QLatin1String(GetParam().button));
        ASSERT_EQ(Mid().Tool(), GetParam().number);
    }
    void SetControls() {
        Driver::DragSlider(QLatin1String(GetParam().pen), 35);
        if (*GetParam().effectSlider)
            Driver::DragSlider(QLatin1String(GetParam().effectSlider), GetParam().effectValue);
        if (*GetParam().swatch) Driver::Click(QLatin1String(GetParam().swatch));
        EXPECT_EQ(static_cast<CBrushWnd*>(Mid().Canvas())->PenSize(), 70);
    }
    // A press and release that far from the middle of the picture, and the same in the twin.
    void Press(QPoint off, bool erase, Qt::KeyboardModifiers modifiers = {}) {
        QRectF source;
        QRect place;
        Mid().Canvas()->GetViewRects(&source, &place);
        const QPoint at = place.center() + off;
        Strokes::Draw(*Mid().Canvas(), {at}, modifiers);
        const double zoom = Mid().Canvas()->GetZoom();
        const auto stamp = StampPlace(at - place.topLeft(), 70, zoom, {900, 1200});
        ASSERT_TRUE(stamp);
        plain.Stamp(GetParam().shape, BrushTip::RadiusOf(70, zoom), stamp->x(), stamp->y(), erase,
                    erase ? 0.0 : GetParam().weight, GetParam().mask);
    }

    PlainBrush plain;
};

}  // namespace

TEST_P(BeautyTools, ASessionOfStrokesErasingMovesAndVisitsIsSavedAsTheModelSays) {
    const Bitmap photo = PhotoPixels();
    Show(Photo());
    Enter();
    SetControls();
    EXPECT_TRUE(OnShow() == photo) << "no control changes the picture before a stroke";
    plain.Take(photo, GetParam().effect(photo));

    Press({0, 0}, false);
    EXPECT_FALSE(OnShow() == photo);
    EXPECT_TRUE(OnShow() == plain.working);
    EXPECT_EQ(History().m_count, 2);

    // The erase button, and the key that erases for a moment.
    EXPECT_TRUE(Label(GetParam().penLabel)->isVisible());
    Driver::Click(QLatin1String(GetParam().erase));
    EXPECT_FALSE(Driver::IsThere(QLatin1String(GetParam().penLabel)));
    EXPECT_TRUE(Label(GetParam().eraseLabel)->isVisible());
    Press({10, 4}, true);
    Driver::Click(QLatin1String(GetParam().erase));
    Press({-12, -3}, true, Qt::AltModifier);
    Press({30, 8}, false);
    EXPECT_TRUE(OnShow() == plain.working);
    EXPECT_EQ(History().m_count, GetParam().mask ? 2 : 5);

    // There and back.
    const Bitmap painted = OnShow();
    Driver::Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(OnShow() == painted);
    Driver::Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    const Bitmap again = OnShow();
    EXPECT_TRUE(again == (GetParam().mask ? plain.Composed(GetParam().effectValue * 0.01) : painted));
    Mid().Canvas()->OnHistoryJump(0);
    EXPECT_TRUE(OnShow() == photo);
    Mid().Canvas()->OnHistoryJump(History().m_count - 1);
    EXPECT_TRUE(OnShow() == again);

    // Another tool gets the result, and coming back is no work.
    Driver::Click(QStringLiteral("btnJichubianji"));
    EXPECT_TRUE(OnShow() == again);
    Enter();
    EXPECT_TRUE(OnShow() == again);
    EXPECT_EQ(History().m_count, GetParam().mask ? 2 : 5);
    EXPECT_EQ(static_cast<CBrushWnd*>(Mid().Canvas())->PenSize(), 70) << "the panel's values hold";
    EXPECT_FALSE(static_cast<CBrushWnd*>(Mid().Canvas())->IsErasing());
    EXPECT_TRUE(Saved(QStringLiteral("painted")) == again);
}

TEST_P(BeautyTools, TheBracketKeysMoveTheSliders) {
    Show(Photo());
    Enter();
    Mid().Canvas()->setFocus();
    auto* pen = qobject_cast<CSliderCtrl*>(Driver::Find(QLatin1String(GetParam().pen)));
    const int before = pen->value();
    Driver::Key(Qt::Key_BracketRight);
    EXPECT_GT(pen->value(), before);
    EXPECT_EQ(static_cast<CBrushWnd*>(Mid().Canvas())->PenSize(), 2 * pen->value());
    Driver::Key(Qt::Key_BracketLeft);
    EXPECT_EQ(pen->value(), before);
    if (!*GetParam().effectSlider) return;
    auto* effect = qobject_cast<CSliderCtrl*>(Driver::Find(QLatin1String(GetParam().effectSlider)));
    const int strength = effect->value();
    Driver::Key(Qt::Key_BraceLeft, Qt::ShiftModifier);
    EXPECT_LT(effect->value(), strength);
}

INSTANTIATE_TEST_SUITE_P(Brushes, BeautyTools, testing::ValuesIn(BrushRows));

namespace {

class BeautyPanels : public FrameTest {};

}  // namespace

TEST_F(BeautyPanels, TheStartPageLeadsToTheBeautyTools) {
    Show();
    EXPECT_TRUE(Driver::Find(QStringLiteral("BtnWelMeiRong"))->isEnabled());
}

TEST_F(BeautyPanels, TheFreeFieldShowsItsColourAndTakesItAtTheRelease) {
    Show(Photo());
    Driver::Click(QStringLiteral("btnMeiRong"));
    Driver::Click(QStringLiteral("BtnMouth"));
    Driver::Click(QStringLiteral("BtnMouthColor"));
    Driver::Click(QStringLiteral("BtnMouthColor4"));
    EXPECT_FALSE(Driver::IsThere(QStringLiteral("ConMouthColors")));
    QWidget* field = Driver::Find(QStringLiteral("ConMouthSePan"));
    Strokes::Draw(*field, {{40, 40}, {60, 50}});
    const QString taken = Driver::Find(QStringLiteral("TextMouthColorVal"))->styleSheet();
    EXPECT_TRUE(taken.contains(u'#'));
    // Painted with, it is the colour of the picture's own pixel under the release.
    const QImage picture(QCoreApplication::applicationDirPath() +
                         QStringLiteral("/../bin/Images/Background/bk_colorsepan.png"));
    const QColor colour =
        picture.pixelColor(60 * picture.width() / field->width(), 50 * picture.height() / field->height());
    EXPECT_TRUE(taken.contains(colour.name())) << taken.toStdString() << " is not " << colour.name().toStdString();
}

TEST_F(BeautyPanels, OneClickIsCountedWhenAToolIsLeftWithAChangedPicture) {
    Show(Photo());
    Driver::Click(QStringLiteral("btnMeiRong"));
    Driver::Click(QStringLiteral("BtnMouth"));
    Driver::Click(QStringLiteral("BtnMouthColor"));
    const int before = Clicks("888040501");
    Driver::Click(QStringLiteral("BtnMouthBeauty"));
    EXPECT_EQ(Clicks("888040501"), before);
    Driver::Click(QStringLiteral("BtnMouthColor"));
    const QPoint middle = Mid().Canvas()->rect().center();
    Strokes::Draw(*Mid().Canvas(), {middle});
    Driver::Click(QStringLiteral("BtnMouthBeauty"));
    EXPECT_EQ(Clicks("888040501"), before + 1);
}
