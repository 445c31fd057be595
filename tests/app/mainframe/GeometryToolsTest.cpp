// SPDX-License-Identifier: GPL-3.0-or-later
// Crop, rotate and resize in the whole program, as a person uses them: real windows, mouse and keyboard events only,
// judged by the saved file.
#include <QtGui/QScreen>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>

#include "CCutWnd.h"
#include "CHistoryManager.h"
#include "CropRatio.h"
#include "FrameFixture.h"
#include "PC_Dsp.h"
#include "TestPictures.h"

namespace {

class GeometryTools : public FrameTest {
  protected:
    void Open(const Bitmap& opened) {
        picture = opened;
        Show(WritePicture(QStringLiteral("opened.png"), picture));
    }
    Bitmap OnShow() { return Mid().Canvas()->GetShowBitmap(); }
    // What a saved file holds, a new one each time.
    Bitmap SavedNow() { return Saved(QStringLiteral("saved%1").arg(++m_saved)); }
    static void Click(const char* name) { Driver::Click(QLatin1String(name)); }
    static void Type(const char* name, int number) { Driver::Type(QLatin1String(name), QString::number(number)); }
    static QSize Fields() {
        const auto number = [](const char* name) {
            return qobject_cast<QLineEdit*>(Driver::Find(QLatin1String(name)))->text().toInt();
        };
        return {number("EditKuanDu"), number("EditGaoDu")};
    }
    static void EnterCrop() {
        Click("btnTab2");
        if (!Driver::IsThere(QStringLiteral("ComboZiYouCaiJian"))) Click("BtnCaiJian");
    }
    static void EnterResize() {
        Click("btnTab2");
        Click("BtnXiuGaiChiCun");
        auto* keep = qobject_cast<QAbstractButton*>(Driver::Find(QStringLiteral("OptBaoChi")));
        if (keep->isChecked()) Click("OptBaoChi");
    }
    static void Resize(int width, int height) {
        Type("EditKuanDu", width);
        if (height > 0) Type("EditGaoDu", height);
        Click("BtnOK");
    }
    QString SizeText() { return qobject_cast<QLabel*>(Driver::Find(QStringLiteral("TextPicSize")))->text(); }

    CCutWnd& CropCanvas() { return *qobject_cast<CCutWnd*>(Mid().Canvas()); }
    // A point of the canvas, in logical pixels, where this picture pixel's corner stands.
    QPoint At(QPointF pixel) {
        const ViewGeometry geometry = CropCanvas().Logic().Geometry();
        return ((pixel * geometry.Zoom() + QPointF(geometry.ViewOffset())) / CropCanvas().PixelRatio()).toPoint();
    }
    QPoint Grip(CropHit hit) {
        const QPointF at = CropCanvas().Selection().HitAreas()[static_cast<std::size_t>(hit)].center();
        const ViewGeometry geometry = CropCanvas().Logic().Geometry();
        return ((at + QPointF(geometry.ViewOffset())) / CropCanvas().PixelRatio()).toPoint();
    }
    void DrawFrame(const QRect& pixels) {
        Driver::DragOn(Mid().Canvas(), At(pixels.topLeft()),
                       At(pixels.topLeft() + QPoint(pixels.width(), pixels.height())));
    }

    static Bitmap Part(const Bitmap& source, const QRect& part) {
        return PC_Dsp::Clone(source, part.x(), part.y(), part.width(), part.height());
    }

    Bitmap picture;

  private:
    int m_saved = 0;
};

}  // namespace

TEST_F(GeometryTools, CropsByAllNineAreas) {
    Open(TestPictures::Noise(400, 300, 5));
    EnterCrop();
    ASSERT_EQ(CropCanvas().Logic().Geometry().Zoom(), 1.0);
    const std::pair<CropHit, QRect> cases[] = {
        {CropHit::TopLeft, {120, 85, 180, 140}},    {CropHit::TopRight, {100, 85, 220, 140}},
        {CropHit::BottomLeft, {120, 75, 180, 160}}, {CropHit::BottomRight, {100, 75, 220, 160}},
        {CropHit::Top, {100, 85, 200, 140}},        {CropHit::Left, {120, 75, 180, 150}},
        {CropHit::Bottom, {100, 75, 200, 160}},     {CropHit::Right, {100, 75, 220, 150}},
        {CropHit::Inside, {120, 85, 200, 150}}};
    for (const auto& [hit, expected] : cases) {
        SCOPED_TRACE(static_cast<int>(hit));
        Click("BtnCancel");
        DrawFrame({100, 75, 200, 150});
        Driver::DragOn(Mid().Canvas(), Grip(hit), Grip(hit) + QPoint(20, 10) / Mid().Canvas()->devicePixelRatio());
        EXPECT_EQ(Fields(), expected.size());
        Click("BtnOK");
        EXPECT_EQ(SavedNow(), Part(picture, expected));
        Click("BtnUndo");
        ASSERT_EQ(OnShow(), picture);
    }
}

