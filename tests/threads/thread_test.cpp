#include "zel/vor.h"
#include "zel/zel.h"

#include "support/Sanitizers.h"

#include <cerrno>
#include <csignal>
#include <cstdint>

#include <gtest/gtest.h>
#include <sched.h>
#include <unistd.h>

using ZEL::Semaphore;
using ZEL::RT::Thread;

namespace {

void* nothing(void*) { return nullptr; }

// Until it is cancelled; by asking, since the thread sanitizer loses sight of threads cancelled in the system.
void* postAndRun(void* semaphore) {
    static_cast<Semaphore*>(semaphore)->release(1);
    while (true) {
        ::pthread_testcancel();
        ::sched_yield();
    }
}

// A thread that runs its routine from the end of the constructor on.
struct Running : Semaphore, Thread {
    explicit Running(void* (*routine)(void*) = postAndRun)
        : Semaphore(0, 0), Thread(routine, static_cast<Semaphore*>(this)) {
        EXPECT_EQ(start(), 0);
        acquire(0);
    }
};

TEST(FlatThread, NullsHaveTheirOwnCodes) {
    pthread_t handle = 0;
    EXPECT_TRUE(vor_startThread(nullptr, nullptr, &handle) == -1 && vor_startThread(nothing, nullptr, nullptr) == -1);
    EXPECT_TRUE(vor_waitThread(0, 5) == -1 && vor_testThread(0) == 0 && vor_cancelThread(0) == -1);
    Thread none(nullptr, nullptr);
    EXPECT_TRUE(none.start() == -1 && !none.wait(0) && !none.isActive() && none.close());
}

TEST(FlatThread, NoThreadIsStartedWithoutRoomForItsStack) {
    pthread_attr_t usual, vast;
    ASSERT_EQ(::pthread_getattr_default_np(&usual) + ::pthread_getattr_default_np(&vast), 0);
    ASSERT_EQ(::pthread_attr_setstacksize(&vast, SIZE_MAX / 4 * 3) + ::pthread_setattr_default_np(&vast), 0);
    pthread_t handle = 77;
    EXPECT_TRUE(vor_startThread(nothing, nullptr, &handle) == EAGAIN && handle == 77);
    EXPECT_EQ(::pthread_setattr_default_np(&usual), 0);
}

TEST(FlatThread, HandlesOfJoinedThreadsAreNotShownToTheSystem) {
    pthread_t handles[64];
    for (pthread_t& handle : handles)
        ASSERT_EQ(vor_startThread(nothing, nullptr, &handle), 0);
    for (const pthread_t handle : handles) {
        EXPECT_EQ(vor_testThread(handle), 1) << "ended perhaps, but not joined";
        ASSERT_EQ(vor_waitThread(handle, 0), 0);
    }
    for (const pthread_t handle : handles)
        EXPECT_TRUE(vor_testThread(handle) == 0 && vor_cancelThread(handle) == ESRCH &&
                    vor_waitThread(handle, 0) == ESRCH);
}

TEST(FlatThread, AHandleThatComesRoundCountsAgain) {
    pthread_t joined, stranger; // the latter started by other means
    ASSERT_EQ(vor_startThread(nothing, nullptr, &joined), 0);
    ASSERT_EQ(vor_waitThread(joined, 0), 0);
    Semaphore seen(0, 0);
    const auto sighted = [](void* semaphore) { return vor_getThreadId(), postAndRun(semaphore); };
    ASSERT_EQ(::pthread_create(&stranger, nullptr, sighted, &seen), 0);
    seen.acquire(0);
    EXPECT_TRUE(vor_testThread(stranger) == 1 && vor_cancelThread(stranger) == 0 && vor_waitThread(stranger, 0) == 0);
    EXPECT_EQ(vor_testThread(stranger), 0);
}

TEST(ThreadClass, CloseRequestsCancellationAndSaysFalse) {
    Running thread;
    EXPECT_TRUE(thread.isActive());
    EXPECT_FALSE(thread.close());
    EXPECT_TRUE(thread.wait(0)) << "the handle was kept";
    EXPECT_TRUE(!thread.isActive() && !thread.wait(0) && thread.close());
}

TEST(ThreadClass, AWaitedForThreadDoesNotCancelItsSuccessor) {
    Thread first(nothing, nullptr);
    ASSERT_TRUE(first.start() == 0 && first.wait(0));
    Semaphore release(0, 0);
    const auto acquire = [](void* semaphore) -> void* {
        return static_cast<Semaphore*>(semaphore)->acquire(0), nullptr;
    };
    Thread second(acquire, &release); // usually given the first one's handle
    ASSERT_EQ(second.start(), 0);
    EXPECT_TRUE(!first.isActive() && first.close());
    {
        Thread third(nothing, nullptr);
        ASSERT_TRUE(third.start() == 0 && third.wait(0));
    }
    EXPECT_TRUE(second.isActive());
    release.release(1);
    EXPECT_TRUE(second.wait(0));
}

TEST(ThreadClass, DestructionLetsGoOfThreadsThatHaveEndedOrWillNot) {
    static pthread_t handle;
    static pid_t id;
    {
        Running ended([](void* semaphore) -> void* {
            handle = ::pthread_self();
            id = ::gettid();
            return static_cast<Semaphore*>(semaphore)->release(1), nullptr;
        });
        while (::tgkill(::getpid(), id, 0) == 0)
            ::sched_yield();
        EXPECT_EQ(vor_testThread(handle), 1);
    }
    EXPECT_EQ(vor_testThread(handle), 0);
    static Semaphore leave(0, 0);
    Running([](void* semaphore) -> void* {
        ::pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, nullptr);
        handle = ::pthread_self();
        static_cast<Semaphore*>(semaphore)->release(1);
        return leave.acquire(0), nullptr;
    });
    EXPECT_EQ(vor_waitThread(handle, 0), EINVAL) << "detached";
    leave.release(1);
    while (vor_testThread(handle) == 1)
        ::sched_yield();
}

TEST(ThreadClass, WaitingCanBeCancelled) {
    if (threadSanitizer)
        GTEST_SKIP() << "it loses sight of threads cancelled in the system";
    Running slow;
    const auto wait = [](void* thread) -> void* { return static_cast<Running*>(thread)->wait(0), nullptr; };
    Thread waiter(wait, &slow);
    ASSERT_EQ(waiter.start(), 0);
    EXPECT_FALSE(waiter.close());
    EXPECT_TRUE(waiter.wait(0));
    EXPECT_FALSE(slow.close());
    EXPECT_TRUE(slow.wait(0)) << "whoever gave up waiting leaves the thread to others";
}

TEST(ThreadClass, CancellationGivesLocksBack) {
    static ZEL::Mutex mutex;
    Running thread([](void* semaphore) {
        const ZEL::MutexGrabber grabber(mutex);
        const ZEL::Tracer tracer("holding", true);
        return postAndRun(semaphore);
    });
    EXPECT_FALSE(thread.close());
    EXPECT_TRUE(thread.wait(0));
    EXPECT_EQ(::pthread_mutex_trylock(reinterpret_cast<pthread_mutex_t*>(&mutex)), 0);
    mutex.unlock();
}

} // namespace
