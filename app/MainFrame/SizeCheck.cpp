// SPDX-License-Identifier: GPL-3.0-or-later
#include "SizeCheck.h"

#include "AppPaths.h"
#include "IniFile.h"
#include "Truncate.h"

namespace SizeCheck {

bool IsLarge(QSize picture) {
    return picture.width() > LargeSide || picture.height() > LargeSide;
}

QSize Reduced(QSize picture) {
    const double longer = std::max(picture.width(), picture.height());
    const double ratio = double(LargeSide) / longer;
    if (picture.width() <= picture.height()) return {TruncateSide(ratio * picture.width()), LargeSide};
    return {LargeSide, TruncateSide(ratio * picture.height())};
}

int StoredChoice() {
    return GetProfileInt(QStringLiteral("Tip"), QStringLiteral("DlgOpenImageLessen"), Ask,
                         AppPath(QStringLiteral("Config.ini")));
}

}  // namespace SizeCheck