TEST_F(GeometryTools, CropsByEachRatioItem) {
    Open(TestPictures::Noise(400, 300, 6));
    EnterCrop();
    const QScreen* screen = QGuiApplication::primaryScreen();
    const QSize desktop = (QSizeF(screen->size()) * screen->devicePixelRatio()).toSize();
    const auto* combo = qobject_cast<QComboBox*>(Driver::Find(QStringLiteral("ComboZiYouCaiJian")));
    ASSERT_EQ(combo->count(), 12);
    for (int item = 1; item < combo->count(); ++item) {
        SCOPED_TRACE(item);
        Driver::ChooseItem(QStringLiteral("ComboZiYouCaiJian"), item);
        const double ratio = item < 11 ? CropRatios[static_cast<std::size_t>(item)]
                                       : static_cast<double>(desktop.height()) / desktop.width();
        const QSize expected = FitRatio({400, 300}, ratio);
        EXPECT_EQ(Fields(), expected);
        const QPoint place = CropCanvas().Selection().Cut().topLeft();
        Click("BtnOK");
        EXPECT_EQ(SavedNow(), Part(picture, QRect(place, expected)));
        Click("BtnUndo");
        ASSERT_EQ(OnShow(), picture);
    }
    // The free item cuts the middle.
    Driver::ChooseItem(QStringLiteral("ComboZiYouCaiJian"), 0);
    Driver::Key(Qt::Key_Return);
    EXPECT_EQ(SavedNow(), Part(picture, {100, 75, 200, 150}));
}

TEST_F(GeometryTools, SwapsLocksAndNudgesTheFrame) {
    Open(TestPictures::Noise(400, 300, 7));
    EnterCrop();
    Type("EditKuanDu", 120);
    Type("EditGaoDu", 80);
    Click("BtnJiaoHuanKuanGao");
    EXPECT_EQ(Fields(), QSize(80, 120));
    Click("OptSuoDingChiCun");
    EXPECT_EQ(Fields(), QSize(200, 300));
    Type("EditKuanDu", 100);
    EXPECT_EQ(Fields(), QSize(100, 150));
    const QRect framed = CropCanvas().Selection().Cut();
    Mid().Canvas()->setFocus();
    Driver::Key(Qt::Key_Right);
    Driver::Key(Qt::Key_Down);
    Driver::Key(Qt::Key_Right, Qt::ShiftModifier);
    Driver::Key(Qt::Key_Right, Qt::ShiftModifier);
    const QRect expected(framed.topLeft() + QPoint(1, 1), QSize(102, 153));
    EXPECT_EQ(Fields(), expected.size());
    Driver::Key(Qt::Key_Return);
    EXPECT_EQ(SavedNow(), Part(picture, expected));
}

TEST_F(GeometryTools, ResizesWithAndWithoutKeepingTheProportions) {
    Open(TestPictures::Noise(400, 300, 8));
    EnterResize();
    EXPECT_EQ(Fields(), QSize(400, 300));
    Click("OptBaoChi");
    Resize(200, 0);
    EXPECT_EQ(Fields(), QSize(200, 150));
    EXPECT_EQ(SavedNow(), PC_Dsp::Resample(picture, 200, 150));
    Click("OptBaoChi");
    Resize(333, 111);
    EXPECT_EQ(SavedNow(), PC_Dsp::Resample(picture, 333, 111)) << "made from the picture as it came in";
    Resize(400, 300);
    EXPECT_EQ(SavedNow(), picture);
    Click("BtnJianHuanChiCun");
    Click("BtnOK");
    EXPECT_EQ(SavedNow(), PC_Dsp::Resample(picture, 300, 400));
}

TEST_F(GeometryTools, UndoKeysWorkWhileTheKeyboardIsInAField) {
    Open(TestPictures::Face(400, 300));
    EnterCrop();
    Type("EditKuanDu", 120);
    Type("EditGaoDu", 80);
    Driver::Key(Qt::Key_Return);
    ASSERT_EQ(OnShow().Width(), 120);
    Driver::Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(OnShow(), picture);
    Driver::Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(OnShow().Width(), 120);
}

