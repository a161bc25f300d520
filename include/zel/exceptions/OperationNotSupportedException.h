/// @file
/// OperationNotSupportedException.
#ifndef ZEL_EXCEPTIONS_OPERATIONNOTSUPPORTEDEXCEPTION_H
#define ZEL_EXCEPTIONS_OPERATIONNOTSUPPORTEDEXCEPTION_H

#include "zel/exceptions/OperationException.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// A named operation is not offered. By name it answers to "OperationException", not to its own.
class ZEL_API OperationNotSupportedException : public OperationException {
public:
    /// With the message part by part; parameters as for ZelException.
    OperationNotSupportedException(const std::string& operationName, const char* catalogName, int entryCode,
                                   const char* entryName, const char* entryText, const char* file, int line,
                                   const char* function);

    /// With a catalogued message, borrowed; parameters as for ZelException.
    OperationNotSupportedException(const std::string& operationName, const RT::ILocalizable* text, const char* file,
                                   int line, const char* function);

    /// With the default message: entry -1007,
    /// "The requested operation is either not supported in this context or is not implemented".
    OperationNotSupportedException(const std::string& operationName, const char* file, int line, const char* function);

    /// Shares the properties, as every copy does.
    OperationNotSupportedException(const OperationNotSupportedException& other);
    ~OperationNotSupportedException() override;

    OperationNotSupportedException* clone() const override;
    bool instanceOf(int code) const override;
    bool instanceOf(const std::string& name) const override;
};

} // namespace ZEL::EXCEPTIONS

#endif
