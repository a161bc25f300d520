#include "zel/exceptions/OperationFailedException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::OperationFailed);
}

OperationFailedException::OperationFailedException(const std::string& operationName, const char* catalogName,
                                                   int entryCode, const char* entryName, const char* entryText,
                                                   const char* file, int line, const char* function)
    : OperationException(operationName, self.name, self.code, catalogName, entryCode, entryName, entryText, file, line,
                         function) {}

OperationFailedException::OperationFailedException(const std::string& operationName, const RT::ILocalizable* text,
                                                   const char* file, int line, const char* function)
    : OperationException(operationName, self.name, self.code, text, file, line, function) {}

OperationFailedException::OperationFailedException(const OperationFailedException& other) = default;

OperationFailedException::~OperationFailedException() = default;

OperationFailedException* OperationFailedException::clone() const { return new OperationFailedException(*this); }

bool OperationFailedException::instanceOf(int code) const { return answersTo(Row::OperationFailed, code); }

bool OperationFailedException::instanceOf(const std::string& name) const {
    return answersTo(Row::OperationFailed, name);
}

} // namespace ZEL::EXCEPTIONS
