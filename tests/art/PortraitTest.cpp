// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtGui/QImage>
#include <QtGui/QPolygonF>

#include <cmath>

#include "Parallel.h"
#include "Portrait.h"

namespace {

struct Mean {
    double r = 0, g = 0, b = 0, deviation = 0;  // the deviation is of brightness
    int count = 0;
    double Light() const { return 0.299 * r + 0.587 * g + 0.114 * b; }
};

QPointF PointOf(const QJsonValue& value) {
    return {value[0].toDouble(), value[1].toDouble()};
}

QPolygonF PolygonOf(const QJsonValue& value) {
    QPolygonF polygon;
    for (const QJsonValue& point : value.toArray()) polygon << PointOf(point);
    return polygon;
}

// The staged picture and what was written beside it.
class SamplePortrait : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        const QString folder = QStringLiteral(QUINCE_STAGE_DIR "/Images/Example/");
        s_image = QImage(folder + QStringLiteral("default.jpg")).convertToFormat(QImage::Format_RGB32);
        QFile file(folder + QStringLiteral("default.json"));
        if (file.open(QIODevice::ReadOnly)) s_truth = QJsonDocument::fromJson(file.readAll()).object();
    }
    void SetUp() override {
        ASSERT_FALSE(s_image.isNull());
        ASSERT_FALSE(s_truth.isEmpty());
    }

    // Over the pixels of `area` whose centre is within `inside`.
    template <typename Inside>
    static Mean MeanOver(const QRectF& area, Inside inside) {
        Mean mean;
        double squares = 0;
        const QRect box = area.toAlignedRect().intersected(s_image.rect());
        for (int y = box.top(); y <= box.bottom(); ++y) {
            for (int x = box.left(); x <= box.right(); ++x) {
                if (!inside(QPointF(x + 0.5, y + 0.5))) continue;
                const QRgb pixel = s_image.pixel(x, y);
                mean.r += qRed(pixel);
                mean.g += qGreen(pixel);
                mean.b += qBlue(pixel);
                const double light = 0.299 * qRed(pixel) + 0.587 * qGreen(pixel) + 0.114 * qBlue(pixel);
                squares += light * light;
                ++mean.count;
            }
        }
        if (mean.count == 0) return mean;
        mean.r /= mean.count;
        mean.g /= mean.count;
        mean.b /= mean.count;
        mean.deviation = std::sqrt(std::max(0.0, squares / mean.count - mean.Light() * mean.Light()));
        return mean;
    }
    static Mean Ring(const QPointF& centre, double inner, double outer) {
        const QRectF area(centre.x() - outer, centre.y() - outer, 2 * outer, 2 * outer);
        return MeanOver(area, [&](QPointF p) {
            const double d = std::hypot(p.x() - centre.x(), p.y() - centre.y());
            return d >= inner && d <= outer;
        });
    }
    static Mean Disc(const QJsonValue& disc, double share = 1) {
        return Ring(PointOf(disc[QStringLiteral("centre")]), 0, share * disc[QStringLiteral("radius")].toDouble());
    }
    static Mean Within(const QPolygonF& polygon) {
        return MeanOver(polygon.boundingRect(), [&](QPointF p) { return polygon.containsPoint(p, Qt::OddEvenFill); });
    }
    static QJsonValue Truth(const char* name) { return s_truth.value(QLatin1String(name)); }

    static QImage s_image;
    static QJsonObject s_truth;
};

QImage SamplePortrait::s_image;
QJsonObject SamplePortrait::s_truth;

}  // namespace

TEST_F(SamplePortrait, IsAsLargeAsItsTruthSays) {
    EXPECT_GE(s_image.width(), 2400);
    EXPECT_GE(s_image.height(), 3000);
    EXPECT_EQ(s_image.width(), Truth("width").toInt());
    EXPECT_EQ(s_image.height(), Truth("height").toInt());
}

TEST_F(SamplePortrait, HasExactlyOneRedPupil) {
    int red = 0;
    for (const QJsonValue& eye : Truth("eyes").toArray()) {
        const Mean pupil = Disc(eye[QStringLiteral("pupil")], 0.6);
        ASSERT_GT(pupil.count, 100);
        if (eye[QStringLiteral("red")].toBool()) {
            ++red;
            EXPECT_GT(pupil.r, 130);
            EXPECT_GT(pupil.r, 2 * std::max(pupil.g, pupil.b));
        } else {
            EXPECT_LT(pupil.Light(), 50);
            EXPECT_LT(pupil.r - pupil.b, 20);
        }
    }
    EXPECT_EQ(red, 1);
}

TEST_F(SamplePortrait, IrisesLieInTheirOpenings) {
    for (const QJsonValue& eye : Truth("eyes").toArray()) {
        const QPolygonF opening = PolygonOf(eye[QStringLiteral("opening")]);
        EXPECT_TRUE(
            opening.containsPoint(PointOf(eye[QStringLiteral("iris")][QStringLiteral("centre")]), Qt::OddEvenFill));
        const Mean white = MeanOver(opening.boundingRect(), [&](QPointF p) {
            const QPointF centre = PointOf(eye[QStringLiteral("iris")][QStringLiteral("centre")]);
            const double radius = eye[QStringLiteral("iris")][QStringLiteral("radius")].toDouble();
            const double d = std::hypot(p.x() - centre.x(), p.y() - centre.y());
            return opening.containsPoint(p, Qt::OddEvenFill) && d > 1.1 * radius && d < 1.4 * radius;
        });
        const double inner = eye[QStringLiteral("pupil")][QStringLiteral("radius")].toDouble();
        const double outer = eye[QStringLiteral("iris")][QStringLiteral("radius")].toDouble();
        const Mean iris =
            Ring(PointOf(eye[QStringLiteral("iris")][QStringLiteral("centre")]), 1.2 * inner, 0.9 * outer);
        EXPECT_GT(white.Light(), iris.Light() + 25);
        EXPECT_GT(iris.b, iris.r - 10);  // a cool iris
    }
}

