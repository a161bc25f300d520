// System calls and allocations that fail on demand, and a list of the calls that were made.
#ifndef ZEL_TESTS_SUPPORT_FAULTSHIM_H
#define ZEL_TESTS_SUPPORT_FAULTSHIM_H

#include <atomic>
#include <string>
#include <utility>
#include <vector>

// While one exists, the file calls of the thread that made it are noted and may be made to fail. The program of tests
// defines the calls in the C library's place (FaultShim.cpp), so that the library is tested as it is linked.
struct FaultShim {
    // After `spared` more calls that work, the next `times` ones fail and leave `error` in errno, or errno alone if it
    // is 0. A close that fails leaves the descriptor open, except with EINTR.
    struct Fault {
        // As it is noted; or "stat", "fstat", "chmod"; "malloc", "calloc", "realloc", or "memory" for any of them,
        // C++'s and the loader's; "short read" and "short write", which do half; "secure": the process has raised
        // privileges.
        std::string call;
        int error, times = 1, spared = 0;
    };
    explicit FaultShim(const std::vector<Fault>& planned = {});
    ~FaultShim();
    FaultShim(const FaultShim&) = delete;

    // The calls since the last time this was asked, such as "open(66) cloexec wrlock ".
    std::string calls() { return std::exchange(noted, {}); }

    std::vector<Fault> faults;
    std::string noted;
    std::size_t longest = 9999; // what reads and writes handle at most
    long long now = -1;         // the second that the clocks tell, if not -1

    static std::atomic<long> blocks; // of memory that the process has allocated and not yet freed
};

#endif
