#include "zel/vor.h"
#include "zel/zel.h"

#include "support/Failure.h"
#include "support/Sanitizers.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <thread>

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/time.h>

using ZEL::EXCEPTIONS::LockException;
using ZEL::RT::AtomicInt;

// So many of the thread's next locks and unlocks fail, or mutexes: the functions below stand in the library's place.
static thread_local int failingLocks = 0, failingUnlocks = 0, failingMutexes = 0, attempts = 0;

ZEL_API int vor_lockMutex(void* mutex) {
    ++attempts;
    return failingLocks > 0 && failingLocks-- > 0 ? EINVAL : ::pthread_mutex_lock(static_cast<pthread_mutex_t*>(mutex));
}

ZEL_API int vor_unlockMutex(void* mutex) {
    return failingUnlocks-- > 0 ? EPERM : ::pthread_mutex_unlock(static_cast<pthread_mutex_t*>(mutex));
}

ZEL_API int vor_initializeMutex(void* mutex) {
    const auto real = reinterpret_cast<int (*)(void*)>(::dlsym(RTLD_NEXT, "vor_initializeMutex"));
    return failingMutexes-- > 0 ? EAGAIN : real(mutex);
}

TEST(FlatMutex, IsRecursiveMadeOnceAndKeptWhileLocked) {
    if (threadSanitizer)
        GTEST_SKIP() << "it takes what is refused here for done";
    void* mutex = nullptr;
    ASSERT_EQ(vor_createMutex(&mutex), 0);
    void* const first = mutex;
    EXPECT_EQ(vor_lockMutex(mutex) + vor_createMutex(&mutex) + vor_lockMutex(mutex), 0);
    std::thread([=] { EXPECT_EQ(vor_unlockMutex(mutex), EPERM) << "another thread's mutex"; }).join();
    for (int locked = 2; locked > 0; --locked) {
        vor_deleteMutex(&mutex);
        EXPECT_EQ(mutex, first) << "still locked";
        EXPECT_EQ(vor_unlockMutex(mutex), 0);
    }
    vor_deleteMutex(&mutex);
    EXPECT_EQ(mutex, nullptr);
}

TEST(Mutex, FailuresNameTheirPlace) {
    failingMutexes = 1;
    EXPECT_EQ(failureOf([] { ZEL::Mutex(); }),
              "LockException ZEL -1011 code: Mutex::Mutex() - Could not initialize mutex "
              "common/threads/Mutex::Mutex() @16");
    ZEL::Mutex mutex;
    const std::string lock = "LockException ZEL -1012 code: Mutex::lock() - Could not lock mutex "
                             "common/threads/Mutex::lock() @35";
    failingLocks = 1;
    EXPECT_EQ(failureOf([&] { mutex.lock(5); }), lock);
    failingLocks = 1;
    EXPECT_EQ(failureOf([&] { const ZEL::MutexGrabber grabber(mutex); }), lock);
    EXPECT_EQ(mutex.lock(0), 0);
    {
        const ZEL::MutexGrabber again(mutex);
        failingUnlocks = 1;
        EXPECT_EQ(failureOf([&] { mutex.unlock(); }),
                  "LockException ZEL -1013 code: Muttex::unlock() - Could not unlock mutex "
                  "common/threads/Mutex::unlock() @44");
        failingUnlocks = 1; // in a destructor, which has nobody to tell
    }
    EXPECT_EQ(mutex.unlock() + mutex.unlock(), 0);
}

TEST(Mutex, AFailureIsNotReportedWithinTheReportOfAnother) {
    ZEL::Tracer("made before the fault", false);
    failingLocks = 1;
    EXPECT_THROW(ZEL::Tracer("traced", false), LockException);
    ZEL::Tracer("traced again", false);
    if (addressSanitizer)
        GTEST_SKIP() << "a reference that cannot be counted is leaked";
    failingLocks = 1'000'000;
    attempts = 0;
    EXPECT_THROW(ZEL::Tracer("traced", false), LockException);
    EXPECT_LT(attempts, 10);
    failingLocks = 0;
}

TEST(Semaphore, CountsFromZeroAndReleasesAtLeastOnce) {
    ZEL::Semaphore semaphore(7, 9);
    EXPECT_EQ(semaphore.release(0) + semaphore.release(2), 0);
    EXPECT_TRUE(semaphore.acquire(0) && semaphore.acquire(0) && semaphore.acquire(0));
    EXPECT_EQ(::sem_trywait(reinterpret_cast<sem_t*>(&semaphore)), -1) << "more than three";
}

TEST(Semaphore, ASignalDoesNotEndTheWait) {
    static ZEL::Semaphore semaphore(0, 0);
    static std::atomic<int> alarms{0};
    struct sigaction action {};
    action.sa_handler = [](int) { ++alarms % 3 == 0 ? semaphore.release(1) : 0; };
    ::sigaction(SIGALRM, &action, nullptr);
    const itimerval often = {{0, 1000}, {0, 1000}}, never = {};
    ::setitimer(ITIMER_REAL, &often, nullptr);
    EXPECT_TRUE(semaphore.acquire(0));
    ::setitimer(ITIMER_REAL, &never, nullptr);
    EXPECT_GE(alarms, 3);
}

TEST(AtomicInt, CountsAcrossThreads) {
    AtomicInt* const counter = AtomicInt::create(41);
    const auto count = [=] {
        for (int i = 0; i < 2000; ++i)
            counter->increment();
    };
    std::thread other(count);
    count();
    other.join();
    EXPECT_EQ(counter->increment(), 4042);
    EXPECT_EQ(counter->decrement(), 4041);
    AtomicInt::destroy(counter);
    AtomicInt::destroy(nullptr);
}
