// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>

#include "Bitmap.h"

// The picture as it came into a tool that makes every result from it anew. It lies in a file, so that a large picture
// does not stay in memory beside its result; where the file can't be written it is kept in memory.
//
// One thread at a time.
class EntryPicture {
  public:
    // The file's path; its folder is made when it is missing.
    explicit EntryPicture(QString path);
    // Deletes the file.
    ~EntryPicture();
    EntryPicture(const EntryPicture&) = delete;
    EntryPicture& operator=(const EntryPicture&) = delete;

    void Keep(const Bitmap& picture);
    // Null when there is none or the file can't be read.
    Bitmap Read() const;

    const QString& Path() const { return m_path; }

  private:
    QString m_path;
    // Null where the picture lies in the file.
    Bitmap m_kept;
};
