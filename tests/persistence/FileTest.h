// What the tests of files share.
#ifndef ZEL_TESTS_PERSISTENCE_FILETEST_H
#define ZEL_TESTS_PERSISTENCE_FILETEST_H

#include "zel/exceptions/IOException.h"
#include "zel/persistence/LocalFileImpl.h"

#include "support/CapturedTrace.h"
#include "support/FaultShim.h"
#include "support/Sanitizers.h"
#include "support/TemporaryDirectory.h"

#include <cerrno>
#include <filesystem>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

/// Works in a directory of its own that holds "file". Locks that are set through the descriptor `another` belong to it
/// alone, and so conflict with those that the library sets as if another process held them.
struct FileTest : ::testing::Test {
    using Faults = std::vector<FaultShim::Fault>;
    const TemporaryDirectory directory;
    const int another = ::open(directory.file("file", "a\r\nbc").c_str(), O_RDWR | O_CLOEXEC);
    long long second = 1000; ///< That the clocks tell an action.

    FileTest() { EXPECT_EQ(::chdir(directory.path("").c_str()), 0); }
    ~FileTest() override { ::close(another); }

    /// Locks or unlocks "file", or tells with F_OFD_GETLK what kind of lock is in the way of this one.
    short asAnother(short kind, int command = F_OFD_SETLK) const {
        struct flock lock = {};
        lock.l_type = kind;
        EXPECT_EQ(::fcntl(another, command, &lock), 0);
        return lock.l_type;
    }
    bool isLocked() const { return asAnother(F_WRLCK, F_OFD_GETLK) != F_UNLCK; }

    static auto openFiles() { return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}); }

    template <class... T> static std::string listed(T... values) { return ((std::to_string(values) + " ") + ...); }

    /// What an action returned or threw, errno (77 before), its calls, and the scopes with what was reported in them.
    template <class Action>
    std::string outcomeOf(const Action& action, const Faults& faults = {}, std::size_t longest = 99) const {
        FaultShim shim(faults);
        shim.now = second;
        shim.longest = longest;
        const CapturedTrace trace;
        std::string outcome;
        errno = 77;
        try {
            outcome = std::to_string(action());
        } catch (const ZEL::EXCEPTIONS::IOException& e) {
            EXPECT_STREQ(e.getSourceFile(), "common/persistence/FileLock");
            outcome = listed(e.getEntryCode()) + e.what() + ", " + e.getSourceFunction() + " " +
                      listed(e.getSourceLine()) + e.getFileName();
        }
        outcome += " " + listed(errno) + shim.calls();
        std::string scopes = trace.scopes("FileLockImpl::");
        for (const std::string frame : {"FileLockImpl::", "(){", "} "})
            for (std::size_t at; (at = scopes.find(frame)) != std::string::npos;)
                scopes.erase(at, frame.size());
        return outcome + scopes;
    }

    /// Pairs of what happened and what should have.
    static void check(const std::vector<std::pair<std::string, std::string>>& rows) {
        for (const auto& row : rows)
            EXPECT_EQ(row.first, row.second);
    }
};

#endif
