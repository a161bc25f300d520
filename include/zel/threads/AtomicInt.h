/// @file
/// Counter under a mutex.
#ifndef ZEL_THREADS_ATOMICINT_H
#define ZEL_THREADS_ATOMICINT_H

#include "zel/export.h"
#include "zel/threads/Guarded.h"

namespace ZEL {

class Mutex;

namespace RT {

/// Counter that threads share: every change happens under the counter's own mutex. All reference counts of the
/// library are of this type.
class ZEL_API AtomicInt {
public:
    /// @throws ZEL::EXCEPTIONS::LockException entry -1011 if the system refuses the mutex.
    explicit AtomicInt(long initial);

    /// No other thread may use the counter any more.
    ~AtomicInt();

    AtomicInt(const AtomicInt&) = delete;
    AtomicInt& operator=(const AtomicInt&) = delete;

    /// @return a new counter, which the caller releases with destroy().
    static AtomicInt* create(long initial);

    /// Deletes \p counter; null is ignored.
    static void destroy(AtomicInt* counter);

    /// @return the value after adding one.
    /// @throws ZEL::EXCEPTIONS::LockException entry -1012; the value is unchanged.
    long increment();

    /// @return the value after taking one away.
    /// @throws ZEL::EXCEPTIONS::LockException entry -1012; the value is unchanged.
    long decrement();

private:
    struct Layout;

    Mutex* mutex_;
    long value_ ZEL_GUARDED_BY(*mutex_);
};

} // namespace RT
} // namespace ZEL

#endif
