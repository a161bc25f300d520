// Threads are cancelled at random moments of what the library does for them, while signals interrupt it.
#include "zel/vor.h"
#include "zel/zel.h"

#include "Report.h"
#include "support/Child.h"
#include "support/TemporaryDirectory.h"

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <mutex>
#include <random>
#include <sstream>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <pthread.h>

using ZEL::RT::FileLockImpl;
using ZEL::RT::Thread;
using namespace std::chrono_literals;

#if defined(__SANITIZE_THREAD__)
// The sanitizer loses sight of threads that are cancelled in the system, so they wait here, in the system's place.
static void nap() {
    int before = 0;
    ::pthread_testcancel();
    ::pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &before);
    ::usleep(100);
    ::pthread_setcancelstate(before, nullptr);
}
int sem_wait(sem_t* waited) {
    for (; ::sem_trywait(waited) != 0; nap()) {
    }
    return 0;
}
int nanosleep(const timespec* time, timespec*) {
    for (const auto until = std::chrono::steady_clock::now() + 1ns * time->tv_nsec;
         std::chrono::steady_clock::now() < until; nap()) {
    }
    return 0;
}
int pthread_join(pthread_t thread, void** result) {
    int status = 0;
    for (; (status = ::pthread_tryjoin_np(thread, result)) == EBUSY; nap()) {
    }
    return status;
}
#elif defined(__SANITIZE_ADDRESS__)
// With its marks on the stack, which the unwinding of a cancelled thread leaves there, the sanitizer reports itself.
extern "C" const char* __asan_default_options() { return "detect_stack_use_after_return=1"; }
#endif

namespace {

// Lines of whose writing the library has said that it is done, and those that are found in the end.
struct Lines {
    std::mutex mutex;
    std::vector<std::string> noted, found;

    void note(const std::string& line) {
        const std::lock_guard holder(mutex);
        noted.push_back(line);
    }

    // How many are in only one of the two.
    long missing() {
        std::sort(noted.begin(), noted.end());
        std::sort(found.begin(), found.end());
        std::vector<std::string> lost;
        std::set_symmetric_difference(noted.begin(), noted.end(), found.begin(), found.end(), std::back_inserter(lost));
        return static_cast<long>(lost.size());
    }
};

const TemporaryDirectory directory;
const std::string tracePath = directory.path("trace"), path = directory.file("file");
const int another = ::open(path.c_str(), O_RDWR | O_CLOEXEC); // locks through it conflict with those of the library
constexpr int tokens = 3;
ZEL::Mutex mutex;
ZEL::Semaphore semaphore(0, 0);
const auto file = ZEL::RT::getLocalFile(path);
FileLockImpl held;
Lines traced, appended;
std::atomic<long> serial{0}, signals{0}, running{0}, failures{0};

std::string nextLine() {
    const long number = ++serial;
    return std::to_string(number) + std::string(static_cast<std::size_t>(number % 97), '.');
}

void trace() {
    const std::string line = nextLine();
    const ZEL::Tracer scope("cancelled", true);
    ZEL::Tracer().write(line, 0);
    traced.note(line);
}

void guard() {
    const ZEL::MutexGrabber once(mutex), again(mutex);
    const ZEL::Tracer scope("holding", true);
    ::pthread_testcancel();
}

void acquire() {
    struct Token {
        ~Token() { semaphore.release(1); }
    };
    if (!semaphore.acquire(0))
        ++failures;
    const Token token;
    std::this_thread::sleep_for(50us);
}

void append() {
    const std::string line = nextLine();
    file->append(line + "\n");
    appended.note(line);
}

void waitForFile() {
    VOR_FileHandle* handle = nullptr;
    if (vor_safeOpenFile(path.c_str(), 3, 9, &handle) == 0 && vor_safeCloseFile(handle) != 0)
        ++failures;
    const auto lock = ZEL::RT::getLocalFile(path)->writeLock();
    ::pthread_testcancel();
}

void shareLock() {
    const std::string line = nextLine();
    held.obtainLock(path.c_str(), FileLockImpl::OPEN_WRITE);
    try {
        held.saveContents(FileLockImpl::WRITE_APPEND, line + "\n");
        appended.note(line);
    } catch (const ZEL::EXCEPTIONS::IOException& e) {
        failures += e.getEntryCode() != -1086; // which says that another thread has released it already
    }
    failures += held.releaseLock() != 0;
}

struct Running {
    Running() { ++running; }
    ~Running() { --running; }
};

void waitForThread() {
    Thread thread(
        [](void*) -> void* {
            const Running here;
            return ZEL::Semaphore(0, 0).acquire(0), nullptr;
        },
        nullptr);
    failures += thread.start() != 0;
    thread.wait(0);
}

const struct Scenario {
    const char* name;
    void (*body)();
} scenarios[] = {{"tracing to a file", trace},
                 {"holding a mutex", guard},
                 {"taking a semaphore", acquire},
                 {"appending to a file", append},
                 {"waiting for a locked file", waitForFile},
                 {"sharing a file's lock", shareLock},
                 {"waiting for a thread", waitForThread}};

void* repeat(void* body) {
    const Running here;
    sigset_t all;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_UNBLOCK, &all, nullptr);
    for (;; ::pthread_testcancel())
        static_cast<const Scenario*>(body)->body();
}

