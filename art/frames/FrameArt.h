// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QByteArray>

#include <vector>

// A frame that comes with the program. The file's stem is known to the language files as ids_frame_<stem>.
struct FrameArt {
    const char* stem;
    const char* extension;  // of its container
    QByteArray (*draw)();   // the container's bytes
};

// Drawn for pictures of about 24 megapixels: borders of some 200 pixels.
const std::vector<FrameArt>& SimpleFrameArt();
const std::vector<FrameArt>& OrnateFrameArt();
