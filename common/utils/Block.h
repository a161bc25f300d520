/// @file
/// Memory that is overwritten as soon as it is there.
#ifndef ZEL_COMMON_UTILS_BLOCK_H
#define ZEL_COMMON_UTILS_BLOCK_H

#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace ZEL {

/// Blocks above this size the C library maps afresh, unless it happens to have one: they come as zeros at no cost, and
/// what nobody writes to never becomes memory. Smaller ones it would have to clear, most of them in vain.
constexpr std::size_t largestUncleared = 32 << 20;

/// Memory for a block of that size, to be released with free; null if there is none. What it holds is open until
/// clearBehind() is called.
inline void* allocateBlock(std::size_t size) {
    return size > largestUncleared ? std::calloc(size, 1) : std::malloc(size);
}

/// Makes zeros of all that nobody has written to: what lies behind the first \p filled bytes of a block of that size.
inline void clearBehind(void* block, std::size_t filled, std::size_t size) {
    if (size <= largestUncleared)
        std::memset(static_cast<char*>(block) + filled, 0, size - filled);
}

} // namespace ZEL

#endif
