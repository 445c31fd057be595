// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>

// The picture that came: a copy in a folder of this program's own, under a name that tells its true kind, since the
// file that was handed over is called PNG whatever it holds and is written anew by the next share. The copy goes with
// the object. Main thread.
class SharedPicture {
  public:
    // `path` may be empty, missing, or no picture.
    explicit SharedPicture(const QString& path);

    bool IsThere() const { return !m_file.isEmpty(); }
    const QString& File() const { return m_file; }
    QString Folder() const { return m_folder.path(); }
    // The picture whole; null when it cannot be read.
    QImage Read() const;
    // The picture within a size, in its proportions; never enlarged.
    QImage Within(QSize size) const;

  private:
    QTemporaryDir m_folder;
    QString m_file;
};