// Signals go to the threads that are to be cancelled, as nobody else lets them in.
void disturb(const std::atomic<bool>& stop) {
    struct flock lock = {};
    for (int round = 0; !stop; ++round) {
        ::kill(::getpid(), SIGUSR1);
        std::this_thread::sleep_for(100us);
        lock.l_type = round % 64 < 32 ? F_WRLCK : F_UNLCK;
        ::fcntl(another, F_OFD_SETLK, &lock);
    }
    lock.l_type = F_UNLCK;
    ::fcntl(another, F_OFD_SETLK, &lock);
}

void cancelEach(const Scenario& scenario, std::atomic<long>& left, unsigned seed) {
    for (std::mt19937 random(seed); left-- > 0;) {
        Thread thread(repeat, const_cast<Scenario*>(&scenario));
        failures += thread.start() != 0;
        std::this_thread::sleep_for(1us * (random() % 4000));
        failures += thread.close() || !thread.wait(0);
    }
}

// A line that was cut short is followed by the next without an end between them.
long linesCut() {
    long cut = 0;
    std::ifstream in(tracePath);
    for (std::string line; std::getline(in, line);) {
        if (line.rfind(": ", 0) == 0)
            traced.found.push_back(line.substr(2));
        else
            cut += line.find("(): ") == std::string::npos || line.find(" Thread ") != line.rfind(" Thread ");
    }
    return cut;
}

long complain(const char* what, long lost) {
    if (lost != 0)
        Report::complain(what + (": " + std::to_string(lost)));
    return lost;
}

long lost(const Scenario& scenario, long threads) {
    std::ofstream(path, std::ios::trunc);
    for (Lines* lines : {&traced, &appended})
        lines->noted.clear(), lines->found.clear();
    failures = 0;
    ZEL::TRACE::setTraceToFile(tracePath.c_str());
    const auto openFiles = [] { return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}); };
    const auto before = openFiles();
    std::atomic<bool> stop{false};
    std::atomic<long> left{threads};
    std::thread disturbing(disturb, std::cref(stop));
    std::vector<std::thread> cancelling;
    for (unsigned seed = 0; seed < 8; ++seed)
        cancelling.emplace_back(cancelEach, std::cref(scenario), std::ref(left), seed);
    for (std::thread& thread : cancelling)
        thread.join();
    while (running != 0)
        std::this_thread::yield();
    stop = true;
    disturbing.join();

    const auto open = openFiles() - before;
    ZEL::TRACE::setTraceDefault();
    const long cut = linesCut();
    std::ifstream in(path);
    for (std::string line; std::getline(in, line);)
        appended.found.push_back(line);
    int value = 0;
    ::sem_getvalue(reinterpret_cast<sem_t*>(&semaphore), &value);
    const auto lockFile = [] {
        VOR_FileHandle* handle = nullptr;
        return vor_safeOpenFile(path.c_str(), 2, 0, &handle);
    };
    return complain("calls failed", failures) + complain("descriptors left open", open) +
           complain("mutexes locked", ::pthread_mutex_trylock(reinterpret_cast<pthread_mutex_t*>(&mutex)) != 0) +
           complain("mutexes not unlocked", mutex.unlock()) + complain("tokens missing", std::abs(tokens - value)) +
           complain("files locked", statusOfChild(lockFile) != 0) + complain("trace lines cut", cut) +
           complain("trace lines missing", traced.missing()) + complain("appended lines missing", appended.missing());
}

} // namespace

int main(int argc, char** argv) {
    Report report(argc, argv);
    struct sigaction action = {};
    action.sa_handler = [](int) { ++signals; };
    ::sigaction(SIGUSR1, &action, nullptr);
    sigset_t all;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_BLOCK, &all, nullptr);
    semaphore.release(tokens);

    const long threads = report.times(5000.0 / std::size(scenarios)) + 1;
    for (const Scenario& scenario : scenarios)
        report.line("threads cancelled while " + std::string(scenario.name), threads, lost(scenario, threads));
    report.line("signals that interrupted them", signals, 0);
    return report.status();
}
