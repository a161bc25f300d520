// A place for the files of one test.
#ifndef ZEL_TESTS_SUPPORT_TEMPORARYDIRECTORY_H
#define ZEL_TESTS_SUPPORT_TEMPORARYDIRECTORY_H

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

// A new directory, removed with its contents at the end of the scope.
class TemporaryDirectory {
public:
    TemporaryDirectory() : name_((std::filesystem::temp_directory_path() / "zel-test-XXXXXX").string()) {
        if (::mkdtemp(name_.data()) == nullptr)
            throw std::runtime_error("no temporary directory " + name_);
    }
    ~TemporaryDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(name_, ignored);
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;

    std::string path(const std::string& name) const { return name_ + "/" + name; }

    // Makes or replaces a file and returns its path.
    std::string file(const std::string& name, const std::string& contents = "") const {
        std::ofstream(path(name), std::ios::binary) << contents;
        return path(name);
    }

    static std::string contents(const std::string& path) {
        std::ifstream in(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

private:
    std::string name_;
};

#endif
