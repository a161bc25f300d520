// The identity of every exception class, as clients rely on it. The rows are written by hand: they are the contract.
#include "zel/zel.h"

#include <functional>
#include <memory>
#include <typeinfo>

#include <gtest/gtest.h>

using namespace ZEL::EXCEPTIONS;
using std::string_literals::operator""s;
using ZEL::RT::LocalText;

namespace {

#define PARTS "ZEL", -1234, "code", "text", nullptr, -1, nullptr

struct BareRuntime : RuntimeException {
    BareRuntime() : RuntimeException("BareException", -2, PARTS) {}
    BareRuntime* clone() const override { return new BareRuntime(*this); }
};

using Made = std::unique_ptr<ZelException>;

// Names without the "Exception" at their end.
struct Row {
    const char* className;
    std::function<ZelException*()> make;
    const char* storedName;
    const char* codes; // that it answers to, its own first
    const char* names; // that it answers to
};

// clang-format off
const Row rows[] = {
    {"Zel", [] { return new ZelException("GivenException", -1, PARTS); }, "Given", "-1", "Zel"},
    {"Runtime", [] { return new BareRuntime; }, "Bare", "-2 -1", "Runtime Zel"},
    {"Object", [] { return new ObjectException("t", "n", PARTS); }, "ObjectNotFound", "-3 -2 -1", "ObjectNotFound Runtime Zel"},
    {"ObjectNotFound", [] { return new ObjectNotFoundException("t", "n", PARTS); }, "ObjectNotFound", "-4 -3 -2 -1", "ObjectNotFound Runtime Zel"},
    {"ObjectAlreadyExists", [] { return new ObjectAlreadyExistsException("t", "n", PARTS); }, "ObjectAlreadyExists", "-5 -3 -2 -1", "ObjectAlreadyExists ObjectNotFound Runtime Zel"},
    {"Instantiation", [] { return new InstantiationException("t", "n", PARTS); }, "Instantiation", "-6 -3 -2 -1", "Instantiation ObjectNotFound Runtime Zel"},
    {"Serialization", [] { return new SerializationException(PARTS); }, "Serialization", "-7 -8 -2 -1", "Serialization System Runtime Zel"},
    {"Xml", [] { return new XmlException(PARTS); }, "Serialization", "-7 -8 -2 -1", "Serialization System Runtime Zel"},
    {"System", [] { return new SystemException(PARTS); }, "System", "-8 -2 -1", "System Runtime Zel"},
    {"IO", [] { return new IOException("f", PARTS); }, "IO", "-9 -8 -2 -1", "IO Runtime Zel"},
    {"BadAlloc", [] { return new BadAllocException(PARTS); }, "BadAlloc", "-10 -8 -2 -1", "BadAlloc System Runtime Zel"},
    {"NullPointer", [] { return new NullPointerException(PARTS); }, "NullPointer", "-11 -2 -1", "NullPointer Runtime Zel"},
    {"InvalidArgument", [] { return new InvalidArgumentException(PARTS); }, "InvalidArgument", "-13 -2 -1", "InvalidArgument Runtime Zel"},
    {"AccessDenied", [] { return new AccessDeniedException(PARTS); }, "AccessDenied", "-14 -2 -1", "AccessDenied Runtime Zel"},
    {"NoSuchMethod", [] { return new NoSuchMethodException(PARTS); }, "NoSuchMethod", "-15 -20 -1", "NoSuchMethod Logic Zel"},
    {"ClassCast", [] { return new ClassCastException(PARTS); }, "ClassCast", "-16 -8 -2 -1", "ClassCast System Runtime Zel"},
    {"Unexpected", [] { return new UnexpectedException(PARTS); }, "Unexpected", "-17 -20 -1", "Unexpected Logic Zel"},
    {"Policy", [] { return new PolicyException(PARTS); }, "Policy", "-18 -2 -1", "Policy Runtime Zel"},
    {"InvalidHandle", [] { return new InvalidHandleException(PARTS); }, "InvalidHandle", "-19 -2 -1", "InvalidHandle Runtime Zel"},
    {"Logic", [] { return new LogicException(PARTS); }, "Logic", "-20 -1", "Logic Zel"},
    {"Lock", [] { return new LockException(PARTS); }, "Lock", "-21 -2 -1", "Lock Runtime Zel"},
    {"OperationNotSupported", [] { return new OperationNotSupportedException("o", PARTS); }, "OperationNotSupported", "-22 -23 -8 -2 -1", "Operation Runtime Zel"},
    {"Operation", [] { return new OperationException("o", PARTS); }, "Operation", "-23 -8 -2 -1", "Operation Runtime Zel"},
    {"OperationAborted", [] { return new OperationAbortedException("o", PARTS); }, "OperationAborted", "-24 -23 -8 -2 -1", "OperationAborted Operation Runtime Zel"},
    {"OperationFailed", [] { return new OperationFailedException("o", PARTS); }, "OperationFailed", "-25 -23 -8 -2 -1", "OperationFailed Operation Runtime Zel"},
    {"PassPhrasePolicy", [] { return new PassPhrasePolicyException(PARTS); }, "PassPhrasePolicy", "-26 -18 -2 -1", "PassPhrasePolicy Policy Runtime Zel"},
    {"ComparisonFailed", [] { return new ComparisonFailedException(PARTS); }, "ComparisionFailed", "-27 -2 -1", "ComparisionFailed Runtime Zel"},
};
// clang-format on

bool has(const std::string& words, const std::string& word) {
    return (' ' + words + ' ').find(' ' + word + ' ') != std::string::npos;
}

TEST(Catalogue, EveryClassAgainstEveryCodeAndName) {
    for (const Row& row : rows) {
        SCOPED_TRACE(row.className);
        const Made made(row.make()), clone(made->clone());
        const ZelException &original = *made, &copy = *clone;
        for (int code = 1; code >= -30; --code)
            EXPECT_EQ(original.instanceOf(code), has(row.codes, std::to_string(code))) << code;
        for (const Row& other : rows)
            EXPECT_EQ(original.instanceOf(other.className + "Exception"s), has(row.names, other.className))
                << other.className;
        EXPECT_EQ(original.instanceOf("ComparisionFailedException"), has(row.names, "ComparisionFailed"));
        for (const char* unknown : {"", "Exception", "zelException", "IO Exception"})
            EXPECT_FALSE(original.instanceOf(unknown)) << unknown;
        EXPECT_EQ(original.getExceptionName(), row.storedName + "Exception"s);
        EXPECT_EQ(original.getExceptionCode(), std::stoi(row.codes));
        EXPECT_EQ(original.what() + std::to_string(original.getEntryCode()), "text-1234");
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
        const std::string message = row.made->getCatalogName() + row.made->getEntryName() + row.made->what();
        EXPECT_EQ(message + row.made->getExecutionPoint(), "ZELcode"s + row.text + "f::m() @1");
        EXPECT_EQ(row.made->getEntryCode(), row.code);
    }
}

TEST(Catalogue, LeadingArgumentsBecomeProperties) {
    const LocalText text("OTHER", 7, "entry", "localised");
    const struct {
        Made made;
        const char *property, *value;
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
    for (const auto& row : cases)
        EXPECT_EQ(row.made->retrieveProperty(row.property), row.value) << row.made->getExceptionName() << row.property;
    EXPECT_EQ(SystemException(-5, PARTS).getSystemError(), -5);
    EXPECT_THROW(SystemException(PARTS).getSystemError(), InvalidArgumentException);
}

} // namespace
