#include "zel/exceptions/SystemException.h"

#include "zel/utils/StringUtils.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::System);
}

SystemException::SystemException(const char* catalogName, int entryCode, const char* entryName, const char* entryText,
                                 const char* file, int line, const char* function)
    : RuntimeException(self.name, self.code, catalogName, entryCode, entryName, entryText, file, line, function) {}

SystemException::SystemException(int systemError, const char* catalogName, int entryCode, const char* entryName,
                                 const char* entryText, const char* file, int line, const char* function)
    : RuntimeException(self.name, self.code, catalogName, entryCode, entryName, entryText, file, line, function) {
    setSystemError(systemError);
}

SystemException::SystemException(const RT::ILocalizable* text, const char* file, int line, const char* function)
    : RuntimeException(self.name, self.code, text, file, line, function) {}

SystemException::SystemException(const char* name, int code, const char* catalogName, int entryCode,
                                 const char* entryName, const char* entryText, const char* file, int line,
                                 const char* function)
    : RuntimeException(name, code, catalogName, entryCode, entryName, entryText, file, line, function) {}

SystemException::SystemException(const char* name, int code, const RT::ILocalizable* text, const char* file, int line,
                                 const char* function)
    : RuntimeException(name, code, text, file, line, function) {}

SystemException::SystemException(const SystemException& other) = default;

SystemException::~SystemException() = default;

SystemException* SystemException::clone() const { return new SystemException(*this); }

bool SystemException::instanceOf(int code) const { return answersTo(Row::System, code); }

bool SystemException::instanceOf(const std::string& name) const { return answersTo(Row::System, name); }

int SystemException::getSystemError() const { return RT::StringUtils::AsInteger(retrieveProperty("SystemError")); }

void SystemException::setSystemError(int systemError) {
    assignProperty("SystemError", RT::StringUtils::ToString(systemError));
}

std::string SystemException::getSystemMessage() const { return retrieveProperty("SystemMessage"); }

void SystemException::setSystemMessage(const std::string& systemMessage) {
    assignProperty("SystemMessage", systemMessage);
}

} // namespace ZEL::EXCEPTIONS
