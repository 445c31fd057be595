// SPDX-License-Identifier: GPL-3.0-or-later
// Steps that wait for the end of a stroke, and the thread that works them.
#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <stdexcept>
#include <vector>

#include "CWarpField.h"
#include "TestPictures.h"
#include "WarpQueue.h"
#include "WatchfulSink.h"

namespace {

WarpEntry Entry(int number) {
    WarpEntry entry;
    entry.x1 = number;
    return entry;
}

// A gate at which the working thread waits, so that a test knows how far it is.
class Gate {
  public:
    void Pass() {
        std::unique_lock guard(m_lock);
        ++m_waiting;
        m_changed.notify_all();
        m_changed.wait(guard, [this] { return m_open > 0; });
        --m_open;
    }
    void AwaitComer() {
        std::unique_lock guard(m_lock);
        m_changed.wait(guard, [this] { return m_waiting > 0; });
        --m_waiting;
    }
    void LetThrough(int count) {
        const std::lock_guard guard(m_lock);
        m_open += count;
        m_changed.notify_all();
    }

  private:
    std::mutex m_lock;
    std::condition_variable m_changed;
    int m_waiting = 0, m_open = 0;
};

}  // namespace

TEST(WarpQueue, WaitsForTheReleaseAndThenKeepsTheOrder) {
    std::vector<int> worked;
    WarpQueue queue([&](const WarpEntry& entry) { worked.push_back(entry.x1); });
    for (int i = 0; i < 50; ++i) queue.Add(Entry(i));
    EXPECT_TRUE(queue.Wait({})) << "nothing was released";
    EXPECT_EQ(queue.Size(), 50u);
    queue.Release();
    EXPECT_TRUE(queue.Wait({}));
    ASSERT_EQ(worked.size(), 50u);
    for (int i = 0; i < 50; ++i) EXPECT_EQ(worked[i], i);
    EXPECT_EQ(queue.Size(), 0u);
}

TEST(WarpQueue, AnEmptyQueueEndsTheWaitAtOnce) {
    WarpQueue queue([](const WarpEntry&) { FAIL(); });
    EXPECT_TRUE(queue.Wait({}));
    queue.Release();
    EXPECT_TRUE(queue.Wait({}));
    queue.Clear();
}

TEST(WarpQueue, CarriesTheBrushOfTheMoment) {
    std::vector<WarpEntry> worked;
    WarpQueue queue([&](const WarpEntry& entry) { worked.push_back(entry); });
    queue.Add({1, 2, 3, 4, CWarpField::Move, 120, 0.2});
    queue.Add({5, 6, 0, 0, CWarpField::Grow, 60, -0.3});
    queue.Release();
    queue.Wait({});
    ASSERT_EQ(worked.size(), 2u);
    EXPECT_EQ(worked[0].y0, 4);
    EXPECT_EQ(worked[0].radius, 120);
    EXPECT_EQ(worked[1].mode, CWarpField::Grow);
    EXPECT_EQ(worked[1].amount, -0.3);
}

TEST(WarpQueue, WhatIsAddedWhileItWorksWaitsForTheNextRelease) {
    Gate gate;
    std::atomic<int> worked{0};
    WarpQueue queue([&](const WarpEntry&) {
        gate.Pass();
        ++worked;
    });
    queue.Add(Entry(1));
    queue.Release();
    gate.AwaitComer();
    queue.Add(Entry(2));
    gate.LetThrough(1);
    EXPECT_TRUE(queue.Wait({}));
    EXPECT_EQ(worked, 1);
    EXPECT_EQ(queue.Size(), 1u);
    queue.Release();
    gate.LetThrough(1);
    EXPECT_TRUE(queue.Wait({}));
    EXPECT_EQ(worked, 2);
}

TEST(WarpQueue, ReportsForwardToTheEnd) {
    WarpQueue queue([](const WarpEntry&) {});
    for (int i = 0; i < 200; ++i) queue.Add(Entry(i));
    queue.Release();
    WatchfulSink sink;
    EXPECT_TRUE(queue.Wait({&sink, 0, 100}));
    EXPECT_FALSE(sink.ranBackwards);
    EXPECT_EQ(sink.GetValue(), 100.0f) << "also for whoever waits late";
}

TEST(WarpQueue, AStopDropsWhatIsNotBegunAndKeepsWhatIsDone) {
    Gate gate;
    std::atomic<int> worked{0};
    WarpQueue queue([&](const WarpEntry&) {
        gate.Pass();
        ++worked;
    });
    for (int i = 0; i < 100; ++i) queue.Add(Entry(i));
    queue.Release();
    gate.AwaitComer();
    auto wait = std::async(std::launch::async, [&] {
        WatchfulSink sink(2);
        return queue.Wait({&sink, 0, 100});
    });
    // Every entry is let through, one after the other, until the wait has ended.
    while (wait.wait_for(std::chrono::milliseconds(1)) != std::future_status::ready) gate.LetThrough(1);
    EXPECT_FALSE(wait.get());
    EXPECT_GE(worked, 3) << "two answers of yes, and the entry that was begun";
    EXPECT_EQ(queue.Size(), 0u);
    const int before = worked;
    EXPECT_TRUE(queue.Wait({})) << "a stop is told once";
    queue.Add(Entry(7));
    queue.Release();
    gate.LetThrough(100);
    EXPECT_TRUE(queue.Wait({}));
    EXPECT_EQ(worked, before + 1);
}

