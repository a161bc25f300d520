// What libraries are called and where they are found, by class and by flat function.
#include "zel/vor.h"
#include "zel/zel.h"

#include "support/CapturedTrace.h"
#include "support/FaultShim.h"
#include "support/TemporaryDirectory.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

using ZEL::RT::FileUtils;
using ZEL::RT::Library;

namespace {

// Takes over a text that is to be freed; "(null)" for none.
std::string taken(char* text) {
    const std::string result = text != nullptr ? text : "(null)";
    std::free(text);
    return result;
}

std::string formatted(const char* name, const char* prefix = "lib", const char* suffix = ".so") {
    return taken(vor_formatLibraryName(name, prefix, suffix));
}

TEST(LibraryNames, Flat) {
    const struct {
        const char *name, *prefix, *suffix, *expected;
    } rows[] = {
        {"foo", "lib", ".so", "libfoo.so"},
        {"libfoo", "lib", ".so", "libfoo.so"},
        {"lib", "lib", ".so", "lib.so"},
        {"", "lib", ".so", "lib.so"},
        {"li", "lib", ".so", "libli.so"},
        {"mylibx", "lib", ".so", "libmylibx.so"}, // the prefix, but not at the start
        {"foo.so.1", "lib", ".so", "libfoo.so.1"},
        {"/opt/x/libfoo.so", "lib", ".so", "/opt/x/libfoo.so"},
        {"x/foo", "lib", ".so", "x/foo.so"},
        {"dir.d/foo", "lib", ".so", "dir.d/foo"}, // a dot in the directory counts
        {"dir.d\\foo", "lib", ".so", "libdir.d\\foo.so"},
        {"a.b\\c.d\\foo.x", "lib", ".so", "liba.b\\c.d\\foo.x"},
        {"foo\\", "lib", ".so", "libfoo\\.so"},
        {"foo", "", "", "foo"},
        {nullptr, "lib", ".so", "(null)"},
        {"foo", nullptr, ".so", "(null)"},
        {"foo", "lib", nullptr, "(null)"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(formatted(row.name, row.prefix, row.suffix), row.expected) << (row.name != nullptr ? row.name : "");
    const std::string longName(100'000, 'x');
    EXPECT_EQ(formatted(longName.c_str()), "lib" + longName + ".so");
}

TEST(LibraryNames, LengthsWhoseSumWrapsFail) {
    if (sizeof(std::size_t) != 4 || !FaultShim::allocationsCanFail)
        GTEST_SKIP() << "no memory is that large";
    // One text of a third of the address space, made of one block that is mapped again and again.
    constexpr std::size_t block = std::size_t{1} << 24;
    constexpr std::size_t blocks = 86;
    const int memory = ::memfd_create("block", 0);
    ASSERT_EQ(::ftruncate(memory, block), 0);
    void* const area =
        ::mmap(nullptr, (blocks + 1) * block, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (area == MAP_FAILED)
        GTEST_SKIP() << "no room for the text";
    char* const text = static_cast<char*>(area);
    for (std::size_t i = 0; i < blocks; ++i)
        ASSERT_NE(::mmap(text + i * block, block, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED, memory, 0),
                  MAP_FAILED);
    ASSERT_NE(::mmap(text + blocks * block, block, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0),
              MAP_FAILED);
    std::memset(text, 'x', block);
    EXPECT_EQ(formatted(text, text, text), "(null)");
    char found[64] = "name";
    EXPECT_EQ(vor_findFileOnPath(text, "/", text, found, sizeof found), 0);
    ::munmap(area, (blocks + 1) * block);
    ::close(memory);
}

TEST(LibraryNames, Class) {
    const struct {
        const char *name, *expected;
    } rows[] = {
        {"foo", "libfoo.so"},
        {"libfoo", "libfoo.so"},
        {"libfoo.so", "libfoo.so"},
        {"", "lib.so"},
        {"libfoo.so.2", "libfoo.so.2.so"},
        {"foo.so.1", "libfoo.so.1.so"},
        {"mylibx", "libmylibx.so"},
    };
    for (const auto& row : rows) {
        const Library library(row.name, "");
        EXPECT_EQ(library.getName(), row.expected);
        EXPECT_EQ(library.getFile(), row.expected);
    }
}

// Two directories: a holds libonly_a.so and libboth.so, b holds libboth.so, libonly_b.so, libv.so.2 and a directory.
class LibrarySearch : public ::testing::Test {
protected:
    LibrarySearch() {
        for (const char* directory : {"a", "b", "b/libdir.so"})
            std::filesystem::create_directory(folder.path(directory));
        for (const char* file : {"a/libonly_a.so", "a/libboth.so", "b/libboth.so", "b/libonly_b.so", "b/libv.so.2"})
            folder.file(file);
        a = folder.path("a");
        b = folder.path("b");
    }
    std::string relative(const std::string& path) const {
        return path.compare(0, folder.path("").size(), folder.path("")) == 0 ? path.substr(folder.path("").size())
                                                                             : path;
    }
    TemporaryDirectory folder;
    std::string a, b;
};

TEST_F(LibrarySearch, FirstMatchByClassAndFlat) {
    const struct {
        const char* name;
        std::string path;
        const char *byClass, *byFlat;
    } rows[] = {
        {"only_a", a + ":" + b, "a/libonly_a.so", "a/libonly_a.so"},
        {"only_b", a + ":" + b, "b/libonly_b.so", "b/libonly_b.so"},
        {"libboth", b + ":" + a, "b/libboth.so", "b/libboth.so"},
        {"both", a + "::" + b, "a/libboth.so", "a/libboth.so"},
        {"only_b", "::" + a + ":::" + b + ":", "b/libonly_b.so", "b/libonly_b.so"},
        {"libv.so.2", a + ":" + b, "", "b/libv.so.2"}, // only the flat form takes any dot for an extension
        {"dir", b, "b/libdir.so", "b/libdir.so"},      // whatever exists will do
        {"absent", a + ":" + b, "", "(null)"},
        {"only_a", "", "libonly_a.so", "(null)"}, // only the class form leaves the search to the loader then
        {"only_a", ":", "", "(null)"},
        {"only_a", std::string(5000, 'x') + ":" + a, "a/libonly_a.so", "a/libonly_a.so"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(relative(Library(row.name, row.path).getFile()), row.byClass) << row.name << " on " << row.path;
        EXPECT_EQ(relative(taken(vor_findLibrary(row.name, row.path.c_str()))), row.byFlat)
            << row.name << " on " << row.path;
    }
    EXPECT_EQ(vor_findLibrary(nullptr, "/"), nullptr);
    EXPECT_EQ(vor_findLibrary("only_a", nullptr), nullptr);
}

TEST_F(LibrarySearch, EmptyPieceIsTheRootForTheClassForm) {
    std::string result = "untouched";
    EXPECT_TRUE(FileUtils::FindFileOnPath("etc", ".so", "/nowhere:", result));
    EXPECT_EQ(result, "/etc");
    EXPECT_FALSE(FileUtils::FindFileOnPath("libonly_b", ".so", b, result)); // the extension is ignored
    EXPECT_EQ(result, "/etc");
    EXPECT_TRUE(FileUtils::FindFileOnPath("libonly_b.so", "", b, result));
}

TEST_F(LibrarySearch, NamesWithNulAreNotCutAndFound) {
    const std::string cut("libonly_a.so\0x.so", 17);
    EXPECT_FALSE(FileUtils::Exists(a + "/" + cut));
    EXPECT_EQ(Library(cut, a).getFile(), "");
    EXPECT_EQ(Library(std::string("libm.so.6\0.so", 13), "").load(), nullptr);
}

TEST_F(LibrarySearch, WhatDoesNotFitIsNotFound) {
    const std::string expected = a + "/libboth.so";
    for (const bool complete : {true, false}) {
        for (std::size_t size = 0; size <= expected.size() + 2; ++size) {
            // The heap's own guard ends exactly behind the result, for those who check it.
            const std::unique_ptr<char[]> result(new char[size + 1]);
            std::memset(result.get(), '#', size + 1);
            const int found = vor_findFileOnPath(complete ? "libboth.so" : "libboth", (a + ":" + b).c_str(), ".so",
                                                 result.get(), size);
            EXPECT_EQ(found, size > expected.size()) << size;
            EXPECT_EQ(std::string(result.get(), found != 0 ? expected.size() : size),
                      found != 0 ? expected : std::string(size, '#'));
            EXPECT_EQ(result[size], '#');
        }
    }
    char result[64];
    EXPECT_EQ(vor_findFileOnPath(nullptr, "/", "", result, 64), 0);
    EXPECT_EQ(vor_findFileOnPath("etc", nullptr, "", result, 64), 0);
    EXPECT_EQ(vor_findFileOnPath("etc", "/", nullptr, result, 64), 0);
    EXPECT_EQ(vor_findFileOnPath("etc", "/", "", nullptr, 64), 0);
}

TEST_F(LibrarySearch, IsTraced) {
    const CapturedTrace trace;
    const Library found("only_b", a + ":" + b);
    const Library absent("absent", a);
    EXPECT_EQ(trace.texts(),
              (std::vector<std::string>{"Entering", "Looking for only_b on path " + a + ":" + b,
                                        "Found libonly_b.so at " + b + "/libonly_b.so", "Leaving", "Entering",
                                        "Looking for absent on path " + a, "Found libabsent.so at ", "Leaving"}));
    EXPECT_NE(trace.text().find(" Library::Library(): Entering\n"), std::string::npos);
}

TEST_F(LibrarySearch, LeavesErrnoAlone) {
    errno = 77;
    EXPECT_EQ(Library("absent", a + ":" + b).getFile(), "");
    EXPECT_NE(taken(vor_findLibrary("only_b", (a + ":" + b).c_str())), "(null)");
    EXPECT_EQ(errno, 77);
}

TEST_F(LibrarySearch, IdentityIsTheNameAlone) {
    const Library first("both", a), second("both", b), longer("both.so2", a), capital("Both", a);
    EXPECT_FALSE(first < second || second < first);
    EXPECT_TRUE(capital < first && !(first < capital));
    EXPECT_TRUE(Library("bot", "") < first || first < Library("bot", ""));
    EXPECT_TRUE(longer < first || first < longer);
}

TEST_F(LibrarySearch, WithoutMemory) {
    if (!FaultShim::allocationsCanFail)
        GTEST_SKIP() << "allocations cannot fail here";
    char result[64];
    EXPECT_EQ(vor_findFileOnPath("etc", "/", "", result, static_cast<std::size_t>(-1)), 0);
    FaultShim shim;
    shim.fail(FaultShim::Calloc, ENOMEM);
    EXPECT_EQ(vor_formatLibraryName("foo", "lib", ".so"), nullptr);
    shim.fail(FaultShim::Calloc, ENOMEM);
    EXPECT_EQ(vor_findLibrary("both", a.c_str()), nullptr);
    shim.fail(FaultShim::Calloc, ENOMEM);
    EXPECT_EQ(vor_loadLibrary("libm.so.6"), ::dlopen(nullptr, RTLD_NOW)); // the null name opens the main program
}

} // namespace
