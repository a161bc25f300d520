/// @file
/// A named file whose whole contents are read and written as a unit.
#ifndef ZEL_PERSISTENCE_ILOCALFILE_H
#define ZEL_PERSISTENCE_ILOCALFILE_H

#include "zel/exceptions/Marshallable.h"
#include "zel/exceptions/Object.h"
#include "zel/export.h"
#include "zel/memory/SmartPointer.h"
#include "zel/persistence/FileLockImpl.h"

#include <string>

namespace ZEL::RT {

/// One named file. Each operation without a lock argument opens and locks the file for itself; those with one work
/// under a lock that the caller holds, so that reading, changing and writing can be one step for other processes:
/// \code
///     const SmartPointer<FileLockImpl> lock = file->writeLock();
///     file->save(lock, changed(file->retrieve(lock)));
/// \endcode
/// A caller who holds a lock keeps to the forms that take it: save(), append(), retrieve() and update() without one
/// open and close the file themselves, which drops the lock that is held.
///
/// The object remembers what the file looked like when it last read or wrote it, and so notices changes by others.
/// All operations may be called from any thread. The order is always file lock first, then the object's mutex;
/// isStale() and update() with a lock do not take the mutex. Waiting for a file lock can be cancelled, nothing else.
/// A null lock is answered with NullPointerException entry -1004. Virtual functions are in slot order, which callers
/// depend on.
class ZEL_API ILocalFile : public Object {
public:
    /// @return the fixed text "TODO".
    std::string toString() const override = 0;

    ~ILocalFile() override;

    /// The name as it was given; valid for as long as the object.
    virtual const std::string& getFileName() const = 0;

    /// Replaces the contents. @throws as writeLock() and save() under a lock.
    virtual void save(const std::string& contents) = 0;

    /// Adds to the end. @throws as writeLock() and append() under a lock.
    virtual void append(const std::string& contents) = 0;

    /// @return the contents, as retrieve() under a lock. @throws as readLock().
    virtual std::string retrieve() = 0;

    /// If isStale(), reads the file into \p target.
    /// @return whether it was stale.
    /// @throws as readLock(); a copy, as PolicyException, of any such exception of the target's unmarshal(), after
    /// entry -1082 of which the file counts as changed at once; other exceptions of unmarshal() as they are.
    virtual bool update(Marshallable& target) = 0;

    /// @param exists receives whether the file can be examined.
    /// @return the size in bytes, as a signed 32-bit number of the record's; 0 if the file cannot be examined; -1 on
    /// an IOException.
    virtual int getFileSize(bool& exists) = 0;

    /// Whether the file differs from what this object last saw; true also if it cannot be examined. Looks at the file
    /// at most once a second, and is false in a second in which it has looked.
    virtual bool isStale() = 0;

    /// @return an exclusive lock, held until its last pointer goes; a missing file is created.
    /// @throws ZEL::EXCEPTIONS::IOException as FileLockImpl::obtainLock(), which also says how long this may take.
    virtual SmartPointer<FileLockImpl> writeLock() = 0;

    /// @return a shared lock, held until its last pointer goes.
    /// @throws ZEL::EXCEPTIONS::IOException as FileLockImpl::obtainLock(), which also says how long this may take.
    virtual SmartPointer<FileLockImpl> readLock() = 0;

    /// @return the contents, each CR LF turned into LF; empty when the file cannot be read.
    virtual std::string retrieve(const SmartPointer<FileLockImpl>& lock) = 0;

    /// Adds to the end. @throws ZEL::EXCEPTIONS::IOException entry -1080 or -1086.
    virtual void append(const SmartPointer<FileLockImpl>& lock, const std::string& contents) = 0;

    /// Replaces the contents. @throws ZEL::EXCEPTIONS::IOException entry -1080 or -1086.
    virtual void save(const SmartPointer<FileLockImpl>& lock, const std::string& contents) = 0;

    /// Replaces the contents by what \p source marshals to. @throws as the form above, and what marshal() throws.
    virtual void save(const SmartPointer<FileLockImpl>& lock, const Marshallable& source) = 0;

    /// If the open file differs from what this object last saw, reads it into \p target.
    /// @return whether it did. @throws what unmarshal() throws; the file then counts as seen.
    virtual bool update(const SmartPointer<FileLockImpl>& lock, Marshallable& target) = 0;

    /// As isStale(), by the open file.
    virtual bool isStale(const SmartPointer<FileLockImpl>& lock) = 0;
};

/// @return a new object for the file of that name, which need not exist. Nothing is shared: two objects for one name
/// remember what each of them saw.
ZEL_API SmartPointer<ILocalFile> getLocalFile(const std::string& fileName);

} // namespace ZEL::RT

#endif
