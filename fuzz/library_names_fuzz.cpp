// Names and search paths of any kind: what the library makes of them is what a plain model without buffers says. An
// input is a row with tabs between: name, search path, prefix, suffix or extension, size of the result.
#include "zel/vor.h"
#include "zel/zel.h"

#include "Target.h"
#include "support/TemporaryDirectory.h"

#include <memory>

#include <unistd.h>

namespace {

// What the searches may find.
struct Folder : TemporaryDirectory {
    Folder() {
        std::filesystem::current_path(path(""));
        std::string deep = "d";
        for (int i = 0; i < 10; ++i)
            deep += "/" + std::string(97, 'n');
        std::filesystem::create_directories(deep);
        for (const std::string name : {"libfoo.so", "d/libfoo.so", "d/libbar.so.1", "d/foo", "/lib.so", "/libfoo.so"})
            file(name[0] == '/' ? deep + name : name);
    }
};

std::string taken(char* text) {
    const std::unique_ptr<char, decltype(&std::free)> owner(text, &std::free);
    return text != nullptr ? text : "";
}

std::string prefixed(const std::string& name, const std::string& prefix) {
    return name.compare(0, prefix.size(), prefix) == 0 ? name : prefix + name;
}

// What the flat functions append to: a name without a dot, or without one behind its last backslash.
std::string extended(const std::string& name, const std::string& extension) {
    const std::size_t backslash = name.rfind('\\');
    const std::size_t dot = name.find('.', backslash != std::string::npos ? backslash : 0);
    return dot != std::string::npos ? name : name + extension;
}

// The first file that exists and fits, or "". Empty directories count for the class only.
std::string found(const std::string& name, const std::string& path, std::size_t size, bool flat) {
    for (std::size_t start = 0, end = 0; end != path.size(); start = end + 1) {
        end = std::min(path.find(':', start), path.size());
        const std::string file = path.substr(start, end - start) + '/' + name;
        const bool skipped = file.size() >= size || file.find('\0') != std::string::npos || (flat && start == end);
        if (!skipped && ::access(file.c_str(), F_OK) == 0)
            return file;
    }
    return "";
}

// The result is exactly as large as is said, for the sanitizer to watch, and untouched if nothing is found.
std::string findFile(const std::string& name, const std::string& path, const std::string& extension, std::size_t size) {
    std::vector<char> result(size, '#');
    if (vor_findFileOnPath(name.c_str(), path.c_str(), extension.c_str(), result.data(), size) != 0)
        return result.data();
    check("result", std::string(result.begin(), result.end()), std::string(size, '#'));
    return "";
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Folder entered;
    auto [name, path, prefix, suffix, bytes] = fields<5>(data, size);
    const std::size_t resultSize = std::strtoul(bytes.c_str(), nullptr, 10) % 8192;
    // More directories of the kinds that were there take time and show nothing.
    std::size_t end = 0;
    for (int directories = 8; directories != 0 && end != std::string::npos; --directories)
        end = path.find(':', end + 1);
    path.resize(std::min(end, path.size()));

    const ZEL::RT::Library library(name, path);
    const std::string stem = prefixed(name, "lib");
    const std::string file = stem.size() < 3 || stem.substr(stem.size() - 3) != ".so" ? stem + ".so" : stem;
    check("class name", library.getName(), file);
    check("class file", library.getFile(), path.empty() ? file : found(file, path, SIZE_MAX, false));

    for (std::string* const field : {&name, &path, &prefix, &suffix}) // as the flat functions see a text
        field->resize(std::char_traits<char>::length(field->c_str()));
    check("format", taken(vor_formatLibraryName(name.c_str(), prefix.c_str(), suffix.c_str())),
          (name.find('/') != std::string::npos ? name : prefixed(name, prefix)) +
              extended(name, suffix).substr(name.size())); // a dot in the prefix is none of the name's
    check("find", findFile(name, path, suffix, resultSize), found(extended(name, suffix), path, resultSize, true));
    check("find library", taken(vor_findLibrary(name.c_str(), path.c_str())),
          found(extended(prefixed(name, "lib"), ".so"), path, 1024, true));
    return 0;
}
