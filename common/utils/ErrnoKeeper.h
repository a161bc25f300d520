/// @file
/// Keeps errno for a caller who still has to read it.
#ifndef ZEL_COMMON_UTILS_ERRNOKEEPER_H
#define ZEL_COMMON_UTILS_ERRNOKEEPER_H

#include <cerrno>

namespace ZEL {

/// Gives errno back on leaving the scope, so that tracing, cleaning up or throwing hides no reason of the system's.
class ErrnoKeeper {
public:
    ErrnoKeeper() : kept_(errno) {}
    ~ErrnoKeeper() { errno = kept_; }
    ErrnoKeeper(const ErrnoKeeper&) = delete;
    ErrnoKeeper& operator=(const ErrnoKeeper&) = delete;

private:
    const int kept_;
};

} // namespace ZEL

#endif
