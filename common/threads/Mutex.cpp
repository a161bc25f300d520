#include "zel/threads/Mutex.h"

#include "zel/api/vor_mutex.h"
#include "zel/exceptions/LockException.h"

#include "exceptions/Failure.h"
#include "threads/Hold.h"

namespace ZEL {

namespace {

using EXCEPTIONS::Failure;

constexpr char source[] = "common/threads/Mutex";
constexpr Failure initialiseFailed{-1011, "Mutex::Mutex() - Could not initialize mutex", 16, "Mutex"};
constexpr Failure lockFailed{-1012, "Mutex::lock() - Could not lock mutex", 35, "lock"};
// Clients match this text as it is spelled.
constexpr Failure unlockFailed{-1013, "Muttex::unlock() - Could not unlock mutex", 44, "unlock"};

// Reporting a failure traces it and counts references to it, both under locks, which may fail as well. Those failures
// have nobody to be reported to and must not start over: the report does without the trace or the reference.
class FailedWhileReporting {};

thread_local bool reporting __attribute__((tls_model("initial-exec"))) = false;

class Reporting {
public:
    Reporting() { reporting = true; }
    ~Reporting() { reporting = false; }
    Reporting(const Reporting&) = delete;
    Reporting& operator=(const Reporting&) = delete;
};

[[noreturn, gnu::cold, gnu::noinline]] void report(const Failure& failure) {
    if (reporting)
        throw FailedWhileReporting();
    const Reporting scope;
    EXCEPTIONS::raise<EXCEPTIONS::LockException>(source, failure);
}

} // namespace

static_assert(sizeof(Mutex) == sizeof(pthread_mutex_t), "callers keep a mutex where they would keep the system's");
static_assert(sizeof(void*) != 4 || sizeof(Mutex) == 24);

void reportLockFailed() { report(lockFailed); }

void reportUnlockFailed() { report(unlockFailed); }

void dropUnlockFailed() {
    try {
        reportUnlockFailed();
    } catch (...) {
        // Happens in the child of a fork, whose mutexes are made anew while the forking thread still holds them.
    }
}

Mutex::Mutex() {
    if (vor_initializeMutex(&mutex_) != 0)
        report(initialiseFailed);
}

Mutex::~Mutex() { vor_destroyMutex(&mutex_); }

int Mutex::lock(unsigned int) {
    if (vor_lockMutex(&mutex_) != 0)
        reportLockFailed();
    return 0;
}

int Mutex::unlock() {
    if (vor_unlockMutex(&mutex_) != 0)
        reportUnlockFailed();
    return 0;
}

} // namespace ZEL
