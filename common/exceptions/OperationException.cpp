#include "zel/exceptions/OperationException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::Operation);
}

OperationException::OperationException(const std::string& operationName, const char* catalogName, int entryCode,
                                       const char* entryName, const char* entryText, const char* file, int line,
                                       const char* function)
    : SystemException(self.name, self.code, catalogName, entryCode, entryName, entryText, file, line, function) {
    assignProperty("OperationName", operationName);
}

OperationException::OperationException(const std::string& operationName, const RT::ILocalizable* text, const char* file,
                                       int line, const char* function)
    : SystemException(self.name, self.code, text, file, line, function) {
    assignProperty("OperationName", operationName);
}

OperationException::OperationException(const std::string& operationName, const char* name, int code,
                                       const char* catalogName, int entryCode, const char* entryName,
                                       const char* entryText, const char* file, int line, const char* function)
    : SystemException(name, code, catalogName, entryCode, entryName, entryText, file, line, function) {
    assignProperty("OperationName", operationName);
}

OperationException::OperationException(const std::string& operationName, const char* name, int code,
                                       const RT::ILocalizable* text, const char* file, int line, const char* function)
    : SystemException(name, code, text, file, line, function) {
    assignProperty("OperationName", operationName);
}

OperationException::OperationException(const OperationException& other) = default;

OperationException::~OperationException() = default;

OperationException* OperationException::clone() const { return new OperationException(*this); }

bool OperationException::instanceOf(int code) const { return answersTo(Row::Operation, code); }

bool OperationException::instanceOf(const std::string& name) const { return answersTo(Row::Operation, name); }

std::string OperationException::getOperationName() const { return retrieveProperty("OperationName"); }

} // namespace ZEL::EXCEPTIONS
