// The child of a threaded process traces, throws and formats dates whatever its parent's threads held.
#include "zel/vor.h"
#include "zel/zel.h"

#include "support/CapturedTrace.h"
#include "support/Child.h"
#include "support/Sanitizers.h"

#include <atomic>
#include <thread>

#include <gtest/gtest.h>

namespace {

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

TEST(Fork, ChildKeepsTheRecordsInMemory) {
    CapturedTrace(); // leaves an empty ring
    ZEL::Tracer().write("before the fork", 0);
    const auto drain = [] {
        std::ostringstream out;
        ZEL::TRACE::setTraceToStream(&out);
        return out.str() == ": before the fork\n" ? 0 : 1;
    };
    EXPECT_EQ(statusOfChild(drain), 0);
}

ZEL::Semaphore entered(0, 0), leave(0, 0);

TEST(Fork, ABlockedDestinationStopsNeitherForkNorChild) {
    static std::atomic<bool> blocking{true};
    std::thread printing([] {
        ZEL::Tracer().write("x", 0);
        ZEL::TRACE::setTraceCallback([](const char*, int) { // which holds both locks
            return blocking.exchange(false) && entered.release(1) == 0 && leave.acquire(0) ? 0 : 1;
        });
    });
    entered.acquire(0);
    EXPECT_EQ(statusOfChild(useEverything), 0);
    leave.release(1);
    printing.join();
    ZEL::TRACE::setTraceDefault();
}

std::atomic<int> childStatus{-1};

int forkOnce(const char*, int) {
    const auto traceInThread = [] {
        ZEL::TRACE::setTraceDefault();
        return std::thread([] { ZEL::Tracer("other thread of the child", true); }).join(), 0;
    };
    if (childStatus.exchange(-2) == -1)
        childStatus = statusOfChild(traceInThread);
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
    const auto wait = [](void*) -> void* { return leave.acquire(0), nullptr; };
    pthread_t handle;
    ASSERT_EQ(vor_startThread(wait, nullptr, &handle), 0);
    EXPECT_EQ(statusOfChild([&] { return vor_testThread(handle) * 2 + (vor_waitThread(handle, 0) == 0); }), 0);
    EXPECT_EQ(vor_testThread(handle), 1);
    leave.release(1);
    EXPECT_EQ(vor_waitThread(handle, 0), 0);
}

} // namespace
