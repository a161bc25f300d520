/// @file
/// Counting semaphore.
#ifndef ZEL_THREADS_SEMAPHORE_H
#define ZEL_THREADS_SEMAPHORE_H

#include "zel/export.h"

#include <semaphore.h>

namespace ZEL {

/// Counting semaphore between the threads of one process. Every operation may be called from any thread.
class ZEL_API Semaphore {
public:
    /// The count starts at 0.
    /// @param initial accepted and ignored.
    /// @param maximum accepted and ignored.
    Semaphore(unsigned int initial, unsigned int maximum);

    /// No thread may be waiting.
    ~Semaphore();

    Semaphore(const Semaphore&) = delete;
    Semaphore& operator=(const Semaphore&) = delete;

    /// Blocks until the count is positive and takes one from it. A cancellation point; signals do not end the wait.
    /// @param timeout accepted and ignored.
    /// @return true when one was taken.
    bool acquire(unsigned int timeout);

    /// Adds to the count.
    /// @param count how often to add one; 0 still adds one.
    /// @return the result of the last addition: 0, or -1 when the count can grow no further.
    int release(unsigned int count);

private:
    sem_t semaphore_;
};

} // namespace ZEL

#endif
