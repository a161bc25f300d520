#include "zel/data/IByteArray.h"

namespace ZEL::DATA {

IByteArray::~IByteArray() = default;

} // namespace ZEL::DATA
