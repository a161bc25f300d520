// Names and search paths of any kind: what the library makes of them is what a plain model without buffers says.
//
// An input is lines: name, search path, prefix, suffix or extension, size of the result. The searches run in a folder
// that has something to find.
#include "zel/vor.h"
#include "zel/zel.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <sys/stat.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Found = std::optional<std::string>;

[[noreturn]] void differs(const char* what, const Found& is, const Found& expected) {
    std::fprintf(stderr, "%s: is \"%s\", not \"%s\"\n", what, is.value_or("nothing").c_str(),
                 expected.value_or("nothing").c_str());
    std::abort();
}

void check(const char* what, const Found& is, const Found& expected) {
    if (is != expected)
        differs(what, is, expected);
}

Found taken(char* text) {
    const std::unique_ptr<char, decltype(&std::free)> owner(text, &std::free);
    return text != nullptr ? Found(text) : std::nullopt;
}

bool exists(const std::string& path) {
    struct stat ignored;
    return path.find('\0') == std::string::npos && ::stat(path.c_str(), &ignored) == 0;
}

bool beginsWith(const std::string& text, const std::string& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> pieces(1);
    for (const char c : text) {
        if (c == separator)
            pieces.emplace_back();
        else
            pieces.back() += c;
    }
    return pieces;
}

bool hasDot(const std::string& name) {
    const std::size_t backslash = name.rfind('\\');
    return name.find('.', backslash != std::string::npos ? backslash : 0) != std::string::npos;
}

std::string modelOfFormat(const std::string& name, const std::string& prefix, const std::string& suffix) {
    const bool prefixed = !prefix.empty() && name.find(prefix) != 0 && name.find('/') == std::string::npos;
    return (prefixed ? prefix : "") + name + (hasDot(name) ? "" : suffix);
}

Found modelOfFind(const std::string& name, const std::string& path, const std::string& extension, std::size_t size) {
    for (const std::string& directory : split(path, ':')) {
        const std::string candidate = directory + "/" + name + (hasDot(name) ? "" : extension);
        if (!directory.empty() && candidate.size() < size && exists(candidate))
            return candidate;
    }
    return std::nullopt;
}

Found modelOfFindLibrary(const std::string& name, const std::string& path) {
    const std::string file = beginsWith(name, "lib") ? name : "lib" + name;
    return file.size() < 1024 ? modelOfFind(file, path, ".so", 1024) : std::nullopt;
}

std::string modelOfClassName(const std::string& name) {
    const std::string file = beginsWith(name, "lib") ? name : "lib" + name;
    return file.size() >= 3 && file.substr(file.size() - 3) == ".so" ? file : file + ".so";
}

std::string modelOfClassFile(const std::string& name, const std::string& path) {
    if (path.empty())
        return name;
    for (const std::string& directory : split(path, ':'))
        if (exists(directory + "/" + name))
            return directory + "/" + name;
    return "";
}

// A result that is exactly as large as is said, for the sanitizer to watch, and untouched when there is none.
Found findOnPath(const char* name, const char* path, const char* extension, std::size_t size) {
    const std::string before(size, '#');
    const std::unique_ptr<char[]> result(new char[size]);
    before.copy(result.get(), size);
    if (vor_findFileOnPath(name, path, extension, result.get(), size) != 0)
        return result.get();
    check("result", std::string(result.get(), size), before);
    return std::nullopt;
}

bool enterFolder() {
    std::string folder = (std::filesystem::temp_directory_path() / "zel-fuzz-XXXXXX").string();
    if (::mkdtemp(folder.data()) == nullptr)
        std::abort();
    static const struct Folder {
        std::string name;
        ~Folder() { std::filesystem::remove_all(name); }
    } removed{folder};
    std::filesystem::current_path(folder);
    std::string deep = "d";
    for (int i = 0; i < 10; ++i)
        deep += "/" + std::string(97, 'n');
    std::filesystem::create_directories(deep);
    std::filesystem::create_symlink(deep, "deep");
    for (const char* file : {"libfoo.so", "d/libfoo.so", "d/libbar.so.1", "d/foo", "deep/lib.so", "deep/libfoo.so"})
        std::ofstream(file) << file;
    return true;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    [[maybe_unused]] static const bool entered = enterFolder();
    std::vector<std::string> fields = split(std::string(reinterpret_cast<const char*>(data), size), '\n');
    fields.resize(5);
    const std::string name = fields[0], path = fields[1];
    const std::size_t resultSize = std::strtoul(fields[4].c_str(), nullptr, 10) % 8192;

    const ZEL::RT::Library library(name, path);
    check("class name", library.getName(), modelOfClassName(name));
    check("class file", library.getFile(), modelOfClassFile(modelOfClassName(name), path));

    // The flat functions see a text up to its NUL.
    for (std::string& field : fields)
        field.resize(std::char_traits<char>::length(field.c_str()));
    const char* const flatName = fields[0].c_str();
    const char* const flatPath = fields[1].c_str();
    check("format", taken(vor_formatLibraryName(flatName, fields[2].c_str(), fields[3].c_str())),
          modelOfFormat(fields[0], fields[2], fields[3]));
    check("find", findOnPath(flatName, flatPath, fields[3].c_str(), resultSize),
          modelOfFind(fields[0], fields[1], fields[3], resultSize));
    check("find library", taken(vor_findLibrary(flatName, flatPath)), modelOfFindLibrary(fields[0], fields[1]));
    return 0;
}
