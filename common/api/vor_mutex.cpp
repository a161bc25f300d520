#include "zel/api/vor_mutex.h"

#include <cstdlib>

#include <pthread.h>

namespace {

constexpr int nullMutex = -41;

pthread_mutex_t* native(void* mutex) { return static_cast<pthread_mutex_t*>(mutex); }

} // namespace

int vor_initializeMutex(void* mutex) {
    if (mutex == nullptr)
        return nullMutex;
    pthread_mutexattr_t attributes;
    int result = ::pthread_mutexattr_init(&attributes);
    if (result != 0)
        return result;
    result = ::pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
    if (result == 0)
        result = ::pthread_mutex_init(native(mutex), &attributes);
    const int destroyed = ::pthread_mutexattr_destroy(&attributes);
    return result != 0 ? result : destroyed;
}

int vor_createMutex(void** mutex) {
    if (mutex == nullptr)
        return nullMutex;
    if (*mutex != nullptr)
        return 0;
    *mutex = std::calloc(1, sizeof(pthread_mutex_t));
    return vor_initializeMutex(*mutex);
}

int vor_lockMutex(void* mutex) { return mutex == nullptr ? nullMutex : ::pthread_mutex_lock(native(mutex)); }

int vor_unlockMutex(void* mutex) { return mutex == nullptr ? nullMutex : ::pthread_mutex_unlock(native(mutex)); }

int vor_destroyMutex(void* mutex) { return mutex == nullptr ? nullMutex : ::pthread_mutex_destroy(native(mutex)); }

void vor_deleteMutex(void** mutex) {
    if (mutex == nullptr || vor_destroyMutex(*mutex) != 0)
        return;
    std::free(*mutex);
    *mutex = nullptr;
}
