/// @file
/// PolicyException.
#ifndef ZEL_EXCEPTIONS_POLICYEXCEPTION_H
#define ZEL_EXCEPTIONS_POLICYEXCEPTION_H

#include "zel/exceptions/RuntimeException.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// A rule that was set for the operation was broken.
class ZEL_API PolicyException : public RuntimeException {
public:
    /// With the message part by part; parameters as for ZelException.
    PolicyException(const char* catalogName, int entryCode, const char* entryName, const char* entryText,
                    const char* file, int line, const char* function);

    /// With a catalogued message, borrowed; parameters as for ZelException.
    PolicyException(const RT::ILocalizable* text, const char* file, int line, const char* function);

    /// Shares the properties, as every copy does.
    PolicyException(const PolicyException& other);
    ~PolicyException() override;

    PolicyException* clone() const override;
    bool instanceOf(int code) const override;
    bool instanceOf(const std::string& name) const override;

protected:
    /// For subclasses, which pass their own name and code.
    /// @{
    PolicyException(const char* name, int code, const char* catalogName, int entryCode, const char* entryName,
                    const char* entryText, const char* file, int line, const char* function);
    PolicyException(const char* name, int code, const RT::ILocalizable* text, const char* file, int line,
                    const char* function);
    /// @}
};

} // namespace ZEL::EXCEPTIONS

#endif
