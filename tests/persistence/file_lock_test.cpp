#include "zel/tracer/Trace.h"

#include "persistence/FileTest.h"

#include <atomic>
#include <cstring>
#include <memory>
#include <thread>

#include <dlfcn.h>
#include <pthread.h>
#include <utime.h>

using namespace ZEL::RT;
using FileLock = FileTest;

namespace {

constexpr auto forWriting = FileLockImpl::OPEN_WRITE;
int naps = 0;

std::string repeated(int times, const std::string& text) { return times > 0 ? text + repeated(times - 1, text) : ""; }

} // namespace

// In the library's place, as programs may do it.
void internal_sleepForAWhile(void) {
    ++naps;
    reinterpret_cast<void (*)()>(::dlsym(RTLD_NEXT, "internal_sleepForAWhile"))();
}

TEST_F(FileLock, TracesAndThrowsEachFailureWithItsReason) {
    FileLockImpl lock;
    VOR_FileStats stats;
    std::string out = "untouched";
    const auto obtain = [&](const char* name, int mode, Faults faults = {}) {
        return outcomeOf([&] { return lock.obtainLock(name, FileLockImpl::OPEN_MODE(mode)), 0; }, faults);
    };
    const auto save = [&](int mode, const char* text, Faults faults = {}) {
        return outcomeOf([&] { return lock.saveContents(FileLockImpl::WRITE_MODE(mode), text), 0; }, faults);
    };
    const auto read = [&](Faults faults = {}) {
        return outcomeOf([&] { return lock.readContents(out); }, faults) + out;
    };
    const auto release = [&](Faults faults = {}) { return outcomeOf([&] { return lock.releaseLock(); }, faults); };
    check({
        {save(1, "x"),
         "-1086 Could not open file for writing, saveContents 86  77 saveContents File  not opened for write; "},
        {outcomeOf([&] { return lock.getStats(stats); }), "0 77 getStats File  not opened ; "},
        {outcomeOf([&] { return lock.getStats("none", stats); }), "0 2 getStats Error -1 reading stats none; "},
        {obtain("none", 0), "-1085 Could not open file for reading, obtainLock 58 none 2 open(0) obtainLock Error 9 "
                            "opening file none; File does not exist. Skipping retries.; Error 9 opening file none; "},
        {obtain("file", 1, {{"open", EACCES}}),
         "-1086 Could not open file for writing, obtainLock 60 file 13 open(66) obtainLock Error 8 opening file file; "
         "Access denied to file. Skipping retries.; Error 8 opening file file; "},
        {read(), "-1 77 readContents File  not opened for read; untouched"},
        {obtain("file", 5), "0 77 open(66) cloexec wrlock obtainLock "}, // all but 0 is for writing
        {obtain("file", 0), "0 77 obtainLock "},
        {obtain("second", 1), "-1100 File is already opened, obtainLock 64 second 77 obtainLock "},
        {obtain(nullptr, 1), "-1100 File is already opened, obtainLock 64  77 obtainLock "},
        {read({{"read", EIO}}), "-1010 Could not open file for read, readContents 115 file 5 end rewind read(5) "
                                "readContents Error 11 reading file file; untouched"},
        {save(2, "a\r\nb"), "0 77 truncate(0) rewind write(4) sync saveContents "}, // all but 1 replaces
        {save(1, "\r\n\xff"), "0 77 end write(3) sync saveContents "},
        {read(), "5 77 end rewind read(7) readContents a\nb\n\xff"},
        {save(0, "x", {{"write", ENOSPC}}), "-1080 Could not write file, saveContents 98 file 28 truncate(0) rewind "
                                            "write(1) saveContents Error 12 trying to write file; "},
        {release(), "0 77 unlock close releaseLock "},
        {release(), "0 77 releaseLock "},
        {obtain("second", 1), "0 77 open(66) cloexec wrlock obtainLock "},
        {obtain("file", 0), "-1100 File is already opened, obtainLock 64 file 77 obtainLock "},
    });
    if (!addressSanitizer) // which would call the handle that is given up a leak
        check({{release({{"unlock", ENOLCK}}), "18 37 unlock releaseLock Error 18 closing file second; "},
               {release(), "0 77 releaseLock "}});
}

