// SPDX-License-Identifier: GPL-3.0-or-later
#include "CQuDouQBLogic.h"

#include "DiscFill.h"
#include "PC_Dsp.h"

namespace {

constexpr std::uint32_t MarkColour = 0xFF38EEFF;
// A disc of that diameter takes some hundredths of a second.
constexpr int QuickSide = 128;

// A disc in the mask for as long as this lives.
class Mark {
  public:
    Mark(const QRect& place, Bitmap& mask) : m_place(place), m_mask(mask) { FillEllipse(place, MarkColour, mask); }
    ~Mark() { ClearPart(m_place, m_mask); }
    Mark(const Mark&) = delete;
    Mark& operator=(const Mark&) = delete;

  private:
    const QRect m_place;
    Bitmap& m_mask;
};

}  // namespace

void CQuDouQBLogic::ForgetAll() {
    ClickRepairLogic::ForgetAll();
    m_mask = {};
}

bool CQuDouQBLogic::IsQuick(const QRect& place) const {
    return place.width() * qint64{place.height()} <= QuickSide * QuickSide;
}

bool CQuDouQBLogic::MarkAndFill(int left, int top, int right, int bottom, CObjProgress* progress) {
    return Repair(QRect(QPoint(left, top), QSize(right - left, bottom - top)), progress);
}

bool CQuDouQBLogic::Repair(const QRect& place, CObjProgress* progress) {
    if (!HasPicture()) return false;
    const QSize size = ImageSize();
    if (QSize(m_mask.Width(), m_mask.Height()) != size) m_mask = Bitmap(size.width(), size.height());
    return ChangePlace(place, progress, [&](Bitmap& picture) {
        const Mark mark(place, m_mask);
        return PC_Dsp::ImageProcessWithInpaint(picture.MutablePixels(), size.width(), size.height(), m_mask.Pixels(),
                                               static_cast<int>(MarkColour), PixelsOf(place), progress, 1, 100) != 0;
    });
}
