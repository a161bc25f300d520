#include "zel/exceptions/IOException.h"
#include "zel/persistence/FileLockImpl.h"
#include "zel/tracer/Trace.h"

#include "support/CapturedTrace.h"
#include "support/ChildProcess.h"
#include "support/FaultShim.h"
#include "support/LockFault.h"
#include "support/TemporaryDirectory.h"

#include <cerrno>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>
#include <utime.h>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

using namespace ZEL::RT;
using ZEL::EXCEPTIONS::IOException;

namespace {

constexpr auto forReading = FileLockImpl::OPEN_READ;
constexpr auto forWriting = FileLockImpl::OPEN_WRITE;
constexpr auto replacing = FileLockImpl::WRITE_REPLACE;
constexpr auto appending = FileLockImpl::WRITE_APPEND;

// A directory's files, with their names as they stand in traces and exceptions cut to what the test calls them.
struct FileLock : ::testing::Test {
    const TemporaryDirectory directory;
    const std::string file = directory.file("file", "contents");
    const std::string missing = directory.path("none");

    // What the class itself traced besides "Entering" and "Leaving", such as "getStats: File  not opened |".
    std::string traced(const CapturedTrace& trace) const {
        std::istringstream lines(trace.text());
        std::string result;
        for (std::string line; std::getline(lines, line);) {
            const auto scope = line.find("FileLockImpl::");
            const auto text = line.find("()(): ");
            if (scope != std::string::npos && line.find("ing", line.size() - 3) == std::string::npos)
                result += line.substr(scope + 14, text - scope - 14) + line.substr(text + 4) + "|";
        }
        return cut(result);
    }

    std::string cut(std::string text) const {
        for (std::size_t at; (at = text.find(directory.path(""))) != std::string::npos;)
            text.erase(at, directory.path("").size());
        return text;
    }

    // What a call throws, with the reason that errno still holds; or "" if it returns.
    std::string failureOf(const std::function<void()>& call) const {
        try {
            call();
            return "";
        } catch (const IOException& e) {
            const std::string reason = std::to_string(errno);
            return std::to_string(e.getEntryCode()) + " " + e.what() + ", " + e.getExecutionPoint() + ", " +
                   cut(e.getFileName()) + ", errno " + reason;
        }
    }
};

bool othersCanOpen(const std::string& path) {
    ChildProcess other([&](ChildProcess::Parent&) {
        VOR_FileHandle* handle = nullptr;
        return vor_safeOpenFile(path.c_str(), 3, 0, &handle);
    });
    return other.join() == 0;
}

} // namespace

TEST_F(FileLock, EachFailureIsTracedThenThrownWithItsReason) {
    using F = FaultShim;
    FileLockImpl closed;
    FileLockImpl open(file, forWriting);
    FileLockImpl other(directory.file("other"), forWriting);
    VOR_FileStats stats;
    std::string out = "untouched";
    const struct {
        std::function<void()> action;
        F::Call call; // that fails with the error, unless that is 0
        int error;
        const char* failure;
        const char* trace;
    } rows[] = {
        {[&] { FileLockImpl(missing, forReading); }, F::Open, 0,
         "-1085 Could not open file for reading, common/persistence/FileLock::obtainLock() @58, none, errno 2",
         "obtainLock: Error 9 opening file none|obtainLock: File does not exist. Skipping retries.|"
         "obtainLock: Error 9 opening file none|"},
        {[&] { closed.obtainLock(file.c_str(), forWriting); }, F::Open, EACCES,
         "-1086 Could not open file for writing, common/persistence/FileLock::obtainLock() @60, file, errno 13",
         "obtainLock: Error 8 opening file file|obtainLock: Access denied to file. Skipping retries.|"
         "obtainLock: Error 8 opening file file|"},
        {[&] { open.obtainLock(directory.path("other").c_str(), forReading); }, F::Open, 0,
         "-1100 File is already opened, common/persistence/FileLock::obtainLock() @64, other, errno 77", ""},
        {[&] { open.readContents(out); }, F::Read, EIO,
         "-1010 Could not open file for read, common/persistence/FileLock::readContents() @115, file, errno 5",
         "readContents: Error 11 reading file file|"},
        {[&] { EXPECT_EQ(closed.readContents(out), -1); }, F::Read, 0, "", "readContents: File  not opened for read|"},
        {[&] { open.saveContents(replacing, "x"); }, F::Write, ENOSPC,
         "-1080 Could not write file, common/persistence/FileLock::saveContents() @98, file, errno 28",
         "saveContents: Error 12 trying to write file|"},
        {[&] { other.releaseLock(), other.saveContents(appending, "x"); }, F::Write, 0,
         "-1086 Could not open file for writing, common/persistence/FileLock::saveContents() @86, other, errno 77",
         "saveContents: File other not opened for write|"},
        {[&] { EXPECT_FALSE(closed.getStats(stats)); }, F::Read, 0, "", "getStats: File  not opened |"},
        {[&] { EXPECT_FALSE(FileLockImpl::getStats(missing.c_str(), stats)); }, F::Read, 0, "",
         "getStats: Error -1 reading stats none|"},
    };
    for (const auto& row : rows) {
        FaultShim shim;
        if (row.error != 0)
            shim.fail(row.call, row.error);
        const CapturedTrace trace;
        errno = 77;
        EXPECT_EQ(failureOf(row.action), row.failure);
        EXPECT_EQ(traced(trace), row.trace);
        EXPECT_LE(shim.count(F::Open), 1);
    }
    EXPECT_EQ(out, "untouched");
}

