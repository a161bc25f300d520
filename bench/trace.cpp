#include "bench.h"
#include "inputs.h"

#include <ctime>

#include <pthread.h>
#include <zel/zel.h>

namespace {

using namespace bench;

void scope() { ZEL::Tracer trace(inputs::scope, true); }

// What a record costs whoever makes it: a recursive lock, the time, and its text in a slot of the ring, whose storage
// stays.
class Ring {
public:
    Ring() {
        pthread_mutexattr_t attributes;
        ::pthread_mutexattr_init(&attributes);
        ::pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
        ::pthread_mutex_init(&mutex_, &attributes);
        ::pthread_mutexattr_destroy(&attributes);
    }

    void store(const char* function, const char* text, std::size_t size) {
        const std::time_t now = std::time(nullptr);
        ::pthread_mutex_lock(&mutex_);
        Slot& slot = slots_[next_++ % 256];
        slot.function = function;
        slot.text.assign(text, size);
        slot.time = now;
        slot.thread = ::pthread_self();
        ::pthread_mutex_unlock(&mutex_);
    }

private:
    struct Slot {
        const char* function;
        std::string text;
        std::time_t time;
        pthread_t thread;
    };

    pthread_mutex_t mutex_;
    Slot slots_[256] = {};
    std::size_t next_ = 0;
};

Ring ring;

void storeScope() {
    ring.store(inputs::scope, "Entering", 8);
    ring.store(inputs::scope, "Leaving", 7);
}

void storeLongLine() { ring.store(inputs::scope, inputs::longLine.data(), inputs::longLine.size()); }

const Rows rows([] {
    row("trace scope", each(scope)).limit("locks, clock, store", each(storeScope), 1.7);
    row("trace scope, two threads", onTwoThreads(each(scope)))
        .limit("locks, clock, store", onTwoThreads(each(storeScope)), 1.8);
    row("two records of 120 characters",
        [](std::size_t times) {
            ZEL::Tracer trace(inputs::scope, true);
            for (; times != 0; --times) {
                trace.write(inputs::longLine, 0);
                trace.write(inputs::longLine, 0);
            }
        })
        .limit("locks, clock, store", each([] {
                   storeLongLine();
                   storeLongLine();
               }),
               1.5);
    row("printf of a number and a text", [](std::size_t times) {
        ZEL::Tracer trace(inputs::scope, true);
        for (; times != 0; --times)
            trace.printf("Error %d opening file %s", inputs::code, inputs::fileName.c_str());
    });
});

} // namespace
