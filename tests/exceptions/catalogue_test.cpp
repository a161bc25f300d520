// The identity of every exception class, as clients rely on it. The rows are written by hand: they are the contract.
#include "zel/zel.h"

#include <functional>
#include <memory>
#include <sstream>
#include <typeinfo>

#include <gtest/gtest.h>

using namespace ZEL::EXCEPTIONS;
using ZEL::RT::LocalText;

namespace {

#define PARTS "ZEL", -1234, "code", "text", nullptr, -1, nullptr

struct BareRuntime : RuntimeException {
    BareRuntime() : RuntimeException("BareRuntime", -2, PARTS) {}
    BareRuntime* clone() const override { return new BareRuntime(*this); }
};

using Made = std::unique_ptr<ZelException>;

struct Row {
    const char* className;
    std::function<ZelException*()> make;
    const char* storedName;
    const char* codes; // that it answers to, its own first
    const char* names; // that it answers to
};

const Row rows[] = {
    {"ZelException", [] { return new ZelException("given", -1, PARTS); }, "given", "-1", "ZelException"},
    {"RuntimeException", [] { return new BareRuntime; }, "BareRuntime", "-2 -1", "RuntimeException ZelException"},
    {"ObjectException", [] { return new ObjectException("t", "n", PARTS); }, "ObjectNotFoundException", "-3 -2 -1",
     "ObjectNotFoundException RuntimeException ZelException"},
    {"ObjectNotFoundException", [] { return new ObjectNotFoundException("t", "n", PARTS); }, "ObjectNotFoundException",
     "-4 -3 -2 -1", "ObjectNotFoundException RuntimeException ZelException"},
    {"ObjectAlreadyExistsException", [] { return new ObjectAlreadyExistsException("t", "n", PARTS); },
     "ObjectAlreadyExistsException", "-5 -3 -2 -1",
     "ObjectAlreadyExistsException ObjectNotFoundException RuntimeException ZelException"},
    {"InstantiationException", [] { return new InstantiationException("t", "n", PARTS); }, "InstantiationException",
     "-6 -3 -2 -1", "InstantiationException ObjectNotFoundException RuntimeException ZelException"},
    {"SerializationException", [] { return new SerializationException(PARTS); }, "SerializationException",
     "-7 -8 -2 -1", "SerializationException SystemException RuntimeException ZelException"},
    {"XmlException", [] { return new XmlException(PARTS); }, "SerializationException", "-7 -8 -2 -1",
     "SerializationException SystemException RuntimeException ZelException"},
    {"SystemException", [] { return new SystemException(PARTS); }, "SystemException", "-8 -2 -1",
     "SystemException RuntimeException ZelException"},
    {"IOException", [] { return new IOException("f", PARTS); }, "IOException", "-9 -8 -2 -1",
     "IOException RuntimeException ZelException"},
    {"BadAllocException", [] { return new BadAllocException(PARTS); }, "BadAllocException", "-10 -8 -2 -1",
     "BadAllocException SystemException RuntimeException ZelException"},
    {"NullPointerException", [] { return new NullPointerException(PARTS); }, "NullPointerException", "-11 -2 -1",
     "NullPointerException RuntimeException ZelException"},
    {"InvalidArgumentException", [] { return new InvalidArgumentException(PARTS); }, "InvalidArgumentException",
     "-13 -2 -1", "InvalidArgumentException RuntimeException ZelException"},
    {"AccessDeniedException", [] { return new AccessDeniedException(PARTS); }, "AccessDeniedException", "-14 -2 -1",
     "AccessDeniedException RuntimeException ZelException"},
    {"NoSuchMethodException", [] { return new NoSuchMethodException(PARTS); }, "NoSuchMethodException", "-15 -20 -1",
     "NoSuchMethodException LogicException ZelException"},
    {"ClassCastException", [] { return new ClassCastException(PARTS); }, "ClassCastException", "-16 -8 -2 -1",
     "ClassCastException SystemException RuntimeException ZelException"},
    {"UnexpectedException", [] { return new UnexpectedException(PARTS); }, "UnexpectedException", "-17 -20 -1",
     "UnexpectedException LogicException ZelException"},
    {"PolicyException", [] { return new PolicyException(PARTS); }, "PolicyException", "-18 -2 -1",
     "PolicyException RuntimeException ZelException"},
    {"InvalidHandleException", [] { return new InvalidHandleException(PARTS); }, "InvalidHandleException", "-19 -2 -1",
     "InvalidHandleException RuntimeException ZelException"},
    {"LogicException", [] { return new LogicException(PARTS); }, "LogicException", "-20 -1",
     "LogicException ZelException"},
    {"LockException", [] { return new LockException(PARTS); }, "LockException", "-21 -2 -1",
     "LockException RuntimeException ZelException"},
    {"OperationNotSupportedException", [] { return new OperationNotSupportedException("o", PARTS); },
     "OperationNotSupportedException", "-22 -23 -8 -2 -1", "OperationException RuntimeException ZelException"},
    {"OperationException", [] { return new OperationException("o", PARTS); }, "OperationException", "-23 -8 -2 -1",
     "OperationException RuntimeException ZelException"},
    {"OperationAbortedException", [] { return new OperationAbortedException("o", PARTS); }, "OperationAbortedException",
     "-24 -23 -8 -2 -1", "OperationAbortedException OperationException RuntimeException ZelException"},
    {"OperationFailedException", [] { return new OperationFailedException("o", PARTS); }, "OperationFailedException",
     "-25 -23 -8 -2 -1", "OperationFailedException OperationException RuntimeException ZelException"},
    {"PassPhrasePolicyException", [] { return new PassPhrasePolicyException(PARTS); }, "PassPhrasePolicyException",
     "-26 -18 -2 -1", "PassPhrasePolicyException PolicyException RuntimeException ZelException"},
    {"ComparisonFailedException", [] { return new ComparisonFailedException(PARTS); }, "ComparisionFailedException",
     "-27 -2 -1", "ComparisionFailedException RuntimeException ZelException"},
};

std::string answeredCodes(const ZelException& e) {
    std::string result;
    for (int code = -30; code <= 1; ++code)
        if (e.instanceOf(code))
            result += ' ' + std::to_string(code);
    return result;
}

std::string answeredNames(const ZelException& e) {
    std::string result;
    for (const char* odd : {"ComparisionFailedException", "", "zelexception", "IOExceptio", "IOException "})
        if (e.instanceOf(std::string(odd)))
            result += std::string(" ") + odd;
    for (const Row& other : rows)
        if (e.instanceOf(std::string(other.className)))
            result += std::string(" ") + other.className;
    return result;
}

// The same words in one order.
std::string sorted(const std::string& words) {
    std::istringstream in(words);
    std::vector<std::string> list{std::istream_iterator<std::string>(in), {}};
    std::sort(list.begin(), list.end());
    std::string result;
    for (const std::string& word : list)
        result += word + ' ';
    return result;
}

TEST(Catalogue, EveryClassAgainstEveryCodeAndName) {
    for (const Row& row : rows) {
        SCOPED_TRACE(row.className);
        const Made made(row.make());
        EXPECT_EQ(sorted(answeredCodes(*made)), sorted(row.codes));
        EXPECT_EQ(sorted(answeredNames(*made)), sorted(row.names));
        EXPECT_EQ(made->getExceptionName(), row.storedName);
        EXPECT_EQ(made->getExceptionCode(), std::stoi(row.codes));
        EXPECT_STREQ(made->what(), "text");
        EXPECT_EQ(made->getEntryCode(), -1234);
        const Made clone(made->clone());
        const ZelException& original = *made;
        const ZelException& copy = *clone;
        EXPECT_EQ(typeid(copy), typeid(original));
    }
}

TEST(Catalogue, DefaultMessages) {
    const char* const badArguments = "The arguments specified in the operation were invalid";
    const struct {
        Made made;
        int code;
        const char* text;
    } defaults[] = {
        {Made(new BadAllocException("f", 1, "m")), -1001, "A memory allocation error occurred"},
        {Made(new NullPointerException("f", 1, "m")), -1004, "A NULL pointer was encountered during the operation"},
        {Made(new ClassCastException("f", 1, "m")), -1005, "Cast conversion failed"},
        {Made(new InvalidArgumentException("f", 1, "m")), -1006, badArguments},
        {Made(new ComparisonFailedException("f", 1, "m")), -1006, badArguments},
        {Made(new OperationNotSupportedException("export", "f", 1, "m")), -1007,
         "The requested operation is either not supported in this context or is not implemented"},
        {Made(new InvalidHandleException("f", 1, "m")), -1039, "Invalid Handle"},
        {Made(new UnexpectedException("f", 1, "m")), -1040, "Unknown error from underlying code"},
        {Made(new SerializationException("message", "f", 1, "m")), -1056, "Error converting string to object"},
    };
    for (const auto& row : defaults) {
        SCOPED_TRACE(row.made->getExceptionName());
        EXPECT_STREQ(row.made->what(), row.text);
        EXPECT_EQ(row.made->getEntryCode(), row.code);
        EXPECT_EQ(row.made->getCatalogName(), "ZEL");
        EXPECT_EQ(row.made->getEntryName(), "code");
        EXPECT_EQ(row.made->getExecutionPoint(), "f::m() @1");
    }
}

TEST(Catalogue, LeadingArgumentsBecomeProperties) {
    const LocalText text("OTHER", 7, "entry", "localised");
    const struct {
        Made made;
        const char* property;
        const char* value;
    } cases[] = {
        {Made(new IOException("a.txt", PARTS)), "FileName", "a.txt"},
        {Made(new IOException("a.txt", &text, "f", 1, "m")), "FileName", "a.txt"},
        {Made(new ObjectException("type", "name", PARTS)), "ObjectType", "type"},
        {Made(new InstantiationException("type", "name", &text, "f", 1, "m")), "ObjectType", "type"},
        {Made(new ObjectNotFoundException("type", "name", &text, "f", 1, "m")), "ObjectName", "name"},
        {Made(new ObjectAlreadyExistsException("type", "name", PARTS)), "ObjectName", "name"},
        {Made(new OperationException("export", &text, "f", 1, "m")), "OperationName", "export"},
        {Made(new OperationFailedException("export", PARTS)), "OperationName", "export"},
        {Made(new OperationAbortedException("export", &text, "f", 1, "m")), "OperationName", "export"},
        {Made(new OperationNotSupportedException("export", "f", 1, "m")), "OperationName", "export"},
        {Made(new SerializationException("why", PARTS)), "SystemMessage", "why"},
        {Made(new SerializationException("why", &text, "f", 1, "m")), "SystemMessage", "why"},
        {Made(new SystemException(5, PARTS)), "SystemError", "5"},
        {Made(new XmlException(&text, "f", 1, "m")), "SystemMessage", ""},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.made->getExceptionName() + " " + row.property);
        EXPECT_EQ(row.made->retrieveProperty(row.property), row.value);
    }
    EXPECT_EQ(SystemException(-5, PARTS).getSystemError(), -5);
    EXPECT_THROW(SystemException(PARTS).getSystemError(), InvalidArgumentException);
}

} // namespace
