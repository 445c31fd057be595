// SPDX-License-Identifier: GPL-3.0-or-later
#include "Subject.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtGui/QImage>

#include <cmath>
#include <opencv2/imgproc.hpp>

#include "Measures.h"
#include "Portrait.h"

namespace {

using Polygon = std::vector<cv::Point>;

// Pixels hold their centre, so a coordinate of the truth names the pixel it lies in.
cv::Point PointOf(const QJsonValue& value) {
    return {static_cast<int>(std::floor(value[0].toDouble())), static_cast<int>(std::floor(value[1].toDouble()))};
}

Polygon PolygonOf(const QJsonValue& value) {
    Polygon polygon;
    for (const QJsonValue& point : value.toArray()) polygon.push_back(PointOf(point));
    return polygon;
}

void Fill(cv::Mat1b& mask, const QJsonValue& polygon, int level = 255) {
    const Polygon points = PolygonOf(polygon);
    if (!points.empty()) cv::fillPoly(mask, std::vector<Polygon>{points}, cv::Scalar(level));
}

void FillDisc(cv::Mat1b& mask, const QJsonValue& disc, double share, int level = 255) {
    cv::circle(mask, PointOf(disc[QStringLiteral("centre")]),
               static_cast<int>(std::lround(share * disc[QStringLiteral("radius")].toDouble())), cv::Scalar(level),
               cv::FILLED);
}

Bitmap BitmapOf(const QImage& image) {
    const QImage source = image.convertToFormat(QImage::Format_ARGB32);
    Bitmap bitmap = Bitmap::Uninitialised(source.width(), source.height());
    std::uint8_t* to = bitmap.MutablePixels();
    for (int y = 0; y < source.height(); ++y)
        std::copy_n(source.constScanLine(y), bitmap.Stride(), to + y * bitmap.Stride());
    return bitmap;
}

void FillEyes(Subject& subject, const QJsonArray& eyes) {
    for (const QJsonValue& eye : eyes) {
        cv::Mat1b opening = cv::Mat1b::zeros(subject.face.size()), iris = opening.clone();
        Fill(opening, eye[QStringLiteral("opening")]);
        FillDisc(iris, eye[QStringLiteral("iris")], 0.92);
        FillDisc(iris, eye[QStringLiteral("pupil")], 1.12, 0);
        subject.eyes |= opening;
        subject.irises |= iris & Shrunk(opening, 0.006 * subject.faceWidth);
    }
}

Subject::Disc DiscOf(const QJsonValue& disc) {
    const QJsonValue centre = disc[QStringLiteral("centre")];
    return {{centre[0].toDouble(), centre[1].toDouble()}, disc[QStringLiteral("radius")].toDouble()};
}

void FillFlaws(Subject& subject, const QJsonObject& regions) {
    for (const QJsonValue& spot : regions[QStringLiteral("spots")].toArray()) subject.spots.push_back(DiscOf(spot));
    for (const QJsonValue& eye : regions[QStringLiteral("eyes")].toArray())
        if (eye[QStringLiteral("red")].toBool()) subject.redPupils.push_back(DiscOf(eye[QStringLiteral("pupil")]));
    for (const QJsonValue& circle : regions[QStringLiteral("darkCircles")].toArray()) {
        const QJsonValue radii = circle[QStringLiteral("radii")];
        cv::Mat1b mask = cv::Mat1b::zeros(subject.face.size());
        cv::ellipse(mask, PointOf(circle[QStringLiteral("centre")]),
                    cv::Size(static_cast<int>(radii[0].toDouble()), static_cast<int>(radii[1].toDouble())), 0, 0, 360,
                    cv::Scalar(255), cv::FILLED);
        subject.circles.push_back(mask & ~subject.eyes);
    }
}

// The face without the surroundings of its features and of whatever else has a strong gradient.
void FindSkin(Subject& subject) {
    const double w = subject.faceWidth;
    const cv::Mat1f luma = LumaOf(subject.picture);
    const cv::Mat1b inner = Shrunk(subject.face, 0.05 * w);
    // Edges of features stand clear of shading and blotches; shading is gone where it turns quickly.
    const cv::Mat1f edges = GradientOf(Blurred(luma, 0.006 * w)), shading = GradientOf(Blurred(luma, 0.02 * w));
    const cv::Mat1b sharp = edges > 3.0 * QuantileOf(edges, inner, 0.5);
    const cv::Mat1b turning = shading > QuantileOf(shading, inner, 0.5);
    const cv::Mat1b strong = Grown(Shrunk(sharp, 0.003 * w), 0.02 * w) | turning;
    subject.skin = inner & ~strong & ~Grown(subject.eyes, 0.05 * w) & ~Grown(subject.lips | subject.teeth, 0.03 * w) &
                   SkinColoured(subject.picture);
}

Subject WithRegions(Bitmap picture, const std::string& name, const QJsonObject& regions) {
    Subject subject;
    subject.name = name;
    subject.picture = std::move(picture);
    const cv::Mat1b nothing = cv::Mat1b::zeros(subject.picture.Height(), subject.picture.Width());
    for (cv::Mat1b* mask :
         {&subject.face, &subject.eyes, &subject.irises, &subject.lips, &subject.teeth, &subject.hair})
        *mask = nothing.clone();
    const Polygon face = PolygonOf(regions[QStringLiteral("face")]);
    subject.faceWidth = cv::boundingRect(face).width;
    Fill(subject.face, regions[QStringLiteral("face")]);
    FillEyes(subject, regions[QStringLiteral("eyes")].toArray());
    FillFlaws(subject, regions);
    Fill(subject.lips, regions[QStringLiteral("upperLip")]);
    Fill(subject.lips, regions[QStringLiteral("lowerLip")]);
    Fill(subject.teeth, regions[QStringLiteral("teeth")]);
    for (const QJsonValue& disc : regions[QStringLiteral("hair")].toArray()) FillDisc(subject.hair, disc, 1);
    // Of the part between the lips only what is bright is tooth, the rest is the dark of the mouth.
    const cv::Mat1f luma = LumaOf(subject.picture);
    subject.teeth &= luma > 0.62 * QuantileOf(luma, subject.teeth, 0.9);
    FindSkin(subject);
    return subject;
}

// The box of the largest patch of skin colour, as a polygon, in the form of the truth.
QJsonObject GuessedRegions(const Bitmap& picture) {
    const double reach = 0.012 * std::sqrt(double(picture.Width()) * picture.Height());
    const cv::Mat1b skin = Grown(Shrunk(SkinColoured(picture), reach), reach);
    cv::Mat labels, boxes, centres;
    const int count = cv::connectedComponentsWithStats(skin, labels, boxes, centres);
    int best = 0;
    for (int i = 1; i < count; ++i)
        if (best == 0 || boxes.at<int>(i, cv::CC_STAT_AREA) > boxes.at<int>(best, cv::CC_STAT_AREA)) best = i;
    if (best == 0) return {};
    std::vector<Polygon> outlines;
    cv::findContours(labels == best, outlines, cv::RETR_EXTERNAL, cv::CHAIN_APPROX_SIMPLE);
    QJsonArray face;
    for (const cv::Point& p : outlines.front()) face.append(QJsonArray{p.x, p.y});
    return {{QStringLiteral("face"), face}};
}

Bitmap Painted(int width, const PortraitLook& look) {
    const PortraitPixels pixels = PaintPortrait(width, look);
    Bitmap picture = Bitmap::Uninitialised(pixels.width, pixels.height);
    std::uint8_t* to = picture.MutablePixels();
    for (std::size_t i = 0; i < pixels.rgb.size(); i += 3, to += 4) {
        to[0] = pixels.rgb[i + 2];
        to[1] = pixels.rgb[i + 1];
        to[2] = pixels.rgb[i];
        to[3] = 255;
    }
    return picture;
}

QJsonObject RegionsIn(const std::string& path) {
    QFile file(QString::fromStdString(path));
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

}  // namespace

cv::Rect Subject::Around(double x, double y, double width, double height) const {
    const cv::Rect box = cv::boundingRect(face);
    const cv::Point2d centre(box.x + x * box.width, box.y + y * box.height);
    const cv::Rect part(cv::Point2d(centre.x - 0.5 * width * faceWidth, centre.y - 0.5 * height * faceWidth),
                        cv::Size2d(width * faceWidth, height * faceWidth));
    return part & cv::Rect(0, 0, picture.Width(), picture.Height());
}

std::optional<Subject> ReadSubject(const std::string& picture, const std::string& regions) {
    const QString path = QString::fromStdString(picture);
    const QImage image(path);
    if (image.isNull()) return {};
    const Bitmap bitmap = BitmapOf(image);
    QJsonObject known = regions.empty() ? QJsonObject() : RegionsIn(regions);
    if (known.isEmpty()) known = GuessedRegions(bitmap);
    if (known.isEmpty()) return {};
    return WithRegions(bitmap, QFileInfo(path).completeBaseName().toStdString(), known);
}

Subject PaintedSubject(int width, const PortraitLook& look, const std::string& name) {
    const QByteArray truth = QByteArray::fromStdString(PortraitTruth(width, look));
    Subject subject = WithRegions(Painted(width, look), name, QJsonDocument::fromJson(truth).object());
    PortraitLook flawless = look;
    flawless.flaws = false;
    subject.isSample = look.skin == PortraitLook::Skin::Fair;
    if (look.flaws) subject.flawless = Painted(width, flawless);
    return subject;
}
