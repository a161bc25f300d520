/// @file
/// One loaded shared library.
#ifndef ZEL_LIBRARY_DYNAMICLIBRARYIMPL_H
#define ZEL_LIBRARY_DYNAMICLIBRARYIMPL_H

#include "zel/export.h"
#include "zel/library/Library.h"

#include <string>

namespace ZEL::RT {

/// Owner of one handle of the system's loader, from construction until destruction or unload(). Neither copied nor
/// assigned. Constant operations may be called by several threads at once, the others by one that is alone.
class ZEL_API DynamicLibraryImpl {
public:
    /// Loads the library.
    /// @throws ZEL::EXCEPTIONS::IOException entry -1071 for the library's file, if it cannot be opened.
    explicit DynamicLibraryImpl(const Library& library);

    DynamicLibraryImpl(const DynamicLibraryImpl&) = delete;
    DynamicLibraryImpl& operator=(const DynamicLibraryImpl&) = delete;

    /// Unloads.
    ~DynamicLibraryImpl();

    /// Opens the library's file, unless it is open, and runs the library's initialisers. If the library has a
    /// zel_getLibraryInfo of its own, that is called, and version and build number go to the trace.
    /// @return whether the library is loaded now.
    bool load();

    /// Gives the handle back, if there is one. Addresses taken from the library are dead when it was the last of the
    /// process. Whether the system minded is not told.
    /// @return true.
    bool unload();

    /// The address of a symbol that the library, or one that it depends on, exports. Null when there is none, and when
    /// the library is not loaded.
    void* getSymbol(const std::string& name) const;

    /// The library's file name, such as libfoo.so.
    std::string getLibraryName() const;

private:
    struct Layout;

    Library library_;
    void* handle_; // null while not loaded
};

} // namespace ZEL::RT

#endif
