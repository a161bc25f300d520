/// @file
/// NoSuchMethodException.
#ifndef ZEL_EXCEPTIONS_NOSUCHMETHODEXCEPTION_H
#define ZEL_EXCEPTIONS_NOSUCHMETHODEXCEPTION_H

#include "zel/exceptions/LogicException.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// A function that was asked for by name does not exist.
class ZEL_API NoSuchMethodException : public LogicException {
public:
    /// With the message part by part; parameters as for ZelException.
    NoSuchMethodException(const char* catalogName, int entryCode, const char* entryName, const char* entryText,
                          const char* file, int line, const char* function);

    /// With a catalogued message, borrowed; parameters as for ZelException.
    NoSuchMethodException(const RT::ILocalizable* text, const char* file, int line, const char* function);

    /// Shares the properties, as every copy does.
    NoSuchMethodException(const NoSuchMethodException& other);
    ~NoSuchMethodException() override;

    NoSuchMethodException* clone() const override;
    bool instanceOf(int code) const override;
    bool instanceOf(const std::string& name) const override;
};

} // namespace ZEL::EXCEPTIONS

#endif
