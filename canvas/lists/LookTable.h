// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <QtCore/QSize>
#include <QtCore/QString>
#include <vector>

#include "Bitmap.h"

// What a list says of a look beside its thumbnail.
struct LookInfo {
    QString name;
    std::uint32_t colour = 0;  // 0xAARRGGBB of the name strip
    QString overlay;           // background attribute of what lies over the thumbnail; empty for nothing
};

// The shape of a list's rows: the skin of one, and its thumbnail in logical pixels.
struct LookTile {
    const char* skin = "EffectListItem.xml";
    QSize thumbnail{70, 96};
};

// A list of looks, and the button with a cover that shows it where the tool has several.
struct LookCategory {
    int number = 0;
    QString list;       // name and
    QString listClass;  // class of the list in the skin
    QString button;     // empty where there is but one category
    int coverLook = 0;
    QString coverFile;  // in the folder of covers; empty for a button without one, which stays when the list is empty
    QString clickCode;  // counted when the list is shown; empty for none
    QString lookClick;  // counted when one of its looks is applied; empty for none
};

// The looks of a tool, as its panel of lists shows them. Constant while a panel uses it; Render is called on any
// thread.
class LookTable {
  public:
    virtual ~LookTable() = default;

    // In the order of the pages of the panel's stack.
    virtual const std::vector<LookCategory>& Categories() const = 0;
    // In the order of the list; none for an unknown number.
    virtual std::vector<int> LooksOf(int category) const = 0;
    virtual LookInfo Info(int look) const = 0;
    virtual LookTile Tile() const { return {}; }
    // The thumbnails show the looks on a piece of the user's picture, and so are made anew with it. Otherwise they are
    // made once, on clear ground.
    virtual bool ShowsPicture() const { return true; }
    // Runs a look on a thumbnail's own pixels; false when it failed, and then they are undefined: the row shows the
    // picture without the look, and there is none where no picture is shown.
    virtual bool Render(Bitmap& thumbnail, int look) const = 0;
};
