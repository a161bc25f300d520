/// @file
/// Capability: being copied through a base pointer.
#ifndef ZEL_EXCEPTIONS_CLONEABLE_H
#define ZEL_EXCEPTIONS_CLONEABLE_H

#include "zel/exceptions/Mixinable.h"

namespace ZEL {

/// What can be copied through a base pointer. Virtual functions in slot order.
class ZEL_API Cloneable : public Mixinable {
public:
    ~Cloneable() override;

    /// @return a new, independent copy, which the caller deletes. Overridden covariantly.
    virtual Cloneable* clone() const = 0;
};

} // namespace ZEL

#endif
