/// @file
/// UnexpectedException.
#ifndef ZEL_EXCEPTIONS_UNEXPECTEDEXCEPTION_H
#define ZEL_EXCEPTIONS_UNEXPECTEDEXCEPTION_H

#include "zel/exceptions/LogicException.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// A failure that the program did not provide for.
class ZEL_API UnexpectedException : public LogicException {
public:
    /// With the message part by part; parameters as for ZelException.
    UnexpectedException(const char* catalogName, int entryCode, const char* entryName, const char* entryText,
                        const char* file, int line, const char* function);

    /// With a catalogued message, borrowed; parameters as for ZelException.
    UnexpectedException(const RT::ILocalizable* text, const char* file, int line, const char* function);

    /// With the default message: entry -1040, "Unknown error from underlying code".
    UnexpectedException(const char* file, int line, const char* function);

    /// Shares the properties, as every copy does.
    UnexpectedException(const UnexpectedException& other);
    ~UnexpectedException() override;

    UnexpectedException* clone() const override;
    bool instanceOf(int code) const override;
    bool instanceOf(const std::string& name) const override;
};

} // namespace ZEL::EXCEPTIONS

#endif
