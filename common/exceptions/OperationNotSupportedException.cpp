#include "zel/exceptions/OperationNotSupportedException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::OperationNotSupported);
}

OperationNotSupportedException::OperationNotSupportedException(const std::string& operationName,
                                                               const char* catalogName, int entryCode,
                                                               const char* entryName, const char* entryText,
                                                               const char* file, int line, const char* function)
    : OperationException(operationName, self.name, self.code, catalogName, entryCode, entryName, entryText, file, line,
                         function) {}

OperationNotSupportedException::OperationNotSupportedException(const std::string& operationName,
                                                               const RT::ILocalizable* text, const char* file, int line,
                                                               const char* function)
    : OperationException(operationName, self.name, self.code, text, file, line, function) {}

OperationNotSupportedException::OperationNotSupportedException(const std::string& operationName, const char* file,
                                                               int line, const char* function)
    : OperationException(operationName, self.name, self.code, messageCatalog, self.entryCode, messageName,
                         self.entryText, file, line, function) {}

OperationNotSupportedException::OperationNotSupportedException(const OperationNotSupportedException& other) = default;

OperationNotSupportedException::~OperationNotSupportedException() = default;

OperationNotSupportedException* OperationNotSupportedException::clone() const {
    return new OperationNotSupportedException(*this);
}

bool OperationNotSupportedException::instanceOf(int code) const { return answersTo(Row::OperationNotSupported, code); }

bool OperationNotSupportedException::instanceOf(const std::string& name) const {
    return answersTo(Row::OperationNotSupported, name);
}

} // namespace ZEL::EXCEPTIONS
