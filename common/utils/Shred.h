/// @file
/// The one way in which the library erases secrets.
#ifndef ZEL_COMMON_UTILS_SHRED_H
#define ZEL_COMMON_UTILS_SHRED_H

#include <cstddef>
#include <cstring>

namespace ZEL {

/// Overwrites memory with zeros, even where nobody reads it afterwards: an ordinary memset ahead of a release is dead
/// to the optimiser, which drops it. Null is allowed if there is nothing to erase.
inline void shred(void* memory, std::size_t size) {
    if (size == 0)
        return;
    std::memset(memory, 0, size);
    asm volatile("" : : "r"(memory) : "memory"); // might read it, for all that the optimiser knows
}

} // namespace ZEL

#endif
