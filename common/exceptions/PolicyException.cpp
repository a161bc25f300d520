#include "zel/exceptions/PolicyException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::Policy);
}

PolicyException::PolicyException(const char* catalogName, int entryCode, const char* entryName, const char* entryText,
                                 const char* file, int line, const char* function)
    : RuntimeException(self.name, self.code, catalogName, entryCode, entryName, entryText, file, line, function) {}

PolicyException::PolicyException(const RT::ILocalizable* text, const char* file, int line, const char* function)
    : RuntimeException(self.name, self.code, text, file, line, function) {}

PolicyException::PolicyException(const char* name, int code, const char* catalogName, int entryCode,
                                 const char* entryName, const char* entryText, const char* file, int line,
                                 const char* function)
    : RuntimeException(name, code, catalogName, entryCode, entryName, entryText, file, line, function) {}

PolicyException::PolicyException(const char* name, int code, const RT::ILocalizable* text, const char* file, int line,
                                 const char* function)
    : RuntimeException(name, code, text, file, line, function) {}

PolicyException::PolicyException(const PolicyException& other) = default;

PolicyException::~PolicyException() = default;

PolicyException* PolicyException::clone() const { return new PolicyException(*this); }

bool PolicyException::instanceOf(int code) const { return answersTo(Row::Policy, code); }

bool PolicyException::instanceOf(const std::string& name) const { return answersTo(Row::Policy, name); }

} // namespace ZEL::EXCEPTIONS
