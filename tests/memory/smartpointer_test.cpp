#include "zel/zel.h"

#include "support/CapturedTrace.h"

#include <gtest/gtest.h>

using ZEL::RT::SmartPointer;

namespace {

struct Base {
    explicit Base(int& alive) : alive_(alive) { ++alive_; }
    virtual ~Base() { --alive_; }
    int& alive_;
};
struct Derived : Base {
    using Base::Base;
};
struct Other : Base {
    using Base::Base;
};

TEST(SmartPointer, TheLastOneDeletes) {
    int alive = 0;
    {
        SmartPointer<Derived> first(new Derived(alive));
        SmartPointer<Base> second = first;
        const SmartPointer<Base> third = std::move(second);
        EXPECT_FALSE(second);
        EXPECT_TRUE(first == third);
        first = SmartPointer<Derived>(new Derived(alive));
        EXPECT_EQ(alive, 2);
        first = *&first;
        first.reset();
        EXPECT_EQ(alive, 1);
        EXPECT_FALSE(first);
        EXPECT_TRUE(third != first);
        const SmartPointer<Derived> again = third.cast<Derived>();
        EXPECT_EQ(again.get(), third.get());
    }
    EXPECT_EQ(alive, 0);
    EXPECT_FALSE(SmartPointer<Base>(static_cast<Base*>(nullptr)));
    EXPECT_EQ(sizeof(SmartPointer<Base>), 2 * sizeof(void*));
}

// Message, class and place of a failure.
template <class Action> std::string failureOf(Action action) {
    try {
        action();
    } catch (const ZEL::EXCEPTIONS::ZelException& e) {
        return e.getExceptionName() + '|' + std::to_string(e.getEntryCode()) + '|' + e.what() + '|' +
               e.getExecutionPoint();
    }
    return "nothing";
}

TEST(SmartPointer, FailuresNameTheirPlace) {
    int alive = 0;
    const SmartPointer<Base> null;
    const SmartPointer<Base> base(new Derived(alive));
    const std::string deref = "NullPointerException|-1004|A NULL pointer was encountered during the operation|"
                              "common/memory/SmartPointer::checkDeref() @9";
    const std::string cast = "ClassCastException|-1005|Cast conversion failed|"
                             "common/memory/SmartPointer::checkCast() @15";
    EXPECT_EQ(failureOf([&] { (void)*null; }), deref);
    EXPECT_EQ(failureOf([&] { (void)null->alive_; }), deref);
    EXPECT_EQ(failureOf([&] { base.cast<Other>(); }), cast);
    EXPECT_EQ(failureOf([&] { null.cast<Derived>(); }), cast);
    EXPECT_EQ(failureOf([&] { ZEL::RT::checkCast(&alive); }), "nothing");
    EXPECT_EQ(failureOf([&] { ZEL::RT::checkDeref(&alive); }), "nothing");
}

} // namespace
