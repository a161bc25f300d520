/// @file
/// One open, locked file.
#ifndef ZEL_PERSISTENCE_FILELOCKIMPL_H
#define ZEL_PERSISTENCE_FILELOCKIMPL_H

#include "zel/export.h"
#include "zel/persistence/vor_file.h"
#include "zel/threads/Mutex.h"

#include <string>

namespace ZEL::RT {

/// Owner of one file that is open under a lock, shared for reading or exclusive for writing, from construction or
/// obtainLock() until releaseLock() or destruction.
///
/// The lock keeps other processes out, not other threads or objects of this one; it is lost when this process closes
/// any other descriptor of the same file. Every operation may be called from any thread: an object does one at a time,
/// and one that is waiting for its lock makes them all wait. Waiting for the lock can be cancelled, which leaves the
/// object closed and usable; nothing else can. After an IOException errno holds the system's reason.
class ZEL_API FileLockImpl {
public:
    /// What the file is opened for, and with it the kind of the lock.
    enum OPEN_MODE : int {
        OPEN_READ = 0, ///< Read only, shared lock; the file must exist.
        OPEN_WRITE = 1 ///< As any other value: read and write, exclusive lock; a missing file is created.
    };

    /// What becomes of the contents that are there.
    enum WRITE_MODE : int {
        WRITE_REPLACE = 0, ///< As any value but 1: replaces the contents and forces them to disk.
        WRITE_APPEND = 1   ///< Appends; only the first append of each second is forced to disk.
    };

    /// A closed object.
    FileLockImpl();

    /// As obtainLock() on a closed object.
    FileLockImpl(const std::string& fileName, const OPEN_MODE& openMode);

    /// Drops the lock and closes the file, whatever happens to the trace.
    virtual ~FileLockImpl();

    FileLockImpl(const FileLockImpl&) = delete;
    FileLockImpl& operator=(const FileLockImpl&) = delete;

    /// Opens and locks the file, whose name becomes this object's. Does nothing if this object already holds a file of
    /// exactly that name. While another process holds the lock, tries 400 times in about 150 seconds; a missing or
    /// forbidden file is tried once.
    /// @throws ZEL::EXCEPTIONS::IOException entry -1085 if the file cannot be opened for reading, -1086 for writing,
    /// -1100 if this object holds another file, which it keeps.
    void obtainLock(const char* path, const OPEN_MODE& mode);

    /// Drops the lock and closes the file, if there is one. The object is closed afterwards even on failure, when the
    /// file may stay open and locked for as long as the process lives.
    /// @return 0, or the status of vor_safeCloseFile().
    int releaseLock();

    /// Reads the whole file, each CR LF turned into LF.
    /// @return the number of bytes now in \p out, or -1 when closed, with \p out untouched.
    /// @throws ZEL::EXCEPTIONS::IOException entry -1010, with \p out untouched.
    int readContents(std::string& out);

    /// Writes the whole text, of less than 4 GiB.
    /// @throws ZEL::EXCEPTIONS::IOException entry -1086 when closed, -1080 if writing or forcing to disk failed.
    void saveContents(const WRITE_MODE& writeMode, const std::string& contents);

    /// Describes the open file, or the file at a path.
    /// @return false, with \p stats untouched, when closed or if it cannot be examined.
    /// @{
    bool getStats(VOR_FileStats& stats);
    static bool getStats(const char* path, VOR_FileStats& stats);
    /// @}

    /// Whether the file differs from \p stats, which is then refreshed.
    /// @return true, with \p stats untouched, also when closed or if it cannot be examined.
    /// @{
    bool updateStats(VOR_FileStats& stats);
    static bool updateStats(const char* path, VOR_FileStats& stats);
    /// @}

    /// Whether the file differs from \p stats, with at most one look at the file in each second of \p stats.checkTime:
    /// in a second that was checked already the answer is false. Only checkTime is refreshed, so that a change is
    /// reported once a second until the caller refreshes the rest.
    /// @return true also, in a new second, when closed or if it cannot be examined.
    /// @{
    bool staleStats(VOR_FileStats& stats);
    static bool staleStats(const char* path, VOR_FileStats& stats);
    /// @}

private:
    struct Layout;

    Mutex mutex_;
    std::string fileName_ ZEL_GUARDED_BY(mutex_);
    VOR_FileHandle* handle_ ZEL_GUARDED_BY(mutex_); // null when closed
};

} // namespace ZEL::RT

#endif
