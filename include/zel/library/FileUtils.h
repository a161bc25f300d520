/// @file
/// Looking for files.
#ifndef ZEL_LIBRARY_FILEUTILS_H
#define ZEL_LIBRARY_FILEUTILS_H

#include "zel/export.h"

#include <string>

namespace ZEL::RT {

/// Static operations that look for files. All leave errno alone and may be called from any thread.
class ZEL_API FileUtils {
public:
    /// Whether there is anything at the path: a file, a directory or whatever else stat accepts.
    static bool Exists(const std::string& path);

    /// Looks for a file in the directories of a path, separated by ":", in their order; an empty one is the root.
    /// @param fileName complete with its extension.
    /// @param extension accepted and ignored.
    /// @param path such as "/usr/lib:/opt/lib".
    /// @param result receives directory, "/" and file name of the first that exists; untouched if there is none.
    /// @return whether there is one.
    static bool FindFileOnPath(const std::string& fileName, const std::string& extension, const std::string& path,
                               std::string& result);
};

} // namespace ZEL::RT

#endif
