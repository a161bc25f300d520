#include "zel/library/vor_library.h"

#include "zel/persistence/vor_file.h"
#include "zel/utils/vor_runtime.h"

#include "library/LoaderLock.h"
#include "threads/CancellationShield.h"
#include "tracer/Unloading.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <memory>

#include <dlfcn.h>

using namespace ZEL;

namespace {

constexpr char libraryPrefix[] = "lib";
constexpr char librarySuffix[] = ".so";
constexpr std::size_t longestFound = 1024;

constexpr int loadFlags = RTLD_NOW | RTLD_GLOBAL;
static_assert(loadFlags == 0x102);

struct Free {
    void operator()(char* text) const { std::free(text); }
};
using Text = std::unique_ptr<char, Free>;

// The bytes that parts of these lengths need together with a NUL; SIZE_MAX, which no buffer has, if that is too many.
std::size_t sizeFor(std::initializer_list<std::size_t> lengths) {
    std::size_t size = 1;
    for (const std::size_t length : lengths)
        size = length > SIZE_MAX - size ? SIZE_MAX : size + length;
    return size;
}

bool beginsWith(const char* text, const char* prefix) { return std::strncmp(text, prefix, std::strlen(prefix)) == 0; }

// A "/" plays no part here: dir.d/foo has an extension.
bool hasExtension(const char* name) {
    const char* backslash = std::strrchr(name, '\\');
    return std::strchr(backslash != nullptr ? backslash : name, '.') != nullptr;
}

} // namespace

char* vor_formatLibraryName(const char* name, const char* prefix, const char* suffix) {
    if (name == nullptr || prefix == nullptr || suffix == nullptr)
        return nullptr;
    const std::size_t size = sizeFor({std::strlen(name), std::strlen(prefix), std::strlen(suffix)});
    char* formatted = static_cast<char*>(std::calloc(size, 1));
    if (formatted == nullptr)
        return nullptr;
    if (!beginsWith(name, prefix) && std::strchr(name, '/') == nullptr)
        vor_safeStrcat(formatted, size, prefix, size);
    vor_safeStrcat(formatted, size, name, size);
    if (!hasExtension(name))
        vor_safeStrcat(formatted, size, suffix, size);
    return formatted;
}

int vor_findFileOnPath(const char* name, const char* path, const char* extension, char* result,
                       std::size_t resultSize) {
    if (name == nullptr || path == nullptr || extension == nullptr || result == nullptr || resultSize == 0)
        return 0;
    const int before = errno;
    const Text directories(::strdup(path));
    const Text candidate(static_cast<char*>(std::calloc(resultSize, 1)));
    if (directories == nullptr || candidate == nullptr)
        return 0;

    const bool complete = hasExtension(name);
    const std::size_t nameLength = std::strlen(name);
    const std::size_t extensionLength = complete ? 0 : std::strlen(extension);
    char* rest = nullptr;
    for (const char* directory = vor_safeStrtok(directories.get(), ":", &rest); directory != nullptr;
         directory = vor_safeStrtok(nullptr, ":", &rest)) {
        // Formatting knows no bound.
        if (sizeFor({std::strlen(directory), 1, nameLength, extensionLength}) > resultSize)
            continue;
        if (complete)
            vor_safeSprintf(candidate.get(), resultSize, "%s%s%s", directory, "/", name);
        else
            vor_safeSprintf(candidate.get(), resultSize, "%s%s%s%s", directory, "/", name, extension);
        VOR_FileStats stats;
        if (vor_safeFileStats(candidate.get(), &stats) == 0) {
            // Only now: the result may be the very memory of the name.
            vor_safeStrcpy(result, resultSize, candidate.get(), std::strlen(candidate.get()));
            errno = before;
            return 1;
        }
    }
    return 0;
}

char* vor_findLibrary(const char* name, const char* path) {
    if (name == nullptr || path == nullptr)
        return nullptr;
    char file[longestFound] = {};
    const char* prefix = beginsWith(name, libraryPrefix) ? "" : libraryPrefix;
    if (sizeFor({std::strlen(prefix), std::strlen(name)}) > sizeof file)
        return nullptr;
    vor_safeSprintf(file, sizeof file, "%s%s", prefix, name);
    return vor_findFileOnPath(file, path, librarySuffix, file, sizeof file) != 0 ? ::strdup(file) : nullptr;
}

void* vor_loadLibrary(const char* name) {
    if (name == nullptr)
        return nullptr;
    const int before = errno;
    const CancellationShield shield;
    const LoaderLock lock;
    const Text file(vor_formatLibraryName(name, libraryPrefix, librarySuffix));
    void* handle = ::dlopen(file.get(), loadFlags); // without memory for the name: the main program
    if (handle != nullptr)
        errno = before;
    return handle;
}

int vor_unloadLibrary(void* handle) {
    if (handle == nullptr)
        return -1;
    const int before = errno;
    const CancellationShield shield;
    const RT::Unloading names;
    const LoaderLock lock;
    const int result = ::dlclose(handle);
    if (result == 0)
        errno = before;
    return result;
}

void* vor_loadSymbol(void* handle, const char* symbolName) {
    if (handle == nullptr || symbolName == nullptr)
        return nullptr;
    return ::dlsym(handle, symbolName);
}

void* vor_loadLibraryFromPath(const char* name, const char* path) {
    const Text file(vor_findLibrary(name, path));
    return file != nullptr ? vor_loadLibrary(file.get()) : nullptr;
}
