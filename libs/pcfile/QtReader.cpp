// SPDX-License-Identifier: GPL-3.0-or-later
#include <QtCore/QBuffer>
#include <QtCore/QByteArray>
#include <QtGui/QImage>
#include <QtGui/QImageReader>

#include <cstring>
#include <mutex>

#include "Bitmap.h"
#include "Readers.h"

namespace {

const char* QtName(PictureFormat format) {
    switch (format) {
        case PictureFormat::Ico:
            return "ico";
        case PictureFormat::Wbmp:
            return "wbmp";
        default:
            return nullptr;
    }
}

// Qt has one limit for the process; sizes are checked here before anything is decoded.
void LiftQtLimit() {
    static std::once_flag once;
    std::call_once(once, [] { QImageReader::setAllocationLimit(0); });
}

}  // namespace

bool ReadByQt(PictureFormat format, const std::uint8_t* data, std::size_t size, PictureTarget& target) {
    const char* name = QtName(format);
    if (!name) return false;
    LiftQtLimit();
    QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, name);
    const QSize stated = reader.size();
    if (!Bitmap::Allowed(stated.width(), stated.height())) return false;
    QImage image;
    if (!reader.read(&image) || image.isNull()) return false;
    image.convertTo(QImage::Format_ARGB32);
    std::uint8_t* out = target.Begin(image.width(), image.height());
    if (!out) return false;
    const std::size_t stride = std::size_t{4} * image.width();
    for (int y = 0; y < image.height(); ++y) std::memcpy(out + y * stride, image.constScanLine(y), stride);
    return target.Report(1);
}
