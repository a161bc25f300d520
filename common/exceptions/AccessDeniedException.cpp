#include "zel/exceptions/AccessDeniedException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::AccessDenied);
}

AccessDeniedException::AccessDeniedException(const char* catalogName, int entryCode, const char* entryName,
                                             const char* entryText, const char* file, int line, const char* function)
    : RuntimeException(self.name, self.code, catalogName, entryCode, entryName, entryText, file, line, function) {}

AccessDeniedException::AccessDeniedException(const RT::ILocalizable* text, const char* file, int line,
                                             const char* function)
    : RuntimeException(self.name, self.code, text, file, line, function) {}

AccessDeniedException::AccessDeniedException(const AccessDeniedException& other) = default;

AccessDeniedException::~AccessDeniedException() = default;

AccessDeniedException* AccessDeniedException::clone() const { return new AccessDeniedException(*this); }

bool AccessDeniedException::instanceOf(int code) const { return answersTo(Row::AccessDenied, code); }

bool AccessDeniedException::instanceOf(const std::string& name) const { return answersTo(Row::AccessDenied, name); }

} // namespace ZEL::EXCEPTIONS
