// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <atomic>
#include <new>
#include <thread>
#include <vector>

#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>

#include "CShowProgress.h"
#include "Messages.h"
#include "RunTask.h"

namespace {

// A window that tells what it was told, and whose modal loop comes up late, ends early, or never runs.
class RecordingWindow : public HeadlessProgressWindow {
  public:
    enum class Mode { Normal, LateReady, ClosedEarly, NeverReady };
    explicit RecordingWindow(Mode mode = Mode::Normal) : m_mode(mode) {}

    void SetPercent(int percent) override {
        AssertMain();
        percents.push_back(percent);
        HeadlessProgressWindow::SetPercent(percent);
    }
    void SetText(const QString& text) override {
        AssertMain();
        texts.push_back(text);
        HeadlessProgressWindow::SetText(text);
    }
    void RunModal() override {
        if (m_mode == Mode::NeverReady) return;
        if (m_mode == Mode::LateReady) {
            QEventLoop events;
            QTimer::singleShot(30, &events, &QEventLoop::quit);
            events.exec();
            ready = true;
        }
        if (m_mode == Mode::ClosedEarly) QTimer::singleShot(10, [this] { HeadlessProgressWindow::CloseModal(); });
        HeadlessProgressWindow::RunModal();
        if (m_mode == Mode::ClosedEarly) closedEarly = true;
    }
    void CloseModal() override {
        AssertMain();
        ++closes;
        if (onClose) onClose();
        HeadlessProgressWindow::CloseModal();
    }

    std::vector<int> percents;
    std::vector<QString> texts;
    int closes = 0;
    std::atomic<bool> ready{false};
    std::atomic<bool> closedEarly{false};
    std::function<void()> onClose;

