#include "zel/zel.h"

#include "support/Failure.h"

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
        EXPECT_TRUE(!second && first == third);
        first = SmartPointer<Derived>(new Derived(alive));
        EXPECT_EQ(alive, 2);
        first = *&first;
        first.reset();
        EXPECT_EQ(alive, 1);
        EXPECT_TRUE(!first && third != first);
        const SmartPointer<Derived> again = third.cast<Derived>();
        EXPECT_EQ(again.get(), third.get());
    }
    EXPECT_EQ(alive, 0);
    EXPECT_FALSE(SmartPointer<Base>(static_cast<Base*>(nullptr)));
    EXPECT_EQ(sizeof(SmartPointer<Base>), 2 * sizeof(void*));
}

TEST(SmartPointer, FailuresNameTheirPlace) {
    int alive = 0;
    const SmartPointer<Base> null, base(new Derived(alive));
    const std::string deref = "NullPointerException ZEL -1004 code: A NULL pointer was encountered during the "
                              "operation common/memory/SmartPointer::checkDeref() @9";
    const std::string cast = "ClassCastException ZEL -1005 code: Cast conversion failed "
                             "common/memory/SmartPointer::checkCast() @15";
    EXPECT_EQ(failureOf([&] { (void)*null; }), deref);
    EXPECT_EQ(failureOf([&] { (void)null->alive_; }), deref);
    EXPECT_EQ(failureOf([&] { base.cast<Other>(); }), cast);
    EXPECT_EQ(failureOf([&] { null.cast<Derived>(); }), cast);
    EXPECT_EQ(failureOf([&] { ZEL::RT::checkCast(&alive), ZEL::RT::checkDeref(&alive); }), "");
}

} // namespace
