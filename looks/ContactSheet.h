// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <QtCore/QString>
#include <QtGui/QImage>
#include <string>
#include <vector>

#include "Bitmap.h"

// A picture in each of some looks, side by side, with a label below each.
struct ContactSheet {
    struct Tile {
        // Changes the picture and says what it is called; an empty label with `error` set when the look can't be read.
        std::function<QString(Bitmap& picture, std::string& error)> apply;
    };

    int tileWidth = 240;
    int columns = 8;
    bool withOriginal = false;  // the unchanged picture first

    // Null with `error` set when a look can't be read.
    QImage Draw(const Bitmap& picture, const std::vector<Tile>& tiles, QString& error) const;
};
