// SPDX-License-Identifier: GPL-3.0-or-later
// The repairs of places in the real main window, by mouse and keyboard events only, against the plain model.
#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtTest/QTest>
#include <QtWidgets/QLabel>

#include "BrushPlace.h"
#include "CDlgProgressCtrl.h"
#include "CHistoryManager.h"
#include "CQuDouQBShowWnd.h"
#include "CSliderCtrl.h"
#include "CXiaoChuHYQShowWnd.h"
#include "FrameFixture.h"
#include "Language.h"
#include "PC_Dsp.h"
#include "PlainBrush.h"
#include "PlainRepair.h"
#include "RunTask.h"
#include "Strokes.h"
#include "TestPictures.h"

namespace {

constexpr QSize Size(900, 1200);

struct RepairRow {
    int number;
    const char *tab, *button, *pen, *penValue;
    // What the panel gives a new canvas.
    int startPen;
    const char *stepName, *click;
    // Two places that are repaired, as parts of the picture.
    QPointF first, second;
    // The picture after a stroke of a pen of 70 at those places of the client.
    Bitmap (*repaired)(const Bitmap&, const std::vector<QPoint>&, const ViewGeometry&);
};

std::ostream& operator<<(std::ostream& out, const RepairRow& row) {
    return out << row.button;
}

constexpr int Pen = 70;

// What the moves of a click do is nothing.
Bitmap SpotGone(const Bitmap& picture, const std::vector<QPoint>& places, const ViewGeometry& geometry) {
    return PlainRepair::WithoutSpot(picture, PlainRepair::Place(places[0], Pen, geometry));
}
Bitmap RedGone(const Bitmap& picture, const std::vector<QPoint>& places, const ViewGeometry& geometry) {
    return PlainRepair::WithoutRedEye(picture, PlainRepair::Place(places[0], Pen, geometry));
}
Bitmap CircleGone(const Bitmap& picture, const std::vector<QPoint>& places, const ViewGeometry& geometry) {
    const int side = 2 * BrushTip::RadiusOf(Pen, geometry.Zoom());
    std::vector<QRect> discs;
    for (const QPoint& at : places)
        discs.push_back(QRect(PlainRepair::Place(at, Pen, geometry).topLeft(), QSize(side, side)));
    return PlainRepair::WithoutCircles(picture, discs, side, 3);
}

const RepairRow Rows[] = {
    {11, "BtnPiFu", "BtnQuBan", "SliderQuBanPenSize", "TextQuBanPenSizeVal", 40, "ids_qudouquban", "888040203",
     QPointF(0.5, 0.7), QPointF(0.2, 0.8), SpotGone},
    {13, "BtnEyes", "BtnEyesHeiYan", "SliderEyesHeiYanPenSize", "TextEyesHeiYanPenSizeVal", 50, "ids_xiaochuhyq",
     "888040302", QPointF(0.3, 0.5), QPointF(0.25, 0.52), CircleGone},
    {15, "BtnEyes", "BtnEyesHongYan", "SliderEyesHongYanPenSize", "TextEyesHongYanPenSizeVal", 60, "ids_xiaochuhy",
     "888040304", QPointF(0.3, 0.35), QPointF(0.7, 0.35), RedGone},
};

class RepairFrame : public FrameTest {
  protected:
    static CHistoryManager& History() { return CHistoryManager::Instance(); }
    static Bitmap FacePixels(QSize size = Size) { return PlainRepair::Face(size.width(), size.height()); }
    QString Face(QSize size = Size) { return WritePicture(QStringLiteral("face.png"), FacePixels(size)); }
    Bitmap OnShow() { return Mid().Canvas()->GetShowBitmap(); }
    const ViewGeometry& Geometry() { return static_cast<CViewWnd*>(Mid().Canvas())->Geometry(); }
    QPoint At(QPointF part) {
        const QSize size = Geometry().Image();
        return Geometry().ToClient(QPointF(part.x() * size.width(), part.y() * size.height())).toPoint();
    }
    void Enter(const char* tab, const char* button) {
        Driver::Click(QStringLiteral("btnMeiRong"));
        Driver::Click(QLatin1String(tab));
        Driver::Click(QLatin1String(button));
    }
    int StepCount() const { return History().m_count; }
    CPenWnd& Canvas() { return *static_cast<CPenWnd*>(Mid().Canvas()); }
};

class RepairWindows : public RepairFrame, public testing::WithParamInterface<RepairRow> {
  protected:
    void Enter() {
        RepairFrame::Enter(GetParam().tab, GetParam().button);
        ASSERT_EQ(Mid().Tool(), GetParam().number);
    }
    // A stroke of three places that begins there, and what comes of it.
    Bitmap Work(QPointF part, const Bitmap& picture) {
        const QPoint at = At(part);
        const std::vector<QPoint> places{at, at + QPoint(6, 1), at + QPoint(14, 3)};
        const ViewGeometry geometry = Geometry();
        Strokes::Draw(*Mid().Canvas(), places);
        return GetParam().repaired(picture, places, geometry);
    }
};

}  // namespace