TEST_F(FileLock, GivesUpOnALockedFileAfter400AttemptsAnd300Sleeps) {
    const auto obtain = [] { return FileLockImpl("file", forWriting), 0; };
    const std::string attempt = "open(66) cloexec wrlock close ";
    asAnother(F_RDLCK);
    naps = 0;
    EXPECT_EQ(outcomeOf(obtain), "-1086 Could not open file for writing, obtainLock 60 file 11 " +
                                     repeated(100, attempt + repeated(3, "sleep(500000000) " + attempt)) +
                                     "FileLockImpl obtainLock " + repeated(101, "Error 16 opening file file; "));
    EXPECT_EQ(naps, 300);
    asAnother(F_UNLCK);
    EXPECT_EQ(outcomeOf(obtain, {{"wrlock", EAGAIN, 399}}).substr(0, 2), "0 ") << "the last attempt counts";
}

TEST_F(FileLock, LooksForChangesOnceASecond) {
    directory.file("empty");
    const struct utimbuf times = {1, 200};
    EXPECT_EQ(::utime("file", &times) + ::utime("empty", &times), 0);
    FaultShim shim;
    shim.now = 0x80000000; // 2147483648, more than a signed number of 32 bits holds
    const auto look = [](const char* name, bool updating, VOR_FileStats stats) {
        FileLockImpl lock;
        if (*name != 'n')
            lock.obtainLock(name, FileLockImpl::OPEN_READ);
        VOR_FileStats byName = stats;
        const bool result = updating ? lock.updateStats(stats) : lock.staleStats(stats);
        EXPECT_EQ(updating ? lock.updateStats(name, byName) : lock.staleStats(name, byName), result);
        EXPECT_EQ(std::memcmp(&byName, &stats, sizeof stats), 0);
        return listed(result, stats.size, stats.modificationTime, stats.checkTime);
    };
    check({
        {look("file", false, {6, 200, 2147483647}), "1 6 200 2147483648 "},
        {look("file", false, {5, 100, 2147483647}), "1 5 100 2147483648 "},
        {look("file", false, {5, 100, 2147483648}), "0 5 100 2147483648 "}, // this second has been checked
        {look("file", false, {5, 200, 2147483647}), "0 5 200 2147483648 "},
        {look("file", true, {5, 100, 2147483647}), "1 5 200 2147483648 "},
        {look("file", true, {5, 200, 2147483647}), "0 5 200 2147483647 "}, // left alone
        {look("empty", false, {0, 100, 2147483647}), "0 0 100 2147483648 "},
        {look("none", false, {0, 0, 2147483647}), "1 0 0 2147483648 "},
        {look("none", true, {0, 0, 2147483647}), "1 0 0 2147483647 "},
    });
}

TEST_F(FileLock, IsClosedWhateverHappensToTheTrace) {
    auto lock = std::make_unique<FileLockImpl>("file", forWriting);
    EXPECT_TRUE(isLocked());
    CapturedTrace(); // leaves an empty ring
    ZEL::TRACE::setTraceCallback([](const char*, int) -> int { throw 1; });
    lock.reset();
    ZEL::TRACE::setTraceDefault();
    EXPECT_FALSE(isLocked());
}

TEST_F(FileLock, IsSharedByThreadsThatAreCancelledOnlyWhileTheyWait) {
    FileLockImpl lock;
    std::string out;
    std::atomic<int> ended{0};
    const auto use = [&](bool alone) {
        ::pthread_cancel(::pthread_self());
        VOR_FileStats stats = {};
        for (int i = 0; i < 50; ++i) {
            lock.obtainLock("file", forWriting);
            if (alone)
                lock.saveContents(FileLockImpl::WRITE_REPLACE, "whole");
            if (alone)
                lock.readContents(out);
            lock.updateStats(stats);
            lock.staleStats(stats);
            lock.releaseLock();
        }
        ++ended;
    };
    asAnother(F_WRLCK);
    const auto before = openFiles();
    std::thread(use, true).join();
    std::thread([] { ::pthread_cancel(::pthread_self()), FileLockImpl("file", forWriting), ::abort(); }).join();
    EXPECT_TRUE(ended == 0 && openFiles() == before);
    asAnother(F_UNLCK);
    std::thread(use, true).join();
    std::thread one(use, false), other(use, false);
    one.join();
    other.join();
    EXPECT_EQ(listed(ended.load(), isLocked()) + out, "3 0 whole");
}
