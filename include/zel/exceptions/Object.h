/// @file
/// Root of every polymorphic object.
#ifndef ZEL_EXCEPTIONS_OBJECT_H
#define ZEL_EXCEPTIONS_OBJECT_H

#include "zel/export.h"

#include <string>

namespace ZEL {

/// Root of the library's polymorphic types: whatever is one can be rendered as text and deleted through it.
/// Interfaces derive from it virtually when they combine it with a Mixinable. Carries no data. Callers depend on
/// the order of the virtual functions: toString() comes first in every class below.
class ZEL_API Object {
public:
    /// @return a readable rendering; each class says which.
    virtual std::string toString() const = 0;

    virtual ~Object();
};

} // namespace ZEL

#endif
