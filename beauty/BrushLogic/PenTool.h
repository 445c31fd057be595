// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>

#include "Truncate.h"

// What logic objects that are worked with a pen have besides: how wide it is on the screen, and whether it erases.
class PenTool {
  public:
    // Logical pixels of the screen that the pen covers from side to side, at any zoom; held at the least pen and above.
    void SetPenSize(int pen) { m_pen = std::max(m_least, pen); }
    int PenSize() const { return m_pen; }
    // Physical pixels per logical pixel; 1 at first.
    void SetScreenScale(double scale) { m_screenScale = scale; }
    // The pen in physical pixels; 0 only for a pen of 0.
    int PenPixels() const { return m_pen == 0 ? 0 : TruncateSide(m_pen * m_screenScale); }
    // Strokes take the effect away instead of painting it.
    void SetErase(bool erase) { m_erase = erase; }
    bool IsErasing() const { return m_erase; }

  protected:
    PenTool(int pen, int least) : m_least(least), m_pen(pen) {}
    ~PenTool() = default;

  private:
    const int m_least;
    int m_pen;
    double m_screenScale = 1.0;
    bool m_erase = false;
};
