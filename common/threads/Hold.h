#ifndef ZEL_COMMON_THREADS_HOLD_H
#define ZEL_COMMON_THREADS_HOLD_H

#include "zel/api/vor_mutex.h"
#include "zel/threads/Guarded.h"
#include "zel/threads/Mutex.h"

namespace ZEL {

// What Mutex does about a lock that is refused: throws LockException entry -1012 or -1013.
[[noreturn]] void reportLockFailed();
[[noreturn]] void reportUnlockFailed();

// The unlocking of a destructor, which has nobody to tell of a failure.
void dropUnlockFailed();

// What MutexGrabber is made of, with nothing between the caller and the system's lock: for the locks that are taken
// once for every trace record and every count of a reference.
class ZEL_SCOPED_CAPABILITY Hold {
public:
    explicit Hold(Mutex& mutex) ZEL_ACQUIRE(mutex) : mutex_(mutex) {
        if (vor_lockMutex(&mutex_) != 0)
            reportLockFailed();
    }

    ~Hold() ZEL_RELEASE() {
        if (vor_unlockMutex(&mutex_) != 0)
            dropUnlockFailed();
    }

    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

private:
    Mutex& mutex_;
};

} // namespace ZEL

#endif