TEST_F(GeometryTools, UndoAndRedoGoAcrossTools) {
    Open(TestPictures::Face(400, 300));
    auto& history = CHistoryManager::Instance();
    EnterCrop();
    DrawFrame({100, 75, 200, 150});
    Click("BtnOK");
    const Bitmap cropped = Part(picture, {100, 75, 200, 150});
    EXPECT_EQ(OnShow(), cropped);
    EXPECT_EQ(SizeText(), QStringLiteral("200 x 150"));
    EnterResize();
    EXPECT_EQ(Fields(), QSize(200, 150));
    Resize(100, 75);
    EXPECT_EQ(SizeText(), QStringLiteral("100 x 75"));
    const Bitmap resized = PC_Dsp::Resample(cropped, 100, 75);
    Click("btnTab1");
    EXPECT_EQ(OnShow(), resized);
    Driver::DragSlider(QStringLiteral("Liangdu"), 30);
    const Bitmap brighter = OnShow();
    ASSERT_NE(brighter, resized);
    EXPECT_EQ(history.m_count, 4);

    EnterCrop();
    Click("BtnUndo");
    EXPECT_EQ(OnShow(), resized);
    Click("BtnUndo");
    EXPECT_EQ(OnShow(), cropped);
    EnterResize();
    EXPECT_EQ(Fields(), QSize(200, 150));
    Click("BtnUndo");
    EXPECT_EQ(OnShow(), picture);
    EXPECT_EQ(Fields(), QSize(400, 300));
    Click("BtnRedo");
    Click("BtnRedo");
    EXPECT_EQ(Fields(), QSize(100, 75));
    Click("btnTab1");
    Click("BtnRedo");
    EXPECT_EQ(OnShow(), brighter);
    EXPECT_EQ(history.m_count, 4);
    EXPECT_EQ(SavedNow(), brighter);
    // The resize starts from what undo brought.
    EnterResize();
    Click("BtnUndo");
    Click("BtnUndo");
    Resize(50, 50);
    EXPECT_EQ(SavedNow(), PC_Dsp::Resample(cropped, 50, 50));
    Click("BtnOriginal");
    EXPECT_EQ(SavedNow(), picture);
}

TEST_F(GeometryTools, CropRotateAndResizeInOneSession) {
    Open(TestPictures::Face(400, 300));
    auto& history = CHistoryManager::Instance();
    EnterCrop();
    Driver::ChooseItem(QStringLiteral("ComboZiYouCaiJian"), 5);
    Click("BtnOK");
    const Bitmap cropped = OnShow();
    EXPECT_EQ(cropped.Width(), 240);
    EXPECT_EQ(cropped.Height(), 300);

    Click("BtnXuanZhuan");
    Click("BtnYouXuanZhuan");
    Click("BtnShangXiaFanZhuan");
    Driver::DragSlider(QStringLiteral("SlideRenYiXuanZhuan"), 12);
    Bitmap upright = cropped;
    ASSERT_NE(PC_Dsp::SingleRotate(upright, Rotate90FlipNone), 0);
    ASSERT_NE(PC_Dsp::SingleRotate(upright, RotateNoneFlipY), 0);
    const Bitmap turned = PC_Dsp::MultiRotate(upright, 12, 0, 0, 0, 0);
    EXPECT_EQ(SavedNow(), turned);

    EnterResize();
    const QSize full(turned.Width(), turned.Height());
    EXPECT_EQ(Fields(), full);
    Click("OptBaoChi");
    Resize(150, 0);
    const Bitmap kept = PC_Dsp::Resample(turned, 150, 150 * full.height() / full.width());
    EXPECT_EQ(SavedNow(), kept);
    Click("OptBaoChi");
    Resize(333, 90);
    const Bitmap stretched = PC_Dsp::Resample(turned, 333, 90);
    EXPECT_EQ(SavedNow(), stretched);
    EXPECT_EQ(history.m_count, 5);

    // Back through the steps, each time in another tool than made it, and forward again.
    Click("BtnUndo");
    EXPECT_EQ(OnShow(), kept);
    EnterCrop();
    Click("BtnUndo");
    EXPECT_EQ(OnShow(), turned);
    Click("BtnUndo");
    EXPECT_EQ(OnShow(), cropped);
    Click("BtnXuanZhuan");
    Click("BtnUndo");
    EXPECT_EQ(OnShow(), picture);
    Click("BtnRedo");
    Click("BtnRedo");
    EXPECT_EQ(OnShow(), turned);
    EnterCrop();
    Click("BtnRedo");
    EXPECT_EQ(OnShow(), kept);
    EnterResize();
    Click("BtnRedo");
    EXPECT_EQ(Fields(), QSize(333, 90));
    EXPECT_EQ(SavedNow(), stretched);
    EXPECT_EQ(history.m_count, 5);
    EXPECT_EQ(history.m_currentNo, 5);
}
