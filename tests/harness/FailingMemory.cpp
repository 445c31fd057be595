// SPDX-License-Identifier: GPL-3.0-or-later
#include "FailingMemory.h"

#include <atomic>
#include <cstdlib>
#include <new>

#include "BlockAllocator.h"

namespace {

// What holds pixels, and nothing that a window or a string is made of.
constexpr std::size_t Large = std::size_t{256} << 10;

std::atomic<int> g_failing{0};
std::atomic<int> g_asked{0};

bool MayTake(std::size_t bytes) {
    return bytes < Large || ++g_asked != g_failing;
}

}  // namespace

void FailingMemory::FailNth(int n) {
    g_failing = n;
    g_asked = 0;
    BlockAllocator::SetGuard(MayTake);
}

int FailingMemory::Asked() {
    return g_asked;
}

bool FailingMemory::HasFailed() {
    return g_failing > 0 && g_asked >= g_failing;
}

// All of the family that takes no alignment: a sanitizer's own would otherwise stand beside these, and tell them apart.
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
    return MayTake(bytes) ? std::malloc(bytes ? bytes : 1) : nullptr;
}

void* operator new(std::size_t bytes) {
    if (void* block = operator new(bytes, std::nothrow)) return block;
    throw std::bad_alloc();
}

void* operator new[](std::size_t bytes, const std::nothrow_t&) noexcept {
    return operator new(bytes, std::nothrow);
}

void* operator new[](std::size_t bytes) {
    return operator new(bytes);
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

void operator delete[](void* block) noexcept {
    std::free(block);
}

void operator delete[](void* block, std::size_t) noexcept {
    std::free(block);
}
