// SPDX-License-Identifier: GPL-3.0-or-later
// The text tool inside the whole program: from typing to the saved file.
#include <QtGui/QMouseEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPlainTextEdit>

#include "CColorButton.h"
#include "CHistoryManager.h"
#include "CWordWnd.h"
#include "FrameFixture.h"
#include "Language.h"

namespace {

class TextTool : public FrameTest {
  protected:
    CWordWnd& Canvas() { return *qobject_cast<CWordWnd*>(Mid().Canvas()); }
    const CWordLogic& Logic() { return Canvas().Logic(); }
    QPoint Middle() { return Logic().BoxOf(Logic().Selected()).Centre(); }
    void Add(const QString& text) {
        Driver::Type(QStringLiteral("EditWenZi"), text);
        Driver::Click(QStringLiteral("BtnAddWenZi"));
    }
    const StringParams& Selected() { return Logic().Text(Logic().Selected()); }
    void Deselect() { QTest::keyClick(&Canvas(), Qt::Key_Escape); }
};

}  // namespace

TEST_F(TextTool, ThreeTextsAreTypedMovedTurnedRestyledDeletedUndoneBurntAndSaved) {
    Show(Photo());
    Driver::Click(QStringLiteral("btnTab3"));
    ASSERT_EQ(Mid().Tool(), 5);
    // Typed and moved apart.
    const QPoint middle = Canvas().rect().center();
    Add(QStringLiteral("First"));
    Driver::DragOn(&Canvas(), Middle(), middle - QPoint(20, 150));
    Deselect();
    Add(QStringLiteral("Second\nline"));
    Driver::DragOn(&Canvas(), Middle(), middle + QPoint(30, 160));
    Deselect();
    Add(QString::fromUtf16(u"春天 שלום سلام é😊"));
    ASSERT_EQ(Logic().Count(), 3);
    // Every control of the panel.
    Driver::Type(QStringLiteral("EditZiHao"), QStringLiteral("64"));
    EXPECT_EQ(Selected().GetFontSize(), 64.0f);
    Driver::ChooseItem(QStringLiteral("ComboZiHao"), 15);
    EXPECT_EQ(Selected().GetFontSize(), 72.0f);
    for (const char* option : {"BtnCuTi", "BtnXieTi", "BtnXiaHuaXian", "BtnYinYing"})
        Driver::Click(QLatin1String(option));
    Driver::Click(QStringLiteral("BtnShuPai"));
    Driver::Click(QStringLiteral("BtnShuPai"));
    EXPECT_TRUE(Selected().GetBold() && Selected().GetItalic() && Selected().GetUnderline() && Selected().GetShadow());
    EXPECT_FALSE(Selected().GetVertical());
    Driver::DragSlider(QStringLiteral("SlideTouMingDu"), 70);
    EXPECT_FLOAT_EQ(Selected().GetAlpha(), 0.7f);
    // Turned by its button.
    const QPoint turnAt = Logic().ButtonsOf(Logic().Selected()).rotateCentre.toPoint();
    Driver::DragOn(&Canvas(), turnAt, turnAt + QPoint(-20, 60));
    EXPECT_NE(Selected().GetAngle(), 0.0);
    // A colour of the palette, and one of the picture.
    Driver::Click(QStringLiteral("BtnColor"));
    Driver::Click(QStringLiteral("BtnColor_13"));
    const QRgb amber = qobject_cast<CColorButton*>(Driver::Find(QStringLiteral("BtnColor")))->Color();
    EXPECT_EQ(Selected().GetColor(), amber);
    Driver::Click(QStringLiteral("BtnColor"));
    Driver::Click(QStringLiteral("BtnQuSe"));
    const QPoint bare = Logic().Geometry().ScreenRect().topLeft() + QPoint(20, 20);
    QMouseEvent move(QEvent::MouseMove, QPointF(bare), Canvas().mapToGlobal(QPointF(bare)), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QApplication::sendEvent(&Canvas(), &move);
    const QRgb picked = Selected().GetColor();
    EXPECT_NE(picked, amber);
    QTest::mouseClick(&Canvas(), Qt::LeftButton, {}, bare);
    EXPECT_EQ(Selected().GetColor(), picked);
    ASSERT_NE(Logic().Selected(), CWordLogic::None);
    Driver::Click(QStringLiteral("BtnColor"));
    Driver::Click(QStringLiteral("BtnQuSe"));
    Driver::Key(Qt::Key_Escape);
    // Deleted, and brought back by undo.
    const Bitmap three = Canvas().GetShowBitmap();
    const QPoint deleteAt = Logic().ButtonsOf(Logic().Selected()).deleteCentre.toPoint();
    QTest::mouseClick(&Canvas(), Qt::LeftButton, {}, deleteAt);
    ASSERT_EQ(Logic().Count(), 2);
    Driver::Click(QStringLiteral("BtnUndo"));
    ASSERT_EQ(Logic().Count(), 3);
    EXPECT_TRUE(Canvas().GetShowBitmap() == three);
    EXPECT_EQ(CHistoryManager::Instance().m_count, 2);
    // Burnt and saved.
    Driver::Click(QStringLiteral("btnTab1"));
    EXPECT_TRUE(Mid().Canvas()->GetShowBitmap() == three);
    EXPECT_EQ(Clicks("888020301"), 1);
    EXPECT_TRUE(Saved(QStringLiteral("texts")) == three);
    EXPECT_EQ(CHistoryManager::Instance().GetStepNames().back(), LanguageText(QStringLiteral("ids_wenzi")));
}

TEST_F(TextTool, PlusAndMinusAreWrittenIntoTheTextAndDoNotZoom) {
    Show(Photo());
    Driver::Click(QStringLiteral("btnTab3"));
    const double zoom = Canvas().GetZoom();
    Driver::Type(QStringLiteral("EditWenZi"), QStringLiteral("1+1-1=1 \\"));
    EXPECT_EQ(qobject_cast<QPlainTextEdit*>(Driver::Find(QStringLiteral("EditWenZi")))->toPlainText(),
              QStringLiteral("1+1-1=1 \\"));
    EXPECT_EQ(Canvas().GetZoom(), zoom);
    EXPECT_EQ(Mid().CompareMode(), 0);
}

TEST_F(TextTool, CompareShowsAlsoWhenTheKeyboardWasOnTheCanvas) {
    Show(Photo());
    Driver::Click(QStringLiteral("btnTab3"));
    Add(QStringLiteral("compare"));
    Canvas().setFocus();
    for (const int mode : {1, 2}) {
        Mid().SetCompareMode(mode);
        EXPECT_EQ(Mid().CompareMode(), mode);
        Mid().SetCompareMode(0);
    }
    EXPECT_EQ(Logic().Count(), 1);
}

TEST_F(TextTool, TypedWorkIsAskedForBeforeItIsThrownAway) {
    Show(Photo());
    Driver::Click(QStringLiteral("btnTab3"));
    EXPECT_TRUE(Mid().IsSafeToDiscard());
    Add(QStringLiteral("ask"));
    EXPECT_FALSE(Mid().IsSafeToDiscard());
    QTest::keyClick(&Canvas(), Qt::Key_Delete);
    EXPECT_TRUE(Mid().IsSafeToDiscard()) << "the picture is the opened one again";
}

TEST_F(TextTool, AnotherPictureBeginsWithoutTexts) {
    Show(Photo());
    Driver::Click(QStringLiteral("btnTab3"));
    Add(QStringLiteral("old"));
    ASSERT_TRUE(Mid().OpenImage(Photo()));
    EXPECT_EQ(Logic().Count(), 0);
    EXPECT_EQ(qobject_cast<QPlainTextEdit*>(Driver::Find(QStringLiteral("EditWenZi")))->toPlainText(),
              LanguageText(QStringLiteral("ids_edt_inputtext")));
}
