#include "zel/threads/MutexGrabber.h"

#include "zel/threads/Mutex.h"

namespace ZEL {

MutexGrabber::MutexGrabber(Mutex& mutex) : mutex_(mutex) { mutex_.lock(0); }

MutexGrabber::~MutexGrabber() {
    try {
        mutex_.unlock();
    } catch (...) {
        // Happens in the child of a fork, whose mutexes are made anew while the forking thread still holds them.
    }
}

} // namespace ZEL
