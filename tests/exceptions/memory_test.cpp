// Memory that runs out anywhere ends in an exception, with nothing lost and nothing repeated without end.
#include "zel/zel.h"

#include "support/AllocationFault.h"

#include <functional>
#include <memory>

#include <gtest/gtest.h>

using namespace ZEL::EXCEPTIONS;

namespace {

const std::string longText(100, 'x');

int swallow(const char*, int) { return 0; }

const struct {
    const char* name;
    std::function<void()> action;
} actions[] = {
    {"throw and catch",
     [] {
         try {
             throwException(IOException(longText, "ZEL", -1, "code", longText.c_str(), nullptr, -1, nullptr), "f", 1,
                            "m");
         } catch (const IOException& e) {
             const std::unique_ptr<ZelException> clone(e.clone());
             clone->assignProperty(longText, longText);
         }
     }},
    {"a failed check", [] { EXPECT_ANY_THROW(ZEL::RT::checkDeref(nullptr)); }},
    {"a smart pointer", [] { ZEL::RT::SmartPointer<std::string>(new std::string(longText)); }},
    {"an atomic counter", [] { ZEL::RT::AtomicInt::destroy(ZEL::RT::AtomicInt::create(1)); }},
    {"a date", [] { ZEL::Date::getShortString(0); }},
    {"a traced scope", [] { ZEL::Tracer("op", true).write(longText, longText, 5); }},
    {"a thread",
     [] {
         ZEL::RT::Thread thread([](void*) -> void* { return nullptr; }, nullptr);
         if (thread.start() == 0)
             thread.wait(0);
     }},
};

TEST(Memory, RunningOutLosesNothing) {
    ZEL::TRACE::setTraceCallback(swallow); // every record is formatted, none is kept
    for (const auto& action : actions) {
        action.action(); // what is made once and kept
        for (int spared = 0; spared < 1000; ++spared) {
            SCOPED_TRACE(std::string(action.name) + " with " + std::to_string(spared) + " allocations");
            const long before = AllocationFault::alive();
            bool struck;
            {
                const AllocationFault fault(spared);
                try {
                    action.action();
                } catch (const std::bad_alloc&) {
                }
                struck = fault.struck();
            }
            ASSERT_EQ(AllocationFault::alive(), before);
            if (!struck)
                break;
            ASSERT_LT(spared, 999) << "this never ends";
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
    {
        const AllocationFault fault(0);
        EXPECT_THROW(tracer.write(longText, 0), std::bad_alloc);
        ZEL::Tracer("a name alone needs no memory", false);
    }
    static std::string lines;
    ZEL::TRACE::setTraceCallback([](const char* text, int) { return (lines += text) += '\n', 0; });
    ZEL::TRACE::setTraceDefault();
    EXPECT_EQ(lines.substr(0, 12), ": 46\n: 47\n: ");
    EXPECT_NE(lines.find(": 299\n a name alone needs no memory(): Entering\n"), std::string::npos);
}

} // namespace
