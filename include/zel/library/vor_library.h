/** @file
 * Shared libraries: their file names, where they are found, and loading them.
 *
 * Nothing is thrown. A null argument gives null from a function that returns a pointer, 0 from vor_findFileOnPath and
 * -1 from vor_unloadLibrary. After a success errno is what it was before; after a failure of the system's loader,
 * dlerror() says more. A name or path of any length may be passed: what has no room in a buffer is not found.
 *
 * Loading and unloading run the initialisers and finalisers of the libraries concerned, on the calling thread, one
 * thread at a time. They may use all of this library. A cancellation waits until they are done.
 *
 * Any thread may call any function.
 */
#ifndef ZEL_LIBRARY_VOR_LIBRARY_H
#define ZEL_LIBRARY_VOR_LIBRARY_H

#include "zel/export.h"

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The file name of a library: foo, "lib" and ".so" make libfoo.so.
 * The prefix is left out if the name begins with it or has a "/" anywhere. The suffix is left out if the name has a "."
 * behind its last backslash or, without a backslash, anywhere: also in a directory, as in dir.d/foo.
 * @return the name, to be released with free; null if there is no memory for it. */
ZEL_API char* vor_formatLibraryName(const char* name, const char* prefix, const char* suffix);

/** Looks for a file in the directories of a path, separated by ":", in their order. Empty directories are skipped, and
 * so are those whose candidate does not fit the result. Whatever stat finds will do, directories included.
 * @param name       with or without an extension; a "/" in it has no special meaning.
 * @param path       such as "/usr/lib:/opt/lib".
 * @param extension  appended to a name that has no ".", by the rule of vor_formatLibraryName.
 * @param result     receives directory, "/" and file name, at most resultSize bytes with the NUL; untouched if nothing
 * is found. It may be the same memory as the name. Memory of the same size is allocated for the search.
 * @param resultSize  capacity of the result in bytes.
 * @return 1 if found; 0 if not, if there is no memory, or if resultSize is 0. */
ZEL_API int vor_findFileOnPath(const char* name, const char* path, const char* extension, char* result,
                               size_t resultSize);

/** Looks for a library in the directories of a path: "lib" is put ahead of a name that does not begin with it, ".so"
 * behind one without a ".".
 * @return the first that exists, to be released with free; null if there is none, or none whose full path has at most
 * 1023 characters. */
ZEL_API char* vor_findLibrary(const char* name, const char* path);

/** Opens the library that vor_formatLibraryName makes of the name, "lib" and ".so", with RTLD_NOW and RTLD_GLOBAL: its
 * symbols are all resolved at once, and are there for the libraries that are loaded later. A name without "/" is left
 * to the system's loader to search for.
 * @return the loader's handle, to be released with vor_unloadLibrary once for each time it was returned; null if the
 * library cannot be opened. If there is no memory for the name, the handle of the main program. */
ZEL_API void* vor_loadLibrary(const char* name);

/** Gives a handle back; the library goes with the last one, and with it everything that points into it. Only the
 * records that it left in the trace stay whole.
 * @return 0, or what dlclose returned. */
ZEL_API int vor_unloadLibrary(void* handle);

/** The address of a symbol that the library of a handle, or one that it depends on, exports; null if there is none. */
ZEL_API void* vor_loadSymbol(void* handle, const char* symbolName);

/** vor_loadLibrary for what vor_findLibrary finds. */
ZEL_API void* vor_loadLibraryFromPath(const char* name, const char* path);

#ifdef __cplusplus
}
#endif

#endif
