#include "zel/exceptions/IOException.h"
#include "zel/exceptions/NullPointerException.h"
#include "zel/exceptions/PassPhrasePolicyException.h"
#include "zel/persistence/LocalFileImpl.h"

#include "support/CapturedTrace.h"
#include "support/ChildProcess.h"
#include "support/FaultShim.h"
#include "support/Slots.h"
#include "support/TemporaryDirectory.h"

#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <typeinfo>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>
#include <utime.h>

using namespace ZEL::RT;
using namespace ZEL::EXCEPTIONS;

namespace {

using Lock = SmartPointer<FileLockImpl>;

// A text that is its own marshalled form, and may refuse to be replaced.
struct Note : ZEL::Marshallable {
    std::string text;
    std::function<void()> refuse;
    void unmarshal(const std::string& contents) override {
        if (refuse)
            refuse();
        text = contents;
    }
    std::string marshal() const override { return text; }
};

} // namespace

TEST(LocalFile, KeepsTheSlotsOfItsInterface) {
    using F = ILocalFile;
    const std::size_t slots[] = {
        slotOf(&F::getFileName),
        slotOf(static_cast<void (F::*)(const std::string&)>(&F::save)),
        slotOf(static_cast<void (F::*)(const std::string&)>(&F::append)),
        slotOf(static_cast<std::string (F::*)()>(&F::retrieve)),
        slotOf(static_cast<bool (F::*)(ZEL::Marshallable&)>(&F::update)),
        slotOf(&F::getFileSize),
        slotOf(static_cast<bool (F::*)()>(&F::isStale)),
        slotOf(&F::writeLock),
        slotOf(&F::readLock),
        slotOf(static_cast<std::string (F::*)(const Lock&)>(&F::retrieve)),
        slotOf(static_cast<void (F::*)(const Lock&, const std::string&)>(&F::append)),
        slotOf(static_cast<void (F::*)(const Lock&, const std::string&)>(&F::save)),
        slotOf(static_cast<void (F::*)(const Lock&, const ZEL::Marshallable&)>(&F::save)),
        slotOf(static_cast<bool (F::*)(const Lock&, ZEL::Marshallable&)>(&F::update)),
        slotOf(static_cast<bool (F::*)(const Lock&)>(&F::isStale)),
    };
    EXPECT_EQ(slotOf(&F::toString), 0u);
    std::size_t expected = 3; // behind toString and the destructor's two
    for (const std::size_t slot : slots)
        EXPECT_EQ(slot, expected++);
}

TEST(LocalFile, EachOperationCostsTheseCallsAndOpensTheseScopes) {
    const TemporaryDirectory directory;
    const SmartPointer<ILocalFile> file = getLocalFile(directory.file("file"));
    EXPECT_EQ(file->toString(), "TODO");
    EXPECT_EQ(file->getFileName(), directory.path("file"));
    Note note;
    bool exists = false;
    const Lock held = file->writeLock();
    const std::string lock = "FileLockImpl obtainLock ";
    const std::string release = "~FileLockImpl releaseLock ";
    const struct {
        std::function<void()> action;
        std::string calls;
        std::string scopes;
    } rows[] = {
        {[&] { file->save("text"); }, "open(66) cloexec wrlock truncate(0) rewind write(4) sync unlock close ",
         "save " + lock + "save saveContents saveContents getStats " + release},
        {[&] { file->append("s"); }, "open(66) cloexec wrlock end write(1) sync unlock close ",
         lock + "appendContents saveContents getStats " + release},
        {[&] { file->retrieve(); }, "open(0) cloexec rdlock end rewind read(5) unlock close ",
         "retrieve " + lock + "retrieve readContents readContents getStats " + release},
        {[&] { file->update(note); }, "", "update isStale staleStats "},
        {[&] { file->getFileSize(exists); }, "", "getFileSize getStats "},
        {[&] { file->save(held, note); }, "truncate(0) rewind write(0) sync ",
         "save save saveContents saveContents getStats "},
        {[&] { file->append(held, ""); }, "end write(0) sync ", "appendContents saveContents getStats "},
        {[&] { file->update(held, note); }, "", "update "},
        {[&] { file->isStale(held); }, "", "staleStats "},
        {[&] { LocalFileImpl(directory.path("")); }, "", "~LocalFileImpl "},
    };
    for (const auto& row : rows) {
        FaultShim shim;
        shim.now = 1000;
        const CapturedTrace trace;
        row.action();
        EXPECT_EQ(shim.calls(), row.calls) << row.scopes;
        std::istringstream lines(trace.text());
        std::string scopes;
        for (std::string line; std::getline(lines, line);)
            if (const auto end = line.find("()(): Entering"); end != std::string::npos) {
                const auto start = line.find("FileLockImpl::") + std::string("FileLockImpl::").size();
                scopes += line.substr(start, end - start) + " ";
            }
        EXPECT_EQ(scopes, row.scopes);
    }
}

