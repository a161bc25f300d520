/// @file
/// RuntimeException.
#ifndef ZEL_EXCEPTIONS_RUNTIMEEXCEPTION_H
#define ZEL_EXCEPTIONS_RUNTIMEEXCEPTION_H

#include "zel/exceptions/ZelException.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// What fails through circumstances and not through a mistake in the program. Only its subclasses are thrown.
class ZEL_API RuntimeException : public ZelException {
public:
    /// Shares the properties, as every copy does.
    RuntimeException(const RuntimeException& other);
    ~RuntimeException() override;

    RuntimeException* clone() const override;
    bool instanceOf(int code) const override;
    bool instanceOf(const std::string& name) const override;

protected:
    /// For subclasses, which pass their own name and code.
    /// @{
    RuntimeException(const char* name, int code, const char* catalogName, int entryCode, const char* entryName,
                     const char* entryText, const char* file, int line, const char* function);
    RuntimeException(const char* name, int code, const RT::ILocalizable* text, const char* file, int line,
                     const char* function);
    /// @}
};

} // namespace ZEL::EXCEPTIONS

#endif
