// The identity of every exception class, as clients rely on it. The rows are written by hand: they are the contract.
#include "zel/zel.h"

#include <memory>
#include <typeinfo>

#include <gtest/gtest.h>

using namespace ZEL::EXCEPTIONS;
using std::string_literals::operator""s;
using ZEL::RT::LocalText;

namespace {

#define PARTS "ZEL", -1234, "code", "text", nullptr, -1, nullptr

// Subclasses of clients, with either kind of message.
struct BareRuntime : RuntimeException {
    template <class... Message> explicit BareRuntime(Message... m) : RuntimeException("BareException", -2, m...) {}
    BareRuntime* clone() const override { return new BareRuntime(*this); }
};
struct Own : SerializationException {
    template <class... Message>
    explicit Own(Message... m) : SerializationException(std::string("why"), "OwnException", -7, m...) {}
    Own* clone() const override { return new Own(*this); }
};

using Made = std::unique_ptr<ZelException>;

// Names without the "Exception" at their end.
struct Row {
    const char* className;
    ZelException* (*make)();
    ZelException* (*makeLocalised)(const LocalText* text);
    const char* storedName;
    const char* codes; // that it answers to, its own first
    const char* names; // that it answers to
};

// clang-format off
// With a message in parts and with one that is borrowed, behind the other arguments.
#define MAKE(Class, ...) \
    [] { return static_cast<ZelException*>(new Class(__VA_ARGS__ PARTS)); }, \
    [](const LocalText* text) { return static_cast<ZelException*>(new Class(__VA_ARGS__ text, "f", 1, "m")); }

const Row rows[] = {
    {"Zel", MAKE(ZelException, "GivenException", -1,), "Given", "-1", "Zel"},
    {"Runtime", MAKE(BareRuntime, ), "Bare", "-2 -1", "Runtime Zel"},
    {"Object", MAKE(ObjectException, "t", "n",), "ObjectNotFound", "-3 -2 -1", "ObjectNotFound Runtime Zel"},
    {"ObjectNotFound", MAKE(ObjectNotFoundException, "t", "n",), "ObjectNotFound", "-4 -3 -2 -1", "ObjectNotFound Runtime Zel"},
    {"ObjectAlreadyExists", MAKE(ObjectAlreadyExistsException, "t", "n",), "ObjectAlreadyExists", "-5 -3 -2 -1", "ObjectAlreadyExists ObjectNotFound Runtime Zel"},
    {"Instantiation", MAKE(InstantiationException, "t", "n",), "Instantiation", "-6 -3 -2 -1", "Instantiation ObjectNotFound Runtime Zel"},
    {"Serialization", MAKE(SerializationException, "why",), "Serialization", "-7 -8 -2 -1", "Serialization System Runtime Zel"},
    {"Xml", MAKE(XmlException, ), "Serialization", "-7 -8 -2 -1", "Serialization System Runtime Zel"},
    {"Own", MAKE(Own, ), "Own", "-7 -8 -2 -1", "Serialization System Runtime Zel"},
    {"System", MAKE(SystemException, ), "System", "-8 -2 -1", "System Runtime Zel"},
    {"IO", MAKE(IOException, "f",), "IO", "-9 -8 -2 -1", "IO Runtime Zel"},
    {"BadAlloc", MAKE(BadAllocException, ), "BadAlloc", "-10 -8 -2 -1", "BadAlloc System Runtime Zel"},
    {"NullPointer", MAKE(NullPointerException, ), "NullPointer", "-11 -2 -1", "NullPointer Runtime Zel"},
    {"InvalidArgument", MAKE(InvalidArgumentException, ), "InvalidArgument", "-13 -2 -1", "InvalidArgument Runtime Zel"},
    {"AccessDenied", MAKE(AccessDeniedException, ), "AccessDenied", "-14 -2 -1", "AccessDenied Runtime Zel"},
    {"NoSuchMethod", MAKE(NoSuchMethodException, ), "NoSuchMethod", "-15 -20 -1", "NoSuchMethod Logic Zel"},
    {"ClassCast", MAKE(ClassCastException, ), "ClassCast", "-16 -8 -2 -1", "ClassCast System Runtime Zel"},
    {"Unexpected", MAKE(UnexpectedException, ), "Unexpected", "-17 -20 -1", "Unexpected Logic Zel"},
    {"Policy", MAKE(PolicyException, ), "Policy", "-18 -2 -1", "Policy Runtime Zel"},
    {"InvalidHandle", MAKE(InvalidHandleException, ), "InvalidHandle", "-19 -2 -1", "InvalidHandle Runtime Zel"},
    {"Logic", MAKE(LogicException, ), "Logic", "-20 -1", "Logic Zel"},
    {"Lock", MAKE(LockException, ), "Lock", "-21 -2 -1", "Lock Runtime Zel"},
    {"OperationNotSupported", MAKE(OperationNotSupportedException, "o",), "OperationNotSupported", "-22 -23 -8 -2 -1", "Operation Runtime Zel"},
    {"Operation", MAKE(OperationException, "o",), "Operation", "-23 -8 -2 -1", "Operation Runtime Zel"},
    {"OperationAborted", MAKE(OperationAbortedException, "o",), "OperationAborted", "-24 -23 -8 -2 -1", "OperationAborted Operation Runtime Zel"},
    {"OperationFailed", MAKE(OperationFailedException, "o",), "OperationFailed", "-25 -23 -8 -2 -1", "OperationFailed Operation Runtime Zel"},
    {"PassPhrasePolicy", MAKE(PassPhrasePolicyException, ), "PassPhrasePolicy", "-26 -18 -2 -1", "PassPhrasePolicy Policy Runtime Zel"},
    {"ComparisonFailed", MAKE(ComparisonFailedException, ), "ComparisionFailed", "-27 -2 -1", "ComparisionFailed Runtime Zel"},
};
// clang-format on

bool has(const std::string& words, const std::string& word) {
    return (' ' + words + ' ').find(' ' + word + ' ') != std::string::npos;
}

TEST(Catalogue, EveryClassAgainstEveryCodeAndName) {
    const LocalText text("OTHER", 7, "entry", "localised");
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
        const Made localised(row.makeLocalised(&text));
        EXPECT_TRUE(localised->getExceptionName() == original.getExceptionName() &&
                    localised->getExceptionCode() == original.getExceptionCode());
        EXPECT_EQ(localised->what() + localised->getExecutionPoint(), "localisedf::m() @1");
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
        {Made(new SerializationException(PARTS)), "SystemMessage", ""},
        {Made(new SystemException(5, PARTS)), "SystemError", "5"},
        {Made(new XmlException(&text, "f", 1, "m")), "SystemMessage", ""},
    };
    for (const auto& row : cases)
        EXPECT_EQ(row.made->retrieveProperty(row.property), row.value) << row.made->getExceptionName() << row.property;
    EXPECT_EQ(OperationException("export", PARTS).getOperationName(), "export");
    EXPECT_EQ(SerializationException("why", PARTS).getSystemMessage(), "why");
    EXPECT_EQ(SystemException(-5, PARTS).getSystemError(), -5);
    EXPECT_THROW(SystemException(PARTS).getSystemError(), InvalidArgumentException);
}

} // namespace
