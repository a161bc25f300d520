// The child of a threaded process traces, throws and formats dates whatever its parent's threads held.
#include "zel/vor.h"
#include "zel/zel.h"

#include "support/CapturedTrace.h"
#include "support/Sanitizers.h"

#include <atomic>
#include <thread>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// Runs the action in a child and returns its exit status; a child that hangs is ended by its alarm.
template <class Action> int statusOfChild(Action action) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::alarm(20);
        ::_exit(action());
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
}

int useEverything() {
    std::ostringstream out;
    ZEL::TRACE::setTraceToStream(&out);
    ZEL::Tracer tracer("child", true);
    tracer.printf("%s", ZEL::Date::getShortString(-1).c_str());
    try {
        ZEL::RT::checkDeref(nullptr);
    } catch (const ZEL::EXCEPTIONS::NullPointerException&) {
        ZEL::TRACE::setTraceDefault();
        return out.str().find("NullPointerException") != std::string::npos ? 0 : 1;
    }
    return 2;
}

TEST(Fork, ChildUsesEverythingWhileOtherThreadsDo) {
    if (addressSanitizer)
        GTEST_SKIP() << "its own allocator is not made for this";
    std::atomic<bool> stop{false};
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i)
        threads.emplace_back([&stop, i] {
            while (!stop) {
                if (i == 0)
                    ZEL::Date::getShortString(-1);
                ZEL::Tracer("parent", true).printf("%d", i);
            }
        });
    for (int i = 0; i < 40; ++i)
        EXPECT_EQ(statusOfChild(useEverything), 0);
    stop = true;
    for (std::thread& thread : threads)
        thread.join();
}

TEST(Fork, ChildKeepsTheRecordsInMemory) {
    { const CapturedTrace drained; }
    ZEL::Tracer().write("before the fork", 0);
    EXPECT_EQ(statusOfChild([] {
                  std::ostringstream out;
                  ZEL::TRACE::setTraceToStream(&out);
                  return out.str() == ": before the fork\n" ? 0 : 1;
              }),
              0);
}

ZEL::Semaphore* blocked;
ZEL::Semaphore* unblock;
std::atomic<int> childStatus{-1};

int blockOnce(const char*, int) {
    if (ZEL::Semaphore* const waiting = std::exchange(blocked, nullptr)) {
        waiting->release(1);
        unblock->acquire(0);
    }
    return 0;
}

TEST(Fork, ABlockedDestinationStopsNeitherForkNorChild) {
    ZEL::Semaphore entered(0, 0);
    ZEL::Semaphore leave(0, 0);
    blocked = &entered;
    unblock = &leave;
    std::thread printing([] {
        ZEL::Tracer().write("x", 0);
        ZEL::TRACE::setTraceCallback(blockOnce); // holds both locks
    });
    entered.acquire(0);
    EXPECT_EQ(statusOfChild(useEverything), 0);
    leave.release(1);
    printing.join();
    ZEL::TRACE::setTraceDefault();
}

int forkOnce(const char*, int) {
    if (childStatus == -1) {
        childStatus = -2;
        childStatus = statusOfChild([] {
            ZEL::TRACE::setTraceDefault();
            return std::thread([] { ZEL::Tracer("other thread of the child", true); }).join(), 0;
        });
    }
    return 0;
}

TEST(Fork, ACallbackMayFork) {
    if (threadSanitizer)
        GTEST_SKIP() << "it does not know mutexes that are made anew";
    ZEL::TRACE::setTraceCallback(forkOnce);
    ZEL::Tracer().write("x", 0);
    ZEL::TRACE::setTraceDefault();
    EXPECT_EQ(childStatus, 0);
}

TEST(Fork, ThreadsOfTheParentAreGoneInTheChild) {
    ZEL::Semaphore release(0, 0);
    const auto acquire = [](void* semaphore) -> void* {
        static_cast<ZEL::Semaphore*>(semaphore)->acquire(0);
        return nullptr;
    };
    pthread_t handle;
    ASSERT_EQ(vor_startThread(acquire, &release, &handle), 0);
    EXPECT_EQ(statusOfChild([&] { return vor_testThread(handle) * 2 + (vor_waitThread(handle, 0) == 0); }), 0);
    EXPECT_EQ(vor_testThread(handle), 1);
    release.release(1);
    EXPECT_EQ(vor_waitThread(handle, 0), 0);
}

} // namespace
