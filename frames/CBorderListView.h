// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CEffectListView.h"

// List of frames: smaller, square tiles from the skin BorderListItem.xml.
class CBorderListView : public CEffectListView {
    Q_OBJECT

  public:
    explicit CBorderListView(QWidget* parent) : CEffectListView(parent, Tile) {}

    static constexpr LookTile Tile{"BorderListItem.xml", {70, 70}};
};
