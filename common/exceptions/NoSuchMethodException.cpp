#include "zel/exceptions/NoSuchMethodException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::NoSuchMethod);
}

NoSuchMethodException::NoSuchMethodException(const char* catalogName, int entryCode, const char* entryName,
                                             const char* entryText, const char* file, int line, const char* function)
    : LogicException(self.name, self.code, catalogName, entryCode, entryName, entryText, file, line, function) {}

NoSuchMethodException::NoSuchMethodException(const RT::ILocalizable* text, const char* file, int line,
                                             const char* function)
    : LogicException(self.name, self.code, text, file, line, function) {}

NoSuchMethodException::NoSuchMethodException(const NoSuchMethodException& other) = default;

NoSuchMethodException::~NoSuchMethodException() = default;

NoSuchMethodException* NoSuchMethodException::clone() const { return new NoSuchMethodException(*this); }

bool NoSuchMethodException::instanceOf(int code) const { return answersTo(Row::NoSuchMethod, code); }

bool NoSuchMethodException::instanceOf(const std::string& name) const { return answersTo(Row::NoSuchMethod, name); }

} // namespace ZEL::EXCEPTIONS
