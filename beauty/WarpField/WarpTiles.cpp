// SPDX-License-Identifier: GPL-3.0-or-later
#include "WarpTiles.h"

#include <algorithm>
#include <cstring>

#include "BlockAllocator.h"

namespace {

constexpr float Zeros[2 * WarpTileSide * WarpTileSide] = {};

int TilesFor(int length) {
    return (length + WarpTileSide - 1) >> WarpTileShift;
}

}  // namespace

void WarpTiles::Giver::operator()(float* tile) const noexcept {
    BlockAllocator::Give(reinterpret_cast<std::uint8_t*>(tile), TileBytes);
}

WarpTiles::Tile WarpTiles::NewTile() {
    Tile tile(reinterpret_cast<float*>(BlockAllocator::Take(TileBytes)));
    std::memset(tile.get(), 0, TileBytes);
    return tile;
}

WarpTiles::WarpTiles(int width, int height)
    : m_columns(TilesFor(width)), m_tiles(std::size_t(m_columns) * TilesFor(height), Zeros) {}

void WarpTiles::Open(int left, int top, int right, int bottom) {
    for (int row = top >> WarpTileShift; row <= bottom >> WarpTileShift; ++row)
        for (int column = left >> WarpTileShift; column <= right >> WarpTileShift; ++column) {
            const float*& tile = m_tiles[std::size_t(row) * m_columns + column];
            if (tile != Zeros) continue;
            m_owned.push_back(NewTile());
            tile = m_owned.back().get();
        }
}

void WarpTiles::Write(int x, int y, int count, const float* pairs) {
    while (count > 0) {
        const int here = std::min(count, WarpTileSide - (x & (WarpTileSide - 1)));
        std::memcpy(const_cast<float*>(At(x, y)), pairs, std::size_t(here) * 2 * sizeof(float));
        x += here;
        pairs += std::ptrdiff_t{2} * here;
        count -= here;
    }
}

const float* WarpTiles::At(int x, int y) const {
    return View().At(x, y);
}
