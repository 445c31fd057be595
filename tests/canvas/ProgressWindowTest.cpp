// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <QtCore/QElapsedTimer>
#include <QtTest/QTest>
#include <QtWidgets/QPushButton>
#include <thread>

#include "CanvasSupport.h"
#include "CDlgProgressCtrl.h"
#include "CShowProgress.h"
#include "Language.h"
#include "Messages.h"
#include "RunTask.h"
#include "SystemMouse.h"

namespace {

void Rest(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

// A program's window with a button that must not be reached during a task.
struct Program {
    Program() {
        window.resize(500, 300);
        button.setGeometry(20, 20, 100, 30);
        QObject::connect(&button, &QPushButton::clicked, &button, [this] { ++clicks; });
        window.show();
        if (!QTest::qWaitForWindowExposed(&window)) qFatal("the window did not come up");
    }
    QWidget window;
    QPushButton button{&window};
    int clicks = 0;
};

// Where the bar runs and where it says that Esc cancels.
constexpr QRect BarPlace(44, 56, 232, 3), EscPlace(44, 64, 240, 24);

QImage Drawn(QWidget& dialog) {
    QImage image(dialog.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    dialog.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

// Pixels in a place of the window that stand out from its dark ground.
int LightPixels(QWidget& dialog, QRect place) {
    const QImage image = Drawn(dialog);
    int light = 0;
    for (int y = place.top(); y <= place.bottom(); ++y)
        for (int x = place.left(); x <= place.right(); ++x) light += image.pixelColor(x, y).lightness() > 75;
    return light;
}

TEST(ProgressWindow, AQuickTaskShowsNothing) {
    Program program;
    CDlgProgressCtrl dialog(&program.window);
    CShowProgress progress(dialog);
    bool shown = true;
    EXPECT_TRUE(RunTask(progress, [&](CObjProgress&) { shown = SendToMain([&] { return dialog.isVisible(); }); }));
    EXPECT_FALSE(shown);
    QTest::qWait(CDlgProgressCtrl::VisibleAfter + 60);
    EXPECT_FALSE(dialog.isVisible()) << "it must not come up when the task is over";
}

TEST(ProgressWindow, ATaskThatLastsIsShownOverTheProgramAndHiddenAfterwards) {
    Program program;
    CDlgProgressCtrl dialog(&program.window);
    CShowProgress progress(dialog);
    QRect place;
    RunTask(progress, [&](CObjProgress&) {
        for (int i = 0; i < 200 && place.isNull(); ++i) {
            Rest(10);
            place = SendToMain([&] { return dialog.isVisible() ? dialog.geometry() : QRect(); });
        }
    });
    EXPECT_EQ(place.size(), QSize(300, 100));
    EXPECT_LE((place.center() - program.window.frameGeometry().center()).manhattanLength(), 4);
    EXPECT_FALSE(dialog.isVisible());
}

TEST(ProgressWindow, TheSpinnerWrapsAfterElevenFrames) {
    CDlgProgressCtrl dialog(nullptr);
    dialog.Reset();
    std::vector<int> offsets{dialog.Spinner()};
    QElapsedTimer clock;
    clock.start();
    while (offsets.size() < 13 && clock.elapsed() < 20000) {
        QTest::qWait(5);
        if (dialog.Spinner() != offsets.back()) offsets.push_back(dialog.Spinner());
    }
    dialog.Hide();
    EXPECT_EQ(offsets, (std::vector<int>{0, 27, 54, 81, 108, 135, 162, 189, 216, 243, 270, 0, 27}));
    EXPECT_GE(clock.elapsed(), 11 * CDlgProgressCtrl::TickTime);
}

TEST(ProgressWindow, ShowsTextAndWholePercents) {
    SetLanguage(QStringLiteral("1033"));
    CDlgProgressCtrl dialog(nullptr);
    CShowProgress progress(dialog);
    QString text;
    int first = 0, percent = 0;
    RunTask(progress, [&](CObjProgress& sink) {
        first = SendToMain([&] { return dialog.Percent(); });
        sink.SetValue(41.9f);
        percent = SendToMain([&] { return dialog.Percent(); });
        text = SendToMain([&] { return dialog.Text(); });
    });
    EXPECT_EQ(first, ProgressWindow::NoPercent);
    EXPECT_EQ(percent, 41);
    EXPECT_EQ(text, LanguageText(QStringLiteral("ids_progress_1")));
    EXPECT_FALSE(text.isEmpty());
}

TEST(ProgressWindow, EscAsksTheWorkToStopAndSaysSo) {
    Program program;
    CDlgProgressCtrl dialog(&program.window);
    CShowProgress progress(dialog);
    QString text;
    bool stopped = false;
    const bool done = RunTask(progress, [&](CObjProgress& sink) {
        sink.SetValue(1.0f);
        EXPECT_TRUE(sink.CanContinue());
        // To whatever window has the keyboard.
        SendToMain([&] { QTest::keyClick(&program.window, Qt::Key_Escape); });
        stopped = !sink.CanContinue();
        sink.SetStepText(L"ids_progress_1");
        text = SendToMain([&] { return dialog.Text(); });
    });
    EXPECT_FALSE(done);
    EXPECT_TRUE(stopped);
    EXPECT_EQ(text, u"esc");
}

TEST(ProgressWindow, EscInWorkThatTellsNoPercentageStopsNothingAndSaysNothing) {
    Program program;
    CDlgProgressCtrl dialog(&program.window);
    CShowProgress progress(dialog);
    QString text;
    bool takesEsc = true;
    const bool done = RunTask(progress, [&](CObjProgress& sink) {
        SendToMain([&] { QTest::keyClick(&program.window, Qt::Key_Escape); });
        EXPECT_TRUE(sink.CanContinue());
        text = SendToMain([&] { return dialog.Text(); });
        takesEsc = SendToMain([&] { return dialog.TakesEsc(); });
    });
    EXPECT_TRUE(done);
    EXPECT_NE(text, u"esc");
    EXPECT_FALSE(takesEsc);
}

TEST(ProgressWindow, AnEarlyEscIsKeptUntilTheFirstPercentage) {
    Program program;
    CDlgProgressCtrl dialog(&program.window);
    CShowProgress progress(dialog);
    QString before, after;
    const bool done = RunTask(progress, [&](CObjProgress& sink) {
        SendToMain([&] { QTest::keyClick(&program.window, Qt::Key_Escape); });
        EXPECT_TRUE(sink.CanContinue());
        before = SendToMain([&] { return dialog.Text(); });
        sink.SetValue(1.0f);
        after = SendToMain([&] { return dialog.Text(); });
        EXPECT_FALSE(sink.CanContinue());
    });
    EXPECT_FALSE(done);
    EXPECT_NE(before, u"esc");
    EXPECT_EQ(after, u"esc");
    EXPECT_TRUE(RunTask(progress, [](CObjProgress& sink) { sink.SetValue(1.0f); }))
        << "the next task begins without it";
}

TEST(ProgressWindow, BarAndTheWordOfEscComeWithTheFirstPercentage) {
    SetLanguage(QStringLiteral("1033"));
    CDlgProgressCtrl dialog(nullptr);
    dialog.Reset();
    EXPECT_FALSE(dialog.TakesEsc());
    EXPECT_EQ(LightPixels(dialog, BarPlace), 0);
    EXPECT_EQ(LightPixels(dialog, EscPlace), 0);
    dialog.SetPercent(1);
    EXPECT_TRUE(dialog.TakesEsc());
    EXPECT_GT(LightPixels(dialog, BarPlace), 0);
    EXPECT_GT(LightPixels(dialog, EscPlace), 0);
    dialog.Reset();
    EXPECT_EQ(LightPixels(dialog, BarPlace), 0) << "the next task begins without";
    EXPECT_EQ(LightPixels(dialog, EscPlace), 0);
}

TEST(ProgressWindow, TheWordOfEscIsInBothLanguages) {
    for (const char* language : {"1033", "2052"}) {
        SetLanguage(QLatin1String(language));
        EXPECT_TRUE(LanguageText(QStringLiteral("ids_progress_esc")).contains(QStringLiteral("Esc"))) << language;
    }
    SetLanguage(QStringLiteral("1033"));
}

TEST(ProgressWindow, InputDuringATaskReachesNothingAndIsNotKeptForLater) {
    Program program;
    CDlgProgressCtrl dialog(&program.window);
    CShowProgress progress(dialog);
    RunTask(progress, [&](CObjProgress&) {
        SendToMain([&] {
            QTest::mouseClick(&program.button, Qt::LeftButton);
            program.button.setFocus();
            QTest::keyClick(&program.button, Qt::Key_Space);
            program.window.close();
        });
    });
    QCoreApplication::processEvents();
    EXPECT_EQ(program.clicks, 0);
    EXPECT_TRUE(program.window.isVisible());
    QTest::mouseClick(&program.button, Qt::LeftButton);
    EXPECT_EQ(program.clicks, 1) << "after the task the program works as before";
}

// A canvas that writes down what the mouse did during a task.
class KeepingTool : public PlainTool {
  public:
    using PlainTool::PlainTool;
    void KeepInput(const QMouseEvent& event) override { kept.push_back(event.type()); }
    std::vector<QEvent::Type> kept;
};

// A canvas beside the program's button.
struct CanvasInProgram {
    CanvasInProgram() {
        tool.Place(QRect(200, 20, 250, 250));
        tool.show();
    }
    std::ptrdiff_t Times(QEvent::Type type) const { return std::count(tool.kept.begin(), tool.kept.end(), type); }
    // Presses and releases the system's mouse so often at those places of the canvas while a task runs.
    void UseMouseDuringATask(QPoint press, QPoint release, int times) {
        SystemMouse mouse;
        mouse.Move(tool.mapToGlobal(press));
        mouse.Sync();
        QTest::qWait(50);
        CDlgProgressCtrl dialog(&program.window);
        CShowProgress progress(dialog);
        RunTask(progress, [&](CObjProgress&) {
            for (int n = 0; n < times; ++n) {
                mouse.Press();
                if (release != press) mouse.Move(tool.mapToGlobal(release));
                mouse.Release();
            }
            mouse.Sync();
            const auto released = [&] { return Times(QEvent::MouseButtonRelease); };
            for (int i = 0; i < 500 && SendToMain(released) < times; ++i) Rest(10);
        });
    }

    RecordingHost host;
    Program program;
    KeepingTool tool{host, &program.window};
};

TEST(ProgressWindow, OfWhatTheMouseDoesOverItACanvasIsToldOnce) {
    CanvasInProgram setting;
    CDlgProgressCtrl dialog(&setting.program.window);
    CShowProgress progress(dialog);
    RunTask(progress, [&](CObjProgress&) {
        SendToMain([&] {
            QTest::mouseClick(&setting.tool, Qt::LeftButton, {}, {30, 30});
            QTest::mouseClick(&setting.program.button, Qt::LeftButton);
        });
    });
    EXPECT_EQ(setting.tool.kept, (std::vector{QEvent::MouseButtonPress, QEvent::MouseButtonRelease}));
    EXPECT_EQ(setting.program.clicks, 0);
}

// The toolkit hears of the second press twice: as a press of the window, and as a double click of the widget.
TEST(ProgressWindow, ADoubleClickOfTheSystemsMouseIsTwoClicksToACanvas) {
    CanvasInProgram setting;
    setting.UseMouseDuringATask({120, 100}, {120, 100}, 2);
    EXPECT_EQ(setting.Times(QEvent::MouseButtonPress) + setting.Times(QEvent::MouseButtonDblClick), 2);
    EXPECT_EQ(setting.Times(QEvent::MouseButtonRelease), 2);
}

TEST(ProgressWindow, AReleaseElsewhereBelongsToItsPress) {
    CanvasInProgram setting;
    setting.UseMouseDuringATask({120, 100}, {-150, 20}, 1);
    EXPECT_EQ(setting.Times(QEvent::MouseButtonPress), 1);
    EXPECT_EQ(setting.Times(QEvent::MouseButtonRelease), 1);
    EXPECT_EQ(setting.program.clicks, 0);
}

TEST(ProgressWindow, ClosingItAsksToStopAndWaitsForTheWorker) {
    CDlgProgressCtrl dialog(nullptr);
    CShowProgress progress(dialog);
    bool over = false;
    const bool done = RunTask(progress, [&](CObjProgress& sink) {
        sink.SetValue(1.0f);
        SendToMain([&] { dialog.close(); });
        EXPECT_FALSE(sink.CanContinue());
        Rest(30);
        over = true;
    });
    EXPECT_FALSE(done);
    EXPECT_TRUE(over);
}

TEST(ProgressWindow, IsDarkAndRound) {
    CDlgProgressCtrl dialog(nullptr);
    dialog.SetPercent(50);
    dialog.SetText(QStringLiteral("x"));
    const QImage image = Drawn(dialog);
    EXPECT_LT(qAlpha(image.pixel(0, 0)), 40);
    const QColor ground = image.pixelColor(280, 85);
    EXPECT_GT(ground.alpha(), 180);
    EXPECT_LT(ground.lightness(), 90);
    bool white = false;
    for (int y = 22; y < 38; ++y)
        for (int x = 44; x < 68; ++x) white |= image.pixelColor(x, y).lightness() > 200;
    EXPECT_TRUE(white) << "the percentage stands at (44, 22)";
}

}  // namespace
