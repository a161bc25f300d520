// Every allocation and every system call of a scenario fails, one at a time, in each way that it can. Nothing may come
// of it but what the headers say: a status or an exception, with memory, descriptors and locks given back.
#include "zel/vor.h"
#include "zel/zel.h"

#include "Report.h"
#include "support/FaultShim.h"
#include "support/TemporaryDirectory.h"

#include <algorithm>
#include <bitset>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <functional>
#include <optional>
#include <sstream>
#include <thread>

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <unistd.h>
#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

using namespace ZEL::RT;
using namespace ZEL::EXCEPTIONS;

namespace {

constexpr int untouched = 77; // in errno
constexpr int forever = 1'000'000'000;

// How a call may fail, and what tables call that; but what a signal interrupts is no failure.
const struct Way {
    const char *call, *meaning;
    std::vector<int> errors;
    int times = 1;
} ways[] = {
    {"memory", "memory", {ENOMEM}},
    {"memory", "memory", {ENOMEM}, forever},
    {"open", "missing", {ENOENT}},
    {"open", "denied", {EACCES, EROFS}},
    {"open", "invalid", {EINVAL}},
    {"open", "open", {EAGAIN, EBUSY, EDQUOT, EEXIST, EFAULT, EFBIG, EINTR, EISDIR, ELOOP, EMFILE, ENAMETOOLONG}},
    {"open", "open", {ENFILE, ENODEV, ENOMEM, ENOSPC, ENOTDIR, ENXIO, EOPNOTSUPP, EOVERFLOW, EPERM, ETXTBSY}},
    {"cloexec", "nothing", {EBADF}},
    {"rdlock", "lock", {EACCES, EAGAIN, EBADF, EDEADLK, EINTR, EINVAL, ENOLCK}},
    {"wrlock", "lock", {EACCES, EAGAIN, EBADF, EDEADLK, EINTR, EINVAL, ENOLCK}},
    {"unlock", "unlock", {EBADF, EINTR, EINVAL, ENOLCK}},
    {"end", "seek", {EBADF, EINVAL, ENXIO, EOVERFLOW, ESPIPE}},
    {"rewind", "seek", {EBADF, EINVAL, ENXIO, EOVERFLOW, ESPIPE}},
    {"read", "read", {EAGAIN, EBADF, EFAULT, EINTR, EINVAL, EIO, EISDIR}},
    {"short read", "short", {0}},
    {"write", "write", {EAGAIN, EBADF, EDESTADDRREQ, EDQUOT, EFAULT, EFBIG, EINTR, EINVAL, EIO, ENOSPC, EPERM, EPIPE}},
    {"short write", "short", {0}},
    {"truncate", "truncate", {EBADF, EFBIG, EINTR, EINVAL, EIO, EPERM, EROFS, ETXTBSY}},
    {"sync", "write", {EBADF, EDQUOT, EINTR, EINVAL, EIO, ENOSPC, EROFS}},
    {"close", "close", {EBADF, EDQUOT, EINTR, EIO, ENOSPC}},
    {"stat", "stat", {EACCES, EFAULT, ELOOP, ENAMETOOLONG, ENOENT, ENOMEM, ENOTDIR, EOVERFLOW}},
    {"fstat", "stat", {EBADF, EFAULT, ENOMEM, EOVERFLOW}},
    {"chmod", "chmod", {EACCES, EFAULT, EIO, ELOOP, ENAMETOOLONG, ENOENT, ENOMEM, ENOTDIR, EPERM, EROFS}},
};

// What is to be found in errno: anything; the reason of a failure; or what was there, too, if the fault was survived.
enum class Reasons { never, ofFailures, always };

// One run of a scenario, in which one call fails, or all allocations from one on.
class Try {
public:
    Try(const FaultShim::Fault& fault, const std::string& meaning, Reasons reasons)
        : fault_(fault), times_(fault.times), meaning_(meaning), reasons_(reasons) {}

