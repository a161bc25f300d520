#include "zel/vor.h"
#include "zel/zel.h"

#include "support/LockFault.h"
#include "support/Sanitizers.h"

#include <csignal>
#include <thread>

#include <gtest/gtest.h>

using ZEL::EXCEPTIONS::LockException;
using ZEL::RT::AtomicInt;

namespace {

TEST(FlatMutex, NullHasItsOwnCode) {
    EXPECT_EQ(vor_initializeMutex(nullptr), -41);
    EXPECT_EQ(vor_createMutex(nullptr), -41);
    EXPECT_EQ(vor_destroyMutex(nullptr), -41);
    void* none = nullptr;
    vor_deleteMutex(nullptr);
    vor_deleteMutex(&none);
}

TEST(FlatMutex, IsRecursiveMadeOnceAndKeptWhileLocked) {
    if (threadSanitizer)
        GTEST_SKIP() << "it takes what is refused here for done";
    void* mutex = nullptr;
    ASSERT_EQ(vor_createMutex(&mutex), 0);
    void* const first = mutex;
    EXPECT_EQ(vor_lockMutex(mutex), 0);
    EXPECT_EQ(vor_createMutex(&mutex), 0);
    EXPECT_EQ(vor_lockMutex(mutex), 0);
    std::thread([=] { EXPECT_EQ(vor_unlockMutex(mutex), EPERM) << "another thread's mutex"; }).join();
    EXPECT_EQ(vor_unlockMutex(mutex), 0);
    vor_deleteMutex(&mutex);
    EXPECT_EQ(mutex, first) << "still locked once";
    EXPECT_EQ(vor_unlockMutex(mutex), 0);
    vor_deleteMutex(&mutex);
    EXPECT_EQ(mutex, nullptr);
}

// Code, text and place of a lock failure.
template <class Action> std::string failureOf(Action action) {
    try {
        action();
    } catch (const LockException& e) {
        return std::to_string(e.getEntryCode()) + '|' + e.what() + '|' + e.getExecutionPoint();
    }
    return "nothing";
}

TEST(Mutex, FailuresNameTheirPlace) {
    ZEL::Mutex mutex;
    const std::string lock = "-1012|Mutex::lock() - Could not lock mutex|common/threads/Mutex::lock() @35";
    EXPECT_EQ(failureOf([&] {
                  const LockFault fault(LockFault::Locking);
                  mutex.lock(5);
              }),
              lock);
    EXPECT_EQ(failureOf([&] {
                  const LockFault fault(LockFault::Locking);
                  const ZEL::MutexGrabber grabber(mutex);
              }),
              lock);
    EXPECT_EQ(mutex.lock(0), 0);
    {
        const ZEL::MutexGrabber again(mutex);
        const LockFault fault(LockFault::Unlocking);
        EXPECT_EQ(failureOf([&] { mutex.unlock(); }),
                  "-1013|Muttex::unlock() - Could not unlock mutex|common/threads/Mutex::unlock() @44");
    }
    EXPECT_EQ(mutex.unlock(), 0);
}

TEST(Tracing, AFailingLockPassesOutOnce) {
    const LockFault fault(LockFault::Locking);
    EXPECT_THROW(ZEL::Tracer("traced", false), LockException);
    ZEL::Tracer("traced again", false);
}

TEST(Tracing, LocksThatAlwaysFailEndInOneException) {
    if (addressSanitizer)
        GTEST_SKIP() << "a reference that cannot be counted is leaked";
    ZEL::Tracer("made before the fault", false);
    const LockFault fault(LockFault::Locking, 1'000'000);
    const int before = LockFault::attempts();
    EXPECT_THROW(ZEL::Tracer("traced", false), LockException);
    EXPECT_LT(LockFault::attempts() - before, 10) << "a failure was reported within the report of another";
}

TEST(Semaphore, CountsFromZeroAndReleasesAtLeastOnce) {
    ZEL::Semaphore semaphore(7, 9);
    EXPECT_EQ(semaphore.release(0), 0);
    EXPECT_EQ(semaphore.release(2), 0);
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(semaphore.acquire(0));
    sem_t* native = reinterpret_cast<sem_t*>(&semaphore);
    int count = -1;
    ::sem_getvalue(native, &count);
    EXPECT_EQ(count, 0);
}

TEST(Semaphore, ASignalDoesNotEndTheWait) {
    struct sigaction action {};
    action.sa_handler = [](int) {};
    ::sigaction(SIGUSR1, &action, nullptr);
    ZEL::Semaphore ready(0, 0);
    ZEL::Semaphore semaphore(0, 0);
    bool acquired = false;
    std::thread waiting([&] {
        ready.release(1);
        acquired = semaphore.acquire(0);
    });
    ready.acquire(0);
    for (int i = 0; i < 100; ++i) {
        ::pthread_kill(waiting.native_handle(), SIGUSR1);
        std::this_thread::yield();
    }
    semaphore.release(1);
    waiting.join();
    EXPECT_TRUE(acquired);
}

TEST(AtomicInt, CountsAcrossThreads) {
    AtomicInt* const counter = AtomicInt::create(41);
    EXPECT_EQ(counter->increment(), 42);
    EXPECT_EQ(counter->decrement(), 41);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            for (int j = 0; j < 1000; ++j)
                counter->increment();
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(counter->increment(), 4042);
    AtomicInt::destroy(counter);
    AtomicInt::destroy(nullptr);
}

} // namespace
