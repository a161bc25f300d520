#include "zel/exceptions/ClassCastException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::ClassCast);
}

ClassCastException::ClassCastException(const char* catalogName, int entryCode, const char* entryName,
                                       const char* entryText, const char* file, int line, const char* function)
    : SystemException(self.name, self.code, catalogName, entryCode, entryName, entryText, file, line, function) {}

ClassCastException::ClassCastException(const RT::ILocalizable* text, const char* file, int line, const char* function)
    : SystemException(self.name, self.code, text, file, line, function) {}

ClassCastException::ClassCastException(const char* file, int line, const char* function)
    : SystemException(self.name, self.code, messageCatalog, self.entryCode, messageName, self.entryText, file, line,
                      function) {}

ClassCastException::ClassCastException(const ClassCastException& other) = default;

ClassCastException::~ClassCastException() = default;

ClassCastException* ClassCastException::clone() const { return new ClassCastException(*this); }

bool ClassCastException::instanceOf(int code) const { return answersTo(Row::ClassCast, code); }

bool ClassCastException::instanceOf(const std::string& name) const { return answersTo(Row::ClassCast, name); }

} // namespace ZEL::EXCEPTIONS
