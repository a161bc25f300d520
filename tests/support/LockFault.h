// Mutexes that fail on demand. The program of tests defines vor_lockMutex and vor_unlockMutex in the library's place
// (LockFault.cpp).
#ifndef ZEL_TESTS_SUPPORT_LOCKFAULT_H
#define ZEL_TESTS_SUPPORT_LOCKFAULT_H

class LockFault {
public:
    enum What { Locking, Unlocking };
    // The thread's next `times` locks or unlocks fail, at most until the end of the scope.
    explicit LockFault(What what, int times = 1);
    ~LockFault();
    LockFault(const LockFault&) = delete;
    LockFault& operator=(const LockFault&) = delete;

    // How often a mutex of this thread was asked for since the program began.
    static int attempts();
};

#endif
