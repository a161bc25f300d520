#include "zel/utils/vor_runtime.h"

#include "persistence/FileTest.h"

#include <cstdlib>
#include <memory>
#include <random>

#include <sys/stat.h>

namespace {

using Handle = std::unique_ptr<VOR_FileHandle, int (*)(VOR_FileHandle*)>;

struct SafeFile : FileTest {
    static Handle opened(int mode = 3, const char* name = "file") {
        VOR_FileHandle* handle = nullptr;
        EXPECT_EQ(vor_safeOpenFile(name, mode, 0, &handle), 0);
        return {handle, vor_safeCloseFile};
    }
    std::string open(int mode, const Faults& faults, int retries = 0) const {
        VOR_FileHandle* handle = nullptr;
        const auto outcome = outcomeOf([&] { return vor_safeOpenFile("file", mode, retries, &handle); }, faults);
        EXPECT_EQ(vor_safeCloseFile(handle), outcome[0] == '0' ? 0 : 1) << outcome; // no handle without success
        return outcome;
    }
    std::string close(const Faults& faults) const {
        VOR_FileHandle* const handle = opened().release();
        const auto outcome = outcomeOf([&] { return vor_safeCloseFile(handle); }, faults);
        return outcome[0] == '0' || vor_safeCloseFile(handle) == 0 ? outcome : "a lost handle";
    }
    std::string read(int mode, const Faults& faults = {}, std::size_t longest = 3) const {
        char* buffer = const_cast<char*>("untouched");
        unsigned int length = 77;
        const auto read = [&, file = opened()] { return vor_safeReadContents(file.get(), mode, &buffer, &length); };
        const auto outcome = outcomeOf(read, faults, longest);
        const std::unique_ptr<char, int (*)(void*)> owner(buffer, vor_safeFreeBuffer);
        return outcome + (buffer != nullptr ? std::string(buffer, length) : "null" + std::to_string(length));
    }
    std::string write(int mode, const Faults& faults = {}) const {
        directory.file("file", "a\r\nbc");
        const auto write = [&, file = opened()] { return vor_safeWriteContents(file.get(), mode, "wxyz", 4); };
        const auto outcome = outcomeOf(write, faults, 3);
        return outcome + TemporaryDirectory::contents("file");
    }
};
using SafeFileDeathTest = SafeFile;

} // namespace

// Each read and write handles at most 3 bytes.
TEST_F(SafeFile, MakesExactlyTheseCallsAndMapsEveryFailure) {
    const auto before = openFiles();
    check({
        {open(4, {{"sleep", EINTR}}, 1), "1 77 sleep(500000000) sleep(250000000) "}, // retried as most failures are
        {open(1, {{"open", 0}}), "9 0 open(0) "},
        {open(3, {{"open", EROFS}}, 3), "8 30 open(66) "},
        {open(1, {{"open", EINVAL}}), "1 22 open(0) "},
        {open(1, {{"open", EINTR, 2}}), "0 77 open(0) open(0) open(0) cloexec rdlock "},
        {open(2, {{"open", EMFILE}}, 9), "0 77 open(2) sleep(500000000) open(2) cloexec wrlock "},
        {open(2, {{"open", EMFILE, 2}}, 1), "14 24 open(2) sleep(500000000) open(2) "},
        {open(1, {{"cloexec", EINVAL}, {"rdlock", 0}}), "0 77 open(0) cloexec rdlock "},
        {open(1, {{"rdlock", EINTR}}), "0 77 open(0) cloexec rdlock rdlock "},
        {open(1, {{"rdlock", EACCES}, {"close", EINTR}}), "16 13 open(0) cloexec rdlock close "},
        {open(1, {{"rdlock", EACCES}, {"close", EIO}}), "21 13 open(0) cloexec rdlock close "},
        {open(1, {{"rdlock", EAGAIN}, {"close", EIO}}), "21 11 open(0) cloexec rdlock close "},
        {open(1, {{"rdlock", ENOLCK}, {"close", EIO}}), "15 37 open(0) cloexec rdlock close "},
        {close({{"unlock", ENOLCK}}), "18 37 unlock "},
        {close({{"close", EIO}}), "16 5 unlock close "},
        {close({{"close", EINTR}}), "0 77 unlock close "},
        {read(1, {{"read", EINTR}}), "0 77 end rewind read(5) read(5) a\n"},
        {read(2), "0 77 rewind read(1024) read(1024) read(1024) rewind read(5) a\n"},
        {read(2, {}, 1),
         "0 77 rewind read(1024) read(1024) read(1024) read(1024) read(1024) read(1024) rewind read(5) a"},
        {read(3), "0 77 rewind read(0) "},
        {read(1, {{"end", EIO}}), "10 5 end null0"},
        {read(1, {{"rewind", EIO}}), "10 5 end rewind null0"},
        {read(2, {{"read", EIO}, {"rewind", EIO, 1, 1}}), "10 5 rewind read(1024) rewind null0"},
        {read(2, {{"read", EIO, 1, 1}}), "11 5 rewind read(1024) read(1024) rewind read(3) null0"},
        {write(0), "0 77 write(4) sync wxybc"},
        {write(1, {{"write", EINTR}}), "0 77 truncate(0) rewind write(4) write(4) sync wxy"},
        {write(1, {{"truncate", EINTR}}), "0 77 truncate(0) truncate(0) rewind write(4) sync wxy"},
        {write(2, {{"sync", EINTR}}), "0 77 end write(4) sync sync a\r\nbcwxy"},
        {write(1, {{"truncate", EIO}}), "19 5 truncate(0) a\r\nbc"},
        {write(2, {{"end", EIO}}), "20 5 end a\r\nbc"},
        {write(1, {{"sync", EIO}}), "12 5 truncate(0) rewind write(4) sync wxy"},
        {outcomeOf([] { return vor_safeFileExists("none", std::make_unique<int>().get()); }), "0 77 "},
        {outcomeOf([file = opened()] { return vor_safeSyncFile(file.get()); }, {{"sync", EIO}}), "12 5 sync "},
    });
    EXPECT_EQ(openFiles(), before + 3) << "three could not be closed";
}

