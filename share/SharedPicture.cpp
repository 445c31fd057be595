// SPDX-License-Identifier: GPL-3.0-or-later
#include "SharedPicture.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtGui/QImageReader>

namespace {

// Megabytes of one decoded picture; what the editor writes may be larger than Qt allows by itself.
constexpr int MostMegabytes = 2048;

QByteArray KindOf(const QString& path) {
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    return reader.canRead() ? reader.format() : QByteArray();
}

}  // namespace

SharedPicture::SharedPicture(const QString& path)
    : m_folder(QDir::tempPath() + QStringLiteral("/quince-share-XXXXXX")) {
    QImageReader::setAllocationLimit(MostMegabytes);
    const QByteArray kind = path.isEmpty() ? QByteArray() : KindOf(path);
    if (kind.isEmpty() || !m_folder.isValid()) return;
    const QLatin1String suffix(kind == "jpeg" ? "jpg" : kind.constData());
    const QString file = m_folder.filePath(QStringLiteral("quince.") + suffix);
    if (QFile::copy(path, file)) m_file = file;
}

QImage SharedPicture::Read() const {
    return QImageReader(m_file).read();
}

QImage SharedPicture::Within(QSize size) const {
    QImageReader reader(m_file);
    const QSize whole = reader.size();
    if (whole.width() > size.width() || whole.height() > size.height())
        reader.setScaledSize(whole.scaled(size, Qt::KeepAspectRatio));
    return reader.read();
}
