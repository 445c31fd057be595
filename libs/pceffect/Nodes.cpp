// SPDX-License-Identifier: GPL-3.0-or-later
#include "Nodes.h"

#include <algorithm>
#include <cmath>

#include "EffectKernels.h"
#include "Parallel.h"

NodeGrid NodeGrid::For(int width, int height) {
    constexpr int fewest = 160;
    NodeGrid grid{width, height};
    const int longer = std::max(width, height);
    while (longer >> (grid.shift + 1) >= fewest) ++grid.shift;
    const auto nodes = [&](int side) { return ((side - 1) >> grid.shift) + 3; };
    grid.columns = nodes(width);
    grid.rows = nodes(height);
    return grid;
}

double NodeGrid::Diagonal() const {
    return std::hypot(double(width), double(height));
}

NodeLayer BlockMeans(const NodeGrid& grid, const std::uint8_t* pixels) {
    NodeLayer layer(grid.Count());
    const int block = 1 << grid.shift;
    const auto at = [&](int column, int row) -> NodeColour& { return layer[std::size_t(row) * grid.columns + column]; };
    const EffectKernels& kernels = EffectKernelsInUse();
    ForEachBand(grid.BlockRows(), 1, [&](int first, int last) {
        std::vector<std::uint32_t> sums(std::size_t(4) * grid.BlockColumns());
        for (int row = first; row < last; ++row) {
            std::fill(sums.begin(), sums.end(), 0u);
            const int top = row * block, bottom = std::min(grid.height, top + block);
            for (int y = top; y < bottom; ++y)
                kernels.sumBlocks(pixels + std::ptrdiff_t{4} * grid.width * y, grid.width, grid.shift, sums.data());
            for (int column = 0; column < grid.BlockColumns(); ++column) {
                const int across = std::min(block, grid.width - column * block);
                const float scale = 1.0f / (255.0f * static_cast<float>(across) * static_cast<float>(bottom - top));
                for (int i = 0; i < 3; ++i)
                    at(column + 1, row + 1)[i] = static_cast<float>(sums[4 * column + 2 - i]) * scale;
            }
            at(0, row + 1) = at(1, row + 1);
            at(grid.columns - 1, row + 1) = at(grid.columns - 2, row + 1);
        }
    });
    std::copy_n(layer.begin() + grid.columns, grid.columns, layer.begin());
    std::copy_n(layer.end() - 2 * grid.columns, grid.columns, layer.end() - grid.columns);
    return layer;
}

namespace {

// A running mean over 2 * reach + 1 values, the outermost two in part; beyond the ends the last value goes on.
void MeanLine(const NodeColour* in, NodeColour* out, int count, std::ptrdiff_t step, double reach) {
    const int whole = static_cast<int>(reach);
    const float part = static_cast<float>(reach - whole);
    const float scale = 1.0f / (2.0f * static_cast<float>(whole) + 1.0f + 2.0f * part);
    const auto at = [&](int i) -> const NodeColour& { return in[std::clamp(i, 0, count - 1) * step]; };
    for (int c = 0; c < 3; ++c) {
        double sum = 0.0;
        for (int i = -whole; i <= whole; ++i) sum += at(i)[c];
        for (int i = 0; i < count; ++i) {
            const float ends = part * (at(i - whole - 1)[c] + at(i + whole + 1)[c]);
            out[i * step][c] = (static_cast<float>(sum) + ends) * scale;
            sum += double(at(i + whole + 1)[c]) - at(i - whole)[c];
        }
    }
}

// Half width of a mean whose threefold use has this variance.
double ReachOf(double variance) {
    const double each = variance / 3.0;
    // A mean over 2 w + 1 values has the variance w (w + 1) / 3; the part of the outermost adds 2 p (w + 1)^2.
    const int whole = static_cast<int>((std::sqrt(1.0 + 12.0 * each) - 1.0) / 2.0);
    const double length = 2.0 * whole + 1.0, base = whole * (whole + 1.0) * length / 3.0;
    const double far = 2.0 * (whole + 1.0) * (whole + 1.0);
    return whole + std::clamp((each * length - base) / (far - 2.0 * each), 0.0, 1.0);
}

}  // namespace

void BlurLayer(const NodeGrid& grid, double deviation, NodeLayer& layer) {
    const double nodes = deviation / (1 << grid.shift);
    const double reach = ReachOf(nodes * nodes);
    NodeLayer other(layer.size());
    const auto along = [&](int lines, std::ptrdiff_t next, int count, std::ptrdiff_t step) {
        ForEachBand(lines, 8, [&](int first, int last) {
            for (int i = first; i < last; ++i) {
                NodeColour *a = layer.data() + i * next, *b = other.data() + i * next;
                MeanLine(a, b, count, step, reach);
                MeanLine(b, a, count, step, reach);
                MeanLine(a, b, count, step, reach);
            }
        });
        layer.swap(other);
    };
    along(grid.rows, grid.columns, grid.columns, 1);
    along(grid.columns, 1, grid.rows, grid.columns);
}
