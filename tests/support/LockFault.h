// Mutexes that fail on demand. The program of tests defines vor_lockMutex and vor_unlockMutex in the library's place
// (LockFault.cpp).
#ifndef ZEL_TESTS_SUPPORT_LOCKFAULT_H
#define ZEL_TESTS_SUPPORT_LOCKFAULT_H

// While one exists, its thread cannot lock, or cannot unlock.
class LockFault {
public:
    enum What { Locking, Unlocking };
    explicit LockFault(What what);
    ~LockFault();
    LockFault(const LockFault&) = delete;
    LockFault& operator=(const LockFault&) = delete;

    // How often a mutex of this thread was asked for since the program began.
    static int attempts();
};

#endif
