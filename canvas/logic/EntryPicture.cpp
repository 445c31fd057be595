// SPDX-License-Identifier: GPL-3.0-or-later
#include "EntryPicture.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <utility>

#include "AppPaths.h"
#include "PC_File.h"

EntryPicture::EntryPicture(QString path) : m_path(std::move(path)) {}

EntryPicture::~EntryPicture() {
    QFile::remove(m_path);
}

void EntryPicture::Keep(const Bitmap& picture) {
    MakeDirs(QFileInfo(m_path).path());
    const bool written = PC_File::ImageSaveTobinary(picture, m_path.toStdWString());
    m_kept = written ? Bitmap() : picture;
}

Bitmap EntryPicture::Read() const {
    return m_kept ? m_kept : PC_File::ImageReadFrombinary(m_path.toStdWString());
}
