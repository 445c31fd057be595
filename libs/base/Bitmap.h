// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

// A picture in memory: 32-bit straight-alpha ARGB, bytes blue, green, red, alpha, rows of 4 × width bytes without
// padding, from the block allocator.
//
// A value type with copy on write: a copy shares the pixels until one of the two is written. The null bitmap (no
// pixels, 0 × 0) is a legal value everywhere. Different Bitmap objects may be used from different threads even when
// they share pixels; one object is for one thread at a time.
class Bitmap {
  public:
    // The most pixels that any reader may ask for: far above real cameras, and a bound for hostile files.
    static constexpr std::int64_t MaxPixels = std::int64_t{1} << 29;
    static constexpr int MaxSide = 1 << 20;

    Bitmap() noexcept = default;
    // Transparent black. A side below 1 gives the null bitmap. Throws std::bad_alloc, also when the size is not
    // Allowed.
    Bitmap(int width, int height);
    // The same without clearing, for a caller that writes every byte.
    static Bitmap Uninitialised(int width, int height);
    // True for sizes that a bitmap may have.
    static bool Allowed(std::int64_t width, std::int64_t height) noexcept;

    Bitmap(const Bitmap& other) noexcept;
    Bitmap(Bitmap&& other) noexcept;
    Bitmap& operator=(const Bitmap& other) noexcept;
    Bitmap& operator=(Bitmap&& other) noexcept;
    ~Bitmap();

    bool IsNull() const noexcept { return !m_block; }
    explicit operator bool() const noexcept { return m_block != nullptr; }
    int Width() const noexcept { return m_width; }
    int Height() const noexcept { return m_height; }
    std::ptrdiff_t Stride() const noexcept { return std::ptrdiff_t{4} * m_width; }
    std::size_t ByteCount() const noexcept { return std::size_t{4} * m_width * m_height; }

    // The first byte; null for the null bitmap. The const forms never copy, the others give this object its own pixels
    // first (throws std::bad_alloc). Pointers hold until the next write access or assignment.
    const std::uint8_t* Pixels() const noexcept;
    std::uint8_t* MutablePixels();
    // Row y, unchecked.
    const std::uint8_t* Row(int y) const noexcept { return Pixels() + y * Stride(); }

    // A bitmap with pixels of its own at once.
    Bitmap Clone() const;
    // True when both are the very same pixels in memory (so that one costs no memory of its own).
    bool SharesPixelsWith(const Bitmap& other) const noexcept { return m_block == other.m_block; }

    // True when another bitmap has these pixels too, so that a write would copy them first.
    bool IsShared() const noexcept;

    // Sets every pixel to `argb` (0xAARRGGBB).
    void Fill(std::uint32_t argb);

    // True when every alpha byte is 255; true for the null bitmap. Reads all pixels.
    bool IsOpaque() const noexcept;

    // Same size and same bytes.
    friend bool operator==(const Bitmap& a, const Bitmap& b) noexcept;

  private:
    struct Block;
    void Release() noexcept;

    Block* m_block = nullptr;
    int m_width = 0;
    int m_height = 0;
};
