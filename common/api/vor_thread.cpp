#include "zel/api/vor_thread.h"

#include "api/StartedThreads.h"

using namespace ZEL::RT;

unsigned long vor_getThreadId(void) {
    StartedThreads::sight();
    return ::pthread_self();
}

int vor_startThread(void* (*routine)(void*), void* arg, pthread_t* thread) {
    return routine == nullptr || thread == nullptr ? -1 : StartedThreads::start(routine, arg, thread, nullptr);
}

int vor_waitThread(pthread_t thread, long) { return thread == 0 ? -1 : StartedThreads::join(thread, nullptr); }

int vor_testThread(pthread_t thread) { return thread != 0 && StartedThreads::exists(thread, nullptr) ? 1 : 0; }

int vor_cancelThread(pthread_t thread) { return thread == 0 ? -1 : StartedThreads::cancel(thread, nullptr); }
