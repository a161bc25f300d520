/// @file
/// Environment variables as strings.
#ifndef ZEL_UTILS_ENVUTILS_H
#define ZEL_UTILS_ENVUTILS_H

#include "zel/export.h"

#include <string>

namespace ZEL::RT {

/// Static operations on the environment of the process.
class ZEL_API EnvUtils {
public:
    /// The value of the variable \c name, or \c fallback if it is not set or is set to the empty text.
    /// Must not run while another thread changes the environment.
    static std::string GetEnv(const std::string& name, const std::string& fallback);
};

} // namespace ZEL::RT

#endif
