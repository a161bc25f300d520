#include "zel/exceptions/LogicException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::Logic);
}

LogicException::LogicException(const char* catalogName, int entryCode, const char* entryName, const char* entryText,
                               const char* file, int line, const char* function)
    : ZelException(self.name, self.code, catalogName, entryCode, entryName, entryText, file, line, function) {}

LogicException::LogicException(const RT::ILocalizable* text, const char* file, int line, const char* function)
    : ZelException(self.name, self.code, text, file, line, function) {}

LogicException::LogicException(const char* name, int code, const char* catalogName, int entryCode,
                               const char* entryName, const char* entryText, const char* file, int line,
                               const char* function)
    : ZelException(name, code, catalogName, entryCode, entryName, entryText, file, line, function) {}

LogicException::LogicException(const char* name, int code, const RT::ILocalizable* text, const char* file, int line,
                               const char* function)
    : ZelException(name, code, text, file, line, function) {}

LogicException::LogicException(const LogicException& other) = default;

LogicException::~LogicException() = default;

LogicException* LogicException::clone() const { return new LogicException(*this); }

bool LogicException::instanceOf(int code) const { return answersTo(Row::Logic, code); }

bool LogicException::instanceOf(const std::string& name) const { return answersTo(Row::Logic, name); }

} // namespace ZEL::EXCEPTIONS
