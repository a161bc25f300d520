/// @file
/// Root of the optional capabilities.
#ifndef ZEL_EXCEPTIONS_MIXINABLE_H
#define ZEL_EXCEPTIONS_MIXINABLE_H

#include "zel/export.h"

namespace ZEL {

/// Root of what a class may offer beside being an Object, such as being cloned or marshalled. Carries no data.
class ZEL_API Mixinable {
public:
    virtual ~Mixinable();
};

} // namespace ZEL

#endif
