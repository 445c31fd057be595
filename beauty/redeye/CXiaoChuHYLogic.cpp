// SPDX-License-Identifier: GPL-3.0-or-later
#include "CXiaoChuHYLogic.h"

#include "PC_Dsp.h"

namespace {

// A square of that side takes some hundredths of a second.
constexpr int QuickSide = 700;

}  // namespace

bool CXiaoChuHYLogic::IsQuick(const QRect& place) const {
    return place.width() * qint64{place.height()} <= QuickSide * QuickSide;
}

bool CXiaoChuHYLogic::Repair(const QRect& place, CObjProgress* progress) {
    return ChangePlace(place, progress,
                       [&](Bitmap& picture) { return PC_Dsp::RedEyeRemove(picture, PixelsOf(place)) != 0; });
}
