#include "zel/exceptions/Cloneable.h"

namespace ZEL {

Cloneable::~Cloneable() = default;

} // namespace ZEL
