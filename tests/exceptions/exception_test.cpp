#include "zel/zel.h"

#include "support/CapturedTrace.h"

#include <cerrno>
#include <memory>

#include <dlfcn.h>
#include <gtest/gtest.h>

using namespace ZEL::EXCEPTIONS;
using ZEL::RT::LocalText;

namespace {

std::string described(const std::string& name, int code, const std::string& message, const std::string& method,
                      const std::string& file, int line) {
    return "thrown!{ name: " + name + "; code: " + std::to_string(code) + "; message: " + message +
           "; method: " + method + "; file: " + file + "; line: " + std::to_string(line) + "; } ";
}

// As an exception of this class is built, given its place and copied; some are only told of while they are being built.
template <class E> void expectTraceOfThrow(const std::string& name, int code, bool alsoWhereThrown) {
    const CapturedTrace trace;
    EXPECT_THROW(throwException(E("ZEL", -1001, "code", "bad", nullptr, -1, nullptr), "f.cpp", 12, "op"), E);
    const std::string placed = described(name, code, "bad", "op", "f.cpp", 12);
    EXPECT_EQ(trace.scopes(),
              described(name, code, "bad", "(null)", "(null)", -1) + (alsoWhereThrown ? placed : "") + placed);
}

TEST(Exception, AThrowIsTracedUnlessTracingItselfFailsSo) {
    expectTraceOfThrow<PolicyException>("PolicyException", -18, true);
    expectTraceOfThrow<LockException>("LockException", -21, false);
    expectTraceOfThrow<BadAllocException>("BadAllocException", -10, false);
    const CapturedTrace trace;
    const ZelException unknown("", -1, nullptr, nullptr, 0, nullptr);
    EXPECT_EQ(trace.scopes(), described("(null)", -1, "(null)", "(null)", "(null)", -1));
    EXPECT_NE(trace.text().find(" Thread "), std::string::npos);
    EXPECT_NE(trace.text().find(" ZelException::setSourceLocation => exception thrown!(): E"), std::string::npos);
}

TEST(Exception, LocationKeepsWhatIsNotReplaced) {
    const ZelException e("n", -1, "ZEL", -1001, "code", "bad", "f.cpp", 3, "op");
    const CapturedTrace trace;
    e.setSourceLocation(nullptr, 0, nullptr);
    EXPECT_EQ(e.getExecutionPoint(), "f.cpp::op() @3");
    e.setSourceLocation("g.cpp", -7, nullptr);
    EXPECT_EQ(e.getExecutionPoint(), "g.cpp::op() @3");
    EXPECT_EQ(trace.scopes(),
              described("n", -1, "bad", "op", "f.cpp", 3) + described("n", -1, "bad", "op", "g.cpp", 3));
    const ZelException unknown("n", -1, "ZEL", -1001, "code", "bad", nullptr, -4, nullptr);
    EXPECT_TRUE(unknown.getSourceLine() == -1 && unknown.getSourceFile() == nullptr);
    EXPECT_EQ(unknown.getExecutionPoint(), "Unknown Location");
}

TEST(Exception, MessageComesFromItsPartsOrItsEntry) {
    const auto entryOf = [](const auto& e) {
        return e.getCatalogName() + '|' + std::to_string(e.getEntryCode()) + '|' + e.getEntryName() + '|' +
               e.getEntryText() + '|';
    };
    const auto answers = [&](const ZelException& e) { return entryOf(e) + e.getErrorText() + '|' + e.what(); };
    const LocalText entry("OTHER", 7, "entry", "localised");
    EXPECT_EQ(answers(ZelException("n", -1, "ZEL", -1001, "code", "bad", nullptr, -1, nullptr)),
              "ZEL|-1001|code|code|bad|bad"); // the entry text falls back to the entry's name
    EXPECT_EQ(answers(ZelException("n", -1, &entry, nullptr, -1, nullptr)),
              "OTHER|7|entry|localised|localised|localised");
    EXPECT_EQ(answers(ZelException("n", -1, nullptr, nullptr, -1, nullptr)), "|0||||");
    EXPECT_EQ(answers(ZelException(nullptr, -1, nullptr, 5, nullptr, nullptr, nullptr, -1, nullptr)), "|5||||");

    const auto parts = [&](const ZEL::RT::ILocalizable& e) { return entryOf(e) + e.getEntryLocale(); };
    const LocalText full("ZEL", 7, "name", "text", "de");
    EXPECT_EQ(parts(full) + full.toString(), "ZEL|7|name|text|detext");
    EXPECT_EQ(parts(LocalText("ZEL", 7, "name", "text")), "ZEL|7|name|text|");
    EXPECT_EQ(parts(LocalText("ZEL", -1001, "bad input")), "ZEL|-1001|-1001|bad input|");
    EXPECT_EQ(parts(LocalText(static_cast<const ZEL::RT::ILocalizable&>(full))), "ZEL|7|name|text|de");
}

TEST(Exception, CopiesShareProperties) {
    IOException original("a.txt", "ZEL", -1085, "code", "bad", nullptr, -1, nullptr);
    const IOException copy(original);
    const std::unique_ptr<ZelException> clone(copy.clone());
    clone->assignProperty("k", "v");
    original.setFileName("b.txt");
    EXPECT_EQ(original.retrieveProperty("k") + copy.getFileName() + copy.retrieveProperty("never set"), "vb.txt");
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
        throwException(IOException(std::string(5000, 'x'), "ZEL", -1, "", "", nullptr, -1, nullptr), "f", 1, "m");
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
    void* const plugin = ::dlopen(ZEL_TEST_PLUGIN, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(plugin, nullptr) << ::dlerror();
    try {
        reinterpret_cast<void (*)(const char*)>(::dlsym(plugin, "failToOpen"))("a.txt");
        FAIL() << "nothing was thrown";
    } catch (const IOException& e) {
        EXPECT_EQ(e.getFileName(), "a.txt");
        EXPECT_NE(dynamic_cast<const SystemException*>(static_cast<const ZelException*>(&e)), nullptr);
    }
    ::dlclose(plugin);
}

} // namespace
