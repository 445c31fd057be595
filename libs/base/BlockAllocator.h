// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

// Memory of bitmaps. Page faults on fresh memory cost several times the copy that goes into it, so large blocks are
// aligned for huge pages, kept when they are given back, and handed out again to the next bitmap of about that size.
// Every function may be called on any thread.
namespace BlockAllocator {

// A block of at least `bytes` bytes, aligned to 64. Contents are undefined. Throws std::bad_alloc.
std::uint8_t* Take(std::size_t bytes);

// Gives back what Take(bytes) gave; null is legal.
void Give(std::uint8_t* block, std::size_t bytes) noexcept;

// Returns kept blocks to the system, for when a picture is closed.
void Trim() noexcept;

// For tests: asked before each block is given; its false is want of memory. Null asks nobody. May come while blocks
// are taken on other threads.
void SetGuard(bool (*mayTake)(std::size_t bytes));

// Bytes kept for reuse at this moment, and the most that is ever kept.
std::size_t KeptBytes() noexcept;
constexpr std::size_t MaxKeptBytes = std::size_t{224} << 20;

}  // namespace BlockAllocator
