// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "WarpKernels.h"

// The memory of a field of displacements, two floats for each pixel: squares of it are made when something is first
// written there, and everything else is zero. Not for two threads at a time, but that different rows may be written.
class WarpTiles {
  public:
    WarpTiles() = default;
    // A field of this size, all zero.
    WarpTiles(int width, int height);

    // Makes memory for the pixels from (left, top) to (right, bottom), both inside. Throws std::bad_alloc; the field
    // has the same numbers then.
    void Open(int left, int top, int right, int bottom);
    // Writes `count` pairs of row y from x on, where it is open.
    void Write(int x, int y, int count, const float* pairs);
    // The pair of a pixel.
    const float* At(int x, int y) const;

    // For kernels; holds until the next Open.
    WarpFieldView View() const { return {m_tiles.data(), m_columns}; }
    std::size_t ByteCount() const { return m_owned.size() * TileBytes; }
    // Squares in a row, and in all, row by row.
    int Columns() const { return m_columns; }
    int Count() const { return static_cast<int>(m_tiles.size()); }

  private:
    static constexpr std::size_t TileBytes = std::size_t{2} * WarpTileSide * WarpTileSide * sizeof(float);

    struct Giver {
        void operator()(float* tile) const noexcept;
    };
    using Tile = std::unique_ptr<float[], Giver>;
    static Tile NewTile();

    int m_columns = 0;
    std::vector<const float*> m_tiles;  // of the whole field; what is not open is the one tile of zeros
    std::vector<Tile> m_owned;
};
