#include "support/AllocationFault.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
constexpr int never = 1'000'000'000;
thread_local int spared = never;
thread_local bool failed = false;
std::atomic<long> blocks{0};
} // namespace

AllocationFault::AllocationFault(int first) {
    spared = first;
    failed = false;
}

AllocationFault::~AllocationFault() { spared = never; }

bool AllocationFault::struck() const { return failed; }

long AllocationFault::alive() { return blocks; }

void* operator new(std::size_t size) {
    void* const block = spared-- > 0 ? std::malloc(size) : nullptr;
    if (block == nullptr) {
        spared = 0;
        failed = true;
        throw std::bad_alloc();
    }
    ++blocks;
    return block;
}

void operator delete(void* block) noexcept {
    blocks -= block != nullptr;
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept { operator delete(block); }
