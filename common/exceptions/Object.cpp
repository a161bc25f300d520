#include "zel/exceptions/Object.h"

namespace ZEL {

Object::~Object() = default;

} // namespace ZEL
