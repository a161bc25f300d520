// System calls that fail on demand, and a list of those that were made.
#ifndef ZEL_TESTS_SUPPORT_FAULTSHIM_H
#define ZEL_TESTS_SUPPORT_FAULTSHIM_H

#include "support/Sanitizers.h"

#include <string>
#include <utility>
#include <vector>

// While one exists, the file calls of the thread that made it are noted and may be made to fail. The program of tests
// defines the calls in the C library's place (FaultShim.cpp), so that the library is tested as it is linked.
struct FaultShim {
    // After `spared` more calls that work, the next `times` ones fail and leave `error` in errno, or errno alone if it
    // is 0. A close that fails leaves the descriptor open, except with EINTR.
    struct Fault {
        std::string call; // as it is noted, or "malloc" or "calloc", or "secure": the process has raised privileges
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

    static constexpr bool allocationsCanFail = !addressSanitizer && !threadSanitizer; // otherwise they are not ours
};

#endif
