// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QScrollBar>

#include "TextHost.h"

namespace {

QString Prompt() {
    return LanguageText(QStringLiteral("ids_edt_inputtext"));
}

}  // namespace

TEST(TextPanel, OpensWithPromptDefaultSizeAndArial) {
    for (const char* language : {"1033", "2052"}) {
        TextHost host(QLatin1String(language), {1200, 300});
        EXPECT_EQ(host.Edit()->Text(), Prompt());
        EXPECT_EQ(host.Size()->Value(), 50);
        EXPECT_EQ(host.Sizes()->currentText(), QStringLiteral("50"));
        EXPECT_EQ(host.Fonts()->currentText(), QStringLiteral("Arial"));
        EXPECT_EQ(host.Color()->Color(), 0xFFFFFFu);
        EXPECT_EQ(host.Control<QLabel>("TouMingDuVal")->text(), QStringLiteral("100%"));
        EXPECT_TRUE(host.Control("BtnAddWenZi")->hasFocus());
    }
}

TEST(TextPanel, ASizeThatTheListLacksLeavesItWithoutASelection) {
    TextHost host;
    host.TypeSize(QStringLiteral("41"));
    EXPECT_EQ(host.Sizes()->currentIndex(), -1);
    host.TypeSize(QStringLiteral("48"));
    EXPECT_EQ(host.Sizes()->currentText(), QStringLiteral("48"));
}

TEST(TextPanel, ThePromptGoesWithTheKeyboardAndComesBackToAnEmptyField) {
    TextHost host;
    host.Edit()->setFocus();
    EXPECT_TRUE(host.Edit()->Text().isEmpty());
    host.Size()->setFocus();
    EXPECT_EQ(host.Edit()->Text(), Prompt());
    host.Type(QStringLiteral("mine"));
    host.Size()->setFocus();
    EXPECT_EQ(host.Edit()->Text(), QStringLiteral("mine"));
    host.Edit()->setFocus();
    EXPECT_EQ(host.Edit()->Text(), QStringLiteral("mine"));
}

TEST(TextPanel, ThePromptLooksLikeOne) {
    TextHost host;
    EXPECT_TRUE(host.Edit()->property("prompt").toBool());
    host.Type(QStringLiteral("mine"));
    EXPECT_FALSE(host.Edit()->property("prompt").toBool());
    host.Type({});
    host.Size()->setFocus();
    EXPECT_TRUE(host.Edit()->property("prompt").toBool());
}

TEST(TextPanel, ThePromptIsNeverAddedNorWrittenIntoAText) {
    TextHost host;
    host.Click("BtnAddWenZi");
    EXPECT_EQ(host.Logic().Count(), 0);
    host.Add(QStringLiteral("real"));
    host.Type({});
    EXPECT_EQ(host.Selected().GetText(), QString());
    host.Size()->setFocus();
    EXPECT_EQ(host.Edit()->Text(), Prompt());
    EXPECT_EQ(host.Selected().GetText(), QString());
    EXPECT_EQ(host.Logic().Count(), 1);
    host.Click("BtnAddWenZi");
    EXPECT_EQ(host.Logic().Count(), 1);
}

TEST(TextPanel, ThePromptsOwnWordsCanBeWritten) {
    TextHost host;
    host.Type(Prompt() + QStringLiteral("x"));
    QTest::keyClick(host.Edit(), Qt::Key_Backspace);
    host.Click("BtnAddWenZi");
    ASSERT_EQ(host.Logic().Count(), 1);
    EXPECT_EQ(host.Selected().GetText(), Prompt());
}

TEST(TextPanel, TypingWritesTheSelectedTextLiveAndLeavingTheFieldRecordsIt) {
    TextHost host;
    host.Add(QStringLiteral("one"));
    host.Type(QStringLiteral("two\nlines"));
    EXPECT_EQ(host.Selected().GetText(), QStringLiteral("two\nlines"));
    EXPECT_TRUE(host.canvas->HasPendingWork());
    host.Size()->setFocus();
    EXPECT_FALSE(host.canvas->HasPendingWork());
    EXPECT_EQ(host.history.m_count, 2);
}

TEST(TextPanel, ClearingTheFieldEmptiesTheSelectedTextWhichStays) {
    TextHost host;
    const Bitmap bare = host.canvas->GetShowBitmap();
    host.Add(QStringLiteral("one"));
    host.Type({});
    EXPECT_EQ(host.Logic().Count(), 1);
    EXPECT_TRUE(host.canvas->GetShowBitmap() == bare);
}

