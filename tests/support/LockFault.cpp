#include "support/LockFault.h"

#include "zel/api/vor_mutex.h"

#include <cerrno>

#include <pthread.h>

namespace {
thread_local int failing[2];
bool fails(LockFault::What what) { return failing[what] > 0 && failing[what]-- > 0; }
thread_local int locks;
} // namespace

LockFault::LockFault(What what, int times) { failing[what] = times; }
LockFault::~LockFault() { failing[Locking] = failing[Unlocking] = 0; }
int LockFault::attempts() { return locks; }

ZEL_API int vor_lockMutex(void* mutex) {
    ++locks;
    return fails(LockFault::Locking) ? EINVAL : ::pthread_mutex_lock(static_cast<pthread_mutex_t*>(mutex));
}

ZEL_API int vor_unlockMutex(void* mutex) {
    return fails(LockFault::Unlocking) ? EPERM : ::pthread_mutex_unlock(static_cast<pthread_mutex_t*>(mutex));
}
