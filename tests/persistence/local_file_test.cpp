#include "zel/exceptions/LogicException.h"
#include "zel/exceptions/NullPointerException.h"
#include "zel/exceptions/PassPhrasePolicyException.h"

#include "persistence/FileTest.h"
#include "support/Slots.h"

using namespace ZEL::RT;
using namespace ZEL::EXCEPTIONS;
using LocalFile = FileTest;

namespace {

using Lock = SmartPointer<FileLockImpl>;

// A text that is its own marshalled form, and may refuse to be replaced.
struct Note : ZEL::Marshallable {
    std::string text;
    void (*refuse)() = [] {};
    void unmarshal(const std::string& contents) override { refuse(), text = contents; }
    std::string marshal() const override { return text; }
};

template <class E, int code> void refuse() { throw E("ZEL", code, "code", "refused", nullptr, -1, nullptr); }

} // namespace

TEST_F(LocalFile, KeepsTheSlotsOfItsInterface) {
    using I = ILocalFile;
    using Text = const std::string&;
    using By = const Lock&;
    EXPECT_EQ(listed(slotOf(&I::toString), slotOf(&I::getFileName), slotOf<void (I::*)(Text)>(&I::save),
                     slotOf<void (I::*)(Text)>(&I::append), slotOf<std::string (I::*)()>(&I::retrieve),
                     slotOf<bool (I::*)(ZEL::Marshallable&)>(&I::update), slotOf(&I::getFileSize),
                     slotOf<bool (I::*)()>(&I::isStale), slotOf(&I::writeLock), slotOf(&I::readLock),
                     slotOf<std::string (I::*)(By)>(&I::retrieve), slotOf<void (I::*)(By, Text)>(&I::append),
                     slotOf<void (I::*)(By, Text)>(&I::save),
                     slotOf<void (I::*)(By, const ZEL::Marshallable&)>(&I::save),
                     slotOf<bool (I::*)(By, ZEL::Marshallable&)>(&I::update), slotOf<bool (I::*)(By)>(&I::isStale)),
              "0 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 "); // the destructor takes two
}

TEST_F(LocalFile, NoticesWhatOthersChangeAtTheCostOfTheseCallsAndScopes) {
    const auto one = getLocalFile("file"), other = getLocalFile("file");
    EXPECT_EQ(one->toString() + one->getFileName() + other->retrieve(), "TODOfilea\nbc");
    const std::string lock = "FileLockImpl obtainLock ", release = "~FileLockImpl releaseLock ";
    Note note;
    Lock held;
    const auto at = [&](int now, auto action) { return second = now, outcomeOf(action); };
    const auto stale = [&] { return one->isStale(); };
    const auto update = [&] { return one->update(note); };
    const auto size = [&] {
        bool exists = true;
        const int bytes = one->getFileSize(exists);
        return exists ? bytes : 100 + bytes;
    };
    check({
        {at(1000, stale), "1 77 isStale staleStats getStats "}, // nothing is known of it yet
        {at(1000, update), "0 77 update isStale staleStats "},  // this second has been checked
        {at(1001, update),
         "1 77 open(0) cloexec rdlock end rewind read(5) unlock close update isStale staleStats getStats retrieve " +
             lock + "retrieve readContents readContents getStats " + release},
        {at(1001, [&] { return one->save(note.text + "?!"), 0; }),
         "0 77 open(66) cloexec wrlock truncate(0) rewind write(6) sync unlock close save " + lock +
             "save saveContents saveContents getStats " + release},
        {at(1002, stale), "0 77 isStale staleStats getStats "},
        {at(1002, [&] { return other->isStale(); }), "1 77 isStale staleStats getStats "},
        {at(1002, [&] { return held = other->readLock(), other->update(held, note); }) + note.text,
         "1 77 open(0) cloexec rdlock end rewind read(6) " + lock +
             "update retrieve readContents readContents getStats a\nbc?!"},
        {at(1002, [&] { return other->update(held, note); }), "0 77 update "},
        {at(1003, [&] { return other->isStale(held); }), "0 77 staleStats getStats "},
        {at(1003, [&] { return held = Lock(), 0; }), "0 77 unlock close " + release},
        {at(1003, [&] { return one->append("."), 0; }), "0 77 open(66) cloexec wrlock end write(1) sync unlock close " +
                                                            lock + "appendContents saveContents getStats " + release},
        {at(1004, stale), "0 77 isStale staleStats getStats "},
        {at(1004, size), "7 77 getFileSize getStats "},
        {at(1004, [&] { return note.text = "", one->save(one->writeLock(), note), 0; }),
         "0 77 open(66) cloexec wrlock truncate(0) rewind write(0) sync unlock close " + lock +
             "save save saveContents saveContents getStats " + release},
        {at(1004, [&] { return getLocalFile("file")->isStale(); }), "0 77 isStale staleStats getStats ~LocalFileImpl "},
        {at(1004, size), "0 77 getFileSize getStats "},
        {at(1004, [&] { return one->retrieve().empty() ? 0 : 1; }),
         "0 77 open(0) cloexec rdlock end rewind read(0) unlock close retrieve " + lock +
             "retrieve readContents readContents getStats " + release},
        {at(1005, [&] { return ::unlink("file"), size(); }),
         "100 2 getFileSize getStats Error -1 reading stats file; "},
        {at(1005, stale), "1 2 isStale staleStats getStats Error -1 reading stats file; "},
    });
    EXPECT_THROW(one->retrieve(), IOException);
}

