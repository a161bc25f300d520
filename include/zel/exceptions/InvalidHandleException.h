/// @file
/// InvalidHandleException.
#ifndef ZEL_EXCEPTIONS_INVALIDHANDLEEXCEPTION_H
#define ZEL_EXCEPTIONS_INVALIDHANDLEEXCEPTION_H

#include "zel/exceptions/RuntimeException.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// A handle refers to nothing.
class ZEL_API InvalidHandleException : public RuntimeException {
public:
    /// With the message part by part; parameters as for ZelException.
    InvalidHandleException(const char* catalogName, int entryCode, const char* entryName, const char* entryText,
                           const char* file, int line, const char* function);

    /// With a catalogued message, borrowed; parameters as for ZelException.
    InvalidHandleException(const RT::ILocalizable* text, const char* file, int line, const char* function);

    /// With the default message: entry -1039, "Invalid Handle".
    InvalidHandleException(const char* file, int line, const char* function);

    /// Shares the properties, as every copy does.
    InvalidHandleException(const InvalidHandleException& other);
    ~InvalidHandleException() override;

    InvalidHandleException* clone() const override;
    bool instanceOf(int code) const override;
    bool instanceOf(const std::string& name) const override;
};

} // namespace ZEL::EXCEPTIONS

#endif
