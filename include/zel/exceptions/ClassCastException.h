/// @file
/// ClassCastException.
#ifndef ZEL_EXCEPTIONS_CLASSCASTEXCEPTION_H
#define ZEL_EXCEPTIONS_CLASSCASTEXCEPTION_H

#include "zel/exceptions/SystemException.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// A pointer could not be converted to another type.
class ZEL_API ClassCastException : public SystemException {
public:
    /// With the message part by part; parameters as for ZelException.
    ClassCastException(const char* catalogName, int entryCode, const char* entryName, const char* entryText,
                       const char* file, int line, const char* function);

    /// With a catalogued message, borrowed; parameters as for ZelException.
    ClassCastException(const RT::ILocalizable* text, const char* file, int line, const char* function);

    /// With the default message: entry -1005, "Cast conversion failed".
    ClassCastException(const char* file, int line, const char* function);

    /// Shares the properties, as every copy does.
    ClassCastException(const ClassCastException& other);
    ~ClassCastException() override;

    ClassCastException* clone() const override;
    bool instanceOf(int code) const override;
    bool instanceOf(const std::string& name) const override;
};

} // namespace ZEL::EXCEPTIONS

#endif
