// SPDX-License-Identifier: GPL-3.0-or-later
#include "BrushMask.h"

#include "PC_File.h"
#include "Rows.h"

namespace {

int WordsOf(QSize size) {
    return (size.width() + 3) / 4;
}

}  // namespace

BrushMask::BrushMask(QSize size) : m_size(size), m_bytes(WordsOf(size), size.height()) {}

Bitmap BrushMask::Picture() const {
    Bitmap picture = Bitmap::Uninitialised(m_size.width(), m_size.height());
    auto* pixels = reinterpret_cast<std::uint32_t*>(picture.MutablePixels());
    const int width = m_size.width();
    ForEachBand(m_size.height(), GrainOf(width), [&](int first, int last) {
        for (int y = first; y < last; ++y) {
            const std::uint8_t* from = Row(y);
            std::uint32_t* to = pixels + std::ptrdiff_t{y} * width;
            for (int x = 0; x < width; ++x) to[x] = 0xFF000000u | from[x] * 0x010101u;
        }
    });
    return picture;
}

bool BrushMask::Save(const QString& path) const {
    return PC_File::ImageSaveTobinary(m_bytes, path.toStdWString());
}

BrushMask BrushMask::Read(const QString& path, QSize size) {
    BrushMask mask;
    mask.m_bytes = PC_File::ImageReadFrombinary(path.toStdWString());
    if (mask.m_bytes.Width() != WordsOf(size) || mask.m_bytes.Height() != size.height()) return {};
    mask.m_size = size;
    return mask;
}