TEST(LocalFile, NoticesWhatOthersChangeAndNotWhatItWroteItself) {
    const TemporaryDirectory directory;
    const std::string path = directory.file("file", "text");
    FaultShim shim;
    shim.now = 1000;
    const SmartPointer<ILocalFile> one = getLocalFile(path);
    const SmartPointer<ILocalFile> other = getLocalFile(path);
    Note note;
    EXPECT_TRUE(one->isStale()) << "nothing is known of it yet";
    EXPECT_FALSE(one->update(note)) << "this second has been checked";
    shim.now = 1001;
    EXPECT_TRUE(one->update(note));
    EXPECT_EQ(note.text, "text");
    EXPECT_EQ(other->retrieve(), "text");

    one->save("changed");
    shim.now = 1002;
    EXPECT_FALSE(one->isStale());
    EXPECT_TRUE(other->isStale());
    {
        const Lock lock = other->readLock();
        EXPECT_TRUE(other->update(lock, note));
        EXPECT_EQ(note.text, "changed");
        EXPECT_FALSE(other->update(lock, note));
        shim.now = 1003;
        EXPECT_FALSE(other->isStale(lock));
    }

    bool exists = false;
    EXPECT_EQ(one->getFileSize(exists), 7);
    EXPECT_TRUE(exists);
    one->save("");
    EXPECT_FALSE(getLocalFile(path)->isStale()) << "an empty file is as good as none";
    EXPECT_EQ(one->getFileSize(exists), 0);
    EXPECT_TRUE(exists);
    ::unlink(path.c_str());
    EXPECT_EQ(one->getFileSize(exists), 0);
    EXPECT_FALSE(exists);
    shim.now = 1004;
    EXPECT_TRUE(one->isStale());
    EXPECT_THROW(one->retrieve(), IOException);
}

TEST(LocalFile, SwallowsFailuresOfReadingButNotOfWriting) {
    const TemporaryDirectory directory;
    const SmartPointer<ILocalFile> file = getLocalFile(directory.file("file", "text"));
    FaultShim shim;
    shim.now = 1000;
    shim.fail(FaultShim::Read, EIO);
    EXPECT_EQ(file->retrieve(), "");
    EXPECT_TRUE(file->isStale()) << "a failed read is no new reference";
    shim.fail(FaultShim::Sync, EIO);
    EXPECT_THROW(file->save("x"), IOException);
    EXPECT_EQ(file->retrieve(Lock(new FileLockImpl)), "");
    EXPECT_THROW(file->append(Lock(new FileLockImpl), "x"), IOException);
    CapturedTrace(); // leaves an empty ring
    ZEL::TRACE::setTraceCallback([](const char* line, int) {
        const bool failing = std::string(line).find("getStats") != std::string::npos;
        return failing ? throw IOException("", "ZEL", -1, "code", "no trace", nullptr, -1, nullptr) : 0;
    });
    bool exists = true;
    EXPECT_EQ(file->getFileSize(exists), -1);
    EXPECT_FALSE(exists);
    ZEL::TRACE::setTraceDefault();
    EXPECT_THROW(file->save(Lock(), "x"), NullPointerException);
    EXPECT_THROW(file->retrieve(Lock()), NullPointerException);
    EXPECT_THROW(file->isStale(Lock()), NullPointerException);
    Note note;
    EXPECT_THROW(file->update(Lock(), note), NullPointerException);
}

TEST(LocalFile, ARefusedUpdateIsOfferedAgainOnlyWhenAskedFor) {
    const TemporaryDirectory directory;
    const std::string path = directory.file("file", "text");
    const auto policy = [](int code) {
        return [code] { throw PolicyException("ZEL", code, "code", "refused", nullptr, -1, nullptr); };
    };
    const auto derived = [] { throw PassPhrasePolicyException("ZEL", -1082, "code", "refused", nullptr, -1, nullptr); };
    const auto other = [] { throw IOException("", "ZEL", -1082, "code", "refused", nullptr, -1, nullptr); };
    const struct {
        const char* name;
        std::function<void()> refuse;
        bool underLock;
        const char* thrown;
        bool again;
    } rows[] = {
        {"asked for", policy(-1082), false, "PolicyException", true},
        {"asked for by a subclass", derived, false, "PassPhrasePolicyException", true},
        {"another reason", policy(-1083), false, "PolicyException", false},
        {"another class", other, false, "IOException", false},
        {"under a lock", policy(-1082), true, "PolicyException", false},
    };
    FaultShim shim;
    shim.now = 1000;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const SmartPointer<ILocalFile> file = getLocalFile(path);
        Note note;
        note.refuse = row.refuse;
        try {
            row.underLock ? file->update(file->readLock(), note) : file->update(note);
            ADD_FAILURE() << "nothing thrown";
        } catch (const ZelException& e) {
            EXPECT_EQ(e.getExceptionName(), row.thrown);
            EXPECT_EQ(typeid(e) == typeid(PolicyException), std::string(row.thrown) != "IOException");
        }
        EXPECT_EQ(file->isStale(), row.again);
    }
}

TEST(LocalFile, NoUpdateOfEightProcessesIsLost) {
    if (threadSanitizer)
        GTEST_SKIP() << "counts the locks that a child makes anew as held since the fork";
    const TemporaryDirectory directory;
    const std::string path = directory.file("counter", "0");
    std::vector<std::unique_ptr<ChildProcess>> children;
    for (int i = 0; i < 8; ++i)
        children.push_back(std::make_unique<ChildProcess>([&](ChildProcess::Parent& parent) {
            parent.report();
            const SmartPointer<ILocalFile> file = getLocalFile(path);
            for (int round = 0; round < 50;) {
                const FaultShim sleepless;
                try {
                    const Lock lock = file->writeLock();
                    file->save(lock, std::to_string(std::stoi(file->retrieve(lock)) + 1));
                    ++round;
                } catch (const IOException& e) {
                    if (e.getEntryCode() != -1086)
                        return 1;
                }
            }
            return 0;
        }));
    for (const auto& child : children)
        EXPECT_EQ(child->join(), 0);
    EXPECT_EQ(TemporaryDirectory::contents(path), "400");
}
