#include "bench.h"

#include <atomic>
#include <memory>

#include <pthread.h>
#include <zel/zel.h>

namespace {

using namespace bench;
using ZEL::RT::AtomicInt;
using ZEL::RT::SmartPointer;

pthread_mutex_t mutex = PTHREAD_RECURSIVE_MUTEX_INITIALIZER_NP;
long guarded = 1;

void changeGuarded(long difference) {
    ::pthread_mutex_lock(&mutex);
    guarded += difference;
    keep(guarded);
    ::pthread_mutex_unlock(&mutex);
}

std::atomic<long> unguarded{1};

// What a copy shares; neither destroyed nor ever the last.
const SmartPointer<int>& smart = *new SmartPointer<int>(new int(1));
const std::shared_ptr<int>& shared = *new std::shared_ptr<int>(new int(1));

const Rows rows([] {
    AtomicInt* const counter = AtomicInt::create(1);
    row("AtomicInt", each([counter] { keep(counter->increment()); }))
        .limit("lock pair", each([] { changeGuarded(1); }), 1.15)
        .peer("std::atomic", each([] { keep(++unguarded); }));
    row("SmartPointer, copy and release", each([] {
            const SmartPointer<int> copy = smart;
            keep(copy);
        }))
        .limit("two lock pairs", each([] {
                   changeGuarded(1);
                   changeGuarded(-1);
               }),
               1.15)
        .peer("std::shared_ptr", each([] {
                  const std::shared_ptr<int> copy = shared;
                  keep(copy);
              }));
});

} // namespace
