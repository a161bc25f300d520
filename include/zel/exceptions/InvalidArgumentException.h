/// @file
/// InvalidArgumentException.
#ifndef ZEL_EXCEPTIONS_INVALIDARGUMENTEXCEPTION_H
#define ZEL_EXCEPTIONS_INVALIDARGUMENTEXCEPTION_H

#include "zel/exceptions/RuntimeException.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// An argument cannot be used.
class ZEL_API InvalidArgumentException : public RuntimeException {
public:
    /// With the message part by part; parameters as for ZelException.
    InvalidArgumentException(const char* catalogName, int entryCode, const char* entryName, const char* entryText,
                             const char* file, int line, const char* function);

    /// With a catalogued message, borrowed; parameters as for ZelException.
    InvalidArgumentException(const RT::ILocalizable* text, const char* file, int line, const char* function);

    /// With the default message: entry -1006, "The arguments specified in the operation were invalid".
    InvalidArgumentException(const char* file, int line, const char* function);

    /// Shares the properties, as every copy does.
    InvalidArgumentException(const InvalidArgumentException& other);
    ~InvalidArgumentException() override;

    InvalidArgumentException* clone() const override;
    bool instanceOf(int code) const override;
    bool instanceOf(const std::string& name) const override;
};

} // namespace ZEL::EXCEPTIONS

#endif