TEST(WarpQueue, WhatTheWorkThrowsComesOutOfTheWait) {
    int worked = 0;
    WarpQueue queue([&](const WarpEntry& entry) {
        ++worked;
        if (entry.x1 == 2) throw std::bad_alloc();
    });
    for (int i = 0; i < 10; ++i) queue.Add(Entry(i));
    queue.Release();
    EXPECT_THROW(queue.Wait({}), std::bad_alloc);
    EXPECT_EQ(worked, 3);
    EXPECT_EQ(queue.Size(), 0u);
    queue.Add(Entry(5));
    queue.Release();
    EXPECT_TRUE(queue.Wait({})) << "it is told once, and the thread lives";
    EXPECT_EQ(worked, 4);
}

TEST(WarpQueue, RestsOnceWhenNothingIsLeft) {
    std::vector<int> acts;
    constexpr int rest = -1;
    WarpQueue queue([&](const WarpEntry& entry) { acts.push_back(entry.x1); }, [&] { acts.push_back(rest); });
    for (int i = 0; i < 3; ++i) queue.Add(Entry(i));
    queue.Release();
    queue.Wait({});
    EXPECT_EQ(acts, (std::vector<int>{0, 1, 2, rest}));
    queue.Release();
    queue.Wait({});
    EXPECT_EQ(acts.size(), 4u) << "without work there is nothing to rest from";
}

TEST(WarpQueue, RestsAlsoWhenItWasStopped) {
    Gate gate;
    std::atomic<int> worked{0}, rests{0}, workedAtRest{0};
    WarpQueue queue(
        [&](const WarpEntry&) {
            gate.Pass();
            ++worked;
        },
        [&] {
            ++rests;
            workedAtRest = worked.load();
        });
    for (int i = 0; i < 50; ++i) queue.Add(Entry(i));
    queue.Release();
    gate.AwaitComer();
    auto clear = std::async(std::launch::async, [&] { queue.Clear(); });
    while (queue.Size() > 1) std::this_thread::yield();
    gate.LetThrough(1);
    clear.get();
    EXPECT_EQ(worked, 1);
    EXPECT_EQ(rests, 1);
    EXPECT_EQ(workedAtRest, 1);
}

TEST(WarpQueue, WhatTheRestThrowsComesOutOfTheWait) {
    bool fails = true;
    WarpQueue queue([](const WarpEntry&) {},
                    [&] {
                        if (fails) throw std::bad_alloc();
                    });
    queue.Add(Entry(1));
    queue.Release();
    EXPECT_THROW(queue.Wait({}), std::bad_alloc);
    fails = false;
    queue.Add(Entry(1));
    queue.Release();
    EXPECT_TRUE(queue.Wait({}));
}

TEST(WarpQueue, ClearForgetsEntriesThatWait) {
    int worked = 0;
    WarpQueue queue([&](const WarpEntry&) { ++worked; });
    for (int i = 0; i < 10; ++i) queue.Add(Entry(i));
    queue.Clear();
    queue.Release();
    EXPECT_TRUE(queue.Wait({}));
    EXPECT_EQ(worked, 0);
}

TEST(WarpQueue, TheEndJoinsAThreadThatIsAtWork) {
    Gate gate;
    std::atomic<int> worked{0};
    auto queue = std::make_unique<WarpQueue>([&](const WarpEntry&) {
        gate.Pass();
        ++worked;
    });
    for (int i = 0; i < 50; ++i) queue->Add(Entry(i));
    queue->Release();
    gate.AwaitComer();
    auto end = std::async(std::launch::async, [&] { queue.reset(); });
    while (end.wait_for(std::chrono::milliseconds(1)) != std::future_status::ready) gate.LetThrough(1);
    EXPECT_GE(worked, 1);
}

// Two thousand strokes with waits, stops and clears between them, beside a field that only the thread touches.
TEST(WarpQueue, ManyStrokesOnOneField) {
    const Bitmap picture = TestPictures::Noise(160, 120, 3);
    CWarpField full, alone;
    full.SetImage(&picture, nullptr);
    alone.SetImage(&picture, nullptr);
    const auto work = [](CWarpField& field, const WarpEntry& entry,
                         bool (CWarpField::*deform)(int, int, int, int, int)) {
        field.SetRadius(entry.radius);
        field.SetAmount(entry.amount);
        (field.*deform)(entry.x1, entry.y1, entry.x0, entry.y0, entry.mode);
    };
    WarpQueue queue([&](const WarpEntry& entry) { work(full, entry, &CWarpField::DeformLater); },
                    [&] { full.Settle(); });
    for (int stroke = 0; stroke < 2000; ++stroke) {
        const bool forgotten = stroke % 97 == 50;
        for (int i = 0; i < 3; ++i) {
            const int x = 20 + (stroke * 7 + i * 5) % 120, y = 20 + (stroke * 3) % 80;
            const WarpEntry entry{x, y, x - 4, y + 1, CWarpField::Move, 5 + stroke % 20, 0.4};
            queue.Add(entry);
            if (!forgotten) work(alone, entry, &CWarpField::Deform);
        }
        if (forgotten) queue.Clear();
        queue.Release();
        if (stroke % 5 == 0) {
            ASSERT_TRUE(queue.Wait({}));
            const Bitmap shown = full.Output();
            ASSERT_EQ(shown.Width(), 160);
        }
        if (forgotten) continue;
        if (stroke % 97 == 49) {
            ASSERT_TRUE(queue.Wait({}));
        }
    }
    ASSERT_TRUE(queue.Wait({}));
    EXPECT_TRUE(full.Output() == alone.Output());
}