TEST_F(SafeFile, CreatesFilesForEverybodyAndLosesItsLockWithAnyDescriptor) {
    ::umask(020);
    opened(3, "new");
    EXPECT_EQ(std::filesystem::status("new").permissions(), std::filesystem::perms(0646));
    const Handle handle = opened(1);
    EXPECT_TRUE(isLocked());
    ::close(::open("file", O_RDONLY));
    EXPECT_FALSE(isLocked());
}

TEST_F(SafeFile, DropsEachCarriageReturnBeforeALineFeedInPlace) {
    std::mt19937 random(1);
    for (int round = 0; round < 300; ++round) {
        std::string text(random() % 41, ' ');
        for (char& byte : text)
            byte = "\r\r\n\nab\0\xff"[random() % 8];
        if (round == 0)
            text = "\r\n"; // nothing shorter has a line end to change
        directory.file("file", text);
        char* buffer = nullptr;
        unsigned int length = 0;
        ASSERT_EQ(vor_safeReadContents(opened(1).get(), 1, &buffer, &length), 0);
        const std::unique_ptr<char, int (*)(void*)> owner(buffer, vor_safeFreeBuffer);
        std::string lines = text;
        for (std::size_t at = 0; (at = lines.find("\r\n", at)) != std::string::npos;)
            lines.erase(at, 1);
        EXPECT_EQ(length, lines.size());
        EXPECT_EQ(std::string(buffer, text.size() + 1), lines + text.substr(lines.size()) + '\0') << "round " << round;
    }
}

TEST_F(SafeFile, SyncsTheFirstAppendOfEachSecond) {
    const Handle handle = opened();
    FaultShim shim({{"sync", EIO, 1, 2}}); // the first at 102, which does not count then
    std::string syncs;
    for (const int now : {100, 100, 101, 102, 102, 102, 100}) {
        shim.now = now;
        vor_safeWriteContents(handle.get(), 2, "x", 1);
        syncs += shim.calls() == "end write(1) sync " ? '1' : '0';
    }
    EXPECT_EQ(syncs, "1011101");
}

