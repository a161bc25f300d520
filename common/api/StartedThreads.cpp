#include "api/StartedThreads.h"

#include "zel/threads/Guarded.h"

#include <cerrno>
#include <csignal>
#include <map>
#include <memory>
#include <mutex>
#include <new>

// A thread's state changes only under `guard`. Whoever finds it Running there can rely on the thread until the guard
// is released: it has to take the guard itself before it ends.
namespace ZEL::RT::StartedThreads {

namespace {

enum class State { Running, Ended, Gone };

struct Thread {
    const void* owner;
    unsigned long serial; // tells threads apart whose handles are the same
    State state;
    bool joining;  // a thread waits for its end
    bool detached; // nobody will
};

using Threads = std::map<pthread_t, Thread>;

// The standard mutex and its holder, in terms that Clang checks.
class ZEL_CAPABILITY Guard : public std::mutex {
public:
    void lock() ZEL_ACQUIRE() { std::mutex::lock(); }
    void unlock() ZEL_RELEASE() { std::mutex::unlock(); }
};

class ZEL_SCOPED_CAPABILITY Holder {
public:
    explicit Holder(Guard& guard) ZEL_ACQUIRE(guard) : lock_(guard) {}
    ~Holder() ZEL_RELEASE() = default;
    void unlock() ZEL_RELEASE() { lock_.unlock(); }

private:
    std::unique_lock<std::mutex> lock_;
};

// Trivially destroyed, like everything here: threads end after exit handlers have run.
Guard guard;
Threads* threads ZEL_GUARDED_BY(guard) = nullptr;
unsigned long lastSerial ZEL_GUARDED_BY(guard) = 0;

struct Start {
    void* (*routine)(void*);
    void* argument;
    unsigned long serial;
};

// An entry made ahead of its use, so that nothing can fail once the thread is started or joined.
Threads::node_type makeEntry() ZEL_REQUIRES(guard) {
    if (threads == nullptr)
        threads = new Threads;
    Threads spare;
    spare.emplace(pthread_t(), Thread());
    return spare.extract(spare.begin());
}

Thread* find(pthread_t handle) ZEL_REQUIRES(guard) {
    if (threads == nullptr)
        return nullptr;
    const auto found = threads->find(handle);
    return found != threads->end() ? &found->second : nullptr;
}

Thread* find(pthread_t handle, unsigned long serial) ZEL_REQUIRES(guard) {
    Thread* thread = find(handle);
    return thread != nullptr && thread->serial == serial ? thread : nullptr;
}

// A thread nobody here knows of was started by other means: it counts as there for those who ask without an owner.
bool isGone(const Thread* thread, const void* owner) {
    if (thread == nullptr)
        return owner != nullptr;
    return thread->state == State::Gone || (owner != nullptr && thread->owner != owner);
}

// Notes the end of the calling thread, however it comes.
class Ending {
public:
    explicit Ending(unsigned long serial) : serial_(serial) {}
    ~Ending() {
        const Holder holder(guard);
        if (Thread* self = find(::pthread_self(), serial_))
            self->state = self->detached ? State::Gone : State::Ended;
    }
    Ending(const Ending&) = delete;
    Ending& operator=(const Ending&) = delete;

private:
    unsigned long serial_;
};

void* run(void* start) {
    const Start what = *static_cast<Start*>(start);
    delete static_cast<Start*>(start);
    sighted = true;
    const Ending ending(what.serial);
    return what.routine(what.argument);
}

int createJoinable(pthread_t* handle, Start* start) {
    pthread_attr_t attributes;
    int result = ::pthread_attr_init(&attributes);
    if (result != 0)
        return result;
    result = ::pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_JOINABLE);
    if (result == 0)
        result = ::pthread_create(handle, &attributes, run, start);
    const int destroyed = ::pthread_attr_destroy(&attributes);
    return result != 0 ? result : destroyed;
}

// Marks a thread as being waited for, until the wait succeeds, fails or is cancelled.
class Joining {
public:
    Joining(pthread_t handle, unsigned long serial) : handle_(handle), serial_(serial) {}
    ~Joining() {
        const Holder holder(guard);
        if (Thread* thread = find(handle_, serial_)) {
            thread->joining = false;
            if (joined_)
                thread->state = State::Gone;
        }
    }
    Joining(const Joining&) = delete;
    Joining& operator=(const Joining&) = delete;

