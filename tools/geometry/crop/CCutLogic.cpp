// SPDX-License-Identifier: GPL-3.0-or-later
#include "CCutLogic.h"

#include <algorithm>
#include <cmath>

#include "PC_Dsp.h"
#include "Truncate.h"

CCutLogic::CCutLogic(CHistoryManager& history) : SnapshotLogic(CropTool, history) {}

bool CCutLogic::Crop(double x, double y, double w, double h) {
    if (!HasPicture() || !std::isfinite(x + y + w + h)) return false;
    const QSize image = ImageSize();
    const int left = std::clamp(Truncate(x), 0, image.width() - 1);
    const int top = std::clamp(Truncate(y), 0, image.height() - 1);
    const QSize size(std::clamp(Truncate(w), 1, image.width() - left),
                     std::clamp(Truncate(h), 1, image.height() - top));
    if (size == image) return false;
    return Whole([&] {
        Replace(PC_Dsp::Clone(Picture(), left, top, size.width(), size.height()));
        return true;
    });
}
