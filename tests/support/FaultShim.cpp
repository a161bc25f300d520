// With these the calls below have the names under which sources with 64-bit offsets and times know them.
#define _FILE_OFFSET_BITS 64
#define _TIME_BITS 64

#include "support/FaultShim.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <new>

#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/auxv.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <time.h>
#include <unistd.h>

namespace {

thread_local FaultShim* current = nullptr;

bool isDue(const char* name) {
    if (current != nullptr)
        for (FaultShim::Fault& fault : current->faults)
            if (fault.call == name && fault.times > 0 && fault.spared-- <= 0) {
                --fault.times;
                errno = fault.error != 0 ? fault.error : errno;
                return true;
            }
    return false;
}

template <class... N> bool fails(const char* name, N... argument) {
    if (FaultShim* const shim = std::exchange(current, nullptr)) { // the notes' own memory does not fail
        shim->noted += (std::string(name) + ... + ("(" + std::to_string(argument) + ")")) + " ";
        current = shim;
    }
    return isDue(name);
}

std::size_t atMost(std::size_t size, const char* cut) {
    return current == nullptr ? size : std::min(isDue(cut) ? size / 2 : size, current->longest);
}

time_t now() {
    struct timespec time = {};
    ::clock_gettime(CLOCK_REALTIME, &time);
    return current != nullptr && current->now != -1 ? static_cast<time_t>(current->now) : time.tv_sec;
}

// The function that one of those below stands for.
template <class Call> Call* real(Call*, const char* name) { return reinterpret_cast<Call*>(::dlsym(RTLD_NEXT, name)); }

} // namespace

FaultShim::FaultShim(const std::vector<Fault>& planned) : faults(planned) { current = this; }
FaultShim::~FaultShim() { current = nullptr; }

std::atomic<long> FaultShim::blocks{0};

