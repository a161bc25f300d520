// Compiled with 64-bit offsets and times, as internal_file.cpp is: both see the same files.

#include "zel/persistence/vor_file.h"

#include "persistence/FileClock.h"
#include "persistence/FileHandle.h"
#include "persistence/FileStatus.h"
#include "persistence/SystemCalls.h"
#include "threads/CancellationShield.h"
#include "utils/ErrnoKeeper.h"

#include <cstdlib>
#include <cstring>
#include <memory>

#include <sys/stat.h>
#include <sys/time.h>
#include <time.h>
#include <unistd.h>

using namespace ZEL;

static_assert(sizeof(off_t) == 8 && sizeof(time_t) == 8, "this source needs 64-bit offsets and times");

namespace {

struct Free {
    void operator()(VOR_FileHandle* handle) const { std::free(handle); }
};

// The first carriage return before `end` that is directly followed by a line feed, or `end`.
const char* findLineEnd(const char* from, const char* end) {
    while (const void* found = std::memchr(from, '\r', static_cast<std::size_t>(end - from))) {
        from = static_cast<const char*>(found) + 1;
        if (from != end && *from == '\n')
            return from - 1;
    }
    return end;
}

// Removes the carriage return of each CR LF in place and returns the new length. What lies between dropped carriage
// returns moves down in one piece, and nothing at or behind the new length is written: callers may look at it.
unsigned int dropCarriageReturns(char* text, unsigned int length) {
    const char* const end = text + length;
    char* kept = text;
    for (const char* from = text;;) {
        const char* const lineEnd = findLineEnd(from, end);
        const std::size_t size = static_cast<std::size_t>(lineEnd - from);
        if (kept != from)
            std::memmove(kept, from, size);
        kept += size;
        if (lineEnd == end)
            return static_cast<unsigned int>(kept - text);
        from = lineEnd + 1;
    }
}

void fill(VOR_FileStats& stats, const struct stat& file) {
    stats.size = file.st_size > 0xFFFFFFFF ? 0xFFFFFFFF : static_cast<std::uint32_t>(file.st_size);
    stats.modificationTime = static_cast<std::uint32_t>(file.st_mtime);
    stats.checkTime = currentSecond();
}

int refreshIfChanged(VOR_FileStats& stored, const VOR_FileStats& fresh) {
    if (vor_safeCompareStats(&fresh, &stored) == 0)
        return 0;
    stored = fresh;
    return 1;
}

bool forceToDisk(int descriptor) {
    return uninterrupted([&] { return ::fsync(descriptor); }) == 0;
}

} // namespace

std::uint32_t ZEL::currentSecond() { return static_cast<std::uint32_t>(::time(nullptr)); }

int vor_safeOpenFile(const char* path, int mode, int retries, VOR_FileHandle** handle) {
    if (path == nullptr || handle == nullptr)
        return FileStatus::InvalidArgument;
    ErrnoOutcome reason;
    // Owned, because a thread that is cancelled while it sleeps below leaves from there.
    std::unique_ptr<VOR_FileHandle, Free> opened(static_cast<VOR_FileHandle*>(std::malloc(sizeof(VOR_FileHandle))));
    if (opened == nullptr)
        return reason.failed(FileStatus::OutOfMemory, ENOMEM);

    int status = internal_OpenFile(path, mode, opened.get());
    for (int retry = 0; retry < retries && status != FileStatus::Success; ++retry) {
        if (status == FileStatus::AccessDenied || status == FileStatus::NotFound)
            break;
        internal_sleepForAWhile();
        status = internal_OpenFile(path, mode, opened.get());
    }
    if (status != FileStatus::Success)
        return reason.failed(status);
    *handle = opened.release();
    return FileStatus::Success;
}

int vor_safeCloseFile(VOR_FileHandle* handle) {
    if (handle == nullptr)
        return FileStatus::InvalidArgument;
    const int status = internal_CloseFile(handle);
    if (status == FileStatus::Success)
        std::free(handle);
    return status;
}