    // Takes an action that returns nothing or a status. It ends with 0, unless the fault strikes in it: then with what
    // `table` says of that, in pairs of meaning and outcome. Returns whether it was 0.
    template <class Action> bool step(const std::string& table, const Action& action) {
        const int before = fault_.times;
        int reason = 0;
        std::string outcome;
        std::optional<FaultShim> shim(std::in_place, std::vector<FaultShim::Fault>{fault_});
        shim->now = ++second;
        const auto over = [&] { reason = errno, fault_ = shim->faults[0], shim.reset(); };
        errno = untouched;
        try {
            int status = 0;
            if constexpr (std::is_void_v<decltype(action())>)
                action();
            else
                status = action();
            over(), outcome = std::to_string(status);
        } catch (const ZelException& e) {
            over(), outcome = e.getExceptionName() + std::to_string(e.getEntryCode());
        } catch (const std::exception& e) {
            over(), outcome = e.what();
        }
        ++steps_;
        const bool hit = fault_.times != before, success = outcome == "0";
        check(hit ? allows(table, outcome) : success, "ends with " + outcome);
        if (success && (!hit || reasons_ == Reasons::always))
            check(reason == untouched, "leaves " + std::to_string(reason) + " in errno");
        if (!success && hit && fault_.error != 0 && outcome != "std::bad_alloc" && reasons_ != Reasons::never)
            check(reason == fault_.error, outcome + " with " + std::to_string(reason) + " in errno");
        return success;
    }

    bool struck() const { return fault_.times != times_; }
    int unless(bool condition) const { return !condition && !struck() ? 1 : 0; } // as a status; not behind a fault
    void check(bool condition, const std::string& otherwise) {
        if (!condition && problem.empty())
            problem = "step " + std::to_string(steps_) + " " + otherwise;
    }
    std::string problem;

private:
    bool allows(const std::string& table, const std::string& outcome) const {
        std::istringstream words(table);
        bool listed = false, allowed = false;
        for (std::string meaning, one; words >> meaning >> one; allowed |= meaning == meaning_ && one == outcome)
            listed |= meaning == meaning_;
        return listed ? allowed : outcome == "0";
    }

