#include "zel/threads/Mutex.h"

#include "zel/api/vor_mutex.h"
#include "zel/exceptions/LockException.h"

#include "exceptions/Failure.h"

namespace ZEL {

namespace {

using EXCEPTIONS::Failure;

constexpr char source[] = "common/threads/Mutex";
constexpr Failure initialiseFailed{-1011, "Mutex::Mutex() - Could not initialize mutex", 16, "Mutex"};
constexpr Failure lockFailed{-1012, "Mutex::lock() - Could not lock mutex", 35, "lock"};
// Clients match this text as it is spelled.
constexpr Failure unlockFailed{-1013, "Muttex::unlock() - Could not unlock mutex", 44, "unlock"};

void check(int result, const Failure& failure) {
    if (result != 0)
        EXCEPTIONS::raise<EXCEPTIONS::LockException>(source, failure);
}

} // namespace

static_assert(sizeof(Mutex) == sizeof(pthread_mutex_t), "callers keep a mutex where they would keep the system's");
static_assert(sizeof(void*) != 4 || sizeof(Mutex) == 24);

Mutex::Mutex() { check(vor_initializeMutex(&mutex_), initialiseFailed); }

Mutex::~Mutex() { vor_destroyMutex(&mutex_); }

int Mutex::lock(unsigned int) {
    check(vor_lockMutex(&mutex_), lockFailed);
    return 0;
}

int Mutex::unlock() {
    check(vor_unlockMutex(&mutex_), unlockFailed);
    return 0;
}

} // namespace ZEL
