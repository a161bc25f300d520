/// @file
/// One thread, its start routine and its handle.
#ifndef ZEL_THREADS_THREAD_H
#define ZEL_THREADS_THREAD_H

#include "zel/export.h"

#include <pthread.h>

namespace ZEL::RT {

/// Binds a start routine and its argument to one thread handle. Failures are codes or booleans, never exceptions.
///
/// A thread that was waited for is gone for good: isActive() is false, wait() fails and close() forgets the handle,
/// even when the system has given the same handle to another thread since. One object is for one thread at a time;
/// different objects may be used from different threads.
class ZEL_API Thread {
public:
    /// Keeps both and starts nothing. \p argument is passed to \p routine and must live as long as it needs it.
    Thread(void* (*routine)(void*), void* argument);

    /// Requests the cancellation of a thread that was started and not waited for, and detaches it, so that the
    /// system takes its stack back when it ends. Does not wait.
    virtual ~Thread();

    Thread(const Thread&) = delete;
    Thread& operator=(const Thread&) = delete;

    /// Starts the routine in a new thread. A second start replaces the handle; the first thread runs on, and
    /// nobody waits for it.
    /// @return 0, -1 for a null routine, or the system's error code; the handle is 0 after a failure.
    int start();

    /// Blocks until the thread ends; its result is discarded. A cancellation point.
    /// @param timeout accepted and ignored.
    /// @return true when the thread was waited for; false when there is none or it was waited for before.
    bool wait(long timeout);

    /// @return true while the thread exists: from its start until it was waited for, ended or not.
    bool isActive();

    /// Requests the thread's cancellation. The sense of the result is unusual, and callers rely on it.
    /// @return false when the request was made (the handle is kept); true when there is no thread to cancel: never
    /// started, or already gone (the handle is then forgotten).
    bool close();

    /// @return the calling thread's identifier, as trace records carry it.
    static unsigned long myThreadID();

private:
    struct Layout;

    void* (*routine_)(void*);
    void* argument_;
    pthread_t handle_;
};

} // namespace ZEL::RT

#endif
