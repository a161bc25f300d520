/// @file
/// AccessDeniedException.
#ifndef ZEL_EXCEPTIONS_ACCESSDENIEDEXCEPTION_H
#define ZEL_EXCEPTIONS_ACCESSDENIEDEXCEPTION_H

#include "zel/exceptions/RuntimeException.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// The caller lacks a right.
class ZEL_API AccessDeniedException : public RuntimeException {
public:
    /// With the message part by part; parameters as for ZelException.
    AccessDeniedException(const char* catalogName, int entryCode, const char* entryName, const char* entryText,
                          const char* file, int line, const char* function);

    /// With a catalogued message, borrowed; parameters as for ZelException.
    AccessDeniedException(const RT::ILocalizable* text, const char* file, int line, const char* function);

    /// Shares the properties, as every copy does.
    AccessDeniedException(const AccessDeniedException& other);
    ~AccessDeniedException() override;

    AccessDeniedException* clone() const override;
    bool instanceOf(int code) const override;
    bool instanceOf(const std::string& name) const override;
};

} // namespace ZEL::EXCEPTIONS

#endif
