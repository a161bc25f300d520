/// @file
/// OperationFailedException.
#ifndef ZEL_EXCEPTIONS_OPERATIONFAILEDEXCEPTION_H
#define ZEL_EXCEPTIONS_OPERATIONFAILEDEXCEPTION_H

#include "zel/exceptions/OperationException.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// A named operation failed.
class ZEL_API OperationFailedException : public OperationException {
public:
    /// With the message part by part; parameters as for ZelException.
    OperationFailedException(const std::string& operationName, const char* catalogName, int entryCode,
                             const char* entryName, const char* entryText, const char* file, int line,
                             const char* function);

    /// With a catalogued message, borrowed; parameters as for ZelException.
    OperationFailedException(const std::string& operationName, const RT::ILocalizable* text, const char* file, int line,
                             const char* function);

    /// Shares the properties, as every copy does.
    OperationFailedException(const OperationFailedException& other);
    ~OperationFailedException() override;

    OperationFailedException* clone() const override;
    bool instanceOf(int code) const override;
    bool instanceOf(const std::string& name) const override;
};

} // namespace ZEL::EXCEPTIONS

#endif
