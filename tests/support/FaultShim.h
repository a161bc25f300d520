/// @file
/// System calls that fail on demand, and a list of those that were made.
#ifndef ZEL_TESTS_SUPPORT_FAULTSHIM_H
#define ZEL_TESTS_SUPPORT_FAULTSHIM_H

#include "support/Sanitizers.h"

#include <cstddef>
#include <string>

/// While one exists, the file calls of the thread that made it are noted, may be made to fail, and do not sleep. The
/// program of tests defines the calls in the C library's place (FaultShim.cpp), under the names that sources with
/// 64-bit offsets and times call, so that the library is tested as it is linked.
class FaultShim {
public:
    enum Call {
        Open,
        CloseOnExec,
        Lock,
        Unlock,
        Read,
        Write,
        Seek,
        Truncate,
        Sync,
        Close,
        Sleep,
        Malloc,
        Calloc,
        Calls
    };

    FaultShim();
    ~FaultShim();
    FaultShim(const FaultShim&) = delete;
    FaultShim& operator=(const FaultShim&) = delete;

    /// After `spared` more calls that work, the next `times` ones fail and leave `error` in errno, or errno alone if it
    /// is 0. A close that fails leaves the descriptor open, except with EINTR.
    void fail(Call call, int error, int times = 1, int spared = 0) { plans_[call] = {error, times, spared}; }

    /// The calls since the last time this was asked, such as "open(66) cloexec wrlock ".
    std::string calls();

    /// How often a call was made in all.
    int count(Call call) const { return counts_[call]; }

    std::size_t longest = static_cast<std::size_t>(-1); ///< What reads and writes handle at most.
    long now = -1;                                      ///< The second that the clocks tell, if not -1.
    bool privileged = false;                            ///< Whether the process counts as one with raised privileges.

    /// Otherwise they are the sanitizer's.
    static constexpr bool allocationsCanFail = !addressSanitizer && !threadSanitizer;

    /// For the calls that are defined: notes one, and tells whether it shall fail, with errno set then.
    bool fails(Call call, const char* name, long argument = -1);

private:
    struct {
        int error, times, spared;
    } plans_[Calls] = {};
    int counts_[Calls] = {};
    std::string calls_;
};

#endif
