// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <QtCore/QString>
#include <vector>

#include "Bitmap.h"
#include "CUndoRedoParams.h"

struct ImageParams;

// A step of the history: what it is called, and its records. The first record says where its pixels lie, the others how
// one tool made what it shows. The step owns its records. A value without a lock: one thread at a time.
class CHistoryStep {
  public:
    // Adds a record and sorts by `order`; records of equal order stay in the order in which they came. Null is ignored.
    void AddParams(std::unique_ptr<CUndoRedoParams> record);
    // In ascending order of `order`.
    const std::vector<std::unique_ptr<CUndoRedoParams>>& Params() const { return m_params; }

    // The name is the text of `key` in the language file's section "Language".
    void SetNameFromKey(const QString& key);
    const QString& GetName() const { return m_name; }

    // A step with a clone of each record and the same name.
    std::unique_ptr<CHistoryStep> Clone() const;

    // The first record when it is a pixel record, else null.
    ImageParams* Image();
    const ImageParams* Image() const;

    // The pixels of the first record's file; null when there is none, or it is missing or damaged.
    Bitmap ReadImage() const;
    // The path of the first record, or empty.
    QString GetImagePath() const;
    // Writes the first record's bitmap to `path`; on success the record names `path` and lets go of the bitmap. On
    // failure the step is as it was.
    bool SaveImage(const QString& path);
    // Names `path` and lets go of the bitmap without saving it.
    void SetImagePath(const QString& path);

  private:
    // A step in the ring names files; the bitmaps of all its pixel records go when it is settled.
    void DropImages();

    std::vector<std::unique_ptr<CUndoRedoParams>> m_params;
    QString m_name;
};
