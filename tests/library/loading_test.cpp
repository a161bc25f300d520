// Libraries of the test tree, and the system's mathematics, loaded by class, by manager and by flat function.
#include "zel/vor.h"
#include "zel/zel.h"

#include "support/CapturedTrace.h"
#include "support/Sanitizers.h"
#include "support/TemporaryDirectory.h"

#include <atomic>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <functional>
#include <thread>

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <link.h>
#include <sys/wait.h>
#include <unistd.h>

using ZEL::EXCEPTIONS::IOException;
using namespace ZEL::RT;

namespace {

using Loaded = SmartPointer<const DynamicLibraryImpl>;

const std::string libraries = ZEL_TEST_LIBRARIES;

std::function<void()> onInitialise, onFinalise;

std::string printed(const void* address) {
    std::ostringstream text;
    text << "0x" << std::hex << reinterpret_cast<std::uintptr_t>(address);
    return text.str();
}

// The records of a trace as "function: text".
std::vector<std::string> records(const CapturedTrace& trace) {
    std::vector<std::string> result;
    std::istringstream lines(trace.text());
    for (std::string line; std::getline(lines, line);)
        result.push_back(line.substr(line.find(' ', line.find(" Thread ") + 8) + 1));
    return result;
}

std::size_t count(const std::vector<std::string>& texts, const std::string& wanted) {
    std::size_t found = 0;
    for (const std::string& text : texts)
        found += text.find(wanted) != std::string::npos;
    return found;
}

bool isLoaded(const std::string& file) {
    void* const handle = ::dlopen(file.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (handle != nullptr)
        ::dlclose(handle);
    return handle != nullptr;
}

// Copies of a library are libraries of their own.
class Loading : public ::testing::Test {
protected:
    ~Loading() override { onInitialise = onFinalise = nullptr; }
    Library copyOf(const char* library, const char* name) const {
        std::filesystem::copy_file(libraries + "/lib" + library + ".so",
                                   folder.path("lib" + std::string(name) + ".so"));
        return Library(name, folder.path(""));
    }
    TemporaryDirectory folder;
};

TEST_F(Loading, IsTracedStepByStep) {
    const Library library = copyOf("first_info", "steps");
    const std::string file = library.getFile();
    const CapturedTrace trace;
    Loaded loaded = DllManager::loadLibrary(library);
    void* const info = loaded->getSymbol("zel_getLibraryInfo");
    EXPECT_EQ(loaded->getSymbol("absent"), nullptr);
    DllManager::unloadLibrary(loaded);
    DllManager::unloadLibrary("libsteps.so");
    loaded.reset();
    const std::string handle = printed(::dlopen(file.c_str(), RTLD_NOW));
    const auto symbol = [&](const char* name, const void* address) {
        return "DynamicLibraryImpl::getSymbol(): Loaded method " + std::string(name) + " from library libsteps.so at " +
               printed(address);
    };
    EXPECT_EQ(records(trace), (std::vector<std::string>{
                                  "DllManager::load(): Entering",
                                  "DynamicLibraryImpl::load(): Entering",
                                  "DynamicLibraryImpl::load(): Library " + file + " loaded into handle " + handle,
                                  "DynamicLibraryImpl::getSymbol(): Entering",
                                  symbol("zel_getLibraryInfo", info),
                                  "DynamicLibraryImpl::getSymbol(): Leaving",
                                  "DynamicLibraryImpl::load(): Loaded library version 5.N/A",
                                  "DynamicLibraryImpl::load(): Leaving",
                                  "DllManager::load(): Leaving",
                                  "DynamicLibraryImpl::getSymbol(): Entering",
                                  symbol("zel_getLibraryInfo", info),
                                  "DynamicLibraryImpl::getSymbol(): Leaving",
                                  "DynamicLibraryImpl::getSymbol(): Entering",
                                  symbol("absent", nullptr),
                                  "DynamicLibraryImpl::getSymbol(): Leaving",
                                  "DllManager::unload(): Entering",
                                  "DllManager::unload(): Leaving",
                                  "DllManager::unload(): Entering",
                                  "DllManager::unload(): Leaving",
                              }));
    EXPECT_TRUE(isLoaded(file)); // whoever lets go of it
}

TEST_F(Loading, VersionsAreTheLoadedLibrarysOwn) {
    const struct {
        const char *library, *version;
    } rows[] = {
        {"plain", ""},
        {"full_info", "Loaded library version 7.1.1234"},
        {"first_info", "Loaded library version 5.N/A"},
        {"traced", ""}, // depends on a library that has a version
    };
    for (const auto& row : rows) {
        const CapturedTrace trace;
        const DynamicLibraryImpl loaded(Library(row.library, libraries));
        std::string version;
        for (const std::string& text : trace.texts())
            version += text.find("version") != std::string::npos ? text : "";
        EXPECT_EQ(version, row.version) << row.library;
    }
}

TEST_F(Loading, FailuresCarryTheFile) {
    const struct {
        const char* name;
        std::string path, file;
    } rows[] = {
        {"missing", "", "libmissing.so"},
        {"missing", libraries, ""},
        {"unresolved", libraries, libraries + "/libunresolved.so"},
        {"text", folder.path(""), folder.file("libtext.so", "no library")},
    };
    for (const auto& row : rows) {
        const CapturedTrace trace;
        try {
            DllManager::loadLibrary(row.name, row.path);
            ADD_FAILURE() << row.name;
        } catch (const IOException& e) {
            EXPECT_EQ(e.getEntryCode(), -1071);
            EXPECT_STREQ(e.what(), "Failed to load shared library");
            EXPECT_EQ(e.getFileName(), row.name == std::string("text") ? folder.path("") + "/libtext.so" : row.file);
            EXPECT_EQ(e.getExecutionPoint(), "common/library/DynamicLibrary::DynamicLibraryImpl() @18");
            EXPECT_EQ(count(trace.texts(), "loaded into handle 0x0"), 1u);
            EXPECT_EQ(count(records(trace), "~DynamicLibraryImpl"), 0u);
        }
    }
}

TEST_F(Loading, ALibraryIsLoadedOnceWhateverThePath) {
    EXPECT_THROW(DllManager::loadLibrary("late", folder.path("")), IOException);
    const Loaded first = DllManager::loadLibrary(copyOf("plain", "late")); // the failure is not remembered
    EXPECT_EQ(DllManager::loadLibrary("late", "/nowhere"), first);
    EXPECT_EQ(DllManager::theOne.load(Library("liblate.so", "")), first);
    EXPECT_NE(DllManager::loadLibrary("plain", libraries), first);
    const auto answer = reinterpret_cast<int (*)()>(first->getSymbol("plainAnswer"));
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer(), 42);
}

TEST_F(Loading, AnObjectUnloadsAndLoadsAgain) {
    const std::string file = folder.path("") + "/libagain.so";
    {
        DynamicLibraryImpl library(copyOf("plain", "again"));
        EXPECT_TRUE(library.load()); // no second handle
        EXPECT_TRUE(library.unload());
        EXPECT_FALSE(isLoaded(file));
        EXPECT_TRUE(library.unload());
        EXPECT_EQ(library.getSymbol("plainAnswer"), nullptr);
        EXPECT_TRUE(library.load());
        EXPECT_NE(library.getSymbol("plainAnswer"), nullptr);
    }
    EXPECT_FALSE(isLoaded(file));
}

int throwOnVersion(const char* text, int) {
    return std::string(text).find("version") != std::string::npos ? throw 1 : 0;
}

TEST_F(Loading, ATraceThatFailsLeavesNoHandleOpen) {
    const Library library = copyOf("full_info", "lost");
    ZEL::TRACE::setTraceCallback(throwOnVersion);
    EXPECT_THROW(DllManager::loadLibrary(library), int);
    ZEL::TRACE::setTraceDefault();
    EXPECT_FALSE(isLoaded(library.getFile()));
}

TEST_F(Loading, Flat) {
    EXPECT_EQ(vor_loadSymbol(nullptr, "cos"), nullptr);
    EXPECT_EQ(vor_loadLibrary(nullptr), nullptr);
    EXPECT_EQ(vor_loadLibraryFromPath("plain", nullptr), nullptr);
    EXPECT_EQ(vor_loadLibraryFromPath("missing", libraries.c_str()), nullptr);
    EXPECT_EQ(vor_loadLibrary("no-such-library"), nullptr);
    EXPECT_EQ(vor_unloadLibrary(nullptr), -1);

    const Library copy = copyOf("plain", "flat");
    errno = 77;
    void* const handle = vor_loadLibraryFromPath("flat", ("/nowhere:" + folder.path("")).c_str());
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(vor_loadSymbol(handle, nullptr), nullptr);
    EXPECT_EQ(vor_loadSymbol(handle, "absent"), nullptr);
    EXPECT_EQ(reinterpret_cast<int (*)()>(vor_loadSymbol(handle, "plainAnswer"))(), 42);
    EXPECT_EQ(vor_unloadLibrary(handle), 0);
    EXPECT_EQ(errno, 77);
    EXPECT_FALSE(isLoaded(copy.getFile()));

    EXPECT_NE(vor_loadLibrary(copy.getFile().c_str()), nullptr);
    EXPECT_NE(::dlsym(RTLD_DEFAULT, "plainAnswer"), nullptr); // there for libraries that are loaded later
}

TEST_F(Loading, TheSystemsMathematics) {
    void* const handle = vor_loadLibrary("libm.so.6");
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(reinterpret_cast<double (*)(double)>(vor_loadSymbol(handle, "cos"))(0), 1);
    const link_map* map = nullptr;
    ASSERT_EQ(::dlinfo(handle, RTLD_DI_LINKMAP, &map), 0);

    std::filesystem::create_symlink(map->l_name, folder.path("libm.so"));
    const Loaded library = DllManager::loadLibrary("m", folder.path(""));
    FunctionTableImpl table("mathematics");
    table.addMethod(DynamicMethod("cosine", "cos"));
    ASSERT_TRUE(table.load(library));
    void* const cosine = table.retrieveFunction("cosine");
    EXPECT_EQ(cosine, vor_loadSymbol(handle, "cos"));
    EXPECT_NEAR(reinterpret_cast<double (*)(double)>(cosine)(1), 0.5403023058681398, 1e-15);
    EXPECT_EQ(vor_unloadLibrary(handle), 0);
}

TEST_F(Loading, TablesBindUpToTheFirstMissingSymbol) {
    const Loaded plain = DllManager::loadLibrary("plain", libraries);
    void* const address = plain->getSymbol("plainAnswer");
    const CapturedTrace trace;
    FunctionTableImpl table("table");
    EXPECT_TRUE(table.load(plain) && table.assigned() && table.empty()); // nothing to bind
    EXPECT_FALSE(table.load(Loaded()) || table.assigned());
    for (const char* method : {"plainAnswer", "absent", "plainAnswer"})
        table.addMethod(DynamicMethod(method, method));
    table.addMethod(DynamicMethod("last", "plainAnswer"));
    EXPECT_TRUE(table.containsFunction("last"));
    EXPECT_FALSE(table.containsFunction("Last") || table.empty());
    EXPECT_FALSE(table.load(plain) || table.assigned());
    EXPECT_EQ(table.retrieveFunction("plainAnswer"), address); // the first of that name
    EXPECT_EQ(table.retrieveFunction("absent"), nullptr);
    EXPECT_EQ(table.retrieveFunction("last"), nullptr);
    EXPECT_EQ(table.retrieveFunction("unknown"), nullptr);
    EXPECT_FALSE(table.load(Loaded()));
    EXPECT_EQ(table.retrieveFunction("plainAnswer"), address); // untouched by a null library
    const auto texts = trace.texts();
    EXPECT_EQ(count(texts, "Could not find function absent in library libplain.so"), 1u);
    EXPECT_EQ(count(texts, "Function plainAnswer = " + printed(address)), 2u);
    EXPECT_EQ(count(texts, "Function unknown = 0x0"), 1u);

    FunctionTableImpl bound("bound");
    bound.addMethod(DynamicMethod("answer", "plainAnswer"));
    EXPECT_TRUE(bound.load(plain) && bound.assigned());
    bound.clear();
    EXPECT_FALSE(bound.assigned());
    EXPECT_EQ(bound.retrieveFunction("answer"), address);
    EXPECT_EQ(bound.toString(), "functions");
}

TEST(DynamicMethods, TextAndNames) {
    EXPECT_EQ(DynamicMethod("open", "lib_open").toString(), "<function  name=\"open\" method=\"lib_open\"></function>");
    EXPECT_FALSE(DynamicMethod("open", "lib_open").empty() || DynamicMethod("open", "lib_open").assigned());
    EXPECT_TRUE(DynamicMethod("", "lib_open").empty() && DynamicMethod("open", "").empty() && DynamicMethod().empty());
}

TEST_F(Loading, EightThreadsLoadALibraryOnce) {
    std::atomic<int> initialised{0};
    onInitialise = [&] { ++initialised; };
    const Library library = copyOf("hooked", "eight");
    const CapturedTrace trace;
    std::atomic<int> ready{0};
    std::vector<Loaded> loaded(8);
    std::vector<std::thread> threads;
    for (Loaded& mine : loaded)
        threads.emplace_back([&] {
            for (++ready; ready < 8;)
                std::this_thread::yield();
            mine = DllManager::loadLibrary(library);
        });
    for (std::thread& thread : threads)
        thread.join();
    for (const Loaded& each : loaded)
        EXPECT_EQ(each, loaded.front());
    EXPECT_EQ(initialised, 1);
    EXPECT_EQ(count(trace.texts(), "loaded into handle"), 1u);
}

TEST_F(Loading, InitialisersTraceThrowAndLoad) {
    const Library library = copyOf("hooked", "own");
    const Library other = copyOf("plain", "other");
    Loaded own, another;
    bool caught = false;
    onInitialise = [&] {
        ZEL::Tracer trace("initialiser", true);
        try {
            checkDeref(nullptr);
        } catch (const ZEL::EXCEPTIONS::NullPointerException&) {
            caught = true;
        }
        another = DllManager::loadLibrary(other);
        own = DllManager::loadLibrary(library);
    };
    EXPECT_EQ(DllManager::loadLibrary(library), own); // one object, also for the library itself
    EXPECT_TRUE(caught);
    EXPECT_EQ(DllManager::loadLibrary(other), another);
}

TEST_F(Loading, InitialisersMayAskTheManagerWhileItLoads) {
    ::alarm(60);
    static std::atomic<bool> asked;
    const Library library = copyOf("plain", "asked");
    std::thread asking;
    onInitialise = [&] {
        asking = std::thread([&] { DllManager::loadLibrary(library); });
        while (!asked)
            std::this_thread::yield();
        ::usleep(20'000); // gives the other one time to take hold of what this thread needs, if it does
        DllManager::loadLibrary("plain", libraries);
    };
    const std::string file = copyOf("hooked", "asking").getFile();
    ZEL::TRACE::setTraceCallback(
        [](const char* text, int) { return asked = asked || std::strstr(text, "DllManager::load") != nullptr, 0; });
    EXPECT_NE(vor_loadLibrary(file.c_str()), nullptr);
    asking.join();
    ZEL::TRACE::setTraceDefault();
}

TEST_F(Loading, ACancellationWaitsForTheInitialisers) {
    onInitialise = onFinalise = [] { ::pthread_testcancel(); };
    static std::string file;
    static std::atomic<bool> done;
    file = copyOf("hooked", "cancelled").getFile();
    pthread_t thread;
    ASSERT_EQ(vor_startThread(
                  [](void*) -> void* {
                      ::pthread_cancel(::pthread_self());
                      done = vor_unloadLibrary(vor_loadLibrary(file.c_str())) == 0;
                      ::pthread_testcancel();
                      done = false;
                      return nullptr;
                  },
                  nullptr, &thread),
              0);
    EXPECT_EQ(vor_waitThread(thread, 0), 0);
    EXPECT_TRUE(done);
}

TEST_F(Loading, TheChildOfAForkLoads) {
    const Loaded known = DllManager::loadLibrary("plain", libraries);
    const Library library = copyOf("hooked", "forked");
    const Library other = copyOf("plain", "child");
    ZEL::Semaphore entered(0, 0), leave(0, 0);
    onInitialise = [&] {
        entered.release(1);
        leave.acquire(0);
    };
    std::thread loading([&] { DllManager::loadLibrary(library); });
    entered.acquire(0);
    const pid_t child = ::fork(); // while the thread holds the manager
    if (child == 0) {
        ::alarm(20);
        const bool loaded = DllManager::loadLibrary(other)->getSymbol("plainAnswer") != nullptr;
        ::_exit(loaded && DllManager::loadLibrary("plain", "") == known ? 0 : 1);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    leave.release(1);
    loading.join();
    EXPECT_EQ(status, 0);
}

TEST_F(Loading, RecordsOutliveTheirLibrary) {
    for (const bool flat : {false, true}) {
        const Library library = copyOf("traced", flat ? "flatly" : "by_class");
        { const CapturedTrace drained; }
        if (flat) {
            void* const handle = vor_loadLibrary(library.getFile().c_str());
            reinterpret_cast<void (*)()>(vor_loadSymbol(handle, "traceOnce"))();
            EXPECT_EQ(vor_unloadLibrary(handle), 0);
        } else {
            const DynamicLibraryImpl loaded(library);
            reinterpret_cast<void (*)()>(loaded.getSymbol("traceOnce"))();
        }
        ASSERT_FALSE(isLoaded(library.getFile())) << "still there, so that this test shows nothing";
        std::ostringstream out;
        ZEL::TRACE::setTraceToStream(&out);
        ZEL::TRACE::setTraceDefault();
        for (const char* record : {" initialiser of traced(): Entering\n", " Traced::traceOnce() @7: Entering\n",
                                   " Traced::traceOnce(): called\n", " finaliser of traced(): Leaving\n"})
            EXPECT_NE(out.str().find(record), std::string::npos) << record << out.str();
    }
}

// Before main and after it, in exit handlers and in finalisers: everything loads, and what the manager has is let go.
TEST_F(Loading, WorksFromTheFirstInitialiserToTheLastFinaliser) {
    const std::string trace = folder.path("trace");
    for (const char* setting : {"", "VOR_TRACE="}) {
        const std::string command = "EARLY_PATH='" + libraries + "' " + setting +
                                    (*setting != '\0' ? "'" + trace + "'" : "") + " '" ZEL_TEST_EXIT_PROGRAM "'";
        EXPECT_EQ(std::system(command.c_str()), 0) << command;
    }
    const std::string text = TemporaryDirectory::contents(trace);
    std::size_t place = 0;
    for (const char* record :
         {"before everything(): Entering", "Unloading library libplain.so", "before everything(): Leaving",
          "finaliser of traced(): Leaving", "Unloading library libhooked.so", "after everything(): Entering",
          "Unloading library libplain.so", "after everything(): Leaving"}) {
        place = text.find(record, place);
        ASSERT_NE(place, std::string::npos) << record << "\n" << text;
    }
}

} // namespace

extern "C" void initialiserHook();
extern "C" void finaliserHook();

void initialiserHook() {
    if (onInitialise)
        onInitialise();
}

void finaliserHook() {
    if (onFinalise)
        onFinalise();
}
