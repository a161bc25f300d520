#ifndef ZEL_COMMON_API_STARTEDTHREADS_H
#define ZEL_COMMON_API_STARTEDTHREADS_H

#include <pthread.h>

// What must be known of threads beside their handles.
//
// To the system the handle of a joined thread is an address in freed memory, or already another thread's: asking about
// it or cancelling it ends the process or hits a stranger. So every handle that the library has seen started or joined
// is remembered here with its thread's fate, and the system is only asked about threads that are there. A handle stays
// remembered until it turns up again, so there are never more than the system has stacks.
//
// `owner` is the object a thread was started for. Asked with one, a thread that was not started for it is gone: its
// handle has come round to somebody else. Without one (null) any thread of that handle is meant.
namespace ZEL::RT::StartedThreads {

// Starts routine(argument) in a joinable thread. 0, or the system's error code with *handle unchanged.
int start(void* (*routine)(void*), void* argument, pthread_t* handle, const void* owner);

// Waits for the thread's end; a cancellation point. 0, ESRCH for a thread that is gone, EINVAL while another thread
// waits for it, or the system's error code.
int join(pthread_t handle, const void* owner);

// Whether the thread is there: running, or ended and not yet joined.
bool exists(pthread_t handle, const void* owner);

// Requests cancellation. 0, ESRCH for a thread that is gone, or the system's error code.
int cancel(pthread_t handle, const void* owner);

// Has the system take the thread's stack back at its end; nobody can wait for it any more.
void detach(pthread_t handle, const void* owner);

// Whether the calling thread is known to be alive; a fact that needs no second look.
extern __thread bool sighted __attribute__((tls_model("initial-exec")));

void sightFirst();

// Tells that the calling thread is alive: its handle, should it be remembered as that of a gone thread, is in use
// again.
inline void sight() {
    if (!sighted)
        sightFirst();
}

} // namespace ZEL::RT::StartedThreads

#endif
