#include "zel/library/Library.h"

#include "zel/library/FileUtils.h"
#include "zel/library/vor_library.h"
#include "zel/tracer/Tracer.h"
#include "zel/utils/EnvUtils.h"
#include "zel/utils/StringUtils.h"

#include <cstddef>

namespace ZEL::RT {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
struct Library::Layout {
    static_assert(offsetof(Library, name_) == sizeof(void*));
    static_assert(offsetof(Library, path_) == sizeof(void*) + sizeof(std::string));
    static_assert(offsetof(Library, file_) == sizeof(void*) + 2 * sizeof(std::string));
    static_assert(sizeof(Library) == sizeof(void*) + 3 * sizeof(std::string));
};
#pragma GCC diagnostic pop

Library::Library(const std::string& name, const std::string& path) : path_(path) {
    Tracer trace("Library::Library", true);
    const std::string extension = GetDefaultExtension();
    trace.printf("Looking for %s on path %s", name.c_str(), path.c_str());
    name_ = GetLibraryFileName(name, extension);
    if (path.empty())
        file_ = name_;
    else
        FileUtils::FindFileOnPath(name_, extension, path, file_);
    trace.printf("Found %s at %s", name_.c_str(), file_.c_str());
}

Library::Library(const Library& other) = default;

Library& Library::operator=(const Library& other) = default;

Library::~Library() = default;

std::string Library::getName() const { return name_; }

std::string Library::getFile() const { return file_; }

// Of a name with a NUL in it the system would load what stands ahead of that.
void* Library::load() { return file_.find('\0') == std::string::npos ? vor_loadLibrary(file_.c_str()) : nullptr; }

bool Library::operator<(const Library& other) const { return name_ < other.name_; }

std::string Library::GetLibraryFileName(const std::string& name, const std::string& extension) {
    std::string result = StringUtils::StartsWith(name, "lib") ? name : "lib" + name;
    if (!StringUtils::EndsWith(result, extension))
        result += extension;
    return result;
}

// Never destroyed: libraries are also looked for in exit handlers.
std::string Library::GetDefaultExtension() {
    static const std::string& extension = *new std::string(".so");
    return extension;
}

std::string Library::GetDefaultLibraryPath() { return EnvUtils::GetEnv("LD_LIBRARY_PATH", ""); }

} // namespace ZEL::RT