    FaultShim::Fault fault_;
    const int times_;
    const std::string meaning_;
    const Reasons reasons_;
    int steps_ = 0;
    static inline long long second = 1'000'000'000; // each step has one of its own
};

struct Scenario {
    std::function<void(Try&)> run;
    Reasons reasons = Reasons::never;
    bool abandons = false; // what cannot be closed stays open, with its handle
    bool keeps = false;    // some memory, for good
};

const std::string text(100, 'x');
const char* const name = text.c_str();
const TemporaryDirectory folder;

// What reaches the callback, in memory that is there already.
char collected[1 << 16];
std::size_t collectedSize = 0;
int collect(const char* line, int length) {
    const std::size_t size = std::min(static_cast<std::size_t>(length), sizeof collected - collectedSize - 1);
    std::memcpy(collected + collectedSize, line, size);
    collected[collectedSize + size] = '\n';
    return static_cast<int>(collectedSize = std::min(collectedSize + size + 1, sizeof collected - 1));
}
std::string whatWasCollected() { return {collected, collectedSize}; }

// Objects whose locks are to be free after each try, and the file as another process would have it open.
struct Shared {
    const SmartPointer<ILocalFile> file = getLocalFile("file");
    FileLockImpl lock;
    const Library library{"plain", ZEL_TEST_LIBRARIES};
    const int another = ::open(folder.file("file", text).c_str(), O_RDWR | O_CLOEXEC);
}* shared = nullptr;

bool isLocked() {
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    return ::fcntl(shared->another, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

// A thread that takes every lock of the library whenever it is its turn, and waits until the alarm for one that is
// held.
pthread_barrier_t turn;
void takeLocks() {
    for (;; ::pthread_barrier_wait(&turn)) {
        ::pthread_barrier_wait(&turn);
        bool exists = false;
        VOR_FileStats stats;
        shared->file->getFileSize(exists);
        shared->lock.getStats(stats);
        ZEL::Date::getShortString(0);
        DllManager::loadLibrary(shared->library);
        ZEL::TRACE::setTraceDefault();
    }
}

std::bitset<64> descriptors() {
    std::bitset<64> open;
    struct pollfd files[64] = {};
    for (int file = 0; file < 64; ++file)
        files[file].fd = file;
    ::poll(files, 64, 0);
    for (std::size_t file = 0; file < 64; ++file)
        open[file] = (files[file].revents & POLLNVAL) == 0;
    return open;
}

// What the library or the loader keeps from call to call is let go of.
void settle() {
    ZEL::TRACE::setTraceCallback(collect);
    ZEL::TRACE::setTraceDefault();
    ::dlerror(), ::dlerror();
}

char attempted[200];
void giveUp(int) { ::_exit(::write(2, attempted, std::strlen(attempted)) < 0 ? 2 : 1); }

class Engine {
public:
    explicit Engine(Report& report) : report_(report) {}

    // One line of the table for the allocations of some scenarios, another for their system calls.
    void line(const char* title, const std::vector<Scenario>& scenarios) {
        title_ = title;
        complaints_ = tried_[0] = tried_[1] = lost_[0] = lost_[1] = 0;
        for (const Scenario& scenario : scenarios)
            for (const bool printed : {false, true}) {
                attempt(scenario, printed, {"nothing", 0}, ""); // what is made once and kept
                exhaust(scenario, printed, {"nothing", 0}, "");
                for (const Way& way : ways)
                    for (const int error : way.errors)
                        if (!exhaust(scenario, printed, {way.call, error, way.times},
                                     error == EINTR ? "" : way.meaning))
                            break; // there is no such call
            }
#if defined(__SANITIZE_ADDRESS__)
        lost_[0] += __lsan_do_recoverable_leak_check();
#endif
        report_.line(std::string("allocations: ") + title, tried_[0], lost_[0]);
        if (tried_[1] != 0)
            report_.line(std::string("system calls: ") + title, tried_[1], lost_[1]);
    }

private:
    struct Result {
        bool struck;
        std::string problem;
    };

    // Whether there was a call to fail.
    bool exhaust(const Scenario& scenario, bool printed, FaultShim::Fault fault, const char* meaning) {
        const int line = fault.call == "memory" ? 0 : 1;
        for (Result result = {true, {}}; result.struck; ++fault.spared) {
            result = attempt(scenario, printed, fault, meaning);
            tried_[line] += result.struck;
            lost_[line] += !result.problem.empty();
            if (!result.problem.empty() && complaints_++ < 8)
                Report::complain(attempted + result.problem);
        }
        ::pthread_barrier_wait(&turn); // the other thread's begins
        ::pthread_barrier_wait(&turn); // and has ended
        return fault.spared > 1;
    }

    Result attempt(const Scenario& scenario, bool printed, const FaultShim::Fault& fault, const char* meaning) {
        std::snprintf(attempted, sizeof attempted, "%s: call %d of %s, errno %d%s%s: ", title_, fault.spared,
                      fault.call.c_str(), fault.error, fault.times > 1 ? " from there on" : "",
                      printed ? ", printed" : "");
        ::alarm(60);
        const bool abandons = scenario.abandons && (fault.call == "unlock" || fault.call == "close") && *meaning != 0;
#if defined(__SANITIZE_ADDRESS__)
        std::optional<__lsan::ScopedDisabler> disabled;
        if (abandons)
            disabled.emplace();
#endif
        settle();
        collectedSize = 0;
        if (printed)
            ZEL::TRACE::setTraceCallback(collect);
        const std::bitset<64> open = descriptors();
        const long blocks = FaultShim::blocks;
        std::optional<Try> attempt(std::in_place, fault, meaning, scenario.reasons);
        scenario.run(*attempt);
        Result result = {attempt->struck(), attempt->problem};
        std::string& problem = result.problem;
        attempt.reset();
        settle();
        const long left = FaultShim::blocks - blocks, abandoned = abandons && result.struck ? 1 : 0;
        const std::bitset<64> leftOpen = descriptors() & ~open;
        for (int file = 0; file < 64; ++file)
            if (leftOpen[static_cast<std::size_t>(file)])
                ::close(file);
        if (problem.empty() && (left < 0 || left > abandoned) && !scenario.keeps)
            problem = std::to_string(left) + " blocks stay";
        if (problem.empty() && static_cast<long>(leftOpen.count()) > abandoned)
            problem = "a file stays open";
        if (problem.empty() && isLocked())
            problem = "the file stays locked";
        return result;
    }

    Report& report_;
    const char* title_ = "";
    long complaints_ = 0, tried_[2] = {}, lost_[2] = {};
};

// The language lets out what an allocation throws, unless its failure did not matter.
const std::string may = "memory std::bad_alloc memory 0 ";

template <class E, class... A> void throwAndCatch(Try& t, A... leading) {
    t.step(may, [&] {
        try {
            throwException(E(leading..., "ZEL", -1, "code", name, nullptr, -1, nullptr), "file", 1, "function");
        } catch (const E& e) {
            const std::unique_ptr<ZelException> clone(e.clone());
            clone->assignProperty(text, text);
            return t.unless(e.what() == text && e.retrieveProperty(text) == text);
        }
    });
}

template <class E, class Action> int endsWith(const Action& action) {
    try {
        return action(), 1;
    } catch (const E&) {
        return 0;
    }
}

template <class... E, class... A> void add(std::vector<Scenario>& to, A... leading) {
    (to.push_back({[=](Try& t) { throwAndCatch<E>(t, leading...); }}), ...);
}

std::vector<Scenario> families() {
    std::vector<Scenario> all;
    add<ZelException>(all, "GivenException", -1);
    add<SystemException, BadAllocException, NullPointerException, InvalidArgumentException, AccessDeniedException,
        NoSuchMethodException, ClassCastException, UnexpectedException, PolicyException, PassPhrasePolicyException,
        InvalidHandleException, LogicException, LockException, ComparisonFailedException, XmlException>(all);
    add<IOException, SerializationException, OperationException, OperationNotSupportedException,
        OperationAbortedException, OperationFailedException>(all, name);
    add<ObjectException, ObjectNotFoundException, ObjectAlreadyExistsException, InstantiationException>(all, name,
                                                                                                        name);
    return all;
}

// Whether every line is one of all those that the scenario traces, which the first try tells, in their order.
bool isWhole(const std::string& lines) {
    static const std::string whole = lines;
    std::istringstream from(lines), all(whole);
    std::string line, candidate;
    while (std::getline(from, line))
        do {
            if (!std::getline(all, candidate))
                return false;
        } while (candidate != line);
    return true;
}

template <class Choose> Scenario tracing(int kept, Choose choose, std::string (*printed)()) {
    return {[=](Try& t) {
        static bool first = true;
        for (int twice = 0; twice < 2; ++twice) // from one to the next of its kind
            t.step(may, choose);
        for (int at = first ? 0 : kept > 200 ? 30 : 290; at < 300; ++at) {
            const std::string record = "this is record number " + std::to_string(at);
            t.step(may, [&] { ZEL::Tracer().write(record, 0); });
        }
        t.step(may, [&] { ZEL::Tracer("function", "Class", 7, false).printf("%s and %s", name, name); });
        ZEL::TRACE::setTraceCallback(collect);
        const std::string lines = printed();
        t.check(isWhole(lines), "tears lines");
        t.check(first || t.struck() || std::count(lines.begin(), lines.end(), '\n') == kept, "loses lines");
        first = false;
    }};
}

std::string contentsOfTrace() { return TemporaryDirectory::contents("trace"); }

std::ofstream& stream = *new std::ofstream; // which the trace may have to the very end
std::string contentsOfStream() {
    const std::string lines = TemporaryDirectory::contents("stream");
    stream.clear();
    stream.seekp(0);
    return ::truncate("stream", 0) == 0 ? lines : "";
}

std::vector<Scenario> traces() {
    stream.open("stream");
    return {tracing(
                13, [] { ZEL::TRACE::setTraceCallback(collect); }, whatWasCollected),
            tracing(256, ZEL::TRACE::setTraceDefault, whatWasCollected),
            tracing(
                13, [] { ZEL::TRACE::setTraceToFile("trace"); }, contentsOfTrace),
            tracing(
                13, [] { ZEL::TRACE::setTraceToStream(&stream); }, contentsOfStream)};
}

void properties(Try& t) {
    const std::string form = "a=" + text + "\n" + text + "=" + text + "\n";
    SmartPointer<ZEL::I::IProperties> from, to;
    if (!t.step(may, [&] { from = ZEL::createProperties(), to = ZEL::createProperties(); }))
        return;
    t.step(may, [&] { from->unmarshal(form); });
    t.step(may, [&] { return to->unmarshal(from->marshal()), t.unless(to->toString() == form); });
    t.step(may, [&] { return endsWith<InvalidArgumentException>([&] { to->unmarshal("b=" + text + "\n=" + text); }); });
}

void flatFile(Try& t) {
    const unsigned int size = static_cast<unsigned int>(text.size());
    const std::string writing = "truncate 19 seek 20 write 12";
    VOR_FileHandle* file = nullptr;
    VOR_FileStats stats = {};
    int exists = 7;
    if (t.step("missing 9 denied 8 invalid 1 open 14 lock 16 memory 2",
               [&] { return vor_safeOpenFile("file", 3, 0, &file); })) {
        t.step(writing, [&] { return vor_safeWriteContents(file, 1, name, size); });
        t.step(writing, [&] { return vor_safeWriteContents(file, 2, name, size); });
        t.step("write 12", [&] { return vor_safeSyncFile(file); });
        t.step("stat -1", [&] { return vor_safeHandleStats(file, &stats); });
        t.step("stat 1", [&] { return vor_safeHandleStatsAreStale(file, &stats) && !t.struck(); });
        for (const int mode : {1, 2}) {
            char* buffer = nullptr;
            unsigned int length = 0;
            t.step("seek 10 read 11 memory 2", [&] { return vor_safeReadContents(file, mode, &buffer, &length); });
            const std::string contents = buffer != nullptr ? std::string(buffer, length) : "";
            t.check(t.struck() ? contents.find_first_not_of('x') == std::string::npos : contents == text + text,
                    "reads something else");
            vor_safeFreeBuffer(buffer);
        }
        if (!t.step("unlock 18 close 16", [&] { return vor_safeCloseFile(file); }))
            t.step("", [&] { return vor_safeCloseFile(file); }); // the handle is still the caller's
    }
    file = nullptr;
    if (t.step("missing 9 denied 8 memory 2", [&] { return vor_safeOpenFile("file", 1, 2, &file); }))
        while (!t.step("unlock 18 close 16", [&] { return vor_safeCloseFile(file); }) && t.problem.empty()) {
        }
    t.step("stat -1", [&] { return vor_safeFileStats("file", &stats); });
    t.step("stat 1", [&] { return vor_safeFileStatsAreStale("file", &stats) && !t.struck(); });
    t.step("", [&] { return vor_safeFileExists("file", &exists); });
    t.check(exists == 1 || (exists == 0 && t.struck()), "does not tell whether there is a file");
    t.step("chmod -1", [&] { return vor_safeChmod("file", 0600); });
}

// What is refused for another reason is tried again.
const std::string notRead = may + "memory IOException-1085 missing IOException-1085 denied IOException-1085 ";
const std::string notWritten = may + "memory IOException-1086 missing IOException-1086 denied IOException-1086 ";
const std::string notSaved = may + "truncate IOException-1080 seek IOException-1080 write IOException-1080 ";

void fileLock(Try& t) {
    FileLockImpl& lock = shared->lock;
    VOR_FileStats stats = {};
    std::string contents;
    if (!t.step(notWritten, [&] { lock.obtainLock("file", FileLockImpl::OPEN_WRITE); }))
        return;
    t.step(notSaved, [&] { lock.saveContents(FileLockImpl::WRITE_REPLACE, text); });
    t.step(notSaved, [&] { lock.saveContents(FileLockImpl::WRITE_APPEND, text); });
    t.step(may + "stat 1", [&] { return !lock.getStats(stats); });
    t.step(may + "stat 1", [&] { return t.unless(!lock.updateStats(stats)); });
    t.step(may + "stat 1", [&] { return t.unless(!lock.staleStats(stats)); });
    t.step(may + "memory IOException-1010 seek IOException-1010 read IOException-1010 short 1",
           [&] { return t.unless(lock.readContents(contents) == 200 && contents == text + text); });
    if (!t.step(may + "unlock 18 close 16", [&] { return lock.releaseLock(); }))
        lock.releaseLock();
}

void localFile(Try& t) {
    ILocalFile& own = *shared->file;
    SmartPointer<ILocalFile> other;
    SmartPointer<ZEL::I::IProperties> source, target;
    SmartPointer<FileLockImpl> lock;
    const std::string empty = "memory 1 seek 1 read 1 short 1 ", both = text + text;
    if (!t.step(may, [&] {
            other = getLocalFile("file"), source = ZEL::createProperties(), target = ZEL::createProperties();
            source->assignProperty("a", text);
        }))
        return;
    if (t.step(notWritten, [&] { lock = own.writeLock(); })) {
        t.step(notSaved, [&] { own.save(lock, *source); });
        t.step(may, [&] { return t.unless(other->update(lock, *target)); });
        t.step(notSaved, [&] { own.save(lock, text); });
        t.step(notSaved, [&] { own.append(lock, text); });
        t.step(may + "stat 1", [&] { return t.unless(!own.isStale(lock)); });
        t.step(may + empty, [&] { return t.unless(own.retrieve(lock) == both); });
        t.step(may, [&] { lock = SmartPointer<FileLockImpl>(); });
    }
    t.step(notWritten + notSaved, [&] { own.save(text); });
    t.step(notWritten + notSaved, [&] { own.append(text); });
    t.step(notRead + empty, [&] { return t.unless(own.retrieve() == both); });
    t.step(notRead, [&] { return t.unless(other->update(*target)); });
    bool exists = false;
    t.step(may + "stat 1", [&] { return t.unless(own.getFileSize(exists) == 200 && exists); });
    t.step(may + "stat 1", [&] { return t.unless(!own.isStale()); });
}

// A library of the test tree under a name of its own.
std::string copyOf(const char* library, const std::string& copy) {
    std::filesystem::copy_file(ZEL_TEST_LIBRARIES + std::string("/lib") + library + ".so",
                               folder.path("lib" + copy + ".so"), std::filesystem::copy_options::skip_existing);
    return copy;
}

using Loaded = SmartPointer<const DynamicLibraryImpl>;
const std::string notLoaded = may + "memory IOException-1071 stat IOException-1071", path = folder.path("");

void libraryAndTable(Try& t) {
    const std::string copy = copyOf("plain", "torn");
    Loaded library;
    std::optional<FunctionTableImpl> table;
    if (!t.step(notLoaded, [&] { library = Loaded(new DynamicLibraryImpl(Library(copy, path))); }) ||
        !t.step(may, [&] { table.emplace(text); }))
        return;
    t.step(may, [&] { table->addMethod(DynamicMethod(text, "answer")); });
    t.step(may, [&] { return t.unless(table->load(library) && table->assigned()); });
    t.step(may, [&] {
        void* const answer = table->retrieveFunction(text);
        return t.unless(answer != nullptr && reinterpret_cast<int (*)()>(answer)() == 42);
    });
    t.step(may, [&] { table.reset(); });
    t.step(may, [&] { library = Loaded(); });
}

void manager(Try& t) {
    static int number = 0;
    const std::string copy = copyOf("plain", "kept" + std::to_string(++number));
    Loaded loaded;
    const bool first = t.step(notLoaded, [&] { loaded = DllManager::loadLibrary(copy, path); });
    const Loaded again = DllManager::loadLibrary(copy, path);
    t.check(!first || again == loaded, "loads a library twice");
}

void flatLibrary(Try& t) {
    const std::string copy = copyOf("full_info", "flatly");
    char found[1000];
    char* made = nullptr;
    void* handle = nullptr;
    t.step("memory 1", [&] { return (made = vor_formatLibraryName(name, "lib", ".so")) == nullptr; });
    std::free(made);
    t.step("memory 1 stat 1", [&] { return vor_findFileOnPath("file", path.c_str(), "", found, sizeof found) == 0; });
    t.step("memory 1 memory 0 stat 1", // without memory for its name it is the main program that is opened
           [&] { return (handle = vor_loadLibraryFromPath(copy.c_str(), path.c_str())) == nullptr; });
    zel_LibraryInfo info = {};
    if (!t.struck())
        reinterpret_cast<void (*)(zel_LibraryInfo*)>(vor_loadSymbol(handle, "zel_getLibraryInfo"))(&info);
    t.step(may, [&] { ZEL::Tracer(info.version, false); });
    if (handle != nullptr)
        t.step("", [&] { return vor_unloadLibrary(handle); });
    ZEL::TRACE::setTraceCallback(collect);
    t.check(t.struck() || whatWasCollected().find("5(): Entering") != std::string::npos, "loses a record's name");
}

// The size is what was asked for, whether or not there was memory for it.
void bytes(Try& t) {
    const auto* const data = reinterpret_cast<const unsigned char*>(name);
    VOR_ByteArray flat = {0, nullptr}, copy = {0, nullptr};
    t.step("", [&] { return vor_initializeByteArray(&flat, 50, data) != 0 || flat.size != 50; });
    t.step("", [&] { return vor_setByteArrayFromString(&flat, name) != 0 || flat.size != 100; });
    t.step("", [&] { return vor_copyByteArray(&copy, &flat) != 0 || copy.size != 100; });
    t.check(t.struck() || (vor_containsByteArray(&flat) && vor_containsByteArray(&copy)), "has no bytes");
    vor_clearByteArray(&flat);
    vor_clearByteArray(&copy);
    SmartPointer<ZEL::DATA::IByteArray> array;
    std::unique_ptr<ZEL::DATA::IByteArray> clone;
    if (!t.step(may, [&] { return array = ZEL::createByteArray(text), array->getSize() != 100; }))
        return;
    t.step(may, [&] { return clone.reset(array->clone()), clone->getSize() != 100; });
    t.step(may, [&] { return array->setData(50, data), array->getSize() != 50; });
    t.step(may, [&] { return array->setData(100, data), array->getSize() != 100; });
    t.step(may, [&] { return t.unless(array->toReadable().size() == 200 && array->toString() == text); });
}

void theRest(Try& t) {
    t.step("memory 0 memory 11 memory 12", [] {
        Thread thread([](void*) -> void* { return nullptr; }, nullptr);
        const int status = thread.start();
        return status == 0 ? !thread.wait(0) : status;
    });
    t.step(may, [] { AtomicInt::destroy(AtomicInt::create(1)); });
    t.step(may, [] { return ZEL::Date::getShortString(0).empty(); });
    t.step(may, [] { SmartPointer<std::string>(new std::string(text)); });
    t.step(may, [] { return endsWith<NullPointerException>([] { checkDeref(nullptr); }); });
}

} // namespace

int main(int argc, char** argv) {
    Report report(argc, argv);
    ::setenv("TZ", "UTC", 1); // without it the C library copies the name of its default again and again
    std::signal(SIGALRM, giveUp);
    if (::chdir(path.c_str()) != 0)
        return 1;
    shared = new Shared; // which the other thread looks at to the very end
    ::pthread_barrier_init(&turn, nullptr, 2);
    std::thread(takeLocks).detach();
    Engine engine(report);
    engine.line("exceptions of each class", families());
    engine.line("the trace to a callback, memory, a file, a stream", traces());
    engine.line("properties as text and XML", {{properties}});
    engine.line("a file by flat functions", {{flatFile, Reasons::always}});
    engine.line("a file lock", {{fileLock, Reasons::ofFailures, true}});
    engine.line("a local file", {{localFile, Reasons::ofFailures, true}});
    engine.line("libraries and function tables",
                {{libraryAndTable}, {manager, Reasons::never, false, true}, {flatLibrary}});
    engine.line("byte arrays", {{bytes}});
    engine.line("threads, counters, dates, pointers", {{theRest}});
    return report.status();
}
