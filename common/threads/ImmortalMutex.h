#ifndef ZEL_COMMON_THREADS_IMMORTALMUTEX_H
#define ZEL_COMMON_THREADS_IMMORTALMUTEX_H

#include "zel/threads/Mutex.h"

#include <atomic>

namespace ZEL {

// A process-wide mutex that is there whenever it is asked for: before the library's own static initialisers have run,
// when those of other libraries already trace and format dates, and in exit handlers, since it is never destroyed.
// For objects of static storage, which the constexpr constructor initialises before any code runs.
class ZEL_CAPABILITY ImmortalMutex {
public:
    constexpr ImmortalMutex() = default;

    // Throws LockException or std::bad_alloc when the mutex does not exist yet and cannot be made.
    Mutex& get() ZEL_RETURN_CAPABILITY(this) {
        Mutex* mutex = mutex_.load(std::memory_order_acquire);
        return mutex != nullptr ? *mutex : create();
    }

    // For the child of a fork, whose only thread cannot unlock what any thread of its parent locked.
    void renew() { mutex_.store(new Mutex, std::memory_order_release); }

private:
    Mutex& create() {
        Mutex* made = new Mutex;
        Mutex* existing = nullptr;
        if (mutex_.compare_exchange_strong(existing, made, std::memory_order_acq_rel))
            return *made;
        delete made; // another thread was faster
        return *existing;
    }

    std::atomic<Mutex*> mutex_{nullptr};
};

} // namespace ZEL

#endif
