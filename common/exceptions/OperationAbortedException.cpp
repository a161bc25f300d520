#include "zel/exceptions/OperationAbortedException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::OperationAborted);
}

OperationAbortedException::OperationAbortedException(const std::string& operationName, const char* catalogName,
                                                     int entryCode, const char* entryName, const char* entryText,
                                                     const char* file, int line, const char* function)
    : OperationException(operationName, self.name, self.code, catalogName, entryCode, entryName, entryText, file, line,
                         function) {}

OperationAbortedException::OperationAbortedException(const std::string& operationName, const RT::ILocalizable* text,
                                                     const char* file, int line, const char* function)
    : OperationException(operationName, self.name, self.code, text, file, line, function) {}

OperationAbortedException::OperationAbortedException(const OperationAbortedException& other) = default;

OperationAbortedException::~OperationAbortedException() = default;

OperationAbortedException* OperationAbortedException::clone() const { return new OperationAbortedException(*this); }

bool OperationAbortedException::instanceOf(int code) const { return answersTo(Row::OperationAborted, code); }

bool OperationAbortedException::instanceOf(const std::string& name) const {
    return answersTo(Row::OperationAborted, name);
}

} // namespace ZEL::EXCEPTIONS
