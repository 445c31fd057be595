// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <vector>

// Everything that position does to a picture is smooth, so it is calculated at nodes some pixels apart and spread
// between them. The nodes stand on the middles of square blocks of 2^shift pixels, with one more beyond each border.
struct NodeGrid {
    int width = 0, height = 0;  // of the picture, in pixels
    int shift = 0;
    int columns = 0, rows = 0;  // of nodes, those beyond the border included

    // For a picture of this size: about 160 to 320 nodes along the longer side.
    static NodeGrid For(int width, int height);

    int BlockColumns() const { return columns - 2; }
    int BlockRows() const { return rows - 2; }
    std::size_t Count() const { return std::size_t(columns) * rows; }
    // Place of a node in pixels from the picture's corner.
    double X(int column) const { return (column - 0.5) * (1 << shift); }
    double Y(int row) const { return (row - 0.5) * (1 << shift); }
    double Diagonal() const;
};

// Three numbers at each node, 0 to 1.
using NodeColour = std::array<float, 3>;  // red, green, blue
using NodeLayer = std::vector<NodeColour>;

// The means of the blocks; beyond the border the nearest block goes on. Alpha is not looked at.
NodeLayer BlockMeans(const NodeGrid& grid, const std::uint8_t* pixels);

// Gaussian blur by three running means each way, of a standard deviation in pixels.
void BlurLayer(const NodeGrid& grid, double deviation, NodeLayer& layer);