TEST_F(FileLock, GivesUpOnALockedFileAfter400AttemptsAnd300Sleeps) {
    ChildProcess holder([&](ChildProcess::Parent& parent) {
        const FileLockImpl lock(file, forReading);
        parent.reportAndWait();
        return 0;
    });
    FaultShim shim;
    const CapturedTrace trace;
    EXPECT_EQ(failureOf([&] { FileLockImpl lock(file, forWriting); }),
              "-1086 Could not open file for writing, common/persistence/FileLock::obtainLock() @60, file, errno 11");
    EXPECT_EQ(shim.count(FaultShim::Open), 400);
    EXPECT_EQ(shim.count(FaultShim::Sleep), 300);
    std::string expected;
    for (int i = 0; i < 101; ++i)
        expected += "obtainLock: Error 16 opening file file|";
    EXPECT_EQ(traced(trace), expected);

    holder.join();
    shim.fail(FaultShim::Lock, EAGAIN, 399);
    EXPECT_NO_THROW(FileLockImpl(file, forWriting)) << "the last attempt counts";
}

TEST_F(FileLock, HoldsOneFileAtATime) {
    const std::string second = directory.path("second");
    FileLockImpl lock(file, forWriting);
    FaultShim shim;
    lock.obtainLock(file.c_str(), forReading);
    EXPECT_THROW(lock.obtainLock(second.c_str(), forWriting), IOException);
    EXPECT_THROW(lock.obtainLock(nullptr, forWriting), IOException);
    EXPECT_EQ(shim.calls(), "");
    EXPECT_FALSE(othersCanOpen(file));

    EXPECT_EQ(lock.releaseLock(), 0);
    EXPECT_EQ(lock.releaseLock(), 0) << "nothing to close";
    EXPECT_TRUE(othersCanOpen(file));
    lock.obtainLock(second.c_str(), FileLockImpl::OPEN_MODE(5)); // anything but reading is writing
    EXPECT_THROW(lock.obtainLock(file.c_str(), forReading), IOException) << "the name is that of the file held now";
    EXPECT_FALSE(othersCanOpen(second));
}

TEST_F(FileLock, ReplacesAppendsAndReads) {
    FileLockImpl lock(file, forWriting);
    std::string out;
    const struct {
        FileLockImpl::WRITE_MODE mode;
        std::string text, read;
    } rows[] = {
        {replacing, "a\r\nb", "a\nb"},
        {appending, "\r\n", "a\nb\n"},
        {FileLockImpl::WRITE_MODE(2), std::string("\0\xff", 2), std::string("\0\xff", 2)},
        {replacing, "", ""},
    };
    for (const auto& row : rows) {
        lock.saveContents(row.mode, row.text);
        EXPECT_EQ(lock.readContents(out), static_cast<int>(row.read.size()));
        EXPECT_EQ(out, row.read);
    }
}

