// Looks up the place of a virtual function in its table.
#ifndef ZEL_TESTS_SUPPORT_SLOTS_H
#define ZEL_TESTS_SUPPORT_SLOTS_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

// The slot of a virtual member function in the table of the class that declares it, counted from 0; a virtual
// destructor takes two slots. SIZE_MAX for a function that is not virtual.
template <class F> std::size_t slotOf(F function) {
    static_assert(std::is_member_function_pointer_v<F>);
    // On x86 the first word of such a pointer is an address, always even, or the offset in the table plus one.
    std::uintptr_t word;
    std::memcpy(&word, &function, sizeof word);
    return word % 2 == 1 ? (word - 1) / sizeof(void*) : SIZE_MAX;
}

#endif
