// SPDX-License-Identifier: GPL-3.0-or-later
#include "BkImage.h"

#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>
#include <QtGui/QPainter>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOption>

#include "AppPaths.h"

namespace {

QString Attribute(const QString& attributes, const QString& name) {
    const QRegularExpression pattern(name + QStringLiteral("='([^']*)'"));
    return pattern.match(attributes).captured(1);
}

// A path without a root is that of a resource.
QString FullPath(const QString& file) {
    const QString native = NativePath(file);
    return native.startsWith(QLatin1Char('/')) ? native : ResourcePath(native);
}

// The drawing of that file for a screen of this scale.
QString FileAt(const QString& path, double scale) {
    const QFileInfo file(path);
    const QString fine = QStringLiteral("%1/%2@2x.%3").arg(file.path(), file.completeBaseName(), file.suffix());
    return scale > 1.0 && QFileInfo::exists(fine) ? fine : path;
}

}  // namespace

BkImage BkImage::Parse(const QString& attributes) {
    BkImage image;
    image.file = Attribute(attributes, QStringLiteral("file"));
    const QStringList sides = Attribute(attributes, QStringLiteral("dest")).split(QLatin1Char(','));
    if (sides.size() == 4) {
        const QPoint topLeft(sides[0].toInt(), sides[1].toInt());
        image.dest = QRect(topLeft, QSize(sides[2].toInt() - topLeft.x(), sides[3].toInt() - topLeft.y()));
    }
    return image;
}

void BkPicture::Set(const QString& attributes, double scale) {
    m_attributes = attributes;
    const BkImage image = BkImage::Parse(attributes);
    m_dest = image.dest;
    m_pixmap = image.file.isEmpty() ? QPixmap() : QPixmap::fromImage(QImage(FileAt(FullPath(image.file), scale)));
}

void BkPicture::Paint(QPainter& painter, const QRect& control) const {
    if (m_pixmap.isNull()) return;
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(Place(control), m_pixmap);
}

CImageBox::CImageBox(QWidget* parent) : QWidget(parent) {}

void CImageBox::SetImage(const QString& attributes) {
    m_picture.Set(attributes, devicePixelRatioF());
    update();
}

void CImageBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
    m_picture.Paint(painter, rect());
}