extern "C" {

int open(const char* path, int flags, ...) {
    std::va_list rest;
    va_start(rest, flags);
    const mode_t mode = va_arg(rest, mode_t);
    va_end(rest);
    return fails("open", flags & ~O_LARGEFILE) ? -1 : real(open, "open64")(path, flags, mode);
}

int fcntl(int file, int command, ...) {
    std::va_list rest;
    va_start(rest, command);
    void* const argument = va_arg(rest, void*);
    va_end(rest);
    if (command == F_SETFD && fails(argument == reinterpret_cast<void*>(FD_CLOEXEC) ? "cloexec" : "flags"))
        return -1;
    if (command == F_SETLK) {
        const struct flock& lock = *static_cast<struct flock*>(argument);
        const bool whole = lock.l_whence == SEEK_SET && lock.l_start == 0 && lock.l_len == 0;
        const char* const kind = lock.l_type == F_RDLCK ? "rdlock" : lock.l_type == F_WRLCK ? "wrlock" : "unlock";
        if (fails(whole ? kind : "a part only"))
            return -1;
    }
    return real(fcntl, sizeof(long) == 4 ? "__fcntl_time64" : "fcntl64")(file, command, argument);
}

ssize_t read(int file, void* to, size_t n) {
    return fails("read", n) ? -1 : real(read, "read")(file, to, atMost(n, "short read"));
}

ssize_t write(int file, const void* from, size_t n) {
    return fails("write", n) ? -1 : real(write, "write")(file, from, atMost(n, "short write"));
}

off_t lseek(int file, off_t to, int whence) noexcept {
    const char* const name = to != 0 ? "seek" : whence == SEEK_SET ? "rewind" : whence == SEEK_END ? "end" : "tell";
    return fails(name) ? -1 : real(lseek, "lseek64")(file, to, whence);
}

int ftruncate(int file, off_t n) noexcept {
    return fails("truncate", n) ? -1 : real(ftruncate, "ftruncate64")(file, n);
}

// Nobody waits for the disk either.
int fsync(int) { return fails("sync") ? -1 : 0; }

int close(int file) {
    const bool failed = fails("close");
    const int result = failed && errno != EINTR ? -1 : real(close, "close")(file);
    return failed ? -1 : result;
}

int stat(const char* path, struct stat* out) noexcept {
    return isDue("stat") ? -1 : real(stat, sizeof(long) == 4 ? "__stat64_time64" : "stat64")(path, out);
}

int fstat(int file, struct stat* out) noexcept {
    return isDue("fstat") ? -1 : real(fstat, sizeof(long) == 4 ? "__fstat64_time64" : "fstat64")(file, out);
}

int chmod(const char* path, mode_t mode) noexcept { return isDue("chmod") ? -1 : real(chmod, "chmod")(path, mode); }

// Apart from the call that is cancelled: the address sanitizer does not clear a frame with objects that is unwound so.
[[gnu::noinline]] static int sleepAtOnce(const struct timespec* time, struct timespec* left) {
    const long long length = time->tv_sec * 1'000'000'000LL + time->tv_nsec;
    *left = {0, time->tv_nsec / 2};
    return fails("sleep", length) ? -1 : 0;
}

// Nobody sleeps in this program, but whoever would can be cancelled.
int nanosleep(const struct timespec* time, struct timespec* left) {
    ::pthread_testcancel();
    ::sched_yield();
    return sleepAtOnce(time, left);
}

time_t time(time_t* out) noexcept { return out != nullptr ? *out = now() : now(); }

int gettimeofday(struct timeval* out, void*) noexcept { return *out = {now(), 0}, 0; }

unsigned long getauxval(unsigned long type) noexcept {
    return type == AT_SECURE && isDue("secure") ? 1 : real(getauxval, "getauxval")(type);
}

// As a whole: what the loader does when its own memory runs out is its business.
void* dlopen(const char* file, int mode) noexcept {
    if (isDue("memory"))
        return nullptr;
    FaultShim* const shim = std::exchange(current, nullptr);
    void* const handle = real(dlopen, "dlopen")(file, mode);
    current = shim;
    return handle;
}

[[gnu::weak]] void* __interceptor_malloc(size_t size) noexcept;
[[gnu::weak]] void* __interceptor_calloc(size_t count, size_t size) noexcept;
[[gnu::weak]] void* __interceptor_realloc(void* block, size_t size) noexcept;
[[gnu::weak]] void __interceptor_free(void* block) noexcept;
void* __libc_malloc(size_t size) noexcept;
void* __libc_calloc(size_t count, size_t size) noexcept;
void* __libc_realloc(void* block, size_t size) noexcept;
void __libc_free(void* block) noexcept;

// A sanitizer's allocator where there is one. This source is never instrumented itself: it runs ahead of everything.
#define REAL(name) (__interceptor_##name != nullptr ? __interceptor_##name : __libc_##name)

static bool isRefused(const char* name) { return isDue(name) || isDue("memory"); }

// The last call of each is a jump, so that a search for leaks takes their callers for the allocator's: it knows the
// loader's memory by that.
void* malloc(size_t size) noexcept {
    if (isRefused("malloc"))
        return nullptr;
    ++FaultShim::blocks;
    return REAL(malloc)(size);
}

void* calloc(size_t count, size_t size) noexcept {
    if (isRefused("calloc"))
        return nullptr;
    ++FaultShim::blocks;
    return REAL(calloc)(count, size);
}

void* realloc(void* block, size_t size) noexcept {
    if (isRefused("realloc"))
        return nullptr;
    FaultShim::blocks += block == nullptr;
    return REAL(realloc)(block, size);
}

void free(void* block) noexcept {
    FaultShim::blocks -= block != nullptr;
    REAL(free)(block);
}

char* strdup(const char* text) noexcept {
    const std::size_t size = std::strlen(text) + 1;
    void* const copy = ::malloc(size);
    return copy != nullptr ? static_cast<char*>(std::memcpy(copy, text, size)) : nullptr;
}
}

// Inlined, a compiler would take them for pairs of functions that do not match.
[[gnu::noinline]] void* operator new(std::size_t size) {
    if (void* const block = std::malloc(size))
        return block;
    throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void* block) noexcept { std::free(block); }
[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void* operator new[](std::size_t size) { return operator new(size); }
void operator delete[](void* block) noexcept { operator delete(block); }
void operator delete[](void* block, std::size_t) noexcept { operator delete(block); }
