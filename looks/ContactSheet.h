// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <QtCore/QString>
#include <QtGui/QImage>
#include <vector>

#include "Bitmap.h"

// A picture in each of some looks, side by side, with index and title below each.
struct ContactSheet {
    int tileWidth = 240;
    int columns = 8;
    bool withOriginal = false;  // the unchanged picture first

    // Null with `error` set when a look can't be read.
    QImage Draw(const Bitmap& picture, const std::filesystem::path& program, const std::vector<int>& indexes,
                QString& error) const;
};
