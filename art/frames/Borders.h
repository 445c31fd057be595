// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGui/QColor>

#include <functional>

#include "FrameWriter.h"

// Borders that look the same all along an edge, but for what a tile's length says, and meet at mitred corners.

enum class Edge { Top, Right, Bottom, Left };

// A place of a border: its edge, the way from the outer side in pixels, and the place along the edge, which is 0 where
// a tile begins and repeats with it.
struct BorderPlace {
    Edge edge = Edge::Top;
    double depth = 0;
    double along = 0;
    double x = 0, y = 0;  // from where the tiles begin
    double outer = 0;     // the way from the nearest outer side, whichever edge that is
    // How far inside the picture, from its edges; below 0 outside.
    double fromLeft = 0, fromTop = 0, fromRight = 0, fromBottom = 0;

    // Lit from the upper left: the edges whose outer slope the light meets.
    bool IsLit() const { return edge == Edge::Top || edge == Edge::Left; }
};

// The sides of a border: how far the picture's edge is from the outer side, how far the corners reach (what lies
// between is drawn over the picture), and the length of a tile.
struct BorderSize {
    int margin = 0;
    int corner = 0;
    int tile = 8;
};

// The same on all four sides. Each pixel is the mean of four places, so that mitres are smooth.
MiniFrame MitredBorder(const BorderSize& size, const std::function<QColor(const BorderPlace&)>& colour);
// Sides of their own; nothing reaches over the picture by more than `over`.
MiniFrame MitredBorder(int left, int top, int right, int bottom, int over, int tile,
                       const std::function<QColor(const BorderPlace&, double inside)>& colour);
