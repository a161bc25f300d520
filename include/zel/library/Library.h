/// @file
/// Name and place of a shared library.
#ifndef ZEL_LIBRARY_LIBRARY_H
#define ZEL_LIBRARY_LIBRARY_H

#include "zel/export.h"

#include <string>

namespace ZEL::RT {

/// A shared library by name, looked for once, when the value is made. Constant from then on; copied freely.
class ZEL_API Library {
public:
    /// Looks for GetLibraryFileName(name, ".so") on the path; the first that exists is the library's file. Without a
    /// path, the file is the bare file name, and the system's loader searches where it always does. Not finding it is
    /// no error here: the file is then empty, and loading fails.
    /// @param name such as foo or libfoo.so; libfoo.so.2 stands for the file libfoo.so.2.so.
    /// @param path directories separated by ":"; an empty one stands for the root directory.
    Library(const std::string& name, const std::string& path);

    /// What was found is copied; nothing is looked for again.
    /// @{
    Library(const Library& other);
    Library& operator=(const Library& other);
    /// @}
    virtual ~Library();

    /// The file name without a directory, such as libfoo.so. It alone is the library's identity.
    std::string getName() const;

    /// Where the library was found; the bare file name without a path, empty when it was not found.
    std::string getFile() const;

    /// Opens the file, as vor_loadLibrary() does.
    /// @return the system's handle, for vor_unloadLibrary(); null on failure.
    void* load();

    /// Orders by file name, byte by byte: libraries of one name are the same, wherever they were found.
    bool operator<(const Library& other) const;

    /// The name with "lib" ahead and the extension behind, each unless it is there already. Only the exact ending
    /// counts: foo.so.1 becomes libfoo.so.1.so.
    static std::string GetLibraryFileName(const std::string& name, const std::string& extension);

    /// ".so"
    static std::string GetDefaultExtension();

    /// The value that LD_LIBRARY_PATH has now; empty when it is not set. The environment is read without a lock.
    static std::string GetDefaultLibraryPath();

private:
    friend class DynamicLibraryImpl; // reads the name without a copy
    struct Layout;

    std::string name_;
    std::string path_;
    std::string file_;
};

} // namespace ZEL::RT

#endif
