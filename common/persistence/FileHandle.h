/// @file
/// The record behind a file handle.
#ifndef ZEL_COMMON_PERSISTENCE_FILEHANDLE_H
#define ZEL_COMMON_PERSISTENCE_FILEHANDLE_H

#include "zel/persistence/vor_file.h"

#include <cstdint>

/// Made with malloc, as C callers expect. Its fields have 32 bits on every target.
struct VOR_FileHandle {
    std::int32_t descriptor; ///< 0 after a successful close.
    std::int32_t lastSyncSeconds;
    std::int32_t lastSyncMicroseconds; ///< With the seconds: when an append was last forced to disk; 0 on open.
};

static_assert(sizeof(VOR_FileHandle) == 12, "three fields of 32 bits, without padding");

#endif
