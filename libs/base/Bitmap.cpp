// SPDX-License-Identifier: GPL-3.0-or-later
#include "Bitmap.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <new>
#include <utility>

#include "BlockAllocator.h"
#include "Parallel.h"

struct Bitmap::Block {
    std::atomic<int> users{1};
    std::uint8_t* pixels = nullptr;
    std::size_t bytes = 0;

    explicit Block(std::size_t count) : pixels(BlockAllocator::Take(count)), bytes(count) {}
    ~Block() { BlockAllocator::Give(pixels, bytes); }
};

namespace {

// Rows per band that make a band worth a thread.
int BandRows(int width) {
    return std::max(1, 65536 / std::max(1, width));
}

}  // namespace

bool Bitmap::Allowed(std::int64_t width, std::int64_t height) noexcept {
    return width >= 1 && height >= 1 && width <= MaxSide && height <= MaxSide && width * height <= MaxPixels;
}

Bitmap Bitmap::Uninitialised(int width, int height) {
    Bitmap bitmap;
    if (width < 1 || height < 1) return bitmap;
    if (!Allowed(width, height)) throw std::bad_alloc();
    bitmap.m_block = new Block(std::size_t{4} * width * height);
    bitmap.m_width = width;
    bitmap.m_height = height;
    return bitmap;
}

Bitmap::Bitmap(int width, int height) {
    *this = Uninitialised(width, height);
    if (m_block) std::memset(m_block->pixels, 0, m_block->bytes);
}

Bitmap::Bitmap(const Bitmap& other) noexcept
    : m_block(other.m_block), m_width(other.m_width), m_height(other.m_height) {
    if (m_block) m_block->users.fetch_add(1, std::memory_order_relaxed);
}

Bitmap::Bitmap(Bitmap&& other) noexcept
    : m_block(std::exchange(other.m_block, nullptr)),
      m_width(std::exchange(other.m_width, 0)),
      m_height(std::exchange(other.m_height, 0)) {}

Bitmap& Bitmap::operator=(const Bitmap& other) noexcept {
    Bitmap copy(other);
    return *this = std::move(copy);
}

Bitmap& Bitmap::operator=(Bitmap&& other) noexcept {
    std::swap(m_block, other.m_block);
    std::swap(m_width, other.m_width);
    std::swap(m_height, other.m_height);
    if (this != &other) other.Release();
    return *this;
}

Bitmap::~Bitmap() {
    Release();
}

void Bitmap::Release() noexcept {
    if (m_block && m_block->users.fetch_sub(1, std::memory_order_acq_rel) == 1) delete m_block;
    m_block = nullptr;
    m_width = m_height = 0;
}

const std::uint8_t* Bitmap::Pixels() const noexcept {
    return m_block ? m_block->pixels : nullptr;
}

std::uint8_t* Bitmap::MutablePixels() {
    if (!m_block) return nullptr;
    if (m_block->users.load(std::memory_order_acquire) != 1) *this = Clone();
    return m_block->pixels;
}

Bitmap Bitmap::Clone() const {
    Bitmap copy = Uninitialised(m_width, m_height);
    const std::ptrdiff_t stride = Stride();
    ForEachBand(m_height, BandRows(m_width), [&](int first, int last) {
        std::memcpy(copy.m_block->pixels + first * stride, m_block->pixels + first * stride, (last - first) * stride);
    });
    return copy;
}

bool Bitmap::IsShared() const noexcept {
    return m_block && m_block->users.load(std::memory_order_acquire) > 1;
}

void Bitmap::Fill(std::uint32_t argb) {
    if (!m_block) return;
    if (m_block->users.load(std::memory_order_acquire) != 1) *this = Uninitialised(m_width, m_height);
    auto* words = reinterpret_cast<std::uint32_t*>(m_block->pixels);
    std::fill(words, words + m_block->bytes / 4, argb);
}

bool Bitmap::IsOpaque() const noexcept {
    std::atomic<bool> opaque{true};
    const std::uint8_t* pixels = Pixels();
    const std::ptrdiff_t stride = Stride();
    ForEachBand(m_height, BandRows(m_width), [&](int first, int last) {
        for (int y = first; y < last && opaque.load(std::memory_order_relaxed); ++y) {
            std::uint32_t all = 0xFF000000u;
            const auto* row = reinterpret_cast<const std::uint32_t*>(pixels + y * stride);
            for (int x = 0; x < m_width; ++x) all &= row[x];
            if (all != 0xFF000000u) opaque.store(false, std::memory_order_relaxed);
        }
    });
    return opaque;
}

bool operator==(const Bitmap& a, const Bitmap& b) noexcept {
    if (a.m_width != b.m_width || a.m_height != b.m_height) return false;
    return a.m_block == b.m_block || std::memcmp(a.Pixels(), b.Pixels(), a.ByteCount()) == 0;
}
