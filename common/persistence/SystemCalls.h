/// @file
/// How the file layer treats errno and interrupted system calls.
#ifndef ZEL_COMMON_PERSISTENCE_SYSTEMCALLS_H
#define ZEL_COMMON_PERSISTENCE_SYSTEMCALLS_H

#include <cerrno>

namespace ZEL {

/// Decides what the caller finds in errno at the end of the scope: what was there before, or else the reason of the
/// failure that was noted last, whatever closing and freeing did to errno in between.
class ErrnoOutcome {
public:
    ErrnoOutcome() : outcome_(errno) {}
    ~ErrnoOutcome() { errno = outcome_; }
    ErrnoOutcome(const ErrnoOutcome&) = delete;
    ErrnoOutcome& operator=(const ErrnoOutcome&) = delete;

    /// Called where something has failed, before anything is cleaned up. Hands the status through.
    int failed(int status) { return failed(status, errno); }

    /// For a failure without a system call, and for allocations, across which a compiler may take errno as unchanged.
    int failed(int status, int reason) {
        outcome_ = reason;
        return status;
    }

private:
    int outcome_;
};

/// Makes a system call again for as long as signals interrupt it. errno is 0 if a failing call gave no reason.
/// Not for close: an interrupted close has closed, and the number may already be another thread's.
template <class Call> auto uninterrupted(Call call) {
    for (;;) {
        errno = 0;
        const auto result = call();
        if (result != -1 || errno != EINTR)
            return result;
    }
}

} // namespace ZEL

#endif