TEST_F(LocalFile, SwallowsFailuresOfReadingButNotOfWriting) {
    const auto file = getLocalFile("file");
    const Lock closed(new FileLockImpl);
    FaultShim shim({{"read", EIO}, {"sync", EIO}});
    EXPECT_EQ(file->retrieve() + file->retrieve(closed), "");
    EXPECT_TRUE(file->isStale()) << "a failed read is no new reference";
    EXPECT_THROW(file->save("x"), IOException);
    EXPECT_THROW(file->append(closed, "x"), IOException);
    Note note;
    EXPECT_THROW(file->save(Lock(), "x"), NullPointerException);
    EXPECT_THROW(file->retrieve(Lock()), NullPointerException);
    EXPECT_THROW(file->isStale(Lock()), NullPointerException);
    EXPECT_THROW(file->update(Lock(), note), NullPointerException);
    bool exists = true;
    CapturedTrace(); // leaves an empty ring
    ZEL::TRACE::setTraceCallback(
        [](const char*, int) -> int { throw IOException("", "ZEL", -1, "", "", nullptr, -1, nullptr); });
    EXPECT_TRUE(file->getFileSize(exists) == -1 && !exists);
    ZEL::TRACE::setTraceDefault();
}

TEST_F(LocalFile, ARefusedUpdateIsOfferedAgainOnlyWhenAskedFor) {
    FaultShim shim;
    shim.now = 1000;
    // What is thrown, and whether the file is stale then.
    const auto update = [&](void (*refuse)(), bool underLock) -> std::string {
        const auto file = getLocalFile("file");
        Note note;
        note.refuse = refuse;
        try {
            underLock ? file->update(file->readLock(), note) : file->update(note);
        } catch (const ZelException& e) {
            EXPECT_EQ(dynamic_cast<const PassPhrasePolicyException*>(&e), nullptr) << "not cut to a PolicyException";
            return e.getExceptionName() + " " + listed(file->isStale());
        }
        return "nothing";
    };
    check({{update(refuse<PolicyException, -1082>, false), "PolicyException 1 "},
           {update(refuse<PassPhrasePolicyException, -1082>, false), "PassPhrasePolicyException 1 "},
           {update(refuse<PolicyException, -1083>, false), "PolicyException 0 "},
           {update(refuse<LogicException, -1082>, false), "LogicException 0 "},
           {update(refuse<PolicyException, -1082>, true), "PolicyException 0 "}});
}
