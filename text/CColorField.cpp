// SPDX-License-Identifier: GPL-3.0-or-later
#include "CColorField.h"

#include <algorithm>
#include <QtGui/QPainter>

namespace {

// Of the height: from white to the full colours and from these to black.
constexpr double FullAt = 0.5;

}  // namespace

CColorField::CColorField(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
}

QRgb CColorField::ColorAt(QPointF at) const {
    const double x = std::clamp(at.x() / std::max(1, width() - 1), 0.0, 1.0);
    const double y = std::clamp(at.y() / std::max(1, height() - 1), 0.0, 1.0);
    const double saturation = std::min(1.0, y / FullAt), value = std::min(1.0, (1.0 - y) / (1.0 - FullAt));
    return QColor::fromHsvF(static_cast<float>(x * 0.9999), static_cast<float>(saturation), static_cast<float>(value))
               .rgb() &
           0xFFFFFF;
}

void CColorField::paintEvent(QPaintEvent*) {
    const double ratio = devicePixelRatioF();
    QImage field(size() * ratio, QImage::Format_RGB32);
    for (int y = 0; y < field.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(field.scanLine(y));
        for (int x = 0; x < field.width(); ++x) row[x] = 0xFF000000 | ColorAt(QPointF(x, y) / ratio);
    }
    field.setDevicePixelRatio(ratio);
    QPainter(this).drawImage(0, 0, field);
}
