#include "zel/exceptions/ComparisonFailedException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::ComparisonFailed);
}

ComparisonFailedException::ComparisonFailedException(const char* catalogName, int entryCode, const char* entryName,
                                                     const char* entryText, const char* file, int line,
                                                     const char* function)
    : RuntimeException(self.name, self.code, catalogName, entryCode, entryName, entryText, file, line, function) {}

ComparisonFailedException::ComparisonFailedException(const RT::ILocalizable* text, const char* file, int line,
                                                     const char* function)
    : RuntimeException(self.name, self.code, text, file, line, function) {}

ComparisonFailedException::ComparisonFailedException(const char* file, int line, const char* function)
    : RuntimeException(self.name, self.code, messageCatalog, self.entryCode, messageName, self.entryText, file, line,
                       function) {}

ComparisonFailedException::ComparisonFailedException(const ComparisonFailedException& other) = default;

ComparisonFailedException::~ComparisonFailedException() = default;

ComparisonFailedException* ComparisonFailedException::clone() const { return new ComparisonFailedException(*this); }

bool ComparisonFailedException::instanceOf(int code) const { return answersTo(Row::ComparisonFailed, code); }

bool ComparisonFailedException::instanceOf(const std::string& name) const {
    return answersTo(Row::ComparisonFailed, name);
}

} // namespace ZEL::EXCEPTIONS
