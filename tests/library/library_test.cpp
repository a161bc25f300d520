// Libraries of the test tree, found, loaded, bound, unloaded. Names are the fuzz target's.
#include "zel/vor.h"
#include "zel/zel.h"

#include "support/CapturedTrace.h"
#include "support/Child.h"
#include "support/Sanitizers.h"
#include "support/TemporaryDirectory.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <thread>

#include <dlfcn.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>

using namespace ZEL::RT;
using ZEL::EXCEPTIONS::IOException;

namespace {

using Loaded = SmartPointer<const DynamicLibraryImpl>;

const std::string libraries = ZEL_TEST_LIBRARIES;

// What the library "hooked" calls, also when everything else has gone.
auto& hooked = *new std::function<void(const char* event)>;

int answerOf(void* symbol) { return symbol != nullptr ? reinterpret_cast<int (*)()>(symbol)() : 0; }

class Loading : public ::testing::Test {
protected:
    ~Loading() override { hooked = nullptr; }
    // A library of its own.
    Library copyOf(const char* library, const std::string& name) const {
        std::filesystem::copy_file(libraries + "/lib" + library + ".so", folder.path("lib" + name + ".so"));
        return Library(name, folder.path(""));
    }
    static bool isLoaded(const Library& library) {
        void* const handle = ::dlopen(library.getFile().c_str(), RTLD_NOW | RTLD_NOLOAD);
        return handle != nullptr && ::dlclose(handle) == 0;
    }
    const TemporaryDirectory folder;
};

TEST(LibraryNames, SearchIsTracedAndLeavesErrno) {
    const CapturedTrace trace;
    errno = 77;
    const Library plain("plain", "/nowhere:" + libraries), absent("absent", "/nowhere");
    EXPECT_EQ(errno, 77);
    EXPECT_EQ(trace.scopes(), "Library::Library{ Looking for plain on path /nowhere:" + libraries +
                                  "; Found libplain.so at " + libraries + "/libplain.so; } Library::Library{ Looking " +
                                  "for absent on path /nowhere; Found libabsent.so at ; } ");
    EXPECT_FALSE(plain < Library("plain", "") || Library("plain", "") < plain || plain < absent); // by name alone
    EXPECT_TRUE(absent < plain);
    std::string result = "untouched";
    EXPECT_TRUE(!FileUtils::FindFileOnPath("libplain", ".so", libraries, result) && result == "untouched");
    EXPECT_TRUE(FileUtils::FindFileOnPath("etc", "", "/nowhere:", result) && result == "/etc"); // below the root
    EXPECT_EQ(Library::GetDefaultLibraryPath(), EnvUtils::GetEnv("LD_LIBRARY_PATH", ""));
    EXPECT_EQ(Library(std::string("libm.so.6\0.so", 13), "").load(), nullptr); // not what stands ahead of the NUL
}

TEST(LibraryNames, NullsAndNoMemory) {
    char text[64] = "etc";
    EXPECT_FALSE(vor_formatLibraryName(nullptr, "", "") || vor_formatLibraryName("", nullptr, "") ||
                 vor_formatLibraryName("", "", nullptr) || vor_findLibrary(nullptr, "/") ||
                 vor_findLibrary("etc", nullptr));
    EXPECT_FALSE(vor_findFileOnPath(nullptr, "/", "", text, 64) || vor_findFileOnPath(text, nullptr, "", text, 64) ||
                 vor_findFileOnPath(text, "/", nullptr, text, 64) || vor_findFileOnPath(text, "/", "", nullptr, 64));
    if (addressSanitizer || threadSanitizer)
        GTEST_SKIP() << "allocations cannot fail here";
    const std::string large(1 << 26, 'x');
    rlimit before;
    ::getrlimit(RLIMIT_AS, &before);
    const rlimit tight{0, before.rlim_max};
    ::setrlimit(RLIMIT_AS, &tight);
    EXPECT_EQ(vor_findFileOnPath("etc", "/", "", text, large.size()), 0);
    EXPECT_EQ(vor_findLibrary("plain", large.c_str()), nullptr);
    EXPECT_EQ(vor_loadLibrary(large.c_str()), ::dlopen(nullptr, RTLD_NOW)); // the null name opens the main program
    ::setrlimit(RLIMIT_AS, &before);
}

// 1.5 GiB of text, three of which are too much for 32 bits, in the memory of 1 MiB.
TEST_F(Loading, NamesThatDoNotFitTogetherHaveNoForm) {
    if (sizeof(void*) != 4 || addressSanitizer)
        GTEST_SKIP() << "there is room for them, or for none";
    constexpr std::size_t piece = 1 << 20, size = 1536 * piece;
    const int file = ::open(folder.file("piece", std::string(piece, 'x')).c_str(), O_RDONLY);
    const int zeros = ::open("/dev/zero", O_RDONLY); // of which a page ends the text
    char* const text = static_cast<char*>(::mmap(nullptr, size + 1, PROT_READ, MAP_PRIVATE, zeros, 0));
    for (std::size_t at = 0; text != MAP_FAILED && at < size; at += piece)
        EXPECT_NE(::mmap(text + at, piece, PROT_READ, MAP_SHARED | MAP_FIXED, file, 0), MAP_FAILED);
    EXPECT_TRUE(text != MAP_FAILED && vor_formatLibraryName(text, text, text) == nullptr);
    ::munmap(text, size + 1);
    ::close(zeros);
    ::close(file);
}

TEST_F(Loading, HappensOnceAndIsTraced) {
    EXPECT_THROW(DllManager::loadLibrary("steps", folder.path("")), IOException); // not remembered
    const Library library = copyOf("first_info", "steps");
    const CapturedTrace trace;
    const Loaded loaded = DllManager::loadLibrary(library);
    const std::string info = testing::PrintToString(loaded->getSymbol("zel_getLibraryInfo"));
    EXPECT_EQ(loaded->getSymbol("absent"), nullptr);
    DllManager::unloadLibrary(loaded);
    DllManager::unloadLibrary("libsteps.so");
    EXPECT_EQ(DllManager::theOne.load(library), loaded);
    const std::string handle = testing::PrintToString(::dlopen(library.getFile().c_str(), RTLD_NOW));
    const std::string symbol = "DynamicLibraryImpl::getSymbol{ Loaded method ", from = " from library libsteps.so at ";
    const std::string found = symbol + "zel_getLibraryInfo" + from + info + "; } ";
    EXPECT_EQ(trace.scopes(), "DllManager::load{ DynamicLibraryImpl::load{ Library " + library.getFile() +
                                  " loaded into handle " + handle + "; " + found +
                                  "Loaded library version 5.N/A; } } " + found + symbol + "absent" + from +
                                  "0x0; } DllManager::unload{ } DllManager::unload{ } DllManager::load{ } ");
    EXPECT_EQ(DllManager::loadLibrary("steps", "/nowhere"), loaded);
}

TEST_F(Loading, TellsTheVersionOrTheFileThatFailed) {
    const std::string text = folder.file("libtext.so", "no library");
    const std::array<std::string, 3> rows[]{
        {"full_info", libraries, "Loaded library version 5.1234; "},
        {"plain", libraries, ""},
        {"hooked", libraries, ""}, // depends on a library that has a version
        {"missing", "", "failed: libmissing.so"},
        {"missing", libraries, "failed: "},
        {"unresolved", libraries, "failed: " + libraries + "/libunresolved.so"},
        {"text", text.substr(0, text.rfind('/')), "failed: " + text},
    };
    for (const auto& [name, path, expected] : rows) {
        const CapturedTrace trace;
        std::string outcome;
        try {
            DllManager::loadLibrary(name, path);
            outcome = trace.scopes("version");
        } catch (const IOException& e) {
            outcome = "failed: " + e.getFileName();
            EXPECT_EQ(trace.scopes("handle"), "Library " + e.getFileName() + " loaded into handle 0x0; ");
            EXPECT_EQ(std::to_string(e.getEntryCode()) + ' ' + e.what() + ' ' + e.getExecutionPoint(),
                      "-1071 Failed to load shared library common/library/DynamicLibrary::DynamicLibraryImpl() @18");
        }
        EXPECT_EQ(outcome, expected) << name;
    }
}

TEST_F(Loading, AnObjectUnloadsAndLoadsAgainAndLeavesNoHandleOpen) {
    const Library file = copyOf("plain", "again"), lost = copyOf("full_info", "lost");
    DynamicLibraryImpl library(file);
    EXPECT_TRUE(library.load() && library.unload() && library.unload()); // there was one handle
    EXPECT_FALSE(isLoaded(file) || library.getSymbol("answer"));
    EXPECT_TRUE(library.load() && answerOf(library.getSymbol("answer")) == 42);
    library.unload();
    CapturedTrace(); // leaves an empty ring
    ZEL::TRACE::setTraceCallback([](const char* text, int) {
        return std::strstr(text, "version") || std::strstr(text, "Unloading") ? throw 1 : 0;
    });
    EXPECT_THROW(DllManager::loadLibrary(lost), int);
    DynamicLibraryImpl{file};
    ZEL::TRACE::setTraceDefault();
    EXPECT_FALSE(isLoaded(lost) || isLoaded(file));
}

TEST_F(Loading, Flat) {
    const Library copy = copyOf("plain", "flat");
    errno = 77;
    void* const handle = vor_loadLibraryFromPath("flat", ("/nowhere:" + folder.path("")).c_str());
    EXPECT_EQ(errno, 77);
    EXPECT_EQ(answerOf(vor_loadSymbol(handle, "answer")), 42);
    EXPECT_FALSE(vor_loadSymbol(handle, "absent") || vor_loadSymbol(handle, nullptr) ||
                 vor_loadSymbol(nullptr, "cos") || vor_loadLibrary(nullptr) || vor_loadLibrary("missing") ||
                 vor_loadLibraryFromPath("missing", "/"));
    EXPECT_EQ(vor_unloadLibrary(nullptr), -1);
    errno = 77;
    EXPECT_EQ(vor_unloadLibrary(handle), 0);
    EXPECT_FALSE(isLoaded(copy));
    EXPECT_NE(vor_loadLibrary(copy.getFile().c_str()), nullptr);
    EXPECT_EQ(errno, 77);
    EXPECT_EQ(answerOf(::dlsym(RTLD_DEFAULT, "answer")), 42); // there for libraries that are loaded later
}

TEST(FunctionTables, BindUpToTheFirstMissingSymbol) {
    const Loaded plain = DllManager::loadLibrary("plain", libraries);
    void* const address = plain->getSymbol("answer");
    const DynamicMethod last("last", "answer");
    EXPECT_EQ(last.toString(), "<function  name=\"last\" method=\"answer\"></function>");
    EXPECT_TRUE(DynamicMethod("", "answer").empty() && DynamicMethod("last", "").empty() && !last.empty());
    EXPECT_FALSE(DynamicMethod().assigned());
    FunctionTableImpl table("table");
    EXPECT_TRUE(table.empty() && table.load(plain) && table.assigned() && !table.load(Loaded()) && !table.assigned());
    table.addMethod(DynamicMethod("first", "answer"));
    EXPECT_TRUE(table.load(plain) && table.assigned());
    table.clear();
    EXPECT_FALSE(table.assigned() || table.empty());
    for (const DynamicMethod& behind : {DynamicMethod("missing", "absent"), DynamicMethod("first", "answer"), last})
        table.addMethod(behind);
    for (const Loaded& library : {Loaded(), plain}) { // a null library changes no entry
        const CapturedTrace trace;
        EXPECT_FALSE(table.load(library) || table.assigned() || table.containsFunction("Last"));
        EXPECT_TRUE(table.containsFunction("last"));
        EXPECT_EQ(table.retrieveFunction("first"), address);
        EXPECT_FALSE(table.retrieveFunction("last") || table.retrieveFunction("unknown"));
        EXPECT_EQ(trace.scopes("unction "), (library ? "Could not find function absent in library libplain.so; " : "") +
                                                ("Function first = " + testing::PrintToString(address)) +
                                                "; Function last = 0x0; Function unknown = 0x0; ");
    }
    EXPECT_EQ(table.toString(), "functions");
}

// By the manager and behind its back. Meanwhile eight threads ask the manager for the same, and another one forks.
TEST_F(Loading, InitialisersMayTraceThrowAndLoad) {
    const Loaded known = DllManager::loadLibrary("plain", libraries);
    for (const bool flat : {false, true}) {
        ::alarm(60);
        const Library library = copyOf("hooked", flat ? "flat" : "managed"), other = copyOf("plain", flat ? "a" : "b");
        const auto child = [&] {
            const Loaded loaded = DllManager::loadLibrary(other);
            return DllManager::loadLibrary("plain", "") == known ? answerOf(loaded->getSymbol("answer")) : 1;
        };
        Loaded own, asked[8];
        std::atomic<int> asking{0};
        std::vector<std::thread> threads;
        hooked = [&](const char* event) {
            const ZEL::Tracer trace(event, true);
            EXPECT_THROW(checkDeref(nullptr), ZEL::EXCEPTIONS::NullPointerException);
            for (Loaded& mine : asked)
                threads.emplace_back([&] {
                    ++asking;
                    mine = DllManager::loadLibrary(library);
                });
            while (asking < 8)
                std::this_thread::yield();
            ::usleep(20'000); // gives them time to take hold of what this thread needs, if they do
            std::thread([&] { EXPECT_EQ(statusOfChild(child), 42); }).join();
            DllManager::loadLibrary(other);
            own = DllManager::loadLibrary(library); // the one that everybody gets
        };
        const CapturedTrace trace;
        EXPECT_TRUE(flat ? vor_loadLibrary(library.getFile().c_str()) != nullptr
                         : DllManager::loadLibrary(library) == own);
        for (std::thread& thread : threads)
            thread.join();
        EXPECT_EQ(std::count(std::begin(asked), std::end(asked), own), 8);
        const std::string handles = trace.scopes("into handle");
        EXPECT_EQ(std::count(handles.begin(), handles.end(), ';'), flat ? 2 : 3) << handles;
    }
}

TEST_F(Loading, ACancellationWaitsForTheInitialisers) {
    const std::string file = copyOf("hooked", "cancelled").getFile();
    hooked = [](const char*) { ::pthread_testcancel(); };
    bool unloaded = false;
    std::thread([&] {
        ::pthread_cancel(::pthread_self());
        unloaded = vor_unloadLibrary(vor_loadLibrary(file.c_str())) == 0;
        ::pthread_testcancel();
        unloaded = false; // as the thread goes on
    }).join();
    EXPECT_TRUE(unloaded);
}

TEST_F(Loading, RecordsOutliveTheirLibrary) {
    hooked = [](const char* event) { ZEL::Tracer(event, event, 7, true), errno = EXDEV; };
    for (const bool flat : {false, true}) {
        const Library library = copyOf("hooked", flat ? "flatly" : "by_class");
        errno = 77;
        if (flat)
            EXPECT_EQ(vor_unloadLibrary(Library(library).load()), 0);
        else
            DynamicLibraryImpl{library};
        EXPECT_EQ(errno, 77);
        ASSERT_FALSE(isLoaded(library)) << "still there, so that this test shows nothing";
        std::ostringstream out;
        ZEL::TRACE::setTraceToStream(&out);
        ZEL::TRACE::setTraceDefault();
        for (const char* record : {" coming::coming() @7: E", " going::going(): L"})
            EXPECT_NE(out.str().find(record), std::string::npos) << record << '\n' << out.str();
    }
}

// Before main and after it, in exit handlers and in finalisers: everything loads, and what the manager has is let go.
TEST_F(Loading, WorksFromTheFirstInitialiserToTheLastFinaliser) {
    const std::string trace = folder.path("trace");
    for (const std::string& setting : {std::string(), "VOR_TRACE='" + trace + "' "}) {
        const std::string command = setting + "LIBRARIES='" + libraries + "' '" ZEL_TEST_EXIT_PROGRAM "'";
        EXPECT_EQ(std::system(command.c_str()), 0) << command;
    }
    const std::string text = TemporaryDirectory::contents(trace);
    std::size_t place = 0;
    for (const char* record : {"before everything(): E", "Unloading library libplain.so", "before everything(): L",
                               "going(): L", "Unloading library libhooked.so", "after everything(): E",
                               "Unloading library libplain.so", "after everything(): L"}) {
        place = text.find(record, place);
        ASSERT_NE(place, std::string::npos) << record << "\n" << text;
    }
}

} // namespace

extern "C" void hook(const char* event) {
    if (hooked)
        hooked(event);
}
