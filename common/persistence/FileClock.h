/// @file
/// The clock of the file layer.
#ifndef ZEL_COMMON_PERSISTENCE_FILECLOCK_H
#define ZEL_COMMON_PERSISTENCE_FILECLOCK_H

#include <cstdint>

namespace ZEL {

/// The current second as VOR_FileStats keeps it. Told by the file layer's own source, whose times have 64 bits, so that
/// records of one second are equal beyond 2038, too.
std::uint32_t currentSecond();

} // namespace ZEL

#endif
