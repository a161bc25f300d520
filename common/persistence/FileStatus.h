/// @file
/// The numbers by which the file layer tells success from each kind of failure. Callers test them.
#ifndef ZEL_COMMON_PERSISTENCE_FILESTATUS_H
#define ZEL_COMMON_PERSISTENCE_FILESTATUS_H

namespace ZEL::FileStatus {

enum : int {
    Success = 0,
    InvalidArgument = 1,
    OutOfMemory = 2,
    AccessDenied = 8,
    NotFound = 9,
    SeekInReadFailed = 10,
    ReadFailed = 11,
    WriteFailed = 12,
    OpenFailed = 14,
    LockFailedAndStillOpen = 15,
    CloseFailed = 16,
    LockRefused = 16, ///< Shares its number with CloseFailed: a refused lock whose file was closed again.
    UnlockFailed = 18,
    TruncateFailed = 19,
    SeekInWriteFailed = 20,
    LockHeldAndStillOpen = 21,
};

} // namespace ZEL::FileStatus

#endif
