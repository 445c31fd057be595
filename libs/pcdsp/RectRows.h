// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Bitmap.h"
#include "Resampler.h"

// What PC_Dsp::ResampleRect draws at its best quality, a row at a time: whatever is done to it next finds it in
// the cache, and the whole never needs memory. The bytes are the same. Rows may be made by several threads at once.
class RectRows {
  public:
    // The rectangle of `source` at (sx, sy) of size sw x sh, all above 0, over `width` x `height` pixels.
    RectRows(const Bitmap& source, double sx, double sy, double sw, double sh, int width, int height,
             FourthByte fourth = FourthByte::Alpha)
        : m_source(source),
          m_columns(source.Width(), sx, sw, width, ViewFilter(sw, width, ResampleQuality::Best)),
          m_rows(source.Height(), sy, sh, height, ViewFilter(sh, height, ResampleQuality::Best)),
          m_fourth(fourth) {}

    // Calls use(y, row) for the rows first to last - 1; the row may be written, and is gone with the next one.
    template <class Use>
    void ForEach(int first, int last, const Use& use) const {
        const PixelView view{m_source.Pixels(), m_source.Width(), m_source.Height(), m_source.Stride()};
        ResampleRows(view, m_columns, m_rows, first, last, m_fourth, use);
    }

  private:
    const Bitmap m_source;
    const ResampleTaps m_columns, m_rows;
    const FourthByte m_fourth;
};
