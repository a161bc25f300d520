#include "zel/zel.h"

#include "support/CapturedTrace.h"

#include <cerrno>

#include <dlfcn.h>
#include <gtest/gtest.h>

using namespace ZEL::EXCEPTIONS;
using ZEL::RT::LocalText;

namespace {

using Lines = std::vector<std::string>;

Lines described(const std::string& name, int code, const std::string& message, const std::string& method,
                const std::string& file, int line) {
    return {"Entering",          "name: " + name, "code: " + std::to_string(code), "message: " + message,
            "method: " + method, "file: " + file, "line: " + std::to_string(line), "Leaving"};
}

Lines operator+(Lines a, const Lines& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

template <class E> Lines traceOfThrow() {
    const CapturedTrace trace;
    EXPECT_THROW(throwException(E("ZEL", -1001, "code", "bad", nullptr, -1, nullptr), "f.cpp", 12, "op"), E);
    return trace.texts();
}

TEST(Exception, AThrowIsTracedWhenBuiltLocatedAndCopied) {
    const Lines built = described("PolicyException", -18, "bad", "(null)", "(null)", -1);
    const Lines placed = described("PolicyException", -18, "bad", "op", "f.cpp", 12);
    EXPECT_EQ(traceOfThrow<PolicyException>(), built + placed + placed);
}

TEST(Exception, LockAndMemoryFailuresAreNotTracedWhereTheyAreThrown) {
    EXPECT_EQ(traceOfThrow<LockException>(), described("LockException", -21, "bad", "(null)", "(null)", -1) +
                                                 described("LockException", -21, "bad", "op", "f.cpp", 12));
    EXPECT_EQ(traceOfThrow<BadAllocException>(), described("BadAllocException", -10, "bad", "(null)", "(null)", -1) +
                                                     described("BadAllocException", -10, "bad", "op", "f.cpp", 12));
}

TEST(Exception, TraceNamesWhatIsNotKnown) {
    const CapturedTrace trace;
    const ZelException e("", -1, nullptr, nullptr, 0, nullptr);
    EXPECT_EQ(trace.texts(), described("(null)", -1, "(null)", "(null)", "(null)", -1));
    EXPECT_NE(trace.text().find(" Thread "), std::string::npos);
    EXPECT_NE(trace.text().find(" ZelException::setSourceLocation => exception thrown!(): Entering"),
              std::string::npos);
}

TEST(Exception, LocationKeepsWhatIsNotReplaced) {
    const ZelException e("n", -1, "ZEL", -1001, "code", "bad", "f.cpp", 3, "op");
    const CapturedTrace trace;
    e.setSourceLocation(nullptr, 0, nullptr);
    EXPECT_EQ(e.getExecutionPoint(), "f.cpp::op() @3");
    e.setSourceLocation("g.cpp", -7, nullptr);
    EXPECT_EQ(e.getExecutionPoint(), "g.cpp::op() @3");
    EXPECT_EQ(trace.texts(), described("n", -1, "bad", "op", "f.cpp", 3) + described("n", -1, "bad", "op", "g.cpp", 3));
    const ZelException unknown("n", -1, "ZEL", -1001, "code", "bad", nullptr, -4, nullptr);
    EXPECT_EQ(unknown.getSourceLine(), -1);
    EXPECT_EQ(unknown.getSourceFile(), nullptr);
    EXPECT_EQ(unknown.getExecutionPoint(), "Unknown Location");
}

TEST(Exception, MessageComesFromItsPartsOrItsEntry) {
    struct Answers {
        std::string catalog, name, entryText, errorText, what;
        int code;
        bool operator==(const Answers& o) const {
            return std::tie(catalog, name, entryText, errorText, what, code) ==
                   std::tie(o.catalog, o.name, o.entryText, o.errorText, o.what, o.code);
        }
    };
    const auto answers = [](const ZelException& e) {
        return Answers{e.getCatalogName(), e.getEntryName(), e.getEntryText(),
                       e.getErrorText(),   e.what(),         e.getEntryCode()};
    };
    const LocalText entry("OTHER", 7, "entry", "localised");
    EXPECT_TRUE(answers(ZelException("n", -1, "ZEL", -1001, "code", "bad", nullptr, -1, nullptr)) ==
                (Answers{"ZEL", "code", "code", "bad", "bad", -1001}))
        << "the entry text falls back to the entry's name";
    EXPECT_TRUE(answers(ZelException("n", -1, &entry, nullptr, -1, nullptr)) ==
                (Answers{"OTHER", "entry", "localised", "localised", "localised", 7}));
    EXPECT_TRUE(answers(ZelException("n", -1, nullptr, nullptr, -1, nullptr)) == (Answers{"", "", "", "", "", 0}));
    EXPECT_TRUE(answers(ZelException(nullptr, -1, nullptr, 5, nullptr, nullptr, nullptr, -1, nullptr)) ==
                (Answers{"", "", "", "", "", 5}));
}

TEST(Exception, CopiesShareProperties) {
    IOException original("a.txt", "ZEL", -1085, "code", "bad", nullptr, -1, nullptr);
    const IOException copy(original);
    const std::unique_ptr<ZelException> clone(copy.clone());
    clone->assignProperty("k", "v");
    EXPECT_EQ(original.retrieveProperty("k"), "v");
    original.setFileName("b.txt");
    EXPECT_EQ(copy.getFileName(), "b.txt");
    EXPECT_EQ(copy.retrieveProperty("never set"), "");
    EXPECT_EQ(clone->getErrorTime(), original.getErrorTime());
    try {
        throwException(original, "f.cpp", 1, "op");
    } catch (const IOException& caught) {
        original.assignProperty("k", "w");
        EXPECT_EQ(caught.retrieveProperty("k"), "w");
    }
    EXPECT_EQ(createExceptionData()->toString(), "");
}

TEST(Exception, ErrnoSurvivesBuildingThrowingAndCopying) {
    const CapturedTrace trace;
    errno = EXDEV;
    try {
        throwException(IOException(std::string(5000, 'x'), "ZEL", -1, "code", "bad", nullptr, -1, nullptr), "f", 1,
                       "m");
    } catch (const ZelException& e) {
        const std::unique_ptr<ZelException> clone(e.clone());
        EXPECT_EQ(errno, EXDEV);
    }
}

TEST(Exception, AFailingTraceDoesNotStopIt) {
    ZEL::TRACE::setTraceCallback([](const char*, int) -> int { throw std::runtime_error("callback"); });
    EXPECT_THROW(ZEL::RT::checkDeref(nullptr), NullPointerException);
    ZEL::TRACE::setTraceDefault();
}

TEST(Exception, IsCaughtByItsClassAcrossAPrivatePlugin) {
    void* plugin = ::dlopen(ZEL_TEST_PLUGIN, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(plugin, nullptr) << ::dlerror();
    const auto fail = reinterpret_cast<void (*)(const char*)>(::dlsym(plugin, "failToOpen"));
    ASSERT_NE(fail, nullptr);
    try {
        fail("a.txt");
        FAIL() << "nothing was thrown";
    } catch (const IOException& e) {
        EXPECT_EQ(e.getFileName(), "a.txt");
        EXPECT_NE(dynamic_cast<const SystemException*>(static_cast<const ZelException*>(&e)), nullptr);
    }
    ::dlclose(plugin);
}

TEST(LocalText, AnswersWithItsParts) {
    const auto parts = [](const ZEL::RT::ILocalizable& e) {
        return e.getCatalogName() + '|' + std::to_string(e.getEntryCode()) + '|' + e.getEntryName() + '|' +
               e.getEntryText() + '|' + e.getEntryLocale();
    };
    const LocalText full("ZEL", 7, "name", "text", "de");
    EXPECT_EQ(parts(full), "ZEL|7|name|text|de");
    EXPECT_EQ(parts(LocalText("ZEL", 7, "name", "text")), "ZEL|7|name|text|");
    EXPECT_EQ(parts(LocalText("ZEL", -1001, "bad input")), "ZEL|-1001|-1001|bad input|");
    EXPECT_EQ(parts(LocalText(static_cast<const ZEL::RT::ILocalizable&>(full))), "ZEL|7|name|text|de");
    EXPECT_EQ(full.toString(), "text");
}

} // namespace
