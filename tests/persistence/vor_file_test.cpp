#include "zel/persistence/vor_file.h"
#include "zel/utils/vor_runtime.h"

#include "support/ChildProcess.h"
#include "support/FaultShim.h"
#include "support/TemporaryDirectory.h"

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <dlfcn.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

thread_local int sleeps = 0;

VOR_FileHandle* opened(const std::string& path, int mode = 3) {
    VOR_FileHandle* handle = nullptr;
    EXPECT_EQ(vor_safeOpenFile(path.c_str(), mode, 0, &handle), 0) << path;
    return handle;
}

// What another process gets that opens the file for writing at this moment: 0, or 16 while a lock keeps it out.
int statusForOthers(const std::string& path) {
    ChildProcess other([&](ChildProcess::Parent&) {
        VOR_FileHandle* handle = nullptr;
        return vor_safeOpenFile(path.c_str(), 3, 0, &handle);
    });
    return other.join();
}

int nextDescriptor() {
    const int next = ::dup(0);
    ::close(next);
    return next;
}

std::string text(const VOR_FileStats& stats) {
    return std::to_string(stats.size) + " " + std::to_string(stats.modificationTime) + " " +
           std::to_string(stats.checkTime);
}

} // namespace

// In the library's place, as programs may do it.
void internal_sleepForAWhile(void) {
    ++sleeps;
    reinterpret_cast<void (*)()>(::dlsym(RTLD_NEXT, "internal_sleepForAWhile"))();
}