TEST(TextPanel, AnAddedTextHasTheDefaultSizeWhateverThePanelShowed) {
    TextHost host;
    host.TypeSize(QStringLiteral("77"));
    host.Add(QStringLiteral("one"));
    EXPECT_EQ(host.Selected().GetFontSize(), 40.0f);
    EXPECT_EQ(host.Size()->Value(), 40);
}

TEST(TextPanel, CtrlEnterAddsTheText) {
    TextHost host;
    host.Type(QStringLiteral("quick"));
    QTest::keyClick(host.Edit(), Qt::Key_Return, Qt::ControlModifier);
    ASSERT_EQ(host.Logic().Count(), 1);
    EXPECT_EQ(host.Selected().GetText(), QStringLiteral("quick"));
}

TEST(TextPanel, EachOptionTurnsItsStyleOnAndOff) {
    struct Row {
        const char* control;
        int (StringParams::*get)() const;
    };
    const Row rows[] = {{"BtnCuTi", &StringParams::GetBold},
                        {"BtnXieTi", &StringParams::GetItalic},
                        {"BtnXiaHuaXian", &StringParams::GetUnderline},
                        {"BtnYinYing", &StringParams::GetShadow},
                        {"BtnShuPai", &StringParams::GetVertical}};
    TextHost host;
    host.Add(QStringLiteral("styles"));
    for (const Row& row : rows) {
        const Bitmap before = host.canvas->GetShowBitmap();
        host.Click(row.control);
        EXPECT_EQ((host.Selected().*row.get)(), 1) << row.control;
        EXPECT_TRUE(host.Option(row.control)->isChecked());
        EXPECT_FALSE(host.canvas->GetShowBitmap() == before) << row.control;
        EXPECT_FALSE(host.canvas->HasPendingWork());
        host.Click(row.control);
        EXPECT_EQ((host.Selected().*row.get)(), 0) << row.control;
    }
    EXPECT_EQ(host.history.m_count, 2);
}

TEST(TextPanel, TheNextTextTakesThePresentStyle) {
    TextHost host;
    host.Click("BtnCuTi");
    host.Click("BtnYinYing");
    QTest::keyClick(host.Control("SlideTouMingDu"), Qt::Key_Left);
    host.Add(QStringLiteral("styled"));
    EXPECT_EQ(host.Selected().GetBold(), 1);
    EXPECT_EQ(host.Selected().GetShadow(), 1);
    EXPECT_EQ(host.Selected().GetItalic(), 0);
    EXPECT_FLOAT_EQ(host.Selected().GetAlpha(), 0.99f);
}

TEST(TextPanel, TheSizeFieldHoldsWhatIsTypedToOneToAThousand) {
    TextHost host;
    host.Add(QStringLiteral("size"));
    host.TypeSize(QStringLiteral("64"));
    EXPECT_EQ(host.Selected().GetFontSize(), 64.0f);
    host.TypeSize(QStringLiteral("2000"));
    EXPECT_EQ(host.Size()->text(), QStringLiteral("1000"));
    EXPECT_EQ(host.Selected().GetFontSize(), 1000.0f);
    host.TypeSize({});
    EXPECT_EQ(host.Size()->text(), QStringLiteral("10"));
    EXPECT_EQ(host.Selected().GetFontSize(), 10.0f);
    // The next key replaces what took the place of nothing.
    QTest::keyClicks(host.Size(), QStringLiteral("35"));
    EXPECT_EQ(host.Size()->text(), QStringLiteral("35"));
    host.TypeSize(QStringLiteral("0"));
    EXPECT_EQ(host.Size()->text(), QStringLiteral("10"));
}

TEST(TextPanel, AChosenSizeShowsInTheFieldAndInTheText) {
    TextHost host;
    host.Add(QStringLiteral("size"));
    host.Sizes()->setFocus();
    QTest::keyClick(host.Sizes(), Qt::Key_Down);
    EXPECT_EQ(host.Sizes()->currentText(), QStringLiteral("48"));
    EXPECT_EQ(host.Size()->text(), QStringLiteral("48"));
    EXPECT_EQ(host.Selected().GetFontSize(), 48.0f);
    EXPECT_FALSE(host.canvas->HasPendingWork());
}

TEST(TextPanel, TheListOfSizesOpensAtItsSelection) {
    TextHost host;
    host.TypeSize(QStringLiteral("100"));
    host.Sizes()->showPopup();
    const QScrollBar* bar = host.Sizes()->view()->verticalScrollBar();
    EXPECT_EQ(bar->value(), std::min({host.Sizes()->currentIndex() * 25, 300, bar->maximum()}));
    host.Sizes()->hidePopup();
}

