#include "zel/exceptions/InvalidArgumentException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::InvalidArgument);
}

InvalidArgumentException::InvalidArgumentException(const char* catalogName, int entryCode, const char* entryName,
                                                   const char* entryText, const char* file, int line,
                                                   const char* function)
    : RuntimeException(self.name, self.code, catalogName, entryCode, entryName, entryText, file, line, function) {}

InvalidArgumentException::InvalidArgumentException(const RT::ILocalizable* text, const char* file, int line,
                                                   const char* function)
    : RuntimeException(self.name, self.code, text, file, line, function) {}

InvalidArgumentException::InvalidArgumentException(const char* file, int line, const char* function)
    : RuntimeException(self.name, self.code, messageCatalog, self.entryCode, messageName, self.entryText, file, line,
                       function) {}

InvalidArgumentException::InvalidArgumentException(const InvalidArgumentException& other) = default;

InvalidArgumentException::~InvalidArgumentException() = default;

InvalidArgumentException* InvalidArgumentException::clone() const { return new InvalidArgumentException(*this); }

bool InvalidArgumentException::instanceOf(int code) const { return answersTo(Row::InvalidArgument, code); }

bool InvalidArgumentException::instanceOf(const std::string& name) const {
    return answersTo(Row::InvalidArgument, name);
}

} // namespace ZEL::EXCEPTIONS
