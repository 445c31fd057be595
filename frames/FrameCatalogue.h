// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>
#include <vector>

#include "Bitmap.h"
#include "FrameParams.h"

// The frames that there are: those that came with the program and those that the user put beside them. A frame is known
// by a number, which stays its own for the whole run, also when its file is gone. Any thread.

// A frame: its file, and the picture that the list shows of it.
struct FrameEntry {
    int kind = FrameNone;  // FrameSimple or FrameOrnate
    QString path;
    QString thumbnail;  // empty for a frame that no list shows

    // In the interface's language where the program knows the file's name, else that name.
    QString Name() const;
};

// Looks through the folders Sucai/Biankuang/JianDan (simple frames) and XuanCai (ornate ones) of the program's data and
// beside the program file. A frame is listed when a picture lies beside its file under the same name; of two of the
// same name the user's counts. Links are passed over. Replaces what was listed before.
void ReadFrames();

// The listed frames of a kind, sorted by the names of their files.
std::vector<int> FramesOfKind(int kind);
// The number of a frame, listed or not.
int FrameNumber(int kind, const QString& path);
// False for a number that no frame has; `entry` is then empty.
bool FindFrame(int number, FrameEntry& entry);

// Draws the thumbnail's file into `thumbnail`, whose size is `scale` times the logical one: as it is, in the middle,
// when it is smaller both ways, else reduced to lie within, on white. False for a file that is no picture or larger
// than a thumbnail has reason to be; nothing has changed then.
bool DrawFrameThumbnail(const QString& file, double scale, Bitmap& thumbnail);
