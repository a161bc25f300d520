// The system work of the file layer. These four functions have a source of their own so that every call to them goes
// through their symbols, where programs may put functions of their own.
//
// Compiled with 64-bit offsets and times, so that large files, large inode numbers and late dates are no failures on
// ia32; none of these types leaves the file layer.

#include "zel/persistence/vor_file.h"

#include "persistence/FileHandle.h"
#include "persistence/FileStatus.h"
#include "persistence/SystemCalls.h"
#include "threads/CancellationShield.h"
#include "utils/Block.h"
#include "utils/ErrnoKeeper.h"
#include "utils/SecureProcess.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>

#include <fcntl.h>
#include <time.h>
#include <unistd.h>

using namespace ZEL;

static_assert(sizeof(off_t) == 8 && sizeof(time_t) == 8, "this source needs 64-bit offsets and times");

namespace {

constexpr mode_t creationPermissions = 0666;
constexpr long halfASecond = 500'000'000; // nanoseconds
constexpr std::size_t chunkSize = 1024;

// The length has 32 bits, and memory must have room for one byte more, the final zero.
constexpr off_t longestContents = static_cast<off_t>(std::min<std::uint64_t>(0xFFFFFFFF, SIZE_MAX - 1));

enum LockState { undecided = 0, inForce = 1, overridden = 2 };

// Two threads that decide at the same time read the same environment, so nothing orders them.
std::atomic<int> lockState{undecided};

int decidedLockState() {
    if (lockState.load(std::memory_order_relaxed) == undecided) {
        // A caller of a program with raised privileges must not be able to switch its locks off.
        // NOLINTNEXTLINE(concurrency-mt-unsafe): who changes the environment while threads run breaks every reader.
        const bool override = !isSecureProcess() && std::getenv("VOR_FILELOCK_OVERRIDE") != nullptr;
        lockState.store(override ? overridden : inForce, std::memory_order_relaxed);
    }
    return lockState.load(std::memory_order_relaxed);
}

int setWholeFileLock(int descriptor, short kind) {
    struct flock lock = {};
    lock.l_type = kind;
    lock.l_whence = SEEK_SET; // With start and length 0 this is the whole file, however long it becomes.
    return uninterrupted([&] { return ::fcntl(descriptor, F_SETLK, &lock); });
}

bool closeDescriptor(int descriptor) {
    // An interrupted close has closed the descriptor all the same.
    return ::close(descriptor) == 0 || errno == EINTR;
}

int openStatus(int reason) {
    switch (reason) {
    case 0:
    case ENOENT:
        return FileStatus::NotFound;
    case EACCES:
    case EROFS:
        return FileStatus::AccessDenied;
    case EINVAL:
        return FileStatus::InvalidArgument;
    default:
        return FileStatus::OpenFailed;
    }
}

} // namespace

int internal_OpenFile(const char* path, int mode, VOR_FileHandle* handle) {
    int flags = 0;
    short lockKind = F_WRLCK;
    switch (mode) {
    case 1:
        flags = O_RDONLY;
        lockKind = F_RDLCK;
        break;
    case 2:
        flags = O_RDWR;
        break;
    case 3:
        flags = O_RDWR | O_CREAT;
        break;
    default:
        return FileStatus::InvalidArgument;
    }
    if (path == nullptr || handle == nullptr)
        return FileStatus::InvalidArgument;

    const CancellationShield shield;
    ErrnoOutcome reason;
    const int descriptor = uninterrupted([&] { return ::open(path, flags, creationPermissions); });
    *handle = {descriptor, 0, 0};
    if (descriptor == -1)
        return reason.failed(openStatus(errno));
    // Marked here and not by a flag of open, whose flags callers may watch.
    ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);

    if (decidedLockState() == overridden || setWholeFileLock(descriptor, lockKind) == 0 || errno == 0)
        return FileStatus::Success;
    const bool held = errno == EAGAIN || errno == EACCES;
    const int status = reason.failed(held ? FileStatus::LockHeldAndStillOpen : FileStatus::LockFailedAndStillOpen);
    if (!closeDescriptor(descriptor))
        return status;
    handle->descriptor = 0;
    return FileStatus::LockRefused;
}

int internal_CloseFile(VOR_FileHandle* handle) {
    if (handle == nullptr)
        return FileStatus::InvalidArgument;
    const CancellationShield shield;
    ErrnoOutcome reason;
    if (lockState.load(std::memory_order_relaxed) == inForce && setWholeFileLock(handle->descriptor, F_UNLCK) == -1)
        return reason.failed(FileStatus::UnlockFailed);
    if (!closeDescriptor(handle->descriptor))
        return reason.failed(FileStatus::CloseFailed);
    handle->descriptor = 0;
    return FileStatus::Success;
}

int internal_readContents(VOR_FileHandle* handle, int readMode, char** buffer, unsigned int* length) {
    if (handle == nullptr || buffer == nullptr || length == nullptr)
        return FileStatus::InvalidArgument;
    const CancellationShield shield;
    ErrnoOutcome reason;
    const int descriptor = handle->descriptor;
    *buffer = nullptr;
    *length = 0;

    off_t size = readMode == 1 ? ::lseek(descriptor, 0, SEEK_END) : 0;
    if (size == -1 || ::lseek(descriptor, 0, SEEK_SET) == -1)
        return reason.failed(FileStatus::SeekInReadFailed);

    int status = FileStatus::Success;
    if (readMode == 2) {
        char chunk[chunkSize];
        ssize_t count = 0;
        do {
            count = uninterrupted([&] { return ::read(descriptor, chunk, sizeof chunk); });
            if (count == -1)
                status = reason.failed(FileStatus::ReadFailed);
            else
                size += count;
        } while (count > 0 && size <= longestContents);
        if (::lseek(descriptor, 0, SEEK_SET) == -1)
            return reason.failed(FileStatus::SeekInReadFailed);
    }

    if (size > longestContents)
        return reason.failed(FileStatus::OutOfMemory, EFBIG);
    const std::size_t expected = static_cast<std::size_t>(size);
    *buffer = static_cast<char*>(allocateBlock(expected + 1));
    if (*buffer == nullptr)
        return reason.failed(FileStatus::OutOfMemory, ENOMEM);

    const ssize_t count = uninterrupted([&] { return ::read(descriptor, *buffer, expected); });
    if (count == -1)
        status = reason.failed(FileStatus::ReadFailed);
    if (status != FileStatus::Success) {
        std::free(*buffer);
        *buffer = nullptr;
        return status;
    }
    clearBehind(*buffer, static_cast<std::size_t>(count), expected + 1);
    *length = static_cast<unsigned int>(count);
    return FileStatus::Success;
}

void internal_sleepForAWhile(void) {
    const ErrnoKeeper keeper;
    struct timespec remaining = {0, halfASecond};
    while (::nanosleep(&remaining, &remaining) == -1 && errno == EINTR) {
    }
}