TEST_F(SafeFile, AnswersNullWith1AndAMissingFileWithFailure) {
    const Handle owner = opened();
    VOR_FileHandle *file = owner.get(), *out = nullptr;
    VOR_FileStats stats = {1, 2, 3};
    const VOR_FileStats longer = {9, 2, 3}, later = {1, 9, 3};
    char* to = nullptr;
    unsigned int length = 0;
    int exists[] = {7, 7, 7};
    EXPECT_EQ(listed(vor_safeOpenFile(nullptr, 1, 9, &out), vor_safeOpenFile("file", 1, 9, nullptr),
                     internal_OpenFile(nullptr, 1, file), internal_OpenFile("file", 1, nullptr),
                     vor_safeReadContents(nullptr, 1, &to, &length), internal_readContents(nullptr, 1, &to, &length),
                     vor_safeReadContents(file, 1, nullptr, &length), internal_readContents(file, 1, nullptr, &length),
                     vor_safeReadContents(file, 1, &to, nullptr), internal_readContents(file, 1, &to, nullptr),
                     vor_safeWriteContents(nullptr, 1, "", 0), vor_safeWriteContents(file, 1, nullptr, 0),
                     vor_safeSyncFile(nullptr), vor_safeCloseFile(nullptr), internal_CloseFile(nullptr),
                     vor_safeFileStats(nullptr, &stats), vor_safeFileStats("file", nullptr),
                     vor_safeHandleStats(nullptr, &stats), vor_safeHandleStats(file, nullptr),
                     vor_safeFileStatsAreStale(nullptr, &stats), vor_safeFileStatsAreStale("file", nullptr),
                     vor_safeHandleStatsAreStale(nullptr, &stats), vor_safeHandleStatsAreStale(file, nullptr),
                     vor_safeCompareStats(nullptr, &stats), vor_safeCompareStats(&stats, nullptr),
                     vor_safeChmod(nullptr, 0600), vor_safeFileExists("file", nullptr)),
              "1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 ");
    EXPECT_EQ(listed(vor_safeFileExists(nullptr, &exists[0]), vor_safeFileExists("none", &exists[1]),
                     vor_safeFileExists("file", &exists[2]), vor_safeChmod("file", 0600), vor_safeChmod("none", 0600),
                     vor_safeFileStats("none", &stats), vor_safeCompareStats(&stats, &stats),
                     vor_safeCompareStats(&stats, &longer), vor_safeCompareStats(&stats, &later)),
              "0 0 0 0 -1 -1 0 1 1 ");
    EXPECT_EQ(listed(exists[0], exists[1], exists[2], stats.size, stats.modificationTime, stats.checkTime),
              "0 0 1 1 2 3 ");
}

TEST_F(SafeFile, RefusesToReadMoreThanItCanCountOrHold) {
    constexpr long long longest = sizeof(std::size_t) == 4 ? 0xFFFFFFFE : 0xFFFFFFFF;
    for (const long long size : {longest + 1, 5LL << 30}) {
        EXPECT_EQ(::truncate64("file", size), 0);
        VOR_FileStats stats = {};
        vor_safeHandleStats(opened().get(), &stats);
        EXPECT_EQ(stats.size, 0xFFFFFFFF);
        EXPECT_EQ(read(1), "2 27 end rewind null0") << size;
    }
    EXPECT_EQ(::truncate64("file", longest), 0);
    EXPECT_EQ(read(1, {{"calloc", ENOMEM}}), "2 12 end rewind null0");
    EXPECT_EQ(open(1, {{"malloc", ENOMEM}}, 9), "2 12 ");
}

// What the first successful open of a process decides holds for good. Death tests run first, in processes of their own.
TEST_F(SafeFileDeathTest, TheEnvironmentOverridesLocksOnceForAll) {
    const auto decides = [&](const char* value, bool secure, const std::string& calls) {
        FaultShim shim({{"secure", 0, secure ? 1 : 0}});
        if (value != nullptr)
            ::setenv("VOR_FILELOCK_OVERRIDE", value, 1);
        opened();
        value != nullptr ? ::unsetenv("VOR_FILELOCK_OVERRIDE") : ::setenv("VOR_FILELOCK_OVERRIDE", "1", 1);
        Handle handle = opened();
        const bool locked = isLocked();
        shim.calls();
        handle.reset();
        ::_exit(shim.calls() == calls && locked == (calls == "unlock close ") ? 0 : 1);
    };
    const std::tuple<const char*, bool, const char*> rows[] = {
        {nullptr, false, "unlock close "}, {"", false, "close "}, {"0", false, "close "}, {"1", true, "unlock close "}};
    for (const auto& row : rows)
        EXPECT_EXIT(std::apply(decides, row), ::testing::ExitedWithCode(0), "") << &row - rows;
}
