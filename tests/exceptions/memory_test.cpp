// Memory that runs out anywhere ends in an exception, with nothing lost and nothing repeated without end.
#include "zel/zel.h"

#include <atomic>
#include <cstdlib>
#include <functional>
#include <memory>
#include <new>

#include <gtest/gtest.h>

using namespace ZEL::EXCEPTIONS;

namespace {

// The thread's allocations fail from the one on that finds this at 0. The library uses the operators below as well.
constexpr int never = 1'000'000'000;
thread_local int spared = never;
std::atomic<long> alive{0};

const std::string longText(100, 'x');

int swallow(const char*, int) { return 0; }

void throwAndCatch() {
    try {
        throwException(IOException(longText, "ZEL", -1, "", longText.c_str(), nullptr, -1, nullptr), "f", 1, "m");
    } catch (const IOException& e) {
        const std::unique_ptr<ZelException> clone(e.clone());
        clone->assignProperty(longText, longText);
    }
}

void runThread() {
    ZEL::RT::Thread thread([](void*) -> void* { return nullptr; }, nullptr);
    if (thread.start() == 0)
        thread.wait(0);
}

const std::function<void()> actions[] = {
    throwAndCatch,
    [] { EXPECT_ANY_THROW(ZEL::RT::checkDeref(nullptr)); },
    [] { ZEL::RT::SmartPointer<std::string>(new std::string(longText)); },
    [] { ZEL::RT::AtomicInt::destroy(ZEL::RT::AtomicInt::create(1)); },
    [] { ZEL::Date::getShortString(0); },
    [] { ZEL::Tracer("op", true).write(longText, longText, 5); },
    runThread,
};

} // namespace

// Inlined, a compiler would take them for a pair of functions that do not match.
[[gnu::noinline]] void* operator new(std::size_t size) {
    void* const block = spared-- > 0 ? std::malloc(size) : nullptr;
    if (block == nullptr) {
        spared = 0;
        throw std::bad_alloc();
    }
    ++alive;
    return block;
}

[[gnu::noinline]] void operator delete(void* block) noexcept {
    alive -= block != nullptr;
    std::free(block);
}

[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept { operator delete(block); }

TEST(Memory, RunningOutLosesNothing) {
    ZEL::TRACE::setTraceCallback(swallow); // every record is formatted, none is kept
    for (const auto& action : actions) {
        action(); // what is made once and kept
        int allocations = 0;
        for (bool struck = true; struck; ++allocations) {
            const long before = alive;
            spared = allocations;
            try {
                action();
            } catch (const std::bad_alloc&) {
            }
            struck = spared == 0;
            spared = never;
            ASSERT_EQ(alive, before) << "action " << &action - actions << " with " << allocations << " allocations";
            ASSERT_LT(allocations, 999) << "this never ends";
        }
    }
    ZEL::TRACE::setTraceDefault();
}

TEST(Memory, ARingThatCannotGrowStaysWhole) {
    ZEL::TRACE::setTraceCallback(swallow);
    ZEL::TRACE::setTraceDefault();
    ZEL::Tracer tracer;
    for (int i = 0; i < 300; ++i)
        tracer.write(std::to_string(i), 0);
    spared = 0;
    EXPECT_THROW(tracer.write(longText, 0), std::bad_alloc);
    ZEL::Tracer("a name alone needs no memory", false);
    spared = never;
    static std::string lines;
    ZEL::TRACE::setTraceCallback([](const char* text, int) { return (lines += text) += '\n', 0; });
    ZEL::TRACE::setTraceDefault();
    EXPECT_EQ(lines.substr(0, 12), ": 46\n: 47\n: ");
    EXPECT_NE(lines.find(": 299\n a name alone needs no memory(): Entering\n"), std::string::npos);
}
