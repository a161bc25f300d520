#include "zel/exceptions/InvalidHandleException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::InvalidHandle);
}

InvalidHandleException::InvalidHandleException(const char* catalogName, int entryCode, const char* entryName,
                                               const char* entryText, const char* file, int line, const char* function)
    : RuntimeException(self.name, self.code, catalogName, entryCode, entryName, entryText, file, line, function) {}

InvalidHandleException::InvalidHandleException(const RT::ILocalizable* text, const char* file, int line,
                                               const char* function)
    : RuntimeException(self.name, self.code, text, file, line, function) {}

InvalidHandleException::InvalidHandleException(const char* file, int line, const char* function)
    : RuntimeException(self.name, self.code, messageCatalog, self.entryCode, messageName, self.entryText, file, line,
                       function) {}

InvalidHandleException::InvalidHandleException(const InvalidHandleException& other) = default;

InvalidHandleException::~InvalidHandleException() = default;

InvalidHandleException* InvalidHandleException::clone() const { return new InvalidHandleException(*this); }

bool InvalidHandleException::instanceOf(int code) const { return answersTo(Row::InvalidHandle, code); }

bool InvalidHandleException::instanceOf(const std::string& name) const { return answersTo(Row::InvalidHandle, name); }

} // namespace ZEL::EXCEPTIONS
