// SPDX-License-Identifier: GPL-3.0-or-later
#include "BlockAllocator.h"

#include <atomic>
#include <cstdlib>
#include <mutex>
#include <new>
#include <vector>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace BlockAllocator {
namespace {

constexpr std::size_t HugePage = std::size_t{2} << 20;
// Below this the C library's own allocator is as good: its pages stay mapped.
constexpr std::size_t LargeBlock = HugePage / 2;

std::atomic<bool (*)(std::size_t bytes)> g_guard{nullptr};

std::size_t RoundUp(std::size_t bytes, std::size_t unit) {
    if (bytes > SIZE_MAX - unit) throw std::bad_alloc();
    return (bytes + unit - 1) / unit * unit;
}

std::uint8_t* TakeFresh(std::size_t rounded, std::size_t alignment) {
    void* block = std::aligned_alloc(alignment, rounded);
    if (!block) throw std::bad_alloc();
#ifdef __linux__
    if (alignment == HugePage) madvise(block, rounded, MADV_HUGEPAGE);
#endif
    return static_cast<std::uint8_t*>(block);
}

struct Kept {
    std::uint8_t* block;
    std::size_t bytes;
};

// Never destroyed: bitmaps in other process-wide objects may be given back after this file's statics are gone.
struct Pool {
    std::mutex lock;
    std::vector<Kept> kept;  // oldest first
    std::size_t bytes = 0;
};

Pool& ThePool() {
    static Pool* pool = new Pool;
    return *pool;
}

// The smallest kept block that holds `bytes` without wasting more than a quarter; null when there is none.
std::uint8_t* TakeKept(std::size_t bytes, std::size_t& blockBytes) {
    Pool& pool = ThePool();
    const std::lock_guard guard(pool.lock);
    auto best = pool.kept.end();
    for (auto it = pool.kept.begin(); it != pool.kept.end(); ++it) {
        const bool fits = it->bytes >= bytes && it->bytes - bytes <= bytes / 4;
        if (fits && (best == pool.kept.end() || it->bytes < best->bytes)) best = it;
    }
    if (best == pool.kept.end()) return nullptr;
    std::uint8_t* block = best->block;
    blockBytes = best->bytes;
    pool.bytes -= best->bytes;
    pool.kept.erase(best);
    return block;
}

// A large block remembers its true size in front of the pixels, since it may be handed out for less.
constexpr std::size_t HeaderBytes = 64;

std::uint8_t* WithHeader(std::uint8_t* base, std::size_t blockBytes) {
    *reinterpret_cast<std::size_t*>(base) = blockBytes;
    return base + HeaderBytes;
}

}  // namespace

std::uint8_t* Take(std::size_t bytes) {
    const auto mayTake = g_guard.load(std::memory_order_relaxed);
    if (mayTake && !mayTake(bytes)) throw std::bad_alloc();
    if (bytes < LargeBlock) return TakeFresh(RoundUp(bytes ? bytes : 1, 64), 64);
    const std::size_t rounded = RoundUp(RoundUp(bytes, 64) + HeaderBytes, HugePage);
    std::size_t blockBytes = rounded;
    std::uint8_t* base = TakeKept(rounded, blockBytes);
    if (!base) {
        try {
            base = TakeFresh(rounded, HugePage);
        } catch (const std::bad_alloc&) {
            Trim();
            base = TakeFresh(rounded, HugePage);
        }
    }
    return WithHeader(base, blockBytes);
}

void Give(std::uint8_t* block, std::size_t bytes) noexcept {
    if (!block) return;
    if (bytes < LargeBlock) {
        std::free(block);
        return;
    }
    std::uint8_t* base = block - HeaderBytes;
    const std::size_t blockBytes = *reinterpret_cast<std::size_t*>(base);
    Pool& pool = ThePool();
    {
        const std::lock_guard guard(pool.lock);
        try {
            pool.kept.push_back({base, blockBytes});
            pool.bytes += blockBytes;
        } catch (const std::bad_alloc&) {
            std::free(base);
            return;
        }
        while (pool.bytes > MaxKeptBytes) {
            std::free(pool.kept.front().block);
            pool.bytes -= pool.kept.front().bytes;
            pool.kept.erase(pool.kept.begin());
        }
    }
}

void SetGuard(bool (*mayTake)(std::size_t bytes)) {
    g_guard = mayTake;
}

void Trim() noexcept {
    Pool& pool = ThePool();
    const std::lock_guard guard(pool.lock);
    for (const Kept& kept : pool.kept) std::free(kept.block);
    pool.kept.clear();
    pool.bytes = 0;
}

std::size_t KeptBytes() noexcept {
    Pool& pool = ThePool();
    const std::lock_guard guard(pool.lock);
    return pool.bytes;
}

}  // namespace BlockAllocator
