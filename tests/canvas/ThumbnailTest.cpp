// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtCore/QSize>

#include <condition_variable>
#include <mutex>
#include <new>

#include "TestPictures.h"
#include "ThumbnailCrop.h"
#include "ThumbnailThread.h"

namespace {

constexpr QSize Cover(47, 47), Thumb(70, 96);

TEST(ThumbnailPart, IsTheMiddleAsLargeAsStepsAllow) {
    // 47 * 1.1^k grows until it passes a side, then goes one step back.
    double side = 47;
    while (side < 600) side *= 1.1;
    const int expected = int(side / 1.1);
    const QRect part = ThumbnailPart({800, 600}, Cover);
    EXPECT_EQ(part.size(), QSize(expected, expected));
    EXPECT_EQ(part.topLeft(), QPoint(int((800 - side / 1.1) * 0.5), int((600 - side / 1.1) * 0.5)));
    EXPECT_TRUE(QRect(0, 0, 800, 600).contains(part));
}

TEST(ThumbnailPart, KeepsTheProportionOfItsShape) {
    for (const QSize image : {QSize(3000, 2000), QSize(1000, 4000), QSize(500, 97), QSize(71, 4000)}) {
        const QRect part = ThumbnailPart(image, Thumb);
        EXPECT_NEAR(double(part.width()) / part.height(), 70.0 / 96.0, 0.02) << image.width();
        EXPECT_TRUE(QRect(QPoint(0, 0), image).contains(part)) << image.width();
    }
}

TEST(ThumbnailPart, OfASmallPictureIsOneStepSmallerThanItsShapeAndMayReachBeyond) {
    EXPECT_EQ(ThumbnailPart({47, 200}, Cover).size(), QSize(42, 42));
    const QRect part = ThumbnailPart({20, 200}, Cover);
    EXPECT_EQ(part.size(), QSize(42, 42));
    EXPECT_LT(part.x(), 0);
}

TEST(Thumbnail, HasItsShapeTimesTheScaleWhateverThePicture) {
    for (const QSize image : {QSize(1, 1), QSize(30, 20), QSize(46, 900), QSize(47, 47), QSize(1200, 800)}) {
        const Bitmap picture = TestPictures::Face(image.width(), image.height());
        for (const double scale : {1.0, 1.5, 2.0}) {
            const Bitmap cover = MakeThumbnail(picture, Cover, scale);
            EXPECT_EQ(cover.Width(), int(47 * scale));
            EXPECT_EQ(cover.Height(), int(47 * scale));
            EXPECT_TRUE(cover.IsOpaque());
        }
    }
    EXPECT_TRUE(MakeThumbnail({}, Cover, 1.0).IsNull());
}

TEST(Thumbnail, IsWhiteWhereItReachesBeyondThePicture) {
    const Bitmap cover = MakeThumbnail(TestPictures::Plain(20, 200, 0xFF204060), Cover, 1.0);
    EXPECT_EQ(TestPictures::PixelAt(cover, 0, 23), 0xFFFFFFFFu);
    EXPECT_EQ(TestPictures::PixelAt(cover, 46, 23), 0xFFFFFFFFu);
    EXPECT_EQ(TestPictures::PixelAt(cover, 23, 23), 0xFF204060u);
}

TEST(Thumbnail, LaysTranslucentPixelsOnWhite) {
    const Bitmap cover = MakeThumbnail(TestPictures::Plain(200, 200, 0x80000000), Cover, 1.0);
    EXPECT_EQ(TestPictures::PixelAt(cover, 10, 10) >> 24, 0xFFu);
    EXPECT_NEAR(int(TestPictures::PixelAt(cover, 10, 10) & 255), 127, 2);
}

TEST(Thumbnail, ShowsTheMiddleOfThePicture) {
    const Bitmap halves = TestPictures::Checker(400, 400, 200, 0xFF000000, 0xFFFFFFFF);
    const Bitmap cover = MakeThumbnail(halves, Cover, 1.0);
    EXPECT_EQ(TestPictures::PixelAt(cover, 5, 5), 0xFF000000u);
    EXPECT_EQ(TestPictures::PixelAt(cover, 41, 5), 0xFFFFFFFFu);
}

// Holds a thread up until the test lets it go on.
class Gate {
  public:
    void Pass() {
        std::unique_lock lock(m_lock);
        m_waiting = true;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return m_open; });
    }
    void AwaitSomebody() {
        std::unique_lock lock(m_lock);
        m_changed.wait(lock, [this] { return m_waiting; });
    }
    void Open() {
        const std::lock_guard lock(m_lock);
        m_open = true;
        m_changed.notify_all();
    }

  private:
    std::mutex m_lock;
    std::condition_variable m_changed;
    bool m_waiting = false, m_open = false;
};

TEST(ThumbnailThread, RunsItsStepsInOrder) {
    std::vector<int> done;
    Gate gate;
    ThumbnailThread thread;
    EXPECT_FALSE(thread.IsRunning());
    thread.Start(
        {[&] { done.push_back(1); }, [&] { done.push_back(2); }, [&] { done.push_back(3); }, [&] { gate.Pass(); }});
    gate.AwaitSomebody();
    EXPECT_TRUE(thread.IsRunning());
    gate.Open();
    thread.Stop();
    EXPECT_EQ(done, (std::vector<int>{1, 2, 3}));
    EXPECT_FALSE(thread.IsRunning());
}

TEST(ThumbnailThread, StopWaitsForTheStepThatRunsAndDropsTheRest) {
    std::atomic<bool> first{false}, second{false};
    Gate gate;
    ThumbnailThread thread;
    thread.Start({[&] {
                      gate.Pass();
                      first = true;
                  },
                  [&] { second = true; }});
    gate.AwaitSomebody();
    std::thread opener([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        gate.Open();
    });
    thread.Stop();
    EXPECT_TRUE(first);
    EXPECT_FALSE(second);
    opener.join();
}

TEST(ThumbnailThread, StartsAnewAfterAStop) {
    std::atomic<int> done{0};
    ThumbnailThread thread;
    thread.Stop();
    for (int i = 1; i <= 3; ++i) {
        Gate gate;
        thread.Start({[&] { ++done; }, [&] { gate.Pass(); }});
        gate.AwaitSomebody();
        gate.Open();
        thread.Stop();
        EXPECT_EQ(done, i);
    }
}

TEST(ThumbnailThread, AStepWithoutMemoryIsSkipped) {
    std::atomic<bool> second{false};
    Gate gate;
    ThumbnailThread thread;
    thread.Start({[] { throw std::bad_alloc(); }, [&] { second = true; }, [&] { gate.Pass(); }});
    gate.AwaitSomebody();
    gate.Open();
    thread.Stop();
    EXPECT_TRUE(second);
}

}  // namespace
