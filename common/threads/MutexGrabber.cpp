#include "zel/threads/MutexGrabber.h"

#include "zel/threads/Mutex.h"

#include "threads/Hold.h"

namespace ZEL {

MutexGrabber::MutexGrabber(Mutex& mutex) : mutex_(mutex) { mutex_.lock(0); }

MutexGrabber::~MutexGrabber() {
    if (vor_unlockMutex(&mutex_) != 0)
        dropUnlockFailed();
}

} // namespace ZEL