TEST(SafeFile, MakesExactlyTheseCallsAndMapsEveryFailure) {
    using F = FaultShim;
    enum Operation { opening, closing, reading, writing, syncing };
    struct Fault {
        F::Call call;
        int error, times = 1, spared = 0;
    };
    const struct {
        Operation operation;
        int mode;
        std::vector<Fault> faults;
        std::string before;   // contents of the file, "-" for none
        std::string expected; // status, errno (77 before), calls; then the buffer read or the file written
        int limit = 0;        // retries of opening; what one call reads or writes at most
    } rows[] = {
        {opening, 1, {}, "", "0 77 open(0) cloexec rdlock "},
        {opening, 2, {}, "", "0 77 open(2) cloexec wrlock "},
        {opening, 3, {}, "-", "0 77 open(66) cloexec wrlock "},
        {opening, 0, {}, "", "1 77 "},
        {opening, 4, {}, "", "1 77 sleep(500000000) ", 1}, // a mode is not among the causes that end retrying
        {opening, 1, {}, "-", "9 2 open(0) ", 3},
        {opening, 2, {}, "-", "9 2 open(2) ", 3},
        {opening, 1, {{F::Open, 0}}, "", "9 0 open(0) "},
        {opening, 3, {{F::Open, EACCES}}, "", "8 13 open(66) ", 3},
        {opening, 3, {{F::Open, EROFS}}, "", "8 30 open(66) "},
        {opening, 1, {{F::Open, EINVAL}}, "", "1 22 open(0) "},
        {opening, 1, {{F::Open, EISDIR}}, "", "14 21 open(0) "},
        {opening, 1, {{F::Open, EINTR, 2}}, "", "0 77 open(0) open(0) open(0) cloexec rdlock "},
        {opening, 1, {{F::CloseOnExec, EINVAL}, {F::Lock, 0}}, "", "0 77 open(0) cloexec rdlock "},
        {opening, 1, {{F::Lock, EAGAIN}}, "", "16 11 open(0) cloexec rdlock close "},
        {opening, 1, {{F::Lock, EACCES}, {F::Close, EINTR}}, "", "16 13 open(0) cloexec rdlock close "},
        {opening, 1, {{F::Lock, ENOLCK}}, "", "16 37 open(0) cloexec rdlock close "},
        {opening, 1, {{F::Lock, EAGAIN}, {F::Close, EIO}}, "", "21 11 open(0) cloexec rdlock close "},
        {opening, 1, {{F::Lock, EACCES}, {F::Close, EIO}}, "", "21 13 open(0) cloexec rdlock close "},
        {opening, 1, {{F::Lock, ENOLCK}, {F::Close, EIO}}, "", "15 37 open(0) cloexec rdlock close "},
        {opening, 1, {{F::Open, EMFILE}}, "", "0 77 open(0) sleep(500000000) open(0) cloexec rdlock ", 9},
        {opening, 1, {{F::Open, EMFILE}}, "", "14 24 open(0) ", -1},
        {opening,
         1,
         {{F::Open, EMFILE, 2}, {F::Sleep, EINTR}},
         "",
         "14 24 open(0) sleep(500000000) sleep(250000000) open(0) ",
         1},
        {opening, 1, {{F::Malloc, ENOMEM}}, "", "2 12 ", 9},
        {closing, 0, {}, "", "0 77 unlock close "},
        {closing, 0, {{F::Unlock, ENOLCK}}, "", "18 37 unlock "},
        {closing, 0, {{F::Close, EIO}}, "", "16 5 unlock close "},
        {closing, 0, {{F::Close, EINTR}}, "", "0 77 unlock close "},
        {reading, 1, {}, "a\r\nb\r", "0 77 end rewind read(5) a\nb\r"},
        {reading, 1, {}, "\r", "0 77 end rewind read(1) \r"},
        {reading, 1, {}, "", "0 77 end rewind read(0) "},
        {reading, 2, {}, "a\r\n", "0 77 rewind read(1024) read(1024) rewind read(3) a\n"},
        {reading, 3, {}, "abc", "0 77 rewind read(0) "},
        {reading, 1, {}, "a\r\nb", "0 77 end rewind read(4) a\n", 3}, // a short read is taken as it is
        {reading, 2, {}, "abc", "0 77 rewind read(1024) read(1024) read(1024) rewind read(3) ab", 2},
        {reading, 1, {{F::Seek, EIO}}, "abc", "10 5 end null0"},
        {reading, 1, {{F::Seek, EIO, 1, 1}}, "abc", "10 5 end rewind null0"},
        {reading, 2, {{F::Seek, EIO, 1, 1}}, "abc", "10 5 rewind read(1024) read(1024) rewind null0"},
        {reading, 1, {{F::Read, EIO}}, "abc", "11 5 end rewind read(3) null0"},
        {reading, 2, {{F::Read, EIO, 1, 1}}, "abc", "11 5 rewind read(1024) read(1024) rewind read(3) null0"},
        {reading, 1, {{F::Read, EINTR}}, "abc", "0 77 end rewind read(3) read(3) abc"},
        {reading, 1, {{F::Calloc, ENOMEM}}, "abc", "2 12 end rewind null0"},
        {writing, 1, {}, "12345", "0 77 truncate(0) rewind write(3) sync bcd"},
        {writing, 2, {}, "12345", "0 77 end write(3) sync 12345bcd"},
        {writing, 0, {}, "12345", "0 77 write(3) sync bcd45"},
        {writing, 1, {}, "12345", "0 77 truncate(0) rewind write(3) sync bc", 2}, // a short write is not repeated
        {writing, 1, {{F::Truncate, EIO}}, "12345", "19 5 truncate(0) 12345"},
        {writing, 1, {{F::Seek, EIO}}, "12345", "20 5 truncate(0) rewind "},
        {writing, 2, {{F::Seek, EIO}}, "12345", "20 5 end 12345"},
        {writing, 1, {{F::Write, ENOSPC}}, "12345", "12 28 truncate(0) rewind write(3) "},
        {writing, 1, {{F::Sync, EIO}}, "12345", "12 5 truncate(0) rewind write(3) sync bcd"},
        {writing, 2, {{F::Sync, EIO}}, "12345", "12 5 end write(3) sync 12345bcd"},
        {writing, 2, {{F::Write, EINTR}, {F::Sync, EINTR}}, "12345", "0 77 end write(3) write(3) sync sync 12345bcd"},
        {syncing, 0, {}, "", "0 77 sync "},
        {syncing, 0, {{F::Sync, EIO}}, "", "12 5 sync "},
    };
    const TemporaryDirectory directory;
    const std::string path = directory.path("file");
    for (const auto& row : rows) {
        if (!row.faults.empty() && row.faults[0].call >= F::Malloc && !F::allocationsCanFail)
            continue;
        ::unlink(path.c_str());
        if (row.before != "-")
            directory.file("file", row.before);
        const int descriptor = nextDescriptor();
        VOR_FileHandle* handle = row.operation == opening ? nullptr : opened(path);
        char* buffer = const_cast<char*>("untouched");
        unsigned int length = 77;

        auto shim = std::make_unique<FaultShim>();
        for (const Fault& fault : row.faults)
            shim->fail(fault.call, fault.error, fault.times, fault.spared);
        if (row.limit > 0)
            shim->longest = static_cast<std::size_t>(row.limit);
        sleeps = 0;
        errno = 77;
        const int status = row.operation == opening   ? vor_safeOpenFile(path.c_str(), row.mode, row.limit, &handle)
                           : row.operation == closing ? vor_safeCloseFile(handle)
                           : row.operation == reading ? vor_safeReadContents(handle, row.mode, &buffer, &length)
                           : row.operation == writing ? vor_safeWriteContents(handle, row.mode, "bcd", 3)
                                                      : vor_safeSyncFile(handle);
        const int error = errno;
        std::string result = std::to_string(status) + " " + std::to_string(error) + " " + shim->calls();
        EXPECT_EQ(sleeps > 0, shim->count(F::Sleep) > 0) << row.expected;
        shim.reset();

        if (row.operation == reading) {
            result += buffer != nullptr ? std::string(buffer, length) : "null" + std::to_string(length);
            vor_safeFreeBuffer(buffer);
        }
        if (row.operation == writing)
            result += TemporaryDirectory::contents(path);
        EXPECT_EQ(result, row.expected);
        const bool open = row.operation == closing ? status != 0 : row.operation != opening || status == 0;
        EXPECT_TRUE(row.operation != opening || open == (handle != nullptr)) << row.expected;
        EXPECT_EQ(open ? vor_safeCloseFile(handle) : 0, 0) << row.expected;
        EXPECT_TRUE(nextDescriptor() == descriptor || status == 15 || status == 21) << row.expected;
    }
}

