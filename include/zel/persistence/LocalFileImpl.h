/// @file
/// Local file on top of file locks.
#ifndef ZEL_PERSISTENCE_LOCALFILEIMPL_H
#define ZEL_PERSISTENCE_LOCALFILEIMPL_H

#include "zel/persistence/ILocalFile.h"

#include <string>

namespace ZEL::RT {

/// The library's ILocalFile, as getLocalFile() makes it. No file is open between operations.
class ZEL_API LocalFileImpl : public ILocalFile {
public:
    /// Touches no file; nothing is known of it yet, so that any file with contents counts as changed.
    explicit LocalFileImpl(const std::string& fileName);

    LocalFileImpl(const LocalFileImpl&) = delete;
    LocalFileImpl& operator=(const LocalFileImpl&) = delete;

    std::string toString() const override;
    ~LocalFileImpl() override;
    const std::string& getFileName() const override;
    void save(const std::string& contents) override;
    void append(const std::string& contents) override;
    std::string retrieve() override;
    bool update(Marshallable& target) override;
    int getFileSize(bool& exists) override;
    bool isStale() override;
    SmartPointer<FileLockImpl> writeLock() override;
    SmartPointer<FileLockImpl> readLock() override;
    std::string retrieve(const SmartPointer<FileLockImpl>& lock) override;
    void append(const SmartPointer<FileLockImpl>& lock, const std::string& contents) override;
    void save(const SmartPointer<FileLockImpl>& lock, const std::string& contents) override;
    void save(const SmartPointer<FileLockImpl>& lock, const Marshallable& source) override;
    bool update(const SmartPointer<FileLockImpl>& lock, Marshallable& target) override;
    bool isStale(const SmartPointer<FileLockImpl>& lock) override;

private:
    struct Layout;

    void readContents(const SmartPointer<FileLockImpl>& lock, std::string& out);
    void saveContents(const SmartPointer<FileLockImpl>& lock, const std::string& contents);
    void appendContents(const SmartPointer<FileLockImpl>& lock, const std::string& contents);

    VOR_FileStats stats_ ZEL_GUARDED_BY(mutex_); // the file as this object last saw it
    std::string fileName_;
    Mutex mutex_; // of stats_, and for one read or write at a time
};

} // namespace ZEL::RT

#endif
