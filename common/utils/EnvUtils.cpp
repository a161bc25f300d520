#include "zel/utils/EnvUtils.h"

#include "zel/utils/vor_runtime.h"

namespace ZEL::RT {

std::string EnvUtils::GetEnv(const std::string& name, const std::string& fallback) {
    std::string result = fallback;
    char* value = nullptr;
    std::size_t length = 0;
    vor_safeGetenv(&value, &length, name.c_str());
    if (length != 0) {
        result = value;
        vor_safeGetenvFree(value);
    }
    return result;
}

} // namespace ZEL::RT
