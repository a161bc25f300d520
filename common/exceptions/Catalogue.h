#ifndef ZEL_COMMON_EXCEPTIONS_CATALOGUE_H
#define ZEL_COMMON_EXCEPTIONS_CATALOGUE_H

#include <string>

namespace ZEL::EXCEPTIONS {

// The classes of the hierarchy, in the order of the catalogue's rows.
enum class Row : unsigned char {
    Root,
    Runtime,
    Object,
    ObjectNotFound,
    ObjectAlreadyExists,
    Instantiation,
    Serialization,
    Xml,
    System,
    IO,
    BadAlloc,
    NullPointer,
    InvalidArgument,
    AccessDenied,
    NoSuchMethod,
    ClassCast,
    Unexpected,
    Policy,
    InvalidHandle,
    Logic,
    Lock,
    OperationNotSupported,
    Operation,
    OperationAborted,
    OperationFailed,
    PassPhrasePolicy,
    ComparisonFailed,
    None
};

// The identity of one class.
struct ClassRow {
    const char* name;     // what its objects call themselves; null when a subclass or the caller says
    int code;             // its code
    Row codeParent;       // the class asked next for a code that is not its own
    const char* accepted; // the name that it answers to
    Row nameParent;       // the class asked next for a name that it does not answer to
    // Its default message: code and text, where it has one.
    int entryCode = 0;
    const char* entryText = nullptr;
};

// Clients rely on every cell below. The departures from the class tree (names, parents, texts) are meant: none is to
// be corrected. Code -12 belongs to no class.
// clang-format off
constexpr ClassRow rows[] = {
    // name                           code  code parent         accepted name                     name parent         default message
    {nullptr,                           -1, Row::None,          "ZelException",                   Row::None},
    {nullptr,                           -2, Row::Root,          "RuntimeException",               Row::Root},
    {"ObjectNotFoundException",         -3, Row::Runtime,       "ObjectNotFoundException",        Row::Runtime},
    {"ObjectNotFoundException",         -4, Row::Object,        "ObjectNotFoundException",        Row::Object},
    {"ObjectAlreadyExistsException",    -5, Row::Object,        "ObjectAlreadyExistsException",   Row::Object},
    {"InstantiationException",          -6, Row::Object,        "InstantiationException",         Row::Object},
    {"SerializationException",          -7, Row::System,        "SerializationException",         Row::System,        -1056, "Error converting string to object"},
    {"SerializationException",          -7, Row::Serialization, "SerializationException",         Row::Serialization},
    {"SystemException",                 -8, Row::Runtime,       "SystemException",                Row::Runtime},
    {"IOException",                     -9, Row::System,        "IOException",                    Row::Runtime},
    {"BadAllocException",              -10, Row::System,        "BadAllocException",              Row::System,        -1001, "A memory allocation error occurred"},
    {"NullPointerException",           -11, Row::Runtime,       "NullPointerException",           Row::Runtime,       -1004, "A NULL pointer was encountered during the operation"},
    {"InvalidArgumentException",       -13, Row::Runtime,       "InvalidArgumentException",       Row::Runtime,       -1006, "The arguments specified in the operation were invalid"},
    {"AccessDeniedException",          -14, Row::Runtime,       "AccessDeniedException",          Row::Runtime},
    {"NoSuchMethodException",          -15, Row::Logic,         "NoSuchMethodException",          Row::Logic},
    {"ClassCastException",             -16, Row::System,        "ClassCastException",             Row::System,        -1005, "Cast conversion failed"},
    {"UnexpectedException",            -17, Row::Logic,         "UnexpectedException",            Row::Logic,         -1040, "Unknown error from underlying code"},
    {"PolicyException",                -18, Row::Runtime,       "PolicyException",                Row::Runtime},
    {"InvalidHandleException",         -19, Row::Runtime,       "InvalidHandleException",         Row::Runtime,       -1039, "Invalid Handle"},
    {"LogicException",                 -20, Row::Root,          "LogicException",                 Row::Root},
    {"LockException",                  -21, Row::Runtime,       "LockException",                  Row::Runtime},
    {"OperationNotSupportedException", -22, Row::Operation,     "OperationException",             Row::Operation,     -1007, "The requested operation is either not supported in this context or is not implemented"},
    {"OperationException",             -23, Row::System,        "OperationException",             Row::Runtime},
    {"OperationAbortedException",      -24, Row::Operation,     "OperationAbortedException",      Row::Operation},
    {"OperationFailedException",       -25, Row::Operation,     "OperationFailedException",       Row::Operation},
    {"PassPhrasePolicyException",      -26, Row::Policy,        "PassPhrasePolicyException",      Row::Policy},
    {"ComparisionFailedException",     -27, Row::Runtime,       "ComparisionFailedException",     Row::Runtime,       -1006, "The arguments specified in the operation were invalid"},
};
// clang-format on

static_assert(sizeof rows / sizeof rows[0] == static_cast<unsigned>(Row::None), "every class has one row");

constexpr const ClassRow& catalogue(Row row) { return rows[static_cast<unsigned>(row)]; }

// Catalogue and entry name of every message that the library itself gives.
constexpr const char* messageCatalog = "ZEL";
constexpr const char* messageName = "code";

// Whether the class or one of its parents has the code; likewise whether one answers to the name.
bool answersTo(Row row, int code);
bool answersTo(Row row, const std::string& name);

} // namespace ZEL::EXCEPTIONS

#endif
