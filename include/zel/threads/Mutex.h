/// @file
/// Recursive mutex.
#ifndef ZEL_THREADS_MUTEX_H
#define ZEL_THREADS_MUTEX_H

#include "zel/export.h"
#include "zel/threads/Guarded.h"

#include <pthread.h>

namespace ZEL {

/// Recursive lock: the owning thread may lock again and must unlock as often.
///
/// The object is the system's mutex and nothing else. Every operation may be called from any thread. A mutex
/// locked before `fork` cannot be unlocked by the child, whose only thread is a new one to the system.
class ZEL_CAPABILITY ZEL_API Mutex {
public:
    /// @throws ZEL::EXCEPTIONS::LockException entry -1011 if the system refuses the mutex.
    Mutex();

    /// Gives the mutex back to the system. It must not be locked; that is not checked.
    ~Mutex();

    Mutex(const Mutex&) = delete;
    Mutex& operator=(const Mutex&) = delete;

    /// Blocks until the calling thread owns the mutex. Not a cancellation point.
    /// @param timeout accepted and ignored: the call never gives up.
    /// @return 0; a failure is thrown, never returned.
    /// @throws ZEL::EXCEPTIONS::LockException entry -1012.
    int lock(unsigned int timeout) ZEL_ACQUIRE();

    /// Undoes one lock of the calling thread.
    /// @return 0; a failure is thrown, never returned.
    /// @throws ZEL::EXCEPTIONS::LockException entry -1013 if the calling thread does not own the mutex.
    int unlock() ZEL_RELEASE();

private:
    pthread_mutex_t mutex_;
};

} // namespace ZEL

#endif
