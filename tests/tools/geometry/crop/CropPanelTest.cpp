// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtGui/QScreen>
#include <QtGui/QWheelEvent>

#include "CropHost.h"
#include "CropRatio.h"

namespace {

class CropPanel : public testing::Test {
  protected:
    void SetUp() override {
        picture = Coordinates(400, 300);
        host.Open(picture);
    }
    QSize Desktop() const {
        const QScreen* screen = QGuiApplication::primaryScreen();
        return (QSizeF(screen->size()) * screen->devicePixelRatio()).toSize();
    }
    double Ratio(int item) const {
        const auto index = static_cast<std::size_t>(item);
        return index < CropRatios.size() ? CropRatios[index] : double(Desktop().height()) / Desktop().width();
    }
    void Wheel(const char* edit, int delta) {
        QWidget* field = host.Control(edit);
        const QPointF at(10, 10);
        QWheelEvent event(at, field->mapToGlobal(at), {}, {0, delta}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(field, &event);
    }
    CropHost host;
    Bitmap picture;
};

TEST_F(CropPanel, StartsFreeUnlockedAndEmpty) {
    EXPECT_TRUE(host.FieldsAreEmpty());
    EXPECT_EQ(host.Control<QComboBox>("ComboZiYouCaiJian")->currentIndex(), 0);
    EXPECT_FALSE(host.Checked("OptSuoDingChiCun"));
    EXPECT_TRUE(host.Enabled("OptSuoDingChiCun"));
    EXPECT_TRUE(host.Enabled("BtnJiaoHuanKuanGao"));
}

TEST_F(CropPanel, ZeroOrEmptyBecomesOneWhileTyping) {
    host.Type("EditKuanDu", QStringLiteral("0"));
    EXPECT_EQ(host.Text("EditKuanDu"), QStringLiteral("1"));
    host.Type("EditKuanDu", QStringLiteral("250"));
    EXPECT_EQ(host.Cut().width(), 250);
    host.Type("EditKuanDu", QString());
    EXPECT_EQ(host.Text("EditKuanDu"), QStringLiteral("1"));
    EXPECT_EQ(host.Cut().width(), 1);
    // What the field put there by itself gives way to the next digit.
    QTest::keyClicks(host.Control("EditKuanDu"), QStringLiteral("37"));
    EXPECT_EQ(host.Text("EditKuanDu"), QStringLiteral("37"));
}

TEST_F(CropPanel, ANumberAboveThePictureIsSetBackToIt) {
    host.Type("EditKuanDu", QStringLiteral("4000"));
    EXPECT_EQ(host.Text("EditKuanDu"), QStringLiteral("400"));
    host.Type("EditGaoDu", QStringLiteral("301"));
    EXPECT_EQ(host.Text("EditGaoDu"), QStringLiteral("300"));
    EXPECT_EQ(host.Cut().size(), QSize(400, 300));
}

TEST_F(CropPanel, FieldsTakeDigitsOnly) {
    host.Type("EditKuanDu", QStringLiteral("a1-2.b3"));
    EXPECT_EQ(host.Text("EditKuanDu"), QStringLiteral("123"));
}

TEST_F(CropPanel, TheSideThatWasNotTypedStaysWholeOrAsFramed) {
    host.Type("EditKuanDu", QStringLiteral("120"));
    EXPECT_EQ(host.Fields(), QSize(120, 300));
    EXPECT_EQ(host.Cut().size(), QSize(120, 300));
}

TEST_F(CropPanel, ArrowsAndWheelChangeTheNumbers) {
    host.Type("EditKuanDu", QStringLiteral("120"));
    QWidget* field = host.Control("EditKuanDu");
    QTest::keyClick(field, Qt::Key_Up);
    EXPECT_EQ(host.Cut().width(), 121);
    QTest::keyClick(field, Qt::Key_Down);
    QTest::keyClick(field, Qt::Key_Down);
    EXPECT_EQ(host.Cut().width(), 119);
    QTest::keyClick(field, Qt::Key_PageUp);
    EXPECT_EQ(host.Cut().width(), 129);
    Wheel("EditGaoDu", -120);
    EXPECT_EQ(host.Cut().size(), QSize(129, 299));
    Wheel("EditGaoDu", 240);
    EXPECT_EQ(host.Text("EditGaoDu"), QStringLiteral("300"));
    for (int i = 0; i < 3; ++i) Wheel("EditGaoDu", 120);
    EXPECT_EQ(host.Text("EditGaoDu"), QStringLiteral("300"));
    host.Type("EditKuanDu", QStringLiteral("1"));
    QTest::keyClick(field, Qt::Key_Down);
    EXPECT_EQ(host.Text("EditKuanDu"), QStringLiteral("1"));
}

TEST_F(CropPanel, EnterInAFieldCutsAsTyped) {
    host.Type("EditKuanDu", QStringLiteral("123"));
    host.Type("EditGaoDu", QStringLiteral("45"));
    QTest::keyClick(host.Control("EditGaoDu"), Qt::Key_Return);
    EXPECT_EQ(host.ImageSize(), QSize(123, 45));
    EXPECT_EQ(host.history.m_count, 2);
    EXPECT_EQ(host.Fields(), QSize(123, 45));
}

TEST_F(CropPanel, TypedNumbersAreCutAsTypedAtAFitBelowTwentyPercent) {
    host.Open(TestPictures::Plain(9000, 400, 0xFF808080));
    ASSERT_LT(host.canvas->GetZoom(), 0.2);
    host.Type("EditKuanDu", QStringLiteral("1921"));
    host.Type("EditGaoDu", QStringLiteral("3"));
    host.Click("BtnOK");
    EXPECT_EQ(host.ImageSize(), QSize(1921, 3));
}

TEST_F(CropPanel, EveryRatioItemFitsThePictureAndIsCut) {
    auto* combo = host.Control<QComboBox>("ComboZiYouCaiJian");
    ASSERT_EQ(combo->count(), 12);
    for (int item = 1; item < 12; ++item) {
        SCOPED_TRACE(item);
        host.Open(picture);
        host.Choose("ComboZiYouCaiJian", item);
        const QSize expected = FitRatio({400, 300}, Ratio(item));
        EXPECT_EQ(host.Fields(), expected);
        EXPECT_TRUE(host.Checked("OptSuoDingChiCun"));
        EXPECT_FALSE(host.Enabled("OptSuoDingChiCun"));
        EXPECT_FALSE(host.Enabled("BtnJiaoHuanKuanGao"));
        EXPECT_FALSE(host.canvas->Selection().IsDrawingNew());
        host.Click("BtnOK");
        EXPECT_EQ(host.ImageSize(), expected);
    }
}

TEST_F(CropPanel, ASquareInAPictureOf300By200Is200By200) {
    host.Open(TestPictures::Face(300, 200));
    host.Choose("ComboZiYouCaiJian", 1);
    EXPECT_EQ(host.Text("EditKuanDu"), QStringLiteral("200"));
    EXPECT_EQ(host.Text("EditGaoDu"), QStringLiteral("200"));
}

TEST_F(CropPanel, TheDesktopItemShowsTheRealScreen) {
    auto* combo = host.Control<QComboBox>("ComboZiYouCaiJian");
    EXPECT_EQ(combo->itemText(11), QStringLiteral("%1:%2(Desktop)").arg(Desktop().width()).arg(Desktop().height()));
    host.Choose("ComboZiYouCaiJian", 11);
    EXPECT_EQ(host.Fields(), FitRatio({400, 300}, double(Desktop().height()) / Desktop().width()));
}

TEST_F(CropPanel, ALockedProportionMakesTheOtherFieldFollow) {
    host.Choose("ComboZiYouCaiJian", 2);  // 2:3
    host.Type("EditKuanDu", QStringLiteral("100"));
    EXPECT_EQ(host.Fields(), QSize(100, 150));
    EXPECT_EQ(host.Cut().size(), QSize(100, 150));
    host.Type("EditGaoDu", QStringLiteral("90"));
    EXPECT_EQ(host.Fields(), QSize(60, 90));
    // Too wide for the height: the height is the picture's and the width follows from it.
    host.Type("EditKuanDu", QStringLiteral("300"));
    EXPECT_EQ(host.Fields(), QSize(200, 300));
    EXPECT_EQ(host.Cut().size(), QSize(200, 300));
}

TEST_F(CropPanel, ATypedNumberThatMustGrowWaitsForItsLastDigit) {
    host.Choose("ComboZiYouCaiJian", 10);  // 5:2, where a width of 1 has no height
    host.Type("EditKuanDu", QStringLiteral("150"));
    EXPECT_EQ(host.Fields(), QSize(150, 60));
    host.Type("EditKuanDu", QStringLiteral("1"));
    EXPECT_EQ(host.Text("EditGaoDu"), QStringLiteral("1"));
    EXPECT_EQ(host.Cut().size(), QSize(2, 1));
    QTest::keyClick(host.Control("EditKuanDu"), Qt::Key_Tab);
    EXPECT_EQ(host.Fields(), QSize(2, 1));
}

TEST_F(CropPanel, ALockedProportionHoldsWhileDragging) {
    host.Choose("ComboZiYouCaiJian", 1);
    host.Type("EditKuanDu", QStringLiteral("100"));
    host.Drag(host.Grip(CropHit::BottomRight), host.Grip(CropHit::BottomRight) + QPoint(40, 5));
    EXPECT_EQ(host.Cut().size(), QSize(140, 140));
    EXPECT_EQ(host.Fields(), QSize(140, 140));
}

TEST_F(CropPanel, BackToFreeGivesTheDefaultSelectionAndEndsTheLock) {
    host.Choose("ComboZiYouCaiJian", 3);
    host.Choose("ComboZiYouCaiJian", 0);
    EXPECT_FALSE(host.Checked("OptSuoDingChiCun"));
    EXPECT_TRUE(host.Enabled("OptSuoDingChiCun"));
    EXPECT_TRUE(host.Enabled("BtnJiaoHuanKuanGao"));
    EXPECT_EQ(host.Cut(), QRect(100, 75, 200, 150));
    EXPECT_EQ(host.Fields(), QSize(200, 150));
    host.Drag(host.Grip(CropHit::Right), host.Grip(CropHit::Right) + QPoint(40, 0));
    EXPECT_EQ(host.Cut().size(), QSize(240, 150));
}

TEST_F(CropPanel, TheLockKeepsThePresentProportionAndFitsIt) {
    host.Type("EditKuanDu", QStringLiteral("200"));
    host.Type("EditGaoDu", QStringLiteral("100"));
    host.Click("OptSuoDingChiCun");
    EXPECT_TRUE(host.Checked("OptSuoDingChiCun"));
    EXPECT_FALSE(host.Enabled("BtnJiaoHuanKuanGao"));
    EXPECT_EQ(host.Fields(), QSize(400, 200));
    host.Type("EditKuanDu", QStringLiteral("50"));
    EXPECT_EQ(host.Fields(), QSize(50, 25));
    host.Click("OptSuoDingChiCun");
    EXPECT_FALSE(host.Checked("OptSuoDingChiCun"));
    EXPECT_TRUE(host.Enabled("BtnJiaoHuanKuanGao"));
    host.Type("EditKuanDu", QStringLiteral("60"));
    EXPECT_EQ(host.Fields(), QSize(60, 25));
}

TEST_F(CropPanel, ThereIsNothingToLockBeforeBothFieldsHoldANumber) {
    host.Click("OptSuoDingChiCun");
    EXPECT_FALSE(host.Checked("OptSuoDingChiCun"));
    EXPECT_FALSE(host.panel->IsLocked());
    EXPECT_TRUE(host.Enabled("BtnJiaoHuanKuanGao"));
}

TEST_F(CropPanel, SwapExchangesTheSidesAndHoldsThemWithinThePicture) {
    host.Type("EditKuanDu", QStringLiteral("120"));
    host.Type("EditGaoDu", QStringLiteral("80"));
    host.Click("BtnJiaoHuanKuanGao");
    EXPECT_EQ(host.Fields(), QSize(80, 120));
    EXPECT_EQ(host.Cut().size(), QSize(80, 120));
    host.Type("EditKuanDu", QStringLiteral("400"));
    host.Type("EditGaoDu", QStringLiteral("100"));
    host.Click("BtnJiaoHuanKuanGao");
    EXPECT_EQ(host.Fields(), QSize(75, 300));
    // Not locked by it.
    host.Type("EditKuanDu", QStringLiteral("90"));
    EXPECT_EQ(host.Fields(), QSize(90, 300));
}

TEST_F(CropPanel, SwapDoesNothingUnlessBothFieldsAreAboveZero) {
    host.Click("BtnJiaoHuanKuanGao");
    EXPECT_TRUE(host.FieldsAreEmpty());
    EXPECT_TRUE(host.Cut().isEmpty());
}

TEST_F(CropPanel, OkOnTheFullSelectionPushesNoStep) {
    host.Type("EditKuanDu", QStringLiteral("400"));
    host.Type("EditGaoDu", QStringLiteral("300"));
    host.Click("BtnOK");
    EXPECT_EQ(host.history.m_count, 1);
    host.Type("EditGaoDu", QStringLiteral("299"));
    host.Click("BtnOK");
    EXPECT_EQ(host.history.m_count, 2);
    EXPECT_EQ(host.history.CloneCurrent()->GetName(), QStringLiteral("Crop"));
}

TEST_F(CropPanel, CancelEmptiesTheFieldsAndStartsANewDrawing) {
    host.Choose("ComboZiYouCaiJian", 4);
    host.Click("BtnCancel");
    EXPECT_TRUE(host.FieldsAreEmpty());
    EXPECT_EQ(host.Control<QComboBox>("ComboZiYouCaiJian")->currentIndex(), 0);
    EXPECT_FALSE(host.Checked("OptSuoDingChiCun"));
    EXPECT_TRUE(host.Enabled("OptSuoDingChiCun"));
    EXPECT_TRUE(host.canvas->Selection().IsDrawingNew());
    EXPECT_EQ(host.canvas->Selection().Ratio(), 0.0);
    EXPECT_EQ(host.Cut(), QRect(100, 75, 200, 150));  // the default, until the next press draws over it
    host.Drag(host.At({200, 150}), host.At({260, 190}));
    EXPECT_EQ(host.Cut(), QRect(200, 150, 60, 40));
    EXPECT_EQ(host.history.m_count, 1);
}

TEST_F(CropPanel, EscInAFieldIsCancelAndLeavesCompareToTheFrame) {
    host.Type("EditKuanDu", QStringLiteral("120"));
    QTest::keyClick(host.Control("EditKuanDu"), Qt::Key_Escape);
    EXPECT_TRUE(host.FieldsAreEmpty());
    host.Type("EditKuanDu", QStringLiteral("120"));
    host.compareMode = 1;
    QTest::keyClick(host.Control("EditKuanDu"), Qt::Key_Escape);
    EXPECT_EQ(host.Text("EditKuanDu"), QStringLiteral("120"));
}

TEST_F(CropPanel, EnterOnAButtonIsThatButton) {
    host.Type("EditKuanDu", QStringLiteral("120"));
    host.Control("BtnCancel")->setFocus();
    QTest::keyClick(host.Control("BtnCancel"), Qt::Key_Return);
    EXPECT_TRUE(host.FieldsAreEmpty());
    EXPECT_EQ(host.history.m_count, 1);
}

TEST_F(CropPanel, EveryActLeavesCompareFirst) {
    const auto leaves = [&](const auto& act) {
        host.compareMode = 1;
        act();
        return host.compareMode == 0;
    };
    EXPECT_TRUE(leaves([&] { host.Type("EditKuanDu", QStringLiteral("200")); }));
    EXPECT_TRUE(leaves([&] { host.Type("EditGaoDu", QStringLiteral("100")); }));
    EXPECT_TRUE(leaves([&] { host.Click("BtnJiaoHuanKuanGao"); }));
    EXPECT_TRUE(leaves([&] { host.Click("OptSuoDingChiCun"); }));
    EXPECT_TRUE(leaves([&] { host.Choose("ComboZiYouCaiJian", 1); }));
    EXPECT_TRUE(leaves([&] { host.Click("BtnOK"); }));
    EXPECT_TRUE(leaves([&] { host.Click("BtnCancel"); }));
}

TEST_F(CropPanel, UndoWithAProportionChosenOffersItAgain) {
    host.Choose("ComboZiYouCaiJian", 1);
    host.Click("BtnOK");
    ASSERT_EQ(host.ImageSize(), QSize(300, 300));
    EXPECT_EQ(host.Fields(), QSize(300, 300));
    host.Undo();
    EXPECT_EQ(host.ImageSize(), QSize(400, 300));
    EXPECT_EQ(host.Fields(), QSize(300, 300));
    EXPECT_EQ(host.Cut().size(), QSize(300, 300));
}

TEST_F(CropPanel, ANewPictureAndAnotherVisitShowTheRestState) {
    host.Choose("ComboZiYouCaiJian", 4);
    host.Open(TestPictures::Face(200, 100));
    EXPECT_TRUE(host.FieldsAreEmpty());
    EXPECT_EQ(host.Control<QComboBox>("ComboZiYouCaiJian")->currentIndex(), 0);
    EXPECT_EQ(host.canvas->Selection().Ratio(), 0.0);
    host.Choose("ComboZiYouCaiJian", 4);
    // An opening that came to nothing leaves everything as it was.
    const QSize chosen = host.Fields();
    host.panel->OnFrameMessage(LeavingToolMessage{CCutWnd::Facts.number});
    host.panel->OnFrameMessage(RefreshPanelMessage{CCutWnd::Facts.number});
    EXPECT_EQ(host.Fields(), chosen);
    EXPECT_TRUE(host.panel->IsLocked());
    // Another visit.
    host.canvas->OnApply();
    host.NewCanvas();
    ASSERT_TRUE(host.canvas->OnEnter());
    host.panel->OnFrameMessage(RefreshPanelMessage{CCutWnd::Facts.number});
    EXPECT_EQ(host.Control<QComboBox>("ComboZiYouCaiJian")->currentIndex(), 0);
    EXPECT_FALSE(host.panel->IsLocked());
    EXPECT_TRUE(host.FieldsAreEmpty());
}

TEST_F(CropPanel, WithAnotherToolsCanvasNothingHappens) {
    host.canvas = nullptr;
    host.Type("EditKuanDu", QStringLiteral("120"));
    EXPECT_TRUE(host.FieldsAreEmpty());
    host.Choose("ComboZiYouCaiJian", 1);
    EXPECT_EQ(host.Control<QComboBox>("ComboZiYouCaiJian")->currentIndex(), 0);
    for (const char* name : {"BtnOK", "BtnCancel", "BtnJiaoHuanKuanGao", "OptSuoDingChiCun"}) host.Click(name);
    EXPECT_FALSE(host.panel->IsLocked());
}

// Both languages, each control by its exact name.
class CropSkin : public testing::TestWithParam<const char*> {
  protected:
    CropSkin() : host(QString::fromLatin1(GetParam())) {}
    CropHost host;
};

TEST_P(CropSkin, EveryControlIsThereUnderItsNameAndExplainsItself) {
    for (const char* name : {"EditKuanDu", "EditGaoDu", "BtnOK", "BtnCancel", "BtnJiaoHuanKuanGao", "OptSuoDingChiCun",
                             "ComboZiYouCaiJian"}) {
        const QWidget* control = host.Control(name);
        EXPECT_FALSE(control->accessibleName().isEmpty()) << name;
        EXPECT_FALSE(control->toolTip().isEmpty()) << name;
        EXPECT_NE(control->focusPolicy() & Qt::TabFocus, 0) << name;
    }
}

TEST_P(CropSkin, TheItemsAreNamedByTheirReading) {
    const auto* combo = host.Control<QComboBox>("ComboZiYouCaiJian");
    const char* readings[] = {"1:1", "2:3", "3:4", "3:5", "4:5", "4:6", "5:7", "16:9", "16:10", "5:2"};
    ASSERT_EQ(combo->count(), 12);
    EXPECT_FALSE(combo->itemText(0).isEmpty());
    for (int item = 1; item <= 10; ++item) {
        const QString reading = QString::fromLatin1(readings[item - 1]);
        EXPECT_TRUE(combo->itemText(item).startsWith(reading)) << item;
        EXPECT_GT(combo->itemText(item).size(), reading.size() + 2) << "a name beside the numbers: " << item;
    }
    EXPECT_TRUE(combo->itemText(11).contains(LanguageText(QStringLiteral("ids_desktopscreen"))));
}

TEST_P(CropSkin, NothingIsCutOffInTheColumn) {
    EXPECT_LE(host.panel->minimumSizeHint().width(), 250);
    for (const char* name : {"BtnOK", "BtnCancel", "OptSuoDingChiCun"}) {
        const QWidget* control = host.Control(name);
        EXPECT_GE(control->width(), control->minimumSizeHint().width()) << name;
        EXPECT_LE(control->mapTo(host.panel, QPoint(control->width(), 0)).x(), 250) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, CropSkin, testing::Values("1033", "2052"));

}  // namespace
