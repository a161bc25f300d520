#include "zel/exceptions/Marshallable.h"

namespace ZEL {

Marshallable::~Marshallable() = default;

} // namespace ZEL
