#include "zel/vor.h"
#include "zel/zel.h"

#include "support/Sanitizers.h"

#include <cerrno>
#include <memory>

#include <gtest/gtest.h>
#include <sched.h>

using ZEL::RT::Thread;

namespace {

void* nothing(void*) { return nullptr; }

// Until it is cancelled; by asking, since the thread sanitizer loses sight of threads cancelled in the system.
void* postAndRun(void* semaphore) {
    static_cast<ZEL::Semaphore*>(semaphore)->release(1);
    while (true) {
        ::pthread_testcancel();
        ::sched_yield();
    }
}

void* acquire(void* semaphore) {
    static_cast<ZEL::Semaphore*>(semaphore)->acquire(0);
    return nullptr;
}

TEST(FlatThread, NullsHaveTheirOwnCodes) {
    pthread_t handle = 0;
    EXPECT_EQ(vor_startThread(nullptr, nullptr, &handle), -1);
    EXPECT_EQ(vor_startThread(nothing, nullptr, nullptr), -1);
    EXPECT_EQ(vor_waitThread(0, 5), -1);
    EXPECT_EQ(vor_testThread(0), 0);
    EXPECT_EQ(vor_cancelThread(0), -1);
    Thread none(nullptr, nullptr);
    EXPECT_EQ(none.start(), -1);
    EXPECT_FALSE(none.wait(0));
    EXPECT_FALSE(none.isActive());
    EXPECT_TRUE(none.close());
}

TEST(FlatThread, HandlesOfJoinedThreadsAreNotShownToTheSystem) {
    pthread_t handles[64];
    for (pthread_t& handle : handles)
        ASSERT_EQ(vor_startThread(nothing, nullptr, &handle), 0);
    for (const pthread_t handle : handles) {
        EXPECT_EQ(vor_testThread(handle), 1) << "ended perhaps, but not joined";
        ASSERT_EQ(vor_waitThread(handle, 0), 0);
    }
    for (const pthread_t handle : handles) {
        EXPECT_EQ(vor_testThread(handle), 0);
        EXPECT_EQ(vor_cancelThread(handle), ESRCH);
        EXPECT_EQ(vor_waitThread(handle, 0), ESRCH);
    }
}

TEST(FlatThread, AHandleThatComesRoundCountsAgain) {
    pthread_t joined;
    ASSERT_EQ(vor_startThread(nothing, nullptr, &joined), 0);
    ASSERT_EQ(vor_waitThread(joined, 0), 0);
    ZEL::Semaphore seen(0, 0);
    const auto sighted = [](void* semaphore) -> void* {
        vor_getThreadId();
        return postAndRun(semaphore);
    };
    pthread_t stranger; // started by other means
    ASSERT_EQ(::pthread_create(&stranger, nullptr, sighted, &seen), 0);
    seen.acquire(0);
    EXPECT_EQ(vor_testThread(stranger), 1);
    EXPECT_EQ(vor_cancelThread(stranger), 0);
    EXPECT_EQ(vor_waitThread(stranger, 0), 0);
    EXPECT_EQ(vor_testThread(stranger), 0);
}

TEST(ThreadClass, CloseRequestsCancellationAndSaysFalse) {
    ZEL::Semaphore running(0, 0);
    Thread thread(postAndRun, &running);
    ASSERT_EQ(thread.start(), 0);
    running.acquire(0);
    EXPECT_TRUE(thread.isActive());
    EXPECT_FALSE(thread.close());
    EXPECT_TRUE(thread.wait(0)) << "the handle was kept";
    EXPECT_FALSE(thread.isActive());
    EXPECT_FALSE(thread.wait(0));
    EXPECT_TRUE(thread.close());
}

TEST(ThreadClass, AWaitedForThreadDoesNotCancelItsSuccessor) {
    Thread first(nothing, nullptr);
    ASSERT_EQ(first.start(), 0);
    ASSERT_TRUE(first.wait(0));
    ZEL::Semaphore release(0, 0);
    Thread second(acquire, &release); // usually given the first one's handle
    ASSERT_EQ(second.start(), 0);
    EXPECT_FALSE(first.isActive());
    EXPECT_TRUE(first.close());
    {
        Thread third(nothing, nullptr);
        ASSERT_EQ(third.start(), 0);
        ASSERT_TRUE(third.wait(0));
    }
    EXPECT_TRUE(second.isActive());
    release.release(1);
    EXPECT_TRUE(second.wait(0));
}

TEST(ThreadClass, DestructionCancelsAndGivesTheStackBack) {
    for (int i = 0; i < 1500; ++i) { // more stacks than 32 bits can address
        ZEL::Semaphore running(0, 0);
        Thread thread(postAndRun, &running);
        ASSERT_EQ(thread.start(), 0) << "after " << i << " threads";
        running.acquire(0);
    }
}

TEST(ThreadClass, WaitingCanBeCancelled) {
    if (threadSanitizer)
        GTEST_SKIP() << "it loses sight of threads cancelled in the system";
    ZEL::Semaphore running(0, 0);
    Thread slow(postAndRun, &running);
    ASSERT_EQ(slow.start(), 0);
    running.acquire(0);
    const auto wait = [](void* thread) -> void* { return static_cast<Thread*>(thread)->wait(0), nullptr; };
    Thread waiter(wait, &slow);
    ASSERT_EQ(waiter.start(), 0);
    EXPECT_FALSE(waiter.close());
    EXPECT_TRUE(waiter.wait(0));
    EXPECT_FALSE(slow.close());
    EXPECT_TRUE(slow.wait(0)) << "whoever gave up waiting leaves the thread to others";
}

TEST(ThreadClass, CancellationGivesLocksBack) {
    static ZEL::Mutex mutex;
    ZEL::Semaphore held(0, 0);
    const auto hold = [](void* semaphore) -> void* {
        const ZEL::MutexGrabber grabber(mutex);
        const ZEL::Tracer tracer("holding", true);
        return postAndRun(semaphore);
    };
    Thread thread(hold, &held);
    ASSERT_EQ(thread.start(), 0);
    held.acquire(0);
    EXPECT_FALSE(thread.close());
    EXPECT_TRUE(thread.wait(0));
    EXPECT_EQ(::pthread_mutex_trylock(reinterpret_cast<pthread_mutex_t*>(&mutex)), 0);
    mutex.unlock();
}

} // namespace
