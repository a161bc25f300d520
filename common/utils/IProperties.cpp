#include "zel/utils/IProperties.h"

namespace ZEL::I {

IProperties::~IProperties() = default;

} // namespace ZEL::I
