// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QByteArray>
#include <QtGui/QImage>

#include <array>

// The three containers of frames, as docs/formats.md tells them. The same bytes on every run.

// A simple frame around nothing: corners of these sides, and between them one tile of each edge. A picture in it begins
// `pictureLeft` and `pictureTop` from its corner; where the corners are larger than that they lie over the picture.
struct MiniFrame {
    QImage image;  // left + tileWidth + right wide, top + tileHeight + bottom high
    int left = 0, top = 0, right = 0, bottom = 0;
    int tileWidth = 0, tileHeight = 0;
    int pictureLeft = 0, pictureTop = 0, pictureRight = 0, pictureBottom = 0;
};

// A strip frame: its tiles are cut where the edge ends.
QByteArray StripFile(const MiniFrame& frame);
// A nine-part frame: it shrinks to a whole number of tiles, which cover that much more of the picture.
QByteArray NinePartFile(const MiniFrame& frame);

// An overlay. `data` is the picture's file, whose format is told by `extension`.
struct OverlayFile {
    bool mayRotate = false, keepRatio = false, stretch = false;
    int blendMode = 0;
    QByteArray extension;
    QByteArray data;

    QByteArray Bytes() const;
};

QByteArray PngOf(const QImage& image);
QByteArray JpegOf(const QImage& image, int quality);
