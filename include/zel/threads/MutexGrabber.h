/// @file
/// Scoped holder of a mutex.
#ifndef ZEL_THREADS_MUTEXGRABBER_H
#define ZEL_THREADS_MUTEXGRABBER_H

#include "zel/export.h"
#include "zel/threads/Guarded.h"

namespace ZEL {

class Mutex;

/// Holds a mutex for the length of a scope, however the scope is left.
class ZEL_SCOPED_CAPABILITY ZEL_API MutexGrabber {
public:
    /// Locks \p mutex, which must outlive this object.
    /// @throws ZEL::EXCEPTIONS::LockException entry -1012; nothing is held then.
    explicit MutexGrabber(Mutex& mutex) ZEL_ACQUIRE(mutex);

    /// Unlocks. A failure is dropped, since a destructor has nobody to tell.
    ~MutexGrabber() ZEL_RELEASE();

    MutexGrabber(const MutexGrabber&) = delete;
    MutexGrabber& operator=(const MutexGrabber&) = delete;

private:
    Mutex& mutex_;
};

} // namespace ZEL

#endif