TEST_P(RepairWindows, ASessionOfRepairsMovesAndVisitsIsSavedAsTheModelSays) {
    const Bitmap face = FacePixels();
    Show(Face());
    Enter();
    EXPECT_EQ(Canvas().PenSize(), GetParam().startPen) << "the panel's slider holds on entry";
    Driver::DragSlider(QLatin1String(GetParam().pen), Pen / 2);
    EXPECT_EQ(Canvas().PenSize(), Pen);
    EXPECT_EQ(qobject_cast<QLabel*>(Driver::Find(QLatin1String(GetParam().penValue)))->text(), u"35");
    EXPECT_TRUE(OnShow() == face) << "no control changes the picture";

    const Bitmap first = Work(GetParam().first, face);
    EXPECT_FALSE(first == face);
    EXPECT_TRUE(OnShow() == first);
    EXPECT_EQ(StepCount(), 2) << "one stroke, one step";
    EXPECT_EQ(History().GetStepNames()[1], LanguageText(QLatin1String(GetParam().stepName)));
    const Bitmap second = Work(GetParam().second, first);
    EXPECT_TRUE(OnShow() == second);
    EXPECT_EQ(StepCount(), 3);

    // There and back.
    Driver::Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(OnShow() == first);
    Driver::Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(OnShow() == face);
    Driver::Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(OnShow() == first);
    Mid().Canvas()->OnHistoryJump(2);
    EXPECT_TRUE(OnShow() == second);

    // Compare shows the opened picture and changes nothing; any control leaves it.
    Driver::Press(QStringLiteral("BtnCompare"));
    EXPECT_EQ(Mid().CompareMode(), 1);
    Driver::Release(QStringLiteral("BtnCompare"));
    EXPECT_EQ(Mid().CompareMode(), 0);
    Mid().SetCompareMode(2);
    Driver::DragSlider(QLatin1String(GetParam().pen), 30);
    EXPECT_EQ(Mid().CompareMode(), 0);
    Driver::DragSlider(QLatin1String(GetParam().pen), Pen / 2);
    EXPECT_TRUE(OnShow() == second);

    // Revert is a step of its own, and repairs go on from it.
    Mid().Canvas()->OnRevert();
    EXPECT_TRUE(OnShow() == face);
    EXPECT_EQ(StepCount(), 4);
    const Bitmap again = Work(GetParam().first, face);
    EXPECT_TRUE(OnShow() == again);
    EXPECT_EQ(StepCount(), 5);

    // Another tool gets the result, and coming back is no work; the click of the changed picture is counted once.
    const int clicks = Clicks(GetParam().click);
    Driver::Click(QStringLiteral("btnJichubianji"));
    EXPECT_EQ(Clicks(GetParam().click), clicks + 1);
    EXPECT_TRUE(OnShow() == again);
    Enter();
    EXPECT_EQ(Canvas().PenSize(), Pen) << "the panel's values hold";
    EXPECT_TRUE(OnShow() == again);
    EXPECT_EQ(StepCount(), 5);
    EXPECT_TRUE(Saved(QStringLiteral("repaired")) == again);
}

TEST_P(RepairWindows, OutsideThePictureAndWithAPenOfZeroAStrokeIsIgnored) {
    Show(Face());
    Enter();
    Driver::DragSlider(QLatin1String(GetParam().pen), Pen / 2);
    const QRect place = Geometry().ScreenRect();
    Strokes::Draw(*Mid().Canvas(), {place.topLeft() - QPoint(3, -100)});
    EXPECT_EQ(StepCount(), 1);
    Driver::DragSlider(QLatin1String(GetParam().pen), 0);
    EXPECT_EQ(Canvas().PenSize(), 0);
    Strokes::Draw(*Mid().Canvas(), {At(GetParam().first)});
    EXPECT_EQ(StepCount(), 1);
    EXPECT_TRUE(OnShow() == FacePixels());
}

