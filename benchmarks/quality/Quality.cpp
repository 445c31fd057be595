// SPDX-License-Identifier: GPL-3.0-or-later
#include "Quality.h"

#include <QtGui/QImage>
#include <QtGui/QPainter>

#include <cstdio>

namespace {

std::vector<QualityCase>& Cases() {
    static std::vector<QualityCase> cases;
    return cases;
}

std::string Number(double value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

QImage PartOf(const Bitmap& bitmap, const cv::Rect& part) {
    return QImage(bitmap.Pixels(), bitmap.Width(), bitmap.Height(), QImage::Format_ARGB32)
        .copy(part.x, part.y, part.width, part.height);
}

}  // namespace

std::string Figure::Text() const {
    std::string text = name + " " + Number(value, decimals) + unit;
    if (least > -None && most < None)
        text += " (" + Number(least, decimals) + " to " + Number(most, decimals) + ")";
    else if (least > -None)
        text += " (>= " + Number(least, decimals) + ")";
    else if (most < None)
        text += " (<= " + Number(most, decimals) + ")";
    return Holds() ? text : text + " !";
}

void QualityReport::Add(const Subject& subject, std::string retouch, std::string maker, std::vector<Figure> figures) {
    m_rows.push_back({subject.name, std::move(retouch), std::move(maker), std::move(figures)});
}

void QualityReport::Crop(const Subject& subject, const std::string& name, const Bitmap& after,
                         const cv::Rect& part) const {
    if (m_crops.empty() || part.empty()) return;
    constexpr int gap = 6, jpegQuality = 90;
    QImage both(2 * part.width + gap, part.height, QImage::Format_RGB32);
    both.fill(Qt::white);
    QPainter painter(&both);
    painter.drawImage(0, 0, PartOf(subject.picture, part));
    painter.drawImage(part.width + gap, 0, PartOf(after, part));
    painter.end();
    both.save(QString::fromStdString(m_crops + "/" + name + "-" + subject.name + ".jpg"), "JPEG", jpegQuality);
}

QualityCase::QualityCase(const char* caseName, Body caseBody) : name(caseName), body(std::move(caseBody)) {
    Cases().push_back(*this);
}

const std::vector<QualityCase>& QualityCase::All() {
    return Cases();
}