TEST_F(FileLock, LooksForChangesOnceASecond) {
    const struct utimbuf times = {1, 200};
    ASSERT_EQ(::utime(file.c_str(), &times), 0);
    FileLockImpl open(file, forReading);
    FileLockImpl closed;
    FaultShim shim;
    shim.now = 300;
    for (const bool byPath : {false, true}) {
        VOR_FileStats stats = {8, 100, 299};
        const auto stale = [&](FileLockImpl& lock, const std::string& path) {
            return byPath ? FileLockImpl::staleStats(path.c_str(), stats) : lock.staleStats(stats);
        };
        const auto update = [&](FileLockImpl& lock, const std::string& path) {
            return byPath ? FileLockImpl::updateStats(path.c_str(), stats) : lock.updateStats(stats);
        };
        EXPECT_TRUE(stale(open, file));
        EXPECT_FALSE(stale(open, file)) << "this second has been checked";
        stats.checkTime = 299;
        EXPECT_TRUE(stale(open, file)) << "until the caller refreshes the record";
        EXPECT_EQ(stats.modificationTime, 100u);
        EXPECT_TRUE(update(open, file));
        EXPECT_TRUE(stats.size == 8 && stats.modificationTime == 200 && stats.checkTime == 300);
        stats.checkTime = 299;
        EXPECT_FALSE(update(open, file));
        EXPECT_EQ(stats.checkTime, 299u) << "a record that still holds is left alone";
        EXPECT_FALSE(stale(open, file));
        EXPECT_EQ(stats.checkTime, 300u);

        stats = {0, 0, 299};
        EXPECT_TRUE(update(closed, missing));
        EXPECT_TRUE(stale(closed, missing));
        EXPECT_FALSE(stale(closed, missing)) << "this second has been checked";
    }
}

TEST_F(FileLock, IsClosedWhateverHappensToTraceAndMutex) {
    auto lock = std::make_unique<FileLockImpl>(file, forWriting);
    {
        const LockFault fault(LockFault::Locking);
        lock.reset();
    }
    EXPECT_TRUE(othersCanOpen(file));

    lock = std::make_unique<FileLockImpl>(file, forWriting);
    CapturedTrace(); // leaves an empty ring
    ZEL::TRACE::setTraceCallback([](const char*, int) -> int { throw 1; });
    lock.reset();
    ZEL::TRACE::setTraceDefault();
    EXPECT_TRUE(othersCanOpen(file));

#ifdef __SANITIZE_ADDRESS__
    const __lsan::ScopedDisabler abandoned; // A handle that cannot be closed is given up.
#endif
    lock = std::make_unique<FileLockImpl>(file, forWriting);
    FaultShim shim;
    shim.fail(FaultShim::Unlock, ENOLCK);
    const CapturedTrace trace;
    EXPECT_EQ(lock->releaseLock(), 18);
    EXPECT_EQ(lock->releaseLock(), 0) << "forgotten, not tried again";
    EXPECT_EQ(traced(trace), "releaseLock: Error 18 closing file file|");
}

TEST_F(FileLock, IsUsedByManyThreads) {
    FileLockImpl lock;
    const auto work = [&] {
        for (int i = 0; i < 50; ++i) {
            VOR_FileStats stats = {};
            lock.obtainLock(file.c_str(), forWriting);
            lock.updateStats(stats);
            lock.staleStats(stats);
            lock.releaseLock();
        }
    };
    std::thread other(work);
    work();
    other.join();
    EXPECT_TRUE(othersCanOpen(file));
}

TEST_F(FileLock, ACancelledWaitLeavesTheObjectUsable) {
    const auto endsWhenCancelled = [](const std::function<void()>& work) {
        bool ended = false;
        std::thread([&] {
            ::pthread_cancel(::pthread_self());
            work();
            ended = true;
        }).join();
        return ended;
    };
    const auto nextDescriptor = [] {
        const int next = ::dup(0);
        ::close(next);
        return next;
    };
    FileLockImpl lock;
    const int descriptor = nextDescriptor();
    {
        ChildProcess holder([&](ChildProcess::Parent& parent) {
            const FileLockImpl held(file, forWriting);
            parent.reportAndWait();
            return 0;
        });
        EXPECT_FALSE(endsWhenCancelled([&] { delete new FileLockImpl(file, forWriting); }));
        EXPECT_FALSE(endsWhenCancelled([&] { lock.obtainLock(file.c_str(), forWriting); }));
    }
    EXPECT_EQ(nextDescriptor(), descriptor);
    std::string out;
    EXPECT_TRUE(endsWhenCancelled([&] {
        lock.obtainLock(file.c_str(), forWriting);
        lock.saveContents(replacing, "whole");
        lock.readContents(out);
        lock.releaseLock();
    })) << "only waiting can be cancelled";
    EXPECT_EQ(out, "whole");
    EXPECT_TRUE(othersCanOpen(file));
}
