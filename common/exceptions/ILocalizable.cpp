#include "zel/exceptions/ILocalizable.h"

namespace ZEL::RT {

ILocalizable::~ILocalizable() = default;

} // namespace ZEL::RT