TEST(TextPanel, AChosenFontGoesToTheText) {
    TextHost host;
    ASSERT_TRUE(QTest::qWaitFor([&] { return host.Fonts()->IsFilled(); }, 20000));
    host.Add(QStringLiteral("font"));
    const int row = host.Fonts()->findText(QStringLiteral("DejaVu Serif"));
    ASSERT_GE(row, 0);
    host.Fonts()->setFocus();
    const int steps = row - host.Fonts()->currentIndex();
    for (int i = 0; i < std::abs(steps); ++i) QTest::keyClick(host.Fonts(), steps > 0 ? Qt::Key_Down : Qt::Key_Up);
    EXPECT_EQ(host.Selected().GetFontName(), QStringLiteral("DejaVu Serif"));
    EXPECT_EQ(host.panel->Style().fontName, QStringLiteral("DejaVu Serif"));
    EXPECT_FALSE(host.canvas->HasPendingWork());
}

TEST(TextPanel, TheOpacitySliderShowsLiveAndRecordsAtItsRelease) {
    TextHost host;
    host.Add(QStringLiteral("clear"));
    auto* slider = host.Control<CSliderCtrl>("SlideTouMingDu");
    QTest::mousePress(slider, Qt::LeftButton, {}, slider->HandleAt(100));
    TextHost::MoveOver(slider, slider->HandleAt(40), {}, Qt::LeftButton);
    EXPECT_EQ(host.Control<QLabel>("TouMingDuVal")->text(), QStringLiteral("40%"));
    EXPECT_FLOAT_EQ(host.Selected().GetAlpha(), 0.4f);
    EXPECT_TRUE(host.canvas->HasPendingWork());
    QTest::mouseRelease(slider, Qt::LeftButton, {}, slider->HandleAt(40));
    EXPECT_FALSE(host.canvas->HasPendingWork());
    EXPECT_EQ(host.panel->Style().alphaPercent, 40);
}

TEST(TextPanel, ASelectionOnTheCanvasFillsTheWholePanel) {
    TextHost host;
    host.Click("BtnXieTi");
    host.Add(QStringLiteral("first"));
    host.Drag(host.Middle(), host.Middle() + QPoint(-120, -120));
    const QPoint first = host.Middle();
    host.TypeSize(QStringLiteral("33"));
    host.Key(Qt::Key_Escape);
    host.Click("BtnXieTi");
    host.Click("BtnShuPai");
    host.Add(QStringLiteral("second"));
    QTest::mouseClick(host.canvas.get(), Qt::LeftButton, {}, first);
    EXPECT_EQ(host.Edit()->Text(), QStringLiteral("first"));
    EXPECT_EQ(host.Size()->Value(), 33);
    EXPECT_TRUE(host.Option("BtnXieTi")->isChecked());
    EXPECT_FALSE(host.Option("BtnShuPai")->isChecked());
    EXPECT_EQ(host.Selected().GetText(), QStringLiteral("first")) << "showing a text does not write it";
    EXPECT_FALSE(host.canvas->HasPendingWork());
}

TEST(TextPanel, EveryActLeavesCompareFirst) {
    TextHost host;
    host.Add(QStringLiteral("compare"));
    for (const char* control :
         {"BtnCuTi", "BtnXieTi", "BtnXiaHuaXian", "BtnYinYing", "BtnShuPai", "BtnAddWenZi", "BtnColor"}) {
        host.compareMode = 1;
        host.Click(control);
        EXPECT_EQ(host.compareMode, 0) << control;
    }
    host.compareMode = 1;
    host.TypeSize(QStringLiteral("5"));
    EXPECT_EQ(host.compareMode, 0);
    host.compareMode = 1;
    QTest::keyClick(host.Control("SlideTouMingDu"), Qt::Key_Left);
    EXPECT_EQ(host.compareMode, 0);
    host.compareMode = 1;
    host.Type(QStringLiteral("x"));
    EXPECT_EQ(host.compareMode, 0);
    // The keyboard coming to a field is no act: compare hides the canvas, and the keyboard goes somewhere.
    host.Size()->setFocus();
    host.compareMode = 1;
    host.Edit()->setFocus();
    EXPECT_EQ(host.compareMode, 1);
}

