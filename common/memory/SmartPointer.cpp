#include "zel/memory/SmartPointer.h"

#include "zel/exceptions/ClassCastException.h"
#include "zel/exceptions/NullPointerException.h"

#include "exceptions/Failure.h"

namespace ZEL::RT {

namespace {

constexpr char source[] = "common/memory/SmartPointer";
constexpr EXCEPTIONS::Failure castFailed{-1005, "Cast conversion failed", 15, "checkCast"};
constexpr EXCEPTIONS::Failure nullFollowed{-1004, "A NULL pointer was encountered during the operation", 9,
                                           "checkDeref"};

} // namespace

void checkCast(const void* p) {
    if (p == nullptr)
        EXCEPTIONS::raise<EXCEPTIONS::ClassCastException>(source, castFailed);
}

void checkDeref(const void* p) {
    if (p == nullptr)
        EXCEPTIONS::raise<EXCEPTIONS::NullPointerException>(source, nullFollowed);
}

} // namespace ZEL::RT
