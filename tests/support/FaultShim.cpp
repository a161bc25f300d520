#include "support/FaultShim.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <utility>

#include <dlfcn.h>
#include <fcntl.h>
#include <sched.h>
#include <sys/auxv.h>
#include <unistd.h>

namespace {

thread_local FaultShim* current = nullptr;

#ifdef __i386__
#define WITH_64_BIT_TIME(plain, wide) wide
#else
#define WITH_64_BIT_TIME(plain, wide) plain
#endif
constexpr const char* fcntlName = WITH_64_BIT_TIME("fcntl64", "__fcntl_time64");
constexpr const char* nanosleepName = WITH_64_BIT_TIME("nanosleep", "__nanosleep64");
constexpr const char* gettimeofdayName = WITH_64_BIT_TIME("gettimeofday", "__gettimeofday64");

struct WideTimespec {
    std::int64_t seconds;
    long nanoseconds;
};
struct WideTimeval {
    std::int64_t seconds, microseconds;
};

bool fails(FaultShim::Call call, const char* name, long argument = -1) {
    return current != nullptr && current->fails(call, name, argument);
}

std::size_t shortened(std::size_t size) { return current != nullptr ? std::min(size, current->longest) : size; }

template <class F> F* real(F*, const char* name) { return reinterpret_cast<F*>(::dlsym(RTLD_NEXT, name)); }

template <class T> T tellTime(T (*clock)(T*), const char* name, T* out) {
    if (current == nullptr || current->now == -1)
        return real(clock, name)(out);
    if (out != nullptr)
        *out = current->now;
    return current->now;
}

} // namespace

FaultShim::FaultShim() { current = this; }
FaultShim::~FaultShim() { current = nullptr; }

std::string FaultShim::calls() { return std::exchange(calls_, {}); }

bool FaultShim::fails(Call call, const char* name, long argument) {
    ++counts_[call];
    if (name != nullptr) // An allocation is not noted: the list needs memory itself.
        calls_ += argument == -1 ? name + std::string(" ") : name + ("(" + std::to_string(argument) + ") ");
    auto& plan = plans_[call];
    if (plan.times == 0 || plan.spared-- > 0)
        return false;
    plan.spared = 0;
    --plan.times;
    if (plan.error != 0)
        errno = plan.error;
    return true;
}

