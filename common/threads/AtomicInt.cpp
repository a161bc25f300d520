#include "zel/threads/AtomicInt.h"

#include "zel/threads/Mutex.h"

#include "threads/Hold.h"

#include <cstddef>

namespace ZEL::RT {

struct AtomicInt::Layout {
    static_assert(offsetof(AtomicInt, mutex_) == 0);
    static_assert(offsetof(AtomicInt, value_) == sizeof(void*));
    static_assert(sizeof(AtomicInt) == sizeof(void*) + sizeof(long));
};

AtomicInt::AtomicInt(long initial) : mutex_(new Mutex), value_(initial) {}

AtomicInt::~AtomicInt() {
    delete mutex_;
    mutex_ = nullptr;
}

AtomicInt* AtomicInt::create(long initial) { return new AtomicInt(initial); }

void AtomicInt::destroy(AtomicInt* counter) { delete counter; }

long AtomicInt::increment() {
    const Hold hold(*mutex_);
    return ++value_;
}

long AtomicInt::decrement() {
    const Hold hold(*mutex_);
    return --value_;
}

} // namespace ZEL::RT