    void joined() { joined_ = true; }

private:
    pthread_t handle_;
    unsigned long serial_;
    bool joined_ = false;
};

int joinStranger(pthread_t handle, Threads::node_type entry) {
    const int result = ::pthread_join(handle, nullptr);
    if (result == 0) {
        const Holder holder(guard);
        entry.key() = handle;
        entry.mapped() = Thread{nullptr, ++lastSerial, State::Gone, false, false};
        threads->insert(std::move(entry)); // fails when the handle is already that of a new thread
    }
    return result;
}

// Of all the parent's threads the child has the one that forked.
void forgetOthers() ZEL_NO_THREAD_SAFETY_ANALYSIS {
    if (threads != nullptr)
        for (auto& [handle, thread] : *threads)
            if (::pthread_equal(handle, ::pthread_self()) == 0)
                thread.state = State::Gone;
    guard.unlock();
}

[[maybe_unused]] const int forkHandled =
    ::pthread_atfork([]() ZEL_NO_THREAD_SAFETY_ANALYSIS { guard.lock(); },
                     []() ZEL_NO_THREAD_SAFETY_ANALYSIS { guard.unlock(); }, forgetOthers);

} // namespace

int start(void* (*routine)(void*), void* argument, pthread_t* handle, const void* owner) {
    const Holder holder(guard);
    std::unique_ptr<Start> start;
    Threads::node_type entry;
    try {
        start = std::make_unique<Start>(Start{routine, argument, ++lastSerial});
        entry = makeEntry();
    } catch (const std::bad_alloc&) {
        return ENOMEM;
    }
    const Thread thread{owner, start->serial, State::Running, false, false};
    pthread_t made;
    const int result = createJoinable(&made, start.get());
    if (result != 0)
        return result;
    static_cast<void>(start.release()); // the new thread's now
    entry.key() = made;
    entry.mapped() = thread;
    const auto inserted = threads->insert(std::move(entry));
    if (!inserted.inserted)
        inserted.position->second = thread;
    *handle = made;
    return 0;
}

int join(pthread_t handle, const void* owner) {
    Holder holder(guard);
    Thread* thread = find(handle);
    if (isGone(thread, owner))
        return ESRCH;
    if (thread == nullptr) {
        Threads::node_type entry;
        try {
            entry = makeEntry();
        } catch (const std::bad_alloc&) {
            return ENOMEM;
        }
        holder.unlock();
        return joinStranger(handle, std::move(entry));
    }
    if (thread->joining || thread->detached)
        return EINVAL;
    thread->joining = true;
    Joining joining(handle, thread->serial);
    holder.unlock();
    const int result = ::pthread_join(handle, nullptr);
    if (result == 0)
        joining.joined();
    return result;
}

bool exists(pthread_t handle, const void* owner) {
    {
        const Holder holder(guard);
        const Thread* thread = find(handle);
        if (isGone(thread, owner))
            return false;
        if (thread != nullptr)
            return true;
    }
    return ::pthread_kill(handle, 0) == 0;
}

int cancel(pthread_t handle, const void* owner) {
    {
        const Holder holder(guard);
        const Thread* thread = find(handle);
        if (isGone(thread, owner))
            return ESRCH;
        if (thread != nullptr) // an ended thread takes the request and ignores it, as the system would have it
            return thread->state == State::Running ? ::pthread_cancel(handle) : 0;
    }
    return ::pthread_cancel(handle);
}

void detach(pthread_t handle, const void* owner) {
    const Holder holder(guard);
    Thread* thread = find(handle);
    if (isGone(thread, owner) || thread == nullptr || thread->joining || thread->detached)
        return;
    ::pthread_detach(handle);
    thread->detached = true;
    if (thread->state == State::Ended)
        thread->state = State::Gone;
}

__thread bool sighted = false;

void sightFirst() {
    sighted = true;
    const Holder holder(guard);
    const Thread* self = find(::pthread_self());
    if (self != nullptr && self->state == State::Gone)
        threads->erase(::pthread_self());
}

} // namespace ZEL::RT::StartedThreads