TEST_P(RepairWindows, TheCursorIsAsWideAsThePenAndACrossWhereThatCannotBeSeen) {
    Show(Face());
    Enter();
    const auto cursor = [&](int value) {
        Driver::DragSlider(QLatin1String(GetParam().pen), value);
        QMouseEvent move(QEvent::MouseMove, QPointF(At({0.5, 0.5})),
                         Mid().Canvas()->mapToGlobal(QPointF(At({0.5, 0.5}))), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(Mid().Canvas(), &move);
        return Mid().Canvas()->cursor();
    };
    for (const int value : {2, 20, 100}) {
        const QCursor disc = cursor(value);
        ASSERT_EQ(disc.shape(), Qt::BitmapCursor) << value;
        EXPECT_EQ(disc.pixmap().width(), 2 * value);
        EXPECT_EQ(disc.hotSpot(), QPoint(value, value));
        const QImage image = disc.pixmap().toImage();
        if (value < 20) continue;
        EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
        EXPECT_LT(image.pixelColor(value, value).alpha(), 100) << "what lies under the pen is seen";
        EXPECT_GT(image.pixelColor(value, 1).lightness(), 120) << "the edge is white";
    }
    for (const int value : {0, 1}) EXPECT_EQ(cursor(value).shape(), Qt::CrossCursor) << value;
}

TEST_P(RepairWindows, TheBracketKeysMoveThePensSlider) {
    Show(Face());
    Enter();
    Mid().Canvas()->setFocus();
    auto* pen = qobject_cast<CSliderCtrl*>(Driver::Find(QLatin1String(GetParam().pen)));
    const int before = pen->value();
    Driver::Key(Qt::Key_BracketRight);
    EXPECT_GT(pen->value(), before);
    EXPECT_EQ(Canvas().PenSize(), 2 * pen->value());
}

INSTANTIATE_TEST_SUITE_P(Repairs, RepairWindows, testing::ValuesIn(Rows));

namespace {

class SpotWindow : public RepairFrame {
  protected:
    void Enter(QSize size = Size) {
        Show(Face(size));
        RepairFrame::Enter("BtnPiFu", "BtnQuBan");
    }
    // Runs `act` on the main thread while the next repair runs, and says whether it did.
    void During(const std::function<void()>& act) {
        QTimer::singleShot(0, this->Mid().Canvas(), [=, this] {
            m_inTask = IsTaskRunning();
            act();
        });
    }
    // A disc so large that it is repaired as a task.
    void EnterWithALargePen() {
        Enter({1500, 1500});
        Driver::DragSlider(QStringLiteral("SliderQuBanPenSize"), 40);
    }
    bool m_inTask = false;
};

}  // namespace

TEST_F(SpotWindow, ARingShowsForAMomentWhereASpotWasRemoved) {
    Enter();
    auto* canvas = static_cast<CQuDouQBShowWnd*>(Mid().Canvas());
    EXPECT_FALSE(canvas->ShowsRing());
    Strokes::Draw(*canvas, {At({0.5, 0.7})});
    ASSERT_TRUE(canvas->ShowsRing());
    const QPoint onRing = At({0.5, 0.7}) + QPoint(21, 0);
    const QColor with = canvas->grab().toImage().pixelColor(onRing);
    Driver::WaitFor(QStringLiteral("the ring to go"), [=] { return !canvas->ShowsRing(); });
    const QColor without = canvas->grab().toImage().pixelColor(onRing);
    EXPECT_GT(without.red(), 150) << "skin";
    EXPECT_LT(with.red(), 120) << "the ring";
}

TEST_F(SpotWindow, ADoubleClickIsTwoClicks) {
    Enter();
    QTest::mouseClick(Mid().Canvas(), Qt::LeftButton, {}, At({0.5, 0.7}));
    // As the toolkit sends the second press to a widget.
    QMouseEvent press(QEvent::MouseButtonDblClick, QPointF(At({0.5, 0.7})),
                      Mid().Canvas()->mapToGlobal(QPointF(At({0.5, 0.7}))), Qt::LeftButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(Mid().Canvas(), &press);
    EXPECT_EQ(StepCount(), 3);
}

TEST_F(SpotWindow, ClicksDuringARepairAreDoneAfterItInTheirOrderAndOnce) {
    EnterWithALargePen();
    const ViewGeometry geometry = Geometry();
    const QPoint places[] = {At({0.5, 0.7}), At({0.55, 0.7}), At({0.2, 0.8})};
    During([&] {
        QTest::mouseClick(Mid().Canvas(), Qt::LeftButton, {}, places[1]);
        QTest::mouseClick(Mid().Canvas(), Qt::LeftButton, {}, places[2]);
    });
    QTest::mouseClick(Mid().Canvas(), Qt::LeftButton, {}, places[0]);
    EXPECT_TRUE(m_inTask);
    EXPECT_EQ(StepCount(), 4);
    Bitmap healed = FacePixels({1500, 1500});
    for (const QPoint& at : places) healed = PlainRepair::WithoutSpot(healed, PlainRepair::Place(at, 80, geometry));
    EXPECT_TRUE(OnShow() == healed);
    QCoreApplication::processEvents();
    EXPECT_EQ(StepCount(), 4) << "nothing comes later";
    EXPECT_FALSE(Mid().IsBusy());
}

TEST_F(SpotWindow, EscStopsALongRepairAndWhatWasClickedSince) {
    EnterWithALargePen();
    During([&] {
        QTest::mouseClick(Mid().Canvas(), Qt::LeftButton, {}, At({0.2, 0.8}));
        QTest::keyClick(Mid().Canvas(), Qt::Key_Escape);
    });
    QTest::mouseClick(Mid().Canvas(), Qt::LeftButton, {}, At({0.5, 0.7}));
    EXPECT_TRUE(m_inTask);
    EXPECT_EQ(StepCount(), 1);
    EXPECT_TRUE(OnShow() == FacePixels({1500, 1500}));
    EXPECT_FALSE(Mid().Canvas()->IsImageChanged());
    // The next click works.
    const QRect place = PlainRepair::Place(At({0.5, 0.7}), 80, Geometry());
    QTest::mouseClick(Mid().Canvas(), Qt::LeftButton, {}, At({0.5, 0.7}));
    EXPECT_TRUE(OnShow() == PlainRepair::WithoutSpot(FacePixels({1500, 1500}), place));
    EXPECT_EQ(StepCount(), 2);
}

TEST_F(SpotWindow, ALongRepairHasTheProgressWindow) {
    EnterWithALargePen();
    bool there = false;
    During([&] {
        const auto* window = Frame().findChild<CDlgProgressCtrl*>();
        there = window != nullptr;
    });
    QTest::mouseClick(Mid().Canvas(), Qt::LeftButton, {}, At({0.5, 0.7}));
    EXPECT_TRUE(m_inTask);
    EXPECT_TRUE(there);
}

namespace {

class CircleWindow : public RepairFrame {
  protected:
    void Enter() {
        Show(Face());
        RepairFrame::Enter("BtnEyes", "BtnEyesHeiYan");
        at = At({0.3, 0.5});
    }
    void Press() { QTest::mousePress(Mid().Canvas(), Qt::LeftButton, {}, at); }
    void Release(QPoint where) { QTest::mouseRelease(Mid().Canvas(), Qt::LeftButton, {}, where); }
    void Move(QPoint where) {
        QMouseEvent move(QEvent::MouseMove, QPointF(where), Mid().Canvas()->mapToGlobal(QPointF(where)), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Mid().Canvas(), &move);
    }
    CXiaoChuHYQShowWnd& Circles() { return *static_cast<CXiaoChuHYQShowWnd*>(Mid().Canvas()); }
    QColor Shown(QPoint where) { return Mid().Canvas()->grab().toImage().pixelColor(where); }

    QPoint at;
};

}  // namespace

TEST_F(CircleWindow, TheMarkIsSeenUntilTheRelease) {
    Enter();
    const QPoint far = at + QPoint(60, 0);
    const QColor before = Shown(at), beforeFar = Shown(far);
    Press();
    Move(at + QPoint(30, 0));
    Move(far);
    for (const auto& [where, was] : {std::pair(at, before), std::pair(far, beforeFar)}) {
        const QColor marked = Shown(where);
        // 0x66 of 255 of the marking colour over what is there.
        EXPECT_NEAR(marked.red(), was.red() * 0.6 + 255 * 0.4, 3);
        EXPECT_NEAR(marked.green(), was.green() * 0.6 + 99 * 0.4, 3);
        EXPECT_NEAR(marked.blue(), was.blue() * 0.6 + 99 * 0.4, 3);
    }
    EXPECT_TRUE(OnShow() == FacePixels()) << "the mark is not in the picture";
    EXPECT_TRUE(Mid().IsBusy());
    Release(far);
    EXPECT_NEAR(Shown(far).green(), beforeFar.green(), 20);
    EXPECT_FALSE(OnShow() == FacePixels());
    EXPECT_EQ(StepCount(), 2);
}

TEST_F(CircleWindow, EscDropsTheMark) {
    Enter();
    const QColor before = Shown(at);
    Press();
    QTest::keyClick(Mid().Canvas(), Qt::Key_Escape);
    EXPECT_EQ(Shown(at), before);
    Release(at);
    EXPECT_TRUE(OnShow() == FacePixels());
    EXPECT_EQ(StepCount(), 1);
}

TEST_F(CircleWindow, AMarkIsRepairedWhenMouseOrWindowAreLostAndWhenItEndsOutside) {
    Enter();
    const std::vector<std::function<void()>> ends{
        [&] {
            QEvent event(QEvent::WindowDeactivate);
            QCoreApplication::sendEvent(Mid().Canvas(), &event);
        },
        [&] {
            QEvent event(QEvent::UngrabMouse);
            QCoreApplication::sendEvent(Mid().Canvas(), &event);
        },
        [&] {
            Release({-40, -40});
        },
        [&] {
            Mid().Canvas()->hide();
            Mid().Canvas()->show();
        },
    };
    for (std::size_t i = 0; i < ends.size(); ++i) {
        Press();
        ends[i]();
        EXPECT_FALSE(Mid().IsBusy());
        EXPECT_EQ(StepCount(), static_cast<int>(i) + 2);
        EXPECT_TRUE(Circles().Logic().Mark().empty());
    }
    EXPECT_FALSE(OnShow() == FacePixels());
}

TEST_F(CircleWindow, TheStrengthIsATenthOfTheSlider) {
    Enter();
    EXPECT_EQ(Circles().Logic().Strength(), 3);
    Driver::DragSlider(QStringLiteral("SliderEyesHeiYanLiDu"), 79);
    EXPECT_EQ(Circles().Logic().Strength(), 7);
    EXPECT_EQ(qobject_cast<QLabel*>(Driver::Find(QStringLiteral("TextEyesHeiYanLiDuVal")))->text(), u"79%");
    Driver::DragSlider(QStringLiteral("SliderEyesHeiYanLiDu"), 0);
    Strokes::Draw(*Mid().Canvas(), {at});
    EXPECT_TRUE(OnShow() == FacePixels()) << "strength 0 changes no pixel";
}

TEST_F(CircleWindow, TheEraseButtonAndAltPaintTheEntryBack) {
    Enter();
    Strokes::Draw(*Mid().Canvas(), {at});
    PlainBrush plain;
    plain.Take(FacePixels(), FacePixels());
    plain.working = OnShow();
    const auto place = PlainRepair::Place(at, 50, Geometry());
    const int radius = BrushTip::RadiusOf(50, Geometry().Zoom());
    const auto erased = [&] {
        plain.Stamp(PC_Dsp::Circle_Gradient_Alpha, radius, place.x(), place.y(), true, 0.0, false);
        return plain.working;
    };
    EXPECT_TRUE(Driver::IsThere(QStringLiteral("TextEyesHeiYanPenSize")));
    Driver::Click(QStringLiteral("BtnHeiYanErase"));
    EXPECT_FALSE(Driver::IsThere(QStringLiteral("TextEyesHeiYanPenSize")));
    EXPECT_TRUE(Driver::IsThere(QStringLiteral("TextEyesHeiYanEraseSize")));
    Strokes::Draw(*Mid().Canvas(), {at});
    EXPECT_TRUE(OnShow() == erased());
    Driver::Click(QStringLiteral("BtnHeiYanErase"));
    Strokes::Draw(*Mid().Canvas(), {at}, Qt::AltModifier);
    EXPECT_TRUE(OnShow() == erased());
    EXPECT_EQ(StepCount(), 4);
    Driver::Click(QStringLiteral("BtnHeiYanErase"));
    RepairFrame::Enter("BtnEyes", "BtnEyesHongYan");
    RepairFrame::Enter("BtnEyes", "BtnEyesHeiYan");
    EXPECT_FALSE(Canvas().IsErasing()) << "entering sets marking";
}
