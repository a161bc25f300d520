// The trace scopes below are named after the class that does the work underneath; readers of traces search for them.

#include "zel/persistence/LocalFileImpl.h"

#include "zel/exceptions/IOException.h"
#include "zel/exceptions/PolicyException.h"
#include "zel/threads/MutexGrabber.h"
#include "zel/tracer/Tracer.h"

#include "threads/CancellationShield.h"

#include <cstddef>

namespace ZEL::RT {

namespace {

// The entry code by which an unmarshal() asks to be offered the contents again.
constexpr int offerAgain = -1082;

} // namespace

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
struct LocalFileImpl::Layout {
    static constexpr std::size_t word = sizeof(void*);
    static_assert(offsetof(LocalFileImpl, stats_) == word);
    static_assert(offsetof(LocalFileImpl, fileName_) == (word == 4 ? 16 : 24));
    static_assert(offsetof(LocalFileImpl, mutex_) == offsetof(LocalFileImpl, fileName_) + sizeof(std::string));
    static_assert(word != 4 || sizeof(LocalFileImpl) == 64);
    static_assert(word != 8 || sizeof(LocalFileImpl) == 96);
};
#pragma GCC diagnostic pop

LocalFileImpl::LocalFileImpl(const std::string& fileName) : stats_(), fileName_(fileName) {}

std::string LocalFileImpl::toString() const { return "TODO"; }

LocalFileImpl::~LocalFileImpl() {
    const CancellationShield shield;
    try {
        Tracer trace("FileLockImpl::~LocalFileImpl()", true);
    } catch (...) {
        // The trace failed, and nobody can be told from here.
    }
}

const std::string& LocalFileImpl::getFileName() const { return fileName_; }

void LocalFileImpl::save(const std::string& contents) {
    Tracer trace("FileLockImpl::save()", true);
    save(writeLock(), contents);
}

void LocalFileImpl::append(const std::string& contents) { append(writeLock(), contents); }

std::string LocalFileImpl::retrieve() {
    Tracer trace("FileLockImpl::retrieve()", true);
    return retrieve(readLock());
}

bool LocalFileImpl::update(Marshallable& target) {
    Tracer trace("FileLockImpl::update()", true);
    if (!isStale())
        return false;
    const std::string contents = retrieve();
    try {
        target.unmarshal(contents);
    } catch (const EXCEPTIONS::PolicyException& e) {
        if (e.getEntryCode() == offerAgain) {
            // The next test looks at the file at once and finds it changed.
            const MutexGrabber grabber(mutex_);
            stats_.modificationTime = 0;
            stats_.checkTime = 0;
        }
        throw EXCEPTIONS::PolicyException(e);
    }
    return true;
}

int LocalFileImpl::getFileSize(bool& exists) {
    exists = false;
    try {
        const MutexGrabber grabber(mutex_);
        Tracer trace("FileLockImpl::getFileSize()", true);
        if (!FileLockImpl::getStats(fileName_.c_str(), stats_))
            return 0;
        exists = true;
        return static_cast<int>(stats_.size);
    } catch (const EXCEPTIONS::IOException&) {
        return -1;
    }
}

bool LocalFileImpl::isStale() {
    const MutexGrabber grabber(mutex_);
    Tracer trace("FileLockImpl::isStale()", true);
    return FileLockImpl::staleStats(fileName_.c_str(), stats_);
}

SmartPointer<FileLockImpl> LocalFileImpl::writeLock() {
    return SmartPointer<FileLockImpl>(new FileLockImpl(fileName_, FileLockImpl::OPEN_WRITE));
}

SmartPointer<FileLockImpl> LocalFileImpl::readLock() {
    return SmartPointer<FileLockImpl>(new FileLockImpl(fileName_, FileLockImpl::OPEN_READ));
}

std::string LocalFileImpl::retrieve(const SmartPointer<FileLockImpl>& lock) {
    Tracer trace("FileLockImpl::retrieve()", true);
    std::string contents;
    readContents(lock, contents);
    return contents;
}

void LocalFileImpl::append(const SmartPointer<FileLockImpl>& lock, const std::string& contents) {
    appendContents(lock, contents);
}

void LocalFileImpl::save(const SmartPointer<FileLockImpl>& lock, const std::string& contents) {
    Tracer trace("FileLockImpl::save()", true);
    saveContents(lock, contents);
}

void LocalFileImpl::save(const SmartPointer<FileLockImpl>& lock, const Marshallable& source) {
    Tracer trace("FileLockImpl::save()", true);
    save(lock, source.marshal());
}

// Callers count on these two not to wait for the mutex.
bool LocalFileImpl::update(const SmartPointer<FileLockImpl>& lock, Marshallable& target) ZEL_NO_THREAD_SAFETY_ANALYSIS {
    Tracer trace("FileLockImpl::update()", true);
    const bool changed = lock->updateStats(stats_);
    if (changed)
        target.unmarshal(retrieve(lock));
    return changed;
}

bool LocalFileImpl::isStale(const SmartPointer<FileLockImpl>& lock) ZEL_NO_THREAD_SAFETY_ANALYSIS {
    return lock->staleStats(stats_);
}

// A file that cannot be read counts as one without contents; its failure is in the trace.
void LocalFileImpl::readContents(const SmartPointer<FileLockImpl>& lock, std::string& out) {
    try {
        const MutexGrabber grabber(mutex_);
        Tracer trace("FileLockImpl::readContents()", true);
        if (lock->readContents(out) >= 0)
            lock->getStats(stats_);
    } catch (const EXCEPTIONS::IOException&) {
    }
}

// The statistics are taken after writing, so that the object's own change is not one by somebody else.
void LocalFileImpl::saveContents(const SmartPointer<FileLockImpl>& lock, const std::string& contents) {
    const MutexGrabber grabber(mutex_);
    Tracer trace("FileLockImpl::saveContents()", true);
    lock->saveContents(FileLockImpl::WRITE_REPLACE, contents);
    lock->getStats(stats_);
}

void LocalFileImpl::appendContents(const SmartPointer<FileLockImpl>& lock, const std::string& contents) {
    const MutexGrabber grabber(mutex_);
    Tracer trace("FileLockImpl::appendContents()", true);
    lock->saveContents(FileLockImpl::WRITE_APPEND, contents);
    lock->getStats(stats_);
}

} // namespace ZEL::RT
