#include "zel/exceptions/BadAllocException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::BadAlloc);
}

BadAllocException::BadAllocException(const char* catalogName, int entryCode, const char* entryName,
                                     const char* entryText, const char* file, int line, const char* function)
    : SystemException(self.name, self.code, catalogName, entryCode, entryName, entryText, file, line, function) {}

BadAllocException::BadAllocException(const RT::ILocalizable* text, const char* file, int line, const char* function)
    : SystemException(self.name, self.code, text, file, line, function) {}

BadAllocException::BadAllocException(const char* file, int line, const char* function)
    : SystemException(self.name, self.code, messageCatalog, self.entryCode, messageName, self.entryText, file, line,
                      function) {}

BadAllocException::BadAllocException(const BadAllocException& other) = default;

BadAllocException::~BadAllocException() = default;

BadAllocException* BadAllocException::clone() const { return new BadAllocException(*this); }

bool BadAllocException::instanceOf(int code) const { return answersTo(Row::BadAlloc, code); }

bool BadAllocException::instanceOf(const std::string& name) const { return answersTo(Row::BadAlloc, name); }

} // namespace ZEL::EXCEPTIONS
