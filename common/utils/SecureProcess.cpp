#include "utils/SecureProcess.h"

#include <sys/auxv.h>

namespace ZEL {

bool isSecureProcess() { return ::getauxval(AT_SECURE) != 0; }

} // namespace ZEL
