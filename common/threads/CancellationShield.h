#ifndef ZEL_COMMON_THREADS_CANCELLATIONSHIELD_H
#define ZEL_COMMON_THREADS_CANCELLATIONSHIELD_H

#include <pthread.h>

namespace ZEL {

// Keeps a cancellation request pending for the length of a scope. Writing a file or printing a record must not be
// cut short: a stream cancelled in the middle of a write stays bad for good, and a descriptor or a destructor in the
// way of the unwinding would be lost or end the process.
class CancellationShield {
public:
    CancellationShield() { ::pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &before_); }
    ~CancellationShield() { ::pthread_setcancelstate(before_, nullptr); }

    CancellationShield(const CancellationShield&) = delete;
    CancellationShield& operator=(const CancellationShield&) = delete;

private:
    int before_ = PTHREAD_CANCEL_ENABLE;
};

} // namespace ZEL

#endif
