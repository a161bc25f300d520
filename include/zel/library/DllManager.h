/// @file
/// The process's register of loaded libraries.
#ifndef ZEL_LIBRARY_DLLMANAGER_H
#define ZEL_LIBRARY_DLLMANAGER_H

#include "zel/export.h"
#include "zel/library/DynamicLibraryImpl.h"
#include "zel/library/Library.h"
#include "zel/memory/SmartPointer.h"
#include "zel/threads/Mutex.h"

#include <map>
#include <string>

namespace ZEL::RT {

/// Loads every library once and shares it among all who ask for it, until the process ends.
///
/// Any thread may call any operation; one library is loaded at a time. A library's initialisers may themselves ask for
/// libraries, and also for the one that is being loaded. The child of a fork has the register of its parent.
///
/// The register exists from the static initialisation of this library until its exit handlers. A request before or
/// after that loads as well, but shares nothing: the library goes with the pointer that was returned.
class ZEL_API DllManager {
public:
    ~DllManager();

    DllManager(const DllManager&) = delete;
    DllManager& operator=(const DllManager&) = delete;

    /// Loads the library, or returns the one loaded before under the same file name, whatever path that came from.
    /// Name and path are those of Library.
    /// @throws ZEL::EXCEPTIONS::IOException entry -1071 if it cannot be opened; a later request tries again.
    /// @{
    static SmartPointer<const DynamicLibraryImpl> loadLibrary(const std::string& name, const std::string& path);
    static SmartPointer<const DynamicLibraryImpl> loadLibrary(const Library& library);
    SmartPointer<const DynamicLibraryImpl> load(const Library& library);
    /// @}

    /// Do nothing but leave a mark in the trace: a library stays until the process ends.
    /// @{
    static void unloadLibrary(const SmartPointer<const DynamicLibraryImpl>& library);
    static void unloadLibrary(const std::string& name);
    void unload(const SmartPointer<const DynamicLibraryImpl>& library);
    void unload(const std::string& name);
    /// @}

    /// The only one.
    static DllManager theOne;

private:
    struct ZEL_LOCAL Fork;
    struct Layout;
    using Libraries = std::map<Library, SmartPointer<const DynamicLibraryImpl>>;

    ZEL_LOCAL DllManager();

    Libraries libraries_ ZEL_GUARDED_BY(mutex_);
    Mutex mutex_;
};

} // namespace ZEL::RT

#endif