// The functions have names of their own here, since the system's declarations differ between word sizes; what counts
// is the name that the linker sees.
extern "C" {

int shimOpen(const char* path, int flags, mode_t mode) __asm__("open64");
int shimOpen(const char* path, int flags, mode_t mode) {
    return fails(FaultShim::Open, "open", flags & ~O_LARGEFILE) ? -1 : real(shimOpen, "open64")(path, flags, mode);
}

int shimFcntl(int descriptor, int command, void* argument) __asm__(WITH_64_BIT_TIME("fcntl64", "__fcntl_time64"));
int shimFcntl(int descriptor, int command, void* argument) {
    if (command == F_SETFD && fails(FaultShim::CloseOnExec, "cloexec"))
        return -1;
    if (command == F_SETLK64) {
        const struct flock64& lock = *static_cast<struct flock64*>(argument);
        const bool whole = lock.l_whence == SEEK_SET && lock.l_start == 0 && lock.l_len == 0;
        const char* const kind = lock.l_type == F_RDLCK ? "rdlock" : lock.l_type == F_WRLCK ? "wrlock" : "unlock";
        if (fails(lock.l_type == F_UNLCK ? FaultShim::Unlock : FaultShim::Lock, whole ? kind : "a part only"))
            return -1;
    }
    return real(shimFcntl, fcntlName)(descriptor, command, argument);
}

ssize_t shimRead(int descriptor, void* buffer, std::size_t size) __asm__("read");
ssize_t shimRead(int descriptor, void* buffer, std::size_t size) {
    return fails(FaultShim::Read, "read", static_cast<long>(size))
               ? -1
               : real(shimRead, "read")(descriptor, buffer, shortened(size));
}

ssize_t shimWrite(int descriptor, const void* buffer, std::size_t size) __asm__("write");
ssize_t shimWrite(int descriptor, const void* buffer, std::size_t size) {
    return fails(FaultShim::Write, "write", static_cast<long>(size))
               ? -1
               : real(shimWrite, "write")(descriptor, buffer, shortened(size));
}

off64_t shimSeek(int descriptor, off64_t offset, int whence) __asm__("lseek64");
off64_t shimSeek(int descriptor, off64_t offset, int whence) {
    const char* const name = offset != 0 ? "seek" : whence == SEEK_SET ? "rewind" : whence == SEEK_END ? "end" : "tell";
    return fails(FaultShim::Seek, name) ? -1 : real(shimSeek, "lseek64")(descriptor, offset, whence);
}

int shimTruncate(int descriptor, off64_t size) __asm__("ftruncate64");
int shimTruncate(int descriptor, off64_t size) {
    return fails(FaultShim::Truncate, "truncate", static_cast<long>(size))
               ? -1
               : real(shimTruncate, "ftruncate64")(descriptor, size);
}

int shimSync(int descriptor) __asm__("fsync");
int shimSync(int descriptor) { return fails(FaultShim::Sync, "sync") ? -1 : real(shimSync, "fsync")(descriptor); }

int shimClose(int descriptor) __asm__("close");
int shimClose(int descriptor) {
    if (!fails(FaultShim::Close, "close"))
        return real(shimClose, "close")(descriptor);
    if (const int error = errno; error == EINTR) {
        real(shimClose, "close")(descriptor);
        errno = error;
    }
    return -1;
}

// Apart, so that a thread which is cancelled in a real sleep leaves no frame with guarded variables behind: nobody
// would tell the address sanitizer.
[[gnu::noinline]] static int sleepAtOnce(const WideTimespec* time, WideTimespec* left) {
    ::sched_yield();
    if (!fails(FaultShim::Sleep, "sleep", time->nanoseconds))
        return 0;
    *left = {0, time->nanoseconds / 2};
    return -1;
}

int shimSleep(const WideTimespec* time, WideTimespec* left) __asm__(WITH_64_BIT_TIME("nanosleep", "__nanosleep64"));
int shimSleep(const WideTimespec* time, WideTimespec* left) {
    if (current != nullptr)
        return sleepAtOnce(time, left);
    // The C library's own: a thread that is cancelled inside the thread sanitizer's stand-in hangs for good.
    static void* const library = ::dlopen("libc.so.6", RTLD_NOW | RTLD_NOLOAD);
    return reinterpret_cast<decltype(&shimSleep)>(::dlsym(library, nanosleepName))(time, left);
}

long shimTime(long* out) __asm__("time");
long shimTime(long* out) { return tellTime(shimTime, "time", out); }

std::int64_t shimWideTime(std::int64_t* out) __asm__("__time64");
std::int64_t shimWideTime(std::int64_t* out) { return tellTime(shimWideTime, "__time64", out); }

int shimTimeOfDay(WideTimeval* out, void* zone) __asm__(WITH_64_BIT_TIME("gettimeofday", "__gettimeofday64"));
int shimTimeOfDay(WideTimeval* out, void* zone) {
    if (current == nullptr || current->now == -1)
        return real(shimTimeOfDay, gettimeofdayName)(out, zone);
    *out = {current->now, 0};
    return 0;
}

unsigned long shimAuxiliaryValue(unsigned long type) __asm__("getauxval");
unsigned long shimAuxiliaryValue(unsigned long type) {
    const bool raised = type == AT_SECURE && current != nullptr && current->privileged;
    return raised ? 1 : real(shimAuxiliaryValue, "getauxval")(type);
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
void* __libc_malloc(std::size_t size);
void* shimMalloc(std::size_t size) __asm__("malloc");
void* shimMalloc(std::size_t size) { return fails(FaultShim::Malloc, nullptr) ? nullptr : __libc_malloc(size); }

void* __libc_calloc(std::size_t count, std::size_t size);
void* shimCalloc(std::size_t count, std::size_t size) __asm__("calloc");
void* shimCalloc(std::size_t count, std::size_t size) {
    return fails(FaultShim::Calloc, nullptr) ? nullptr : __libc_calloc(count, size);
}
#endif
}
