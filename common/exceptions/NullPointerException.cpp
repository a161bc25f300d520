#include "zel/exceptions/NullPointerException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::NullPointer);
}

NullPointerException::NullPointerException(const char* catalogName, int entryCode, const char* entryName,
                                           const char* entryText, const char* file, int line, const char* function)
    : SystemException(self.name, self.code, catalogName, entryCode, entryName, entryText, file, line, function) {}

NullPointerException::NullPointerException(const RT::ILocalizable* text, const char* file, int line,
                                           const char* function)
    : SystemException(self.name, self.code, text, file, line, function) {}

NullPointerException::NullPointerException(const char* file, int line, const char* function)
    : SystemException(self.name, self.code, messageCatalog, self.entryCode, messageName, self.entryText, file, line,
                      function) {}

NullPointerException::NullPointerException(const NullPointerException& other) = default;

NullPointerException::~NullPointerException() = default;

NullPointerException* NullPointerException::clone() const { return new NullPointerException(*this); }

bool NullPointerException::instanceOf(int code) const { return answersTo(Row::NullPointer, code); }

bool NullPointerException::instanceOf(const std::string& name) const { return answersTo(Row::NullPointer, name); }

} // namespace ZEL::EXCEPTIONS
