// SPDX-License-Identifier: GPL-3.0-or-later
#include "Messages.h"

#include <gtest/gtest.h>

#include <memory>
#include <QtCore/QEventLoop>
#include <QtCore/QThread>
#include <thread>
#include <vector>

namespace {

// Runs `work` on a worker while the main thread handles events, as it does while it shows progress. The thread is one
// whose end the thread sanitizer sees; those of Qt it does not.
template <class F>
void OnWorker(F work) {
    QEventLoop loop;
    std::thread worker([&] {
        work();
        PostToMain(&loop, [&] { loop.quit(); });
    });
    loop.exec();
    worker.join();
}

void HandlePosted() {
    QCoreApplication::sendPostedEvents();
}

}  // namespace

TEST(Messages, SentCallRunsOnTheMainThreadAndGivesItsResult) {
    QThread* ranOn = nullptr;
    int answer = 0;
    bool main = true;
    OnWorker([&] {
        main = OnMainThread();
        answer = SendToMain([&] {
            ranOn = QThread::currentThread();
            return 42;
        });
    });
    EXPECT_FALSE(main);
    EXPECT_EQ(answer, 42);
    EXPECT_EQ(ranOn, QCoreApplication::instance()->thread());
}

TEST(Messages, SentCallWithoutResultHasRunWhenItReturns) {
    bool before = false;
    OnWorker([&] {
        bool ran = false;
        SendToMain([&] { ran = true; });
        before = ran;
    });
    EXPECT_TRUE(before);
}

TEST(Messages, SendOnTheMainThreadIsAPlainCall) {
    EXPECT_TRUE(OnMainThread());
    EXPECT_EQ(SendToMain([] { return 7; }), 7);
    AssertMainThread();
}

TEST(Messages, PostedCallsRunLaterInOrder) {
    QObject guard;
    std::vector<int> order;
    PostToMain(&guard, [&] { order.push_back(1); });
    OnWorker([&] { PostToMain(&guard, [&] { order.push_back(2); }); });
    PostToMain(nullptr, [&] { order.push_back(3); });
    HandlePosted();
    EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
}

TEST(Messages, PostedCallDoesNotRunAtOnce) {
    bool ran = false;
    PostToMain(nullptr, [&] { ran = true; });
    EXPECT_FALSE(ran);
    HandlePosted();
    EXPECT_TRUE(ran);
}

TEST(Messages, PostedCallIsDroppedWhenItsGuardDies) {
    bool ran = false;
    {
        QObject guard;
        PostToMain(&guard, [&] { ran = true; });
    }
    HandlePosted();
    EXPECT_FALSE(ran);
}

#ifdef QUINCE_DEBUG
TEST(MessagesDeathTest, WindowWorkOnAWorkerEndsADebugBuild) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(OnWorker([] { AssertMainThread(); }), "worker thread");
}
#endif
