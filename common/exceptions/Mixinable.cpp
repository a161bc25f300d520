#include "zel/exceptions/Mixinable.h"

namespace ZEL {

Mixinable::~Mixinable() = default;

} // namespace ZEL
