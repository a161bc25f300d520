/// @file
/// LogicException.
#ifndef ZEL_EXCEPTIONS_LOGICEXCEPTION_H
#define ZEL_EXCEPTIONS_LOGICEXCEPTION_H

#include "zel/exceptions/ZelException.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// A mistake in the program itself.
class ZEL_API LogicException : public ZelException {
public:
    /// With the message part by part; parameters as for ZelException.
    LogicException(const char* catalogName, int entryCode, const char* entryName, const char* entryText,
                   const char* file, int line, const char* function);

    /// With a catalogued message, borrowed; parameters as for ZelException.
    LogicException(const RT::ILocalizable* text, const char* file, int line, const char* function);

    /// Shares the properties, as every copy does.
    LogicException(const LogicException& other);
    ~LogicException() override;

    LogicException* clone() const override;
    bool instanceOf(int code) const override;
    bool instanceOf(const std::string& name) const override;

protected:
    /// For subclasses, which pass their own name and code.
    /// @{
    LogicException(const char* name, int code, const char* catalogName, int entryCode, const char* entryName,
                   const char* entryText, const char* file, int line, const char* function);
    LogicException(const char* name, int code, const RT::ILocalizable* text, const char* file, int line,
                   const char* function);
    /// @}
};

} // namespace ZEL::EXCEPTIONS

#endif
