#include "zel/threads/Thread.h"

#include "zel/api/vor_thread.h"

#include "api/StartedThreads.h"

#include <cstddef>

// Not the flat functions, since they know a thread by its handle alone: here a handle only counts while the thread
// that this object started has it.
namespace ZEL::RT {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
struct Thread::Layout {
    static_assert(offsetof(Thread, routine_) == sizeof(void*));
    static_assert(offsetof(Thread, argument_) == 2 * sizeof(void*));
    static_assert(offsetof(Thread, handle_) == 3 * sizeof(void*));
    static_assert(sizeof(Thread) == 3 * sizeof(void*) + sizeof(pthread_t));
};
#pragma GCC diagnostic pop

Thread::Thread(void* (*routine)(void*), void* argument) : routine_(routine), argument_(argument), handle_(0) {}

Thread::~Thread() {
    close();
    if (handle_ != 0)
        StartedThreads::detach(handle_, this);
    handle_ = 0;
}

int Thread::start() {
    if (routine_ == nullptr)
        return -1;
    handle_ = 0;
    return StartedThreads::start(routine_, argument_, &handle_, this);
}

bool Thread::wait(long) { return handle_ != 0 && StartedThreads::join(handle_, this) == 0; }

bool Thread::isActive() { return handle_ != 0 && StartedThreads::exists(handle_, this); }

bool Thread::close() {
    if (handle_ == 0)
        return true;
    if (StartedThreads::cancel(handle_, this) == 0)
        return false;
    handle_ = 0;
    return true;
}

unsigned long Thread::myThreadID() { return vor_getThreadId(); }

} // namespace ZEL::RT