TEST_F(SamplePortrait, TeethAreYellowishAndBrighterThanTheLips) {
    const QPolygonF teeth = PolygonOf(Truth("teeth"));
    const QPointF centre = teeth.boundingRect().center();
    const double height = teeth.boundingRect().height();
    const Mean middle = MeanOver(QRectF(centre.x() - height, centre.y() - 0.18 * height, 2 * height, 0.25 * height),
                                 [&](QPointF p) { return teeth.containsPoint(p, Qt::OddEvenFill); });
    const Mean upper = Within(PolygonOf(Truth("upperLip")));
    const Mean lower = Within(PolygonOf(Truth("lowerLip")));
    ASSERT_GT(middle.count, 1000);
    EXPECT_GT(middle.Light(), upper.Light() + 40);
    EXPECT_GT(middle.Light(), lower.Light() + 40);
    EXPECT_GT(middle.r, middle.b + 12);
    EXPECT_GT(middle.g, middle.b + 10);
    for (const Mean& lip : {upper, lower}) {
        EXPECT_GT(lip.r, 1.3 * lip.g);
        EXPECT_GT(lip.r, 1.3 * lip.b);
    }
}

TEST_F(SamplePortrait, SpotsAreDarkerAndRedderThanTheSkinAroundThem) {
    EXPECT_GE(Truth("spots").toArray().size(), 4);
    for (const QJsonValue& spot : Truth("spots").toArray()) {
        const double radius = spot[QStringLiteral("radius")].toDouble();
        const Mean core = Disc(spot, 0.7);
        const Mean skin = Ring(PointOf(spot[QStringLiteral("centre")]), 4 * radius, 5 * radius);
        EXPECT_LT(core.Light(), skin.Light() - 8);
        EXPECT_GT(core.r / core.g, 1.06 * skin.r / skin.g);
    }
}

TEST_F(SamplePortrait, DarkCirclesAreDarkerThanTheCheekBelow) {
    for (const QJsonValue& circle : Truth("darkCircles").toArray()) {
        const QPointF centre = PointOf(circle[QStringLiteral("centre")]);
        const double rx = circle[QStringLiteral("radii")][0].toDouble();
        const double ry = circle[QStringLiteral("radii")][1].toDouble();
        const auto ellipse = [&](QPointF middle) {
            return MeanOver(QRectF(middle.x() - rx, middle.y() - ry, 2 * rx, 2 * ry), [&](QPointF p) {
                return std::hypot((p.x() - middle.x()) / rx, (p.y() - middle.y()) / ry) <= 1;
            });
        };
        const Mean dark = ellipse(centre);
        const Mean cheek = ellipse(centre + QPointF(0, 5.5 * ry));
        EXPECT_LT(dark.Light(), cheek.Light() - 8);
    }
}

TEST_F(SamplePortrait, SkinHasVisibleButGentleTexture) {
    for (const QJsonValue& sample : Truth("skin").toArray()) {
        const Mean skin = Disc(sample);
        EXPECT_GT(skin.r, skin.g);
        EXPECT_GT(skin.g, skin.b);
        EXPECT_LT(skin.r, 254);
        EXPECT_GT(skin.deviation, 2.0);
        EXPECT_LT(skin.deviation, 16.0);
        EXPECT_TRUE(PolygonOf(Truth("face")).containsPoint(PointOf(sample[QStringLiteral("centre")]), Qt::OddEvenFill));
    }
}

TEST_F(SamplePortrait, HairIsDarkBrownAndTheBackgroundCool) {
    for (const QJsonValue& sample : Truth("hair").toArray()) {
        const Mean hair = Disc(sample);
        EXPECT_LT(hair.Light(), 150);
        EXPECT_GT(hair.r, hair.b);
    }
    for (const QJsonValue& sample : Truth("background").toArray()) {
        const Mean background = Disc(sample);
        EXPECT_GE(background.b + 12, background.r);
        EXPECT_FALSE(
            PolygonOf(Truth("face")).containsPoint(PointOf(sample[QStringLiteral("centre")]), Qt::OddEvenFill));
    }
}

TEST(PortraitPainter, IsTheSameForAnyNumberOfThreads) {
    SetWorkerCount(1);
    const PortraitPixels one = PaintPortrait(240);
    SetWorkerCount(3);
    const PortraitPixels three = PaintPortrait(240);
    SetWorkerCount(0);
    EXPECT_EQ(one.width, 240);
    EXPECT_EQ(one.height, 300);
    EXPECT_TRUE(one.rgb == three.rgb);
    EXPECT_TRUE(PaintPortrait(240).rgb == one.rgb);
}

TEST(PortraitPainter, ASmallPictureIsTheLargeOneReduced) {
    const PortraitPixels small = PaintPortrait(120);
    const PortraitPixels large = PaintPortrait(480);
    double difference = 0;
    for (int y = 0; y < small.height; ++y) {
        for (int x = 0; x < small.width; ++x) {
            for (int c = 0; c < 3; ++c) {
                int sum = 0;
                for (int k = 0; k < 16; ++k)
                    sum += large.rgb[3 * (static_cast<std::size_t>(4 * y + k / 4) * large.width + 4 * x + k % 4) + c];
                difference += std::abs(sum / 16.0 - small.rgb[3 * (static_cast<std::size_t>(y) * small.width + x) + c]);
            }
        }
    }
    EXPECT_LT(difference / static_cast<double>(small.rgb.size()), 7.0);
}