TEST(SafeFile, LocksOutOtherProcessesUntilItIsClosed) {
    const TemporaryDirectory directory;
    const std::string path = directory.path("file");
    ::umask(027);
    const int descriptor = nextDescriptor();
    VOR_FileHandle* handle = opened(path);
    struct stat status = {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640u);
    EXPECT_EQ(::fcntl(descriptor, F_GETFD), FD_CLOEXEC);
    EXPECT_EQ(statusForOthers(path), 16);
    EXPECT_EQ(vor_safeCloseFile(handle), 0);
    EXPECT_EQ(statusForOthers(path), 0);

    // The lock is the process's: whichever descriptor of the file is closed first drops it.
    handle = opened(path, 1);
    EXPECT_EQ(statusForOthers(path), 16);
    ::close(::open(path.c_str(), O_RDONLY));
    EXPECT_EQ(statusForOthers(path), 0);
    vor_safeCloseFile(handle);
}

TEST(SafeFile, DropsCarriageReturnsLikeAWalkByteByByte) {
    const TemporaryDirectory directory;
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        std::string text(random() % 40, ' ');
        for (char& c : text)
            c = "\r\r\n\nab\0\xff"[random() % 8];
        VOR_FileHandle* const handle = opened(directory.file("file", text), 1);
        char* buffer = nullptr;
        unsigned int length = 0;
        ASSERT_EQ(vor_safeReadContents(handle, 1, &buffer, &length), 0);
        std::string walked = text;
        std::size_t kept = 0;
        for (std::size_t i = 0; i < walked.size(); ++i)
            if (!(walked[i] == '\r' && i + 1 < walked.size() && walked[i + 1] == '\n'))
                walked[kept++] = walked[i];
        EXPECT_EQ(length, kept);
        EXPECT_EQ(std::string(buffer, text.size() + 1), walked + '\0') << "round " << round;
        vor_safeFreeBuffer(buffer);
        vor_safeCloseFile(handle);
    }
}

TEST(SafeFile, SyncsTheFirstAppendOfEachSecond) {
    const TemporaryDirectory directory;
    VOR_FileHandle* const handle = opened(directory.file("file"));
    FaultShim shim;
    std::string syncs;
    for (const long second : {100, 100, 101, 102, 102, 102, 100}) {
        shim.now = second;
        if (syncs == "101")
            shim.fail(FaultShim::Sync, EIO); // at second 102: a failed sync does not count as one
        const int before = shim.count(FaultShim::Sync);
        vor_safeWriteContents(handle, 2, "x", 1);
        syncs += std::to_string(shim.count(FaultShim::Sync) - before);
    }
    EXPECT_EQ(syncs, "1011101");
    vor_safeCloseFile(handle);
}

TEST(SafeFile, TellsWhetherAFileExistsAndHasChanged) {
    const TemporaryDirectory directory;
    const std::string path = directory.file("file");
    const std::string missing = directory.path("none");
    VOR_FileStats stored = {1, 2, 3};
    int exists[] = {7, 7};
    EXPECT_EQ(vor_safeFileExists(path.c_str(), &exists[0]) + vor_safeFileExists(missing.c_str(), &exists[1]), 0);
    EXPECT_TRUE(exists[0] == 1 && exists[1] == 0);
    EXPECT_EQ(vor_safeChmod(path.c_str(), 0600), 0);
    EXPECT_EQ(vor_safeChmod(missing.c_str(), 0600), -1);
    EXPECT_EQ(vor_safeFileStats(missing.c_str(), &stored), -1);
    EXPECT_EQ(text(stored), "1 2 3");

    const struct {
        VOR_FileStats a, b;
        int result;
    } rows[] = {
        {{5, 100, 1}, {5, 100, 2}, 0}, {{5, 100, 1}, {5, 200, 1}, 1}, {{5, 100, 1}, {6, 100, 1}, 1},
        {{0, 100, 1}, {0, 200, 1}, 0}, {{0, 100, 1}, {1, 100, 1}, 1},
    };
    for (const auto& row : rows)
        EXPECT_EQ(vor_safeCompareStats(&row.a, &row.b), row.result) << text(row.a) << " and " << text(row.b);
}

