#include "zel/exceptions/PassPhrasePolicyException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::PassPhrasePolicy);
}

PassPhrasePolicyException::PassPhrasePolicyException(const char* catalogName, int entryCode, const char* entryName,
                                                     const char* entryText, const char* file, int line,
                                                     const char* function)
    : PolicyException(self.name, self.code, catalogName, entryCode, entryName, entryText, file, line, function) {}

PassPhrasePolicyException::PassPhrasePolicyException(const RT::ILocalizable* text, const char* file, int line,
                                                     const char* function)
    : PolicyException(self.name, self.code, text, file, line, function) {}

PassPhrasePolicyException::PassPhrasePolicyException(const PassPhrasePolicyException& other) = default;

PassPhrasePolicyException::~PassPhrasePolicyException() = default;

PassPhrasePolicyException* PassPhrasePolicyException::clone() const { return new PassPhrasePolicyException(*this); }

bool PassPhrasePolicyException::instanceOf(int code) const { return answersTo(Row::PassPhrasePolicy, code); }

bool PassPhrasePolicyException::instanceOf(const std::string& name) const {
    return answersTo(Row::PassPhrasePolicy, name);
}

} // namespace ZEL::EXCEPTIONS
