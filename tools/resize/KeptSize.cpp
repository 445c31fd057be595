// SPDX-License-Identifier: GPL-3.0-or-later
#include "KeptSize.h"

#include <algorithm>

#include "SizeLogic.h"
#include "Truncate.h"

namespace {

int Held(int side) {
    return std::clamp(side, CSizeLogic::LeastSide, CSizeLogic::MostSide);
}

}  // namespace

QSize KeptByWidth(int width, double aspect) {
    const int height = TruncateNear(width / aspect);
    if (Held(height) == height) return {width, height};
    return {Held(TruncateNear(Held(height) * aspect)), Held(height)};
}

QSize KeptByHeight(int height, double aspect) {
    return KeptByWidth(height, 1.0 / aspect).transposed();
}
