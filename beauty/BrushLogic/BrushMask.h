// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <QtCore/QSize>
#include <QtCore/QString>

#include "Bitmap.h"

// How much of each picture pixel is painted: one byte a pixel, 0 nothing, 255 all. A value; copies share their bytes
// until one is written.
class BrushMask {
  public:
    BrushMask() = default;
    // Nothing painted. May throw std::bad_alloc.
    explicit BrushMask(QSize size);

    bool IsNull() const { return m_bytes.IsNull(); }
    QSize Size() const { return m_size; }
    const std::uint8_t* Row(int y) const { return m_bytes.Row(y); }
    // May throw std::bad_alloc the first time after it was copied.
    std::uint8_t* MutableBytes() { return m_bytes.MutablePixels(); }
    std::ptrdiff_t Stride() const { return m_bytes.Stride(); }

    // An opaque grey picture of it, for what draws pictures.
    Bitmap Picture() const;

    bool Save(const QString& path) const;
    // Null when the file is missing or damaged, or not of a mask of this size.
    static BrushMask Read(const QString& path, QSize size);

    friend bool operator==(const BrushMask& a, const BrushMask& b) {
        return a.m_size == b.m_size && a.m_bytes == b.m_bytes;
    }

  private:
    QSize m_size;
    // Four mask bytes in the place of a pixel; the last of a row may have none left of the picture.
    Bitmap m_bytes;
};