TEST(TextPanel, EnteringTheToolAnewBringsPromptAndDefaultSizeBack) {
    TextHost host;
    host.Add(QStringLiteral("old"));
    host.TypeSize(QStringLiteral("99"));
    host.Enter();
    EXPECT_EQ(host.Edit()->Text(), Prompt());
    EXPECT_EQ(host.Size()->Value(), 40);
    host.Click("BtnAddWenZi");
    EXPECT_EQ(host.Logic().Count(), 1) << "the old text is not added again";
}

TEST(TextPanel, UndoInsideTheToolKeepsWhatThePanelShows) {
    TextHost host;
    host.Add(QStringLiteral("undone"));
    host.TypeSize(QStringLiteral("55"));
    host.Undo();
    EXPECT_EQ(host.Logic().Count(), 0);
    EXPECT_EQ(host.Size()->Value(), 55);
    host.Redo();
    ASSERT_EQ(host.Logic().Count(), 1);
    EXPECT_EQ(host.Logic().Text(0).GetFontSize(), 55.0f) << "what was typed was recorded before undo";
}

TEST(TextPanel, WithoutItsCanvasItDoesNothing) {
    TextHost host;
    host.canvas.reset();
    host.Type(QStringLiteral("nobody"));
    host.Click("BtnAddWenZi");
    host.Click("BtnCuTi");
    host.TypeSize(QStringLiteral("30"));
    QTest::keyClick(host.Control("SlideTouMingDu"), Qt::Key_Left);
    EXPECT_EQ(host.panel->Style().fontSize, 30);
    host.NewCanvas();
}

TEST(TextPanel, LeavingTheToolRecordsWhatWasTyped) {
    TextHost host;
    host.Add(QStringLiteral("one"));
    host.Type(QStringLiteral("typed"));
    host.panel->OnFrameMessage(LeavingToolMessage{5});
    EXPECT_FALSE(host.canvas->HasPendingWork());
}

// ---- by keyboard alone

TEST(TextPanel, EverythingIsReachedByTheKeyboard) {
    TextHost host;
    QStringList reached;
    host.Edit()->setFocus();
    for (int i = 0; i < 40; ++i) {
        QWidget* at = QApplication::focusWidget();
        ASSERT_TRUE(at);
        reached << at->objectName();
        QTest::keyClick(at, Qt::Key_Tab);
    }
    for (const char* name : {"EditWenZi", "BtnAddWenZi", "ComboZiTi", "EditZiHao", "ComboZiHao", "BtnColor", "BtnCuTi",
                             "BtnXieTi", "BtnXiaHuaXian", "BtnYinYing", "BtnShuPai", "SlideTouMingDu"})
        EXPECT_TRUE(reached.contains(QLatin1String(name))) << name;
}

TEST(TextPanel, ThreeTextsByKeyboardAlone) {
    TextHost host;
    host.Edit()->setFocus();
    for (const char* text : {"first", "second", "third"}) {
        QTest::keyClick(host.Edit(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(host.Edit(), QLatin1String(text));
        // Typing into the field writes the selected text, so the next one begins without a selection.
        QTest::keyClick(host.Edit(), Qt::Key_Return, Qt::ControlModifier);
        host.canvas->setFocus();
        for (int i = 0; i < 5; ++i) host.Key(Qt::Key_Down, Qt::ShiftModifier);
        host.Key(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
        host.Key(Qt::Key_Escape);
        host.Edit()->setFocus();
    }
    ASSERT_EQ(host.Logic().Count(), 3);
    host.canvas->setFocus();
    host.Key(Qt::Key_PageDown);
    EXPECT_EQ(host.Edit()->Text(), QStringLiteral("third"));
    host.Key(Qt::Key_PageDown);
    EXPECT_EQ(host.Edit()->Text(), QStringLiteral("first"));
    auto* bold = host.Control("BtnCuTi");
    bold->setFocus();
    QTest::keyClick(bold, Qt::Key_Space);
    EXPECT_EQ(host.Selected().GetBold(), 1);
    host.Color()->setFocus();
    QTest::keyClick(host.Color(), Qt::Key_Space);
    ASSERT_TRUE(host.panel->ColorWnd()->isVisible());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_FALSE(host.panel->ColorWnd()->isVisible());
    EXPECT_EQ(host.Selected().GetColor(), host.Color()->Color());
    EXPECT_NE(host.Selected().GetColor(), 0xFFFFFFu);
    host.canvas->setFocus();
    host.Key(Qt::Key_Delete);
    EXPECT_EQ(host.Logic().Count(), 2);
    host.Undo();
    EXPECT_EQ(host.Logic().Count(), 3);
    EXPECT_EQ(host.Logic().Text(0).GetAngle(), 15.0);
}