TEST(SafeFile, AnswersNullWith1) {
    const TemporaryDirectory directory;
    VOR_FileHandle* const handle = opened(directory.file("file"));
    VOR_FileHandle* out = nullptr;
    VOR_FileStats stats = {};
    char* buffer = nullptr;
    unsigned int length = 0;
    int exists = 7;
    // clang-format off
    const int results[] = {
        vor_safeOpenFile(nullptr, 1, 9, &out), vor_safeOpenFile("/", 1, 9, nullptr),
        internal_OpenFile(nullptr, 1, handle), internal_OpenFile("/", 1, nullptr),
        vor_safeCloseFile(nullptr), internal_CloseFile(nullptr), vor_safeSyncFile(nullptr),
        vor_safeReadContents(nullptr, 1, &buffer, &length), internal_readContents(nullptr, 1, &buffer, &length),
        vor_safeReadContents(handle, 1, nullptr, &length), internal_readContents(handle, 1, nullptr, &length),
        vor_safeReadContents(handle, 1, &buffer, nullptr), internal_readContents(handle, 1, &buffer, nullptr),
        vor_safeWriteContents(nullptr, 1, "", 0), vor_safeWriteContents(handle, 1, nullptr, 0),
        vor_safeFileStats(nullptr, &stats), vor_safeFileStats("/", nullptr),
        vor_safeHandleStats(nullptr, &stats), vor_safeHandleStats(handle, nullptr),
        vor_safeCompareStats(nullptr, &stats), vor_safeCompareStats(&stats, nullptr),
        vor_safeFileStatsAreStale(nullptr, &stats), vor_safeFileStatsAreStale("/", nullptr),
        vor_safeHandleStatsAreStale(nullptr, &stats), vor_safeHandleStatsAreStale(handle, nullptr),
        vor_safeFileExists("/", nullptr), vor_safeChmod(nullptr, 0600),
    };
    // clang-format on
    for (std::size_t row = 0; row < std::size(results); ++row)
        EXPECT_EQ(results[row], 1) << "row " << row;
    EXPECT_EQ(vor_safeFileExists(nullptr, &exists), 0);
    EXPECT_EQ(exists, 0);
    vor_safeCloseFile(handle);
}

TEST(SafeFile, RefusesToReadMoreThan32BitsCount) {
    const TemporaryDirectory directory;
    for (const long long size : {0xFFFFFFFFll, 5ll << 30}) {
        ASSERT_EQ(::truncate64(directory.file("file").c_str(), size), 0);
        VOR_FileHandle* const handle = opened(directory.path("file"), 2);
        VOR_FileStats stats = {};
        EXPECT_EQ(vor_safeHandleStats(handle, &stats), 0);
        EXPECT_EQ(stats.size, 0xFFFFFFFFu);
        char* buffer = nullptr;
        unsigned int length = 0;
        FaultShim shim;
        EXPECT_EQ(vor_safeReadContents(handle, 1, &buffer, &length), 2);
        EXPECT_EQ(shim.calls(), "end rewind ");
        EXPECT_EQ(vor_safeCloseFile(handle), 0);
    }
}

// What the first successful open of a process decides holds for good, so each row runs in a process of its own.
TEST(SafeFile, TheEnvironmentOverridesLocksOnceForAll) {
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    const auto fails = [](const char* value, bool privileged, int others) {
        FaultShim shim;
        shim.privileged = privileged;
        if (value != nullptr)
            ::setenv("VOR_FILELOCK_OVERRIDE", value, 1);
        const TemporaryDirectory directory;
        const std::string path = directory.file("file");
        vor_safeCloseFile(opened(path));
        if (value == nullptr)
            ::setenv("VOR_FILELOCK_OVERRIDE", "1", 1);
        else
            ::unsetenv("VOR_FILELOCK_OVERRIDE");
        VOR_FileHandle* const handle = opened(path);
        EXPECT_EQ(statusForOthers(path), others);
        shim.calls();
        vor_safeCloseFile(handle);
        EXPECT_EQ(shim.calls(), others == 0 ? "close " : "unlock close ");
        return ::testing::Test::HasFailure();
    };
    const struct {
        const char* name;
        const char* value; // of the variable at the first open, null for none
        bool privileged;
        int others; // what another process gets that opens the file
    } rows[] = {
        {"unset", nullptr, false, 16},
        {"empty", "", false, 0},
        {"any value", "0", false, 0},
        {"raised privileges", "1", true, 16},
    };
    for (const auto& row : rows)
        EXPECT_EXIT(std::exit(fails(row.value, row.privileged, row.others)), ::testing::ExitedWithCode(0), "")
            << row.name;
}