  private:
    static void AssertMain() { EXPECT_TRUE(OnMainThread()); }
    const Mode m_mode;
};

void SleepMs(int ms) {
    std::this_thread::sleep_for(std::chrono::milliseconds(ms));
}

TEST(ShowProgress, TellsTheWindowOnlyWhenTheWholePercentChanges) {
    RecordingWindow window;
    CShowProgress progress(window);
    for (const float value : {0.0f, 0.9f, 1.0f, 1.5f, 1.99f, 2.0f, 50.2f, 50.9f, 100.0f}) progress.SetValue(value);
    EXPECT_EQ(window.percents, (std::vector<int>{1, 2, 50, 100}));
    EXPECT_EQ(progress.GetValue(), 100.0f);
}

TEST(ShowProgress, KeepsTheValueAlsoWhenItTellsNothing) {
    RecordingWindow window;
    CShowProgress progress(window);
    progress.SetValue(0.75f);
    EXPECT_EQ(progress.GetValue(), 0.75f);
    EXPECT_TRUE(window.percents.empty());
}

TEST(ShowProgress, StepTextIsLookedUpByItsKey) {
    RecordingWindow window;
    CShowProgress progress(window);
    progress.SetStepText(L"ids_progress_1");
    progress.SetStepText(L"no such key");
    progress.SetStepText(nullptr);
    EXPECT_EQ(window.texts, (std::vector<QString>{QStringLiteral("ids_progress_1!"), QString(), QString()}));
}

TEST(ShowProgress, CancelAsksTheWorkToStopAndSaysEsc) {
    RecordingWindow window;
    CShowProgress progress(window);
    EXPECT_EQ(progress.CanContinue(), 1);
    progress.Cancel();
    EXPECT_EQ(progress.CanContinue(), 0);
    EXPECT_EQ(window.Text(), QStringLiteral("esc"));
    EXPECT_TRUE(window.IsCancelled());
}

TEST(ShowProgress, FinishHidesTheWindowAndIsNoCancel) {
    RecordingWindow window;
    CShowProgress progress(window);
    progress.Reset();
    EXPECT_TRUE(window.IsShown());
    progress.Finish();
    EXPECT_FALSE(window.IsShown());
    EXPECT_EQ(progress.CanContinue(), 0);
    EXPECT_FALSE(window.IsCancelled());
}

TEST(ShowProgress, ResetIsAsForANewTask) {
    RecordingWindow window;
    CShowProgress progress(window);
    progress.SetValue(40.0f);
    progress.SetStepText(L"ids_progress_1");
    progress.Cancel();
    progress.Reset();
    EXPECT_EQ(progress.CanContinue(), 1);
    EXPECT_FALSE(window.IsCancelled());
    EXPECT_EQ(progress.GetValue(), 0.0f);
    EXPECT_EQ(window.Percent(), ProgressWindow::NoPercent);
    EXPECT_TRUE(window.Text().isEmpty());
    EXPECT_TRUE(window.IsShown());
}

TEST(ShowProgress, WhatAWorkerTellsAfterTheSinkIsGoneIsDropped) {
    RecordingWindow window;
    {
        CShowProgress progress(window);
        std::thread([&] { progress.SetValue(5.0f); }).join();
    }
    QCoreApplication::processEvents();
    EXPECT_TRUE(window.percents.empty());
}

TEST(RunTask, WorksOnAnotherThreadWhileTheMainThreadRunsTheModalLoop) {
    RecordingWindow window;
    CShowProgress progress(window);
    bool onMain = true, running = false;
    int mainThreadCalls = 0;
    EXPECT_TRUE(RunTask(progress, [&](CObjProgress& sink) {
        onMain = OnMainThread();
        running = IsTaskRunning();
        SendToMain([&] { ++mainThreadCalls; });
        sink.SetValue(37.0f);
    }));
    EXPECT_FALSE(onMain);
    EXPECT_TRUE(running);
    EXPECT_FALSE(IsTaskRunning());
    EXPECT_EQ(mainThreadCalls, 1);
    EXPECT_EQ(window.percents, std::vector<int>{37});
    EXPECT_EQ(window.texts, std::vector<QString>{QStringLiteral("ids_progress_1!")});
    EXPECT_FALSE(window.IsReady());
    EXPECT_FALSE(window.IsShown());
}

std::atomic<bool> g_workerEnded{false};
struct TellsTheEndOfItsThread {
    ~TellsTheEndOfItsThread() { g_workerEnded = true; }
};

TEST(RunTask, TheWindowIsClosedOnlyAfterTheWorkerIsJoined) {
    RecordingWindow window;
    CShowProgress progress(window);
    bool endedBeforeClose = false;
    window.onClose = [&] { endedBeforeClose = g_workerEnded; };
    RunTask(progress, [](CObjProgress&) {
        static thread_local TellsTheEndOfItsThread end;
        static_cast<void>(end);
    });
    EXPECT_EQ(window.closes, 1);
    EXPECT_TRUE(endedBeforeClose);
}

TEST(RunTask, AWorkThatWouldEndBeforeTheWindowIsUpWaitsForIt) {
    RecordingWindow window(RecordingWindow::Mode::LateReady);
    CShowProgress progress(window);
    bool readyAtWork = false;
    EXPECT_TRUE(RunTask(progress, [&](CObjProgress&) { readyAtWork = window.ready && window.IsReady(); }));
    EXPECT_TRUE(readyAtWork);
    EXPECT_EQ(window.closes, 1);
}

TEST(RunTask, AWindowClosedEarlyLeavesTheWorkToEndAndIsNotClosedAgain) {
    RecordingWindow window(RecordingWindow::Mode::ClosedEarly);
    CShowProgress progress(window);
    bool done = false;
    int mainThreadCalls = 0;
    EXPECT_TRUE(RunTask(progress, [&](CObjProgress& sink) {
        while (!window.closedEarly) SleepMs(1);
        // The main thread must still take calls, or this would wait for ever.
        for (int i = 0; i < 3; ++i) SendToMain([&] { ++mainThreadCalls; });
        sink.SetValue(80.0f);
        done = true;
    }));
    EXPECT_TRUE(done);
    EXPECT_EQ(mainThreadCalls, 3);
    EXPECT_EQ(window.closes, 0);
    EXPECT_EQ(window.percents, std::vector<int>{80});
}

TEST(RunTask, AWindowThatNeverComesUpDoesNotHoldTheWork) {
    RecordingWindow window(RecordingWindow::Mode::NeverReady);
    CShowProgress progress(window);
    bool done = false;
    EXPECT_TRUE(RunTask(progress, [&](CObjProgress&) { done = true; }));
    EXPECT_TRUE(done);
    EXPECT_EQ(window.closes, 0);
}

TEST(RunTask, ACancelledTaskYieldsFalseAfterTheWorkHasSeenIt) {
    RecordingWindow window;
    CShowProgress progress(window);
    QTimer::singleShot(5, [&] { window.RequestCancel(); });
    bool sawCancel = false;
    EXPECT_FALSE(RunTask(progress, [&](CObjProgress& sink) {
        while (sink.CanContinue()) SleepMs(1);
        sawCancel = true;
    }));
    EXPECT_TRUE(sawCancel);
    EXPECT_TRUE(RunTask(progress, [](CObjProgress&) {})) << "the next task starts uncancelled";
}

TEST(RunTask, NothingKillsAWorkThatDoesNotAskWhetherItMayGoOn) {
    RecordingWindow window;
    CShowProgress progress(window);
    bool done = false;
    EXPECT_FALSE(RunTask(progress, [&](CObjProgress&) {
        progress.Cancel();
        SleepMs(5);
        done = true;
    }));
    EXPECT_TRUE(done);
    EXPECT_EQ(window.Text(), QStringLiteral("esc"));
}

TEST(RunTask, AnExceptionOfTheWorkReachesTheCallerAndTheNextTaskRuns) {
    RecordingWindow window;
    CShowProgress progress(window);
    EXPECT_THROW(RunTask(progress, [](CObjProgress&) { throw std::bad_alloc(); }), std::bad_alloc);
    EXPECT_EQ(window.closes, 1);
    EXPECT_FALSE(IsTaskRunning());
    bool done = false;
    EXPECT_TRUE(RunTask(progress, [&](CObjProgress&) { done = true; }));
    EXPECT_TRUE(done);
}

TEST(RunTask, ASecondTaskFromInsideTheModalLoopIsRefused) {
    RecordingWindow window, second;
    CShowProgress progress(window), other(second);
    bool ran = false;
    int refused = 0;
    EXPECT_TRUE(RunTask(progress, [&](CObjProgress&) {
        SendToMain([&] {
            if (!RunTask(other, [&](CObjProgress&) { ran = true; })) ++refused;
            if (!RunTask([&](CObjProgress&) { ran = true; })) ++refused;
        });
    }));
    EXPECT_EQ(refused, 2);
    EXPECT_FALSE(ran);
    EXPECT_FALSE(second.IsShown());
}

TEST(RunTask, AWorkerThatCallsAgainReportsToTheWindowThatIsUp) {
    RecordingWindow window, second;
    CShowProgress progress(window), other(second);
    std::thread::id outer, inner;
    EXPECT_TRUE(RunTask(progress, [&](CObjProgress&) {
                    outer = std::this_thread::get_id();
                    EXPECT_TRUE(RunTask(other, [&](CObjProgress& sink) {
                        inner = std::this_thread::get_id();
                        sink.SetValue(10.0f);
                    }));
                    EXPECT_TRUE(RunTask([](CObjProgress& sink) { sink.SetValue(20.0f); }));
                    progress.Cancel();
                    EXPECT_FALSE(RunTask([](CObjProgress& sink) { EXPECT_EQ(sink.CanContinue(), 0); }));
                }) == false);
    EXPECT_EQ(inner, outer);
    EXPECT_EQ(window.percents, (std::vector<int>{10, 20}));
    EXPECT_TRUE(second.percents.empty());
    EXPECT_FALSE(second.IsShown());
}

TEST(RunTask, AWorkerWithoutARunningTaskWorksForNobody) {
    bool result = false, done = false;
    std::thread([&] {
        result = RunTask([&](CObjProgress& sink) {
            sink.SetValue(50.0f);
            done = sink.CanContinue() == 1;
        });
    }).join();
    EXPECT_TRUE(result);
    EXPECT_TRUE(done);
}

TEST(RunTask, WindowsComeFromTheFactoryOnTheMainThread) {
    int made = 0;
    SetProgressWindowFactory([&] {
        EXPECT_TRUE(OnMainThread());
        ++made;
        return std::make_unique<HeadlessProgressWindow>();
    });
    EXPECT_TRUE(RunTask([](CObjProgress&) { RunTask([](CObjProgress&) {}); }));
    SetProgressWindowFactory({});
    EXPECT_EQ(made, 1);
    EXPECT_TRUE(RunTask([](CObjProgress&) {})) << "without a factory there still is a window of a kind";
}

TEST(RunTask, HundredsOfQuickTasksWithCancelsAndEarlyClosesAllEnd) {
    int done = 0, cancelled = 0;
    for (int i = 0; i < 300; ++i) {
        RecordingWindow window(i % 5 == 4   ? RecordingWindow::Mode::NeverReady
                               : i % 7 == 6 ? RecordingWindow::Mode::ClosedEarly
                                            : RecordingWindow::Mode::Normal);
        CShowProgress progress(window);
        if (i % 3 == 0) QTimer::singleShot(0, [&window] { window.RequestCancel(); });
        const bool completed = RunTask(progress, [&](CObjProgress& sink) {
            for (int percent = 0; percent <= 100 && sink.CanContinue(); ++percent)
                sink.SetValue(static_cast<float>(percent));
            ++done;
        });
        if (!completed) ++cancelled;
        // The timer may be due only now; the window must not outlive this round of the loop unseen.
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(done, 300);
    EXPECT_LE(cancelled, 100);
}

}  // namespace
