#include "zel/exceptions/UnexpectedException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::Unexpected);
}

UnexpectedException::UnexpectedException(const char* catalogName, int entryCode, const char* entryName,
                                         const char* entryText, const char* file, int line, const char* function)
    : LogicException(self.name, self.code, catalogName, entryCode, entryName, entryText, file, line, function) {}

UnexpectedException::UnexpectedException(const RT::ILocalizable* text, const char* file, int line, const char* function)
    : LogicException(self.name, self.code, text, file, line, function) {}

UnexpectedException::UnexpectedException(const char* file, int line, const char* function)
    : LogicException(self.name, self.code, messageCatalog, self.entryCode, messageName, self.entryText, file, line,
                     function) {}

UnexpectedException::UnexpectedException(const UnexpectedException& other) = default;

UnexpectedException::~UnexpectedException() = default;

UnexpectedException* UnexpectedException::clone() const { return new UnexpectedException(*this); }

bool UnexpectedException::instanceOf(int code) const { return answersTo(Row::Unexpected, code); }

bool UnexpectedException::instanceOf(const std::string& name) const { return answersTo(Row::Unexpected, name); }

} // namespace ZEL::EXCEPTIONS
