// SPDX-License-Identifier: GPL-3.0-or-later
#include "WordOverlay.h"

#include <gtest/gtest.h>

#include <QtGui/QImage>
#include <QtGui/QPainter>

namespace {

const WordBox Box{QRect(100, 80, 200, 90), 0};
const QRect View(0, 0, 400, 300);

QImage Painted(const WordOverlay& overlay, const WordBox& box, bool turning = false) {
    QImage image(400, 300, QImage::Format_RGB32);
    image.fill(0xFF808080);
    QPainter painter(&image);
    overlay.PaintSelected(painter, box, WordButtons::Of(box, View, overlay.Ratio()), turning);
    return image;
}

// A strip of three frames of one colour each.
QPixmap Strip(const QColor& first, const QColor& second, const QColor& third) {
    QPixmap strip(96, 32);
    QPainter painter(&strip);
    painter.fillRect(0, 0, 32, 32, first);
    painter.fillRect(32, 0, 32, 32, second);
    painter.fillRect(64, 0, 32, 32, third);
    return strip;
}

}  // namespace

TEST(WordOverlay, TheFrameHasItsColourAndWidth) {
    const QImage image = Painted(WordOverlay({}, {}, 1.0), Box);
    EXPECT_EQ(image.pixel(200, 80), 0xFF20B8F1u);
    EXPECT_EQ(image.pixel(200, 170), 0xFF20B8F1u);
    EXPECT_EQ(image.pixel(200, 125), 0xFF808080u);
}

TEST(WordOverlay, WithoutStripsTheButtonsAreDiscs) {
    const QImage image = Painted(WordOverlay({}, {}, 1.0), Box);
    EXPECT_EQ(image.pixel(96, 76), 0xFFFF0000u);
    EXPECT_EQ(image.pixel(296, 166), 0xFF20B8F1u);
    EXPECT_EQ(image.pixel(96 - 14, 76), 0xFFFF0000u);
    EXPECT_EQ(image.pixel(96 - 17, 76), 0xFF808080u);
}

TEST(WordOverlay, AStripShowsItsMiddleFrameAndItsFirstWhileTurning) {
    const WordOverlay overlay(Strip(Qt::red, Qt::green, Qt::blue), Strip(Qt::yellow, Qt::cyan, Qt::magenta), 1.0);
    const QImage rest = Painted(overlay, Box);
    EXPECT_EQ(QColor(rest.pixel(96, 76)), QColor(Qt::green));
    EXPECT_EQ(QColor(rest.pixel(296, 166)), QColor(Qt::cyan));
    const QImage turning = Painted(overlay, Box, true);
    EXPECT_EQ(QColor(turning.pixel(96, 76)), QColor(Qt::green));
    EXPECT_EQ(QColor(turning.pixel(296, 166)), QColor(Qt::yellow));
    // Drawn as a square of the strip's height at 20 pixels from the corner.
    EXPECT_EQ(QColor(rest.pixel(80, 60)), QColor(Qt::green));
    EXPECT_EQ(QColor(rest.pixel(111, 91)), QColor(Qt::green));
    EXPECT_EQ(rest.pixel(79, 60), 0xFF808080u);
}

TEST(WordOverlay, TheProgramsOwnStripsAreThere) {
    for (const double ratio : {1.0, 2.0}) {
        const QImage own = Painted(WordOverlay(ratio), Box), discs = Painted(WordOverlay({}, {}, ratio), Box);
        EXPECT_FALSE(own == discs);
    }
}

TEST(WordOverlay, EverythingLiesInsideWhatItSaysThatItCovers) {
    for (const double ratio : {1.0, 2.0})
        for (const int angle : {0, 30, 90, 200}) {
            const WordBox box{QRect(150, 110, 90, 60), angle};
            const WordOverlay overlay({}, {}, ratio);
            const QRect covers = overlay.Covers(box, WordButtons::Of(box, View, ratio));
            const QImage image = Painted(overlay, box);
            for (int y = 0; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x)
                    ASSERT_TRUE(image.pixel(x, y) == 0xFF808080u || covers.contains(x, y))
                        << x << ", " << y << " at " << angle;
        }
}