int vor_safeReadContents(VOR_FileHandle* handle, int readMode, char** buffer, unsigned int* length) {
    if (handle == nullptr || buffer == nullptr || length == nullptr)
        return FileStatus::InvalidArgument;
    const int status = internal_readContents(handle, readMode, buffer, length);
    if (status == FileStatus::Success && *length > 1)
        *length = dropCarriageReturns(*buffer, *length);
    return status;
}

int vor_safeWriteContents(VOR_FileHandle* handle, int writeMode, const char* buffer, unsigned int length) {
    if (handle == nullptr || buffer == nullptr)
        return FileStatus::InvalidArgument;
    const bool replace = writeMode == 1;
    const bool append = writeMode == 2;
    const CancellationShield shield;
    ErrnoOutcome reason;
    if (replace && uninterrupted([&] { return ::ftruncate(handle->descriptor, 0); }) == -1)
        return reason.failed(FileStatus::TruncateFailed);
    if ((replace || append) && ::lseek(handle->descriptor, 0, append ? SEEK_END : SEEK_SET) == -1)
        return reason.failed(FileStatus::SeekInWriteFailed);
    // A single call even if the system takes fewer bytes: whoever has to know compares the size of the file.
    if (uninterrupted([&] { return ::write(handle->descriptor, buffer, length); }) == -1)
        return reason.failed(FileStatus::WriteFailed);

    struct timeval now = {};
    if (append) {
        ::gettimeofday(&now, nullptr);
        if (static_cast<std::int32_t>(now.tv_sec) == handle->lastSyncSeconds)
            return FileStatus::Success;
    }
    if (!forceToDisk(handle->descriptor))
        return reason.failed(FileStatus::WriteFailed);
    if (append) {
        handle->lastSyncSeconds = static_cast<std::int32_t>(now.tv_sec);
        handle->lastSyncMicroseconds = static_cast<std::int32_t>(now.tv_usec);
    }
    return FileStatus::Success;
}

int vor_safeSyncFile(VOR_FileHandle* handle) {
    if (handle == nullptr)
        return FileStatus::InvalidArgument;
    const CancellationShield shield;
    ErrnoOutcome reason;
    return forceToDisk(handle->descriptor) ? FileStatus::Success : reason.failed(FileStatus::WriteFailed);
}

int vor_safeFileStats(const char* path, VOR_FileStats* stats) {
    if (path == nullptr || stats == nullptr)
        return FileStatus::InvalidArgument;
    struct stat file = {};
    const int result = ::stat(path, &file);
    if (result == 0)
        fill(*stats, file);
    return result;
}

int vor_safeHandleStats(VOR_FileHandle* handle, VOR_FileStats* stats) {
    if (handle == nullptr || stats == nullptr)
        return FileStatus::InvalidArgument;
    struct stat file = {};
    const int result = ::fstat(handle->descriptor, &file);
    if (result == 0)
        fill(*stats, file);
    return result;
}

int vor_safeFileExists(const char* path, int* exists) {
    if (exists == nullptr)
        return FileStatus::InvalidArgument;
    const ErrnoKeeper keeper;
    VOR_FileStats stats;
    *exists = vor_safeFileStats(path, &stats) == 0 ? 1 : 0;
    return FileStatus::Success;
}

int vor_safeCompareStats(const VOR_FileStats* a, const VOR_FileStats* b) {
    if (a == nullptr || b == nullptr)
        return FileStatus::InvalidArgument;
    if (a->size != b->size)
        return 1;
    return a->size != 0 && a->modificationTime != b->modificationTime ? 1 : 0;
}

int vor_safeFileStatsAreStale(const char* path, VOR_FileStats* stored) {
    VOR_FileStats fresh;
    if (stored == nullptr || vor_safeFileStats(path, &fresh) != 0)
        return 1;
    return refreshIfChanged(*stored, fresh);
}

int vor_safeHandleStatsAreStale(VOR_FileHandle* handle, VOR_FileStats* stored) {
    VOR_FileStats fresh;
    if (stored == nullptr || vor_safeHandleStats(handle, &fresh) != 0)
        return 1;
    return refreshIfChanged(*stored, fresh);
}

int vor_safeChmod(const char* path, mode_t mode) {
    if (path == nullptr)
        return FileStatus::InvalidArgument;
    return ::chmod(path, mode);
}
