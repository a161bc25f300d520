#ifndef ZEL_COMMON_EXCEPTIONS_FAILURE_H
#define ZEL_COMMON_EXCEPTIONS_FAILURE_H

#include "zel/exceptions/throwException.h"

namespace ZEL::EXCEPTIONS {

// One way for an operation to fail, as callers see it. The line is a fact of the interface, which clients match; it
// does not follow the source as that moves.
struct Failure {
    int entryCode;
    const char* text;
    int line;
    const char* operation;
};

// Builds an E for the failure, with whatever E takes ahead of its message, and throws it from the given source place.
template <class E, class... Lead>
[[noreturn, gnu::cold, gnu::noinline]] void raise(const char* file, const Failure& failure, const Lead&... lead) {
    throwException(E(lead..., "ZEL", failure.entryCode, "code", failure.text, nullptr, -1, nullptr), file, failure.line,
                   failure.operation);
}

} // namespace ZEL::EXCEPTIONS

#endif
