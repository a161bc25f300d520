#include "zel/persistence/FileLockImpl.h"

#include "zel/exceptions/IOException.h"
#include "zel/threads/MutexGrabber.h"
#include "zel/tracer/Tracer.h"
#include "zel/utils/vor_runtime.h"

#include "exceptions/Failure.h"
#include "persistence/FileClock.h"
#include "persistence/FileStatus.h"
#include "threads/CancellationShield.h"

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace ZEL::RT {

namespace {

using EXCEPTIONS::Failure;

constexpr const char* source = "common/persistence/FileLock";
constexpr Failure readRefused = {-1085, "Could not open file for reading", 58, "obtainLock"};
constexpr Failure writeRefused = {-1086, "Could not open file for writing", 60, "obtainLock"};
constexpr Failure alreadyOpen = {-1100, "File is already opened", 64, "obtainLock"};
constexpr Failure closedForWriting = {-1086, "Could not open file for writing", 86, "saveContents"};
constexpr Failure writeFailed = {-1080, "Could not write file", 98, "saveContents"};
constexpr Failure readFailed = {-1010, "Could not open file for read", 115, "readContents"};

// With three retries in each pass a file that stays locked is tried 400 times, with 300 half-second sleeps between.
constexpr int lastPass = 99;
constexpr int retriesInPass = 3;

constexpr int readOnly = 1;
constexpr int readWriteOrCreate = 3;
constexpr int wholeFileBySeek = 1;
constexpr int replaceContents = 1;
constexpr int appendContents = 2;

[[noreturn]] void fail(const Failure& failure, const std::string& fileName) {
    EXCEPTIONS::raise<EXCEPTIONS::IOException>(source, failure, fileName);
}

struct FreeBuffer {
    void operator()(char* buffer) const { vor_safeFreeBuffer(buffer); }
};

// A text whose length does not fit is refused before anything is truncated.
int write(VOR_FileHandle* handle, int mode, const std::string& contents) {
    const unsigned int length = static_cast<unsigned int>(contents.size());
    if (length != contents.size()) {
        errno = EFBIG;
        return FileStatus::WriteFailed;
    }
    return vor_safeWriteContents(handle, mode, contents.data(), length);
}

// The throttled staleness test; `look` takes fresh statistics.
template <class Look> bool isStale(VOR_FileStats& stats, Look look) {
    const std::uint32_t now = currentSecond();
    if (stats.checkTime == now)
        return false;
    stats.checkTime = now;
    VOR_FileStats fresh;
    return !look(fresh) || vor_safeCompareStats(&fresh, &stats) != 0;
}

} // namespace

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
struct FileLockImpl::Layout {
    static constexpr std::size_t word = sizeof(void*);
    static_assert(offsetof(FileLockImpl, mutex_) == word);
    static_assert(offsetof(FileLockImpl, fileName_) == word + sizeof(Mutex));
    static_assert(offsetof(FileLockImpl, handle_) == word + sizeof(Mutex) + sizeof(std::string));
    static_assert(word != 4 || sizeof(FileLockImpl) == 56);
    static_assert(word != 8 || sizeof(FileLockImpl) == 88);
};
#pragma GCC diagnostic pop

FileLockImpl::FileLockImpl() : handle_(nullptr) {}

FileLockImpl::FileLockImpl(const std::string& fileName, const OPEN_MODE& openMode)
    : fileName_(fileName), handle_(nullptr) {
    Tracer trace("FileLockImpl::FileLockImpl()", true);
    obtainLock(fileName.c_str(), openMode);
}

FileLockImpl::~FileLockImpl() {
    // What a trace callback throws must not keep the file open, and nothing may leave a destructor, not even the
    // unwinding of a cancelled thread: hence the shield, without which the handlers below would end the process.
    const CancellationShield shield;
    try {
        Tracer trace("FileLockImpl::~FileLockImpl()", true);
        releaseLock();
    } catch (...) {
        if (handle_ != nullptr)
            vor_safeCloseFile(handle_);
    }
}

void FileLockImpl::obtainLock(const char* path, const OPEN_MODE& mode) {
    const MutexGrabber grabber(mutex_);
    Tracer trace("FileLockImpl::obtainLock()", true);
    std::string name(path != nullptr ? path : "");
    if (handle_ != nullptr) {
        if (name == fileName_)
            return;
        fail(alreadyOpen, name);
    }

    const bool reading = mode == OPEN_READ;
    int status = FileStatus::Success;
    for (int pass = 0; pass <= lastPass; ++pass) {
        status = vor_safeOpenFile(path, reading ? readOnly : readWriteOrCreate, retriesInPass, &handle_);
        if (status == FileStatus::Success) {
            fileName_.swap(name);
            return;
        }
        trace.printf("Error %d opening file %s", status, name.c_str());
        if (status == FileStatus::AccessDenied) {
            trace.printf("Access denied to file. Skipping retries.");
            break;
        }
        if (status == FileStatus::NotFound) {
            trace.printf("File does not exist. Skipping retries.");
            break;
        }
    }
    trace.printf("Error %d opening file %s", status, name.c_str());
    fail(reading ? readRefused : writeRefused, name);
}

int FileLockImpl::releaseLock() {
    const MutexGrabber grabber(mutex_);
    Tracer trace("FileLockImpl::releaseLock()", true);
    if (handle_ == nullptr)
        return FileStatus::Success;
    // Forgotten even if it cannot be closed: closing it a second time could hit a descriptor that has a new owner.
    const int status = vor_safeCloseFile(std::exchange(handle_, nullptr));
    if (status != FileStatus::Success)
        trace.printf("Error %d closing file %s", status, fileName_.c_str());
    return status;
}

int FileLockImpl::readContents(std::string& out) {
    const MutexGrabber grabber(mutex_);
    Tracer trace("FileLockImpl::readContents()", true);
    if (handle_ == nullptr) {
        trace.printf("File %s not opened for read", fileName_.c_str());
        return -1;
    }
    char* buffer = nullptr;
    unsigned int length = 0;
    const int status = vor_safeReadContents(handle_, wholeFileBySeek, &buffer, &length);
    const std::unique_ptr<char, FreeBuffer> owner(buffer);
    if (status != FileStatus::Success) {
        trace.printf("Error %d reading file %s", status, fileName_.c_str());
        fail(readFailed, fileName_);
    }
    out.assign(buffer, length);
    return static_cast<int>(length);
}

void FileLockImpl::saveContents(const WRITE_MODE& writeMode, const std::string& contents) {
    const MutexGrabber grabber(mutex_);
    Tracer trace("FileLockImpl::saveContents()", true);
    if (handle_ == nullptr) {
        trace.printf("File %s not opened for write", fileName_.c_str());
        fail(closedForWriting, fileName_);
    }
    const int status = write(handle_, writeMode == WRITE_APPEND ? appendContents : replaceContents, contents);
    if (status != FileStatus::Success) {
        trace.printf("Error %d trying to write %s", status, fileName_.c_str());
        fail(writeFailed, fileName_);
    }
}

bool FileLockImpl::getStats(VOR_FileStats& stats) {
    const MutexGrabber grabber(mutex_);
    Tracer trace("FileLockImpl::getStats()", true);
    if (handle_ == nullptr) {
        trace.printf("File %s not opened ", fileName_.c_str());
        return false;
    }
    const int status = vor_safeHandleStats(handle_, &stats);
    if (status != FileStatus::Success)
        trace.printf("Error %d reading stats %s", status, fileName_.c_str());
    return status == FileStatus::Success;
}

bool FileLockImpl::getStats(const char* path, VOR_FileStats& stats) {
    Tracer trace("FileLockImpl::getStats()", true);
    const int status = vor_safeFileStats(path, &stats);
    if (status != FileStatus::Success)
        trace.printf("Error %d reading stats %s", status, path != nullptr ? path : "");
    return status == FileStatus::Success;
}

bool FileLockImpl::updateStats(VOR_FileStats& stats) {
    const MutexGrabber grabber(mutex_);
    return vor_safeHandleStatsAreStale(handle_, &stats) != 0;
}

bool FileLockImpl::updateStats(const char* path, VOR_FileStats& stats) {
    return vor_safeFileStatsAreStale(path, &stats) != 0;
}

bool FileLockImpl::staleStats(VOR_FileStats& stats) {
    const MutexGrabber grabber(mutex_);
    Tracer trace("FileLockImpl::staleStats()", true);
    return isStale(stats, [this](VOR_FileStats& fresh) { return getStats(fresh); });
}

bool FileLockImpl::staleStats(const char* path, VOR_FileStats& stats) {
    Tracer trace("FileLockImpl::staleStats()", true);
    return isStale(stats, [path](VOR_FileStats& fresh) { return getStats(path, fresh); });
}

} // namespace ZEL::RT
