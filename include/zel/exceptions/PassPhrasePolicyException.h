/// @file
/// PassPhrasePolicyException.
#ifndef ZEL_EXCEPTIONS_PASSPHRASEPOLICYEXCEPTION_H
#define ZEL_EXCEPTIONS_PASSPHRASEPOLICYEXCEPTION_H

#include "zel/exceptions/PolicyException.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// A pass phrase breaks the policy for pass phrases.
class ZEL_API PassPhrasePolicyException : public PolicyException {
public:
    /// With the message part by part; parameters as for ZelException.
    PassPhrasePolicyException(const char* catalogName, int entryCode, const char* entryName, const char* entryText,
                              const char* file, int line, const char* function);

    /// With a catalogued message, borrowed; parameters as for ZelException.
    PassPhrasePolicyException(const RT::ILocalizable* text, const char* file, int line, const char* function);

    /// Shares the properties, as every copy does.
    PassPhrasePolicyException(const PassPhrasePolicyException& other);
    ~PassPhrasePolicyException() override;

    PassPhrasePolicyException* clone() const override;
    bool instanceOf(int code) const override;
    bool instanceOf(const std::string& name) const override;
};

} // namespace ZEL::EXCEPTIONS

#endif
