#include "support/LockFault.h"

#include "zel/api/vor_mutex.h"

#include <cerrno>
#include <pthread.h>

namespace {
thread_local bool failing[2];
thread_local int locks;
} // namespace

LockFault::LockFault(What what) { failing[what] = true; }
LockFault::~LockFault() { failing[Locking] = failing[Unlocking] = false; }
int LockFault::attempts() { return locks; }

ZEL_API int vor_lockMutex(void* mutex) {
    ++locks;
    return failing[LockFault::Locking] ? EINVAL : ::pthread_mutex_lock(static_cast<pthread_mutex_t*>(mutex));
}

ZEL_API int vor_unlockMutex(void* mutex) {
    return failing[LockFault::Unlocking] ? EPERM : ::pthread_mutex_unlock(static_cast<pthread_mutex_t*>(mutex));
}
