/// @file
/// OperationException.
#ifndef ZEL_EXCEPTIONS_OPERATIONEXCEPTION_H
#define ZEL_EXCEPTIONS_OPERATIONEXCEPTION_H

#include "zel/exceptions/SystemException.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// A failure of a named operation. Answers to the code of SystemException but not to its name.
class ZEL_API OperationException : public SystemException {
public:
    /// With the message part by part; parameters as for ZelException.
    OperationException(const std::string& operationName, const char* catalogName, int entryCode, const char* entryName,
                       const char* entryText, const char* file, int line, const char* function);

    /// With a catalogued message, borrowed; parameters as for ZelException.
    OperationException(const std::string& operationName, const RT::ILocalizable* text, const char* file, int line,
                       const char* function);

    /// Shares the properties, as every copy does.
    OperationException(const OperationException& other);
    ~OperationException() override;

    OperationException* clone() const override;
    bool instanceOf(int code) const override;
    bool instanceOf(const std::string& name) const override;

    /// Property "OperationName": the operation, as it was named on construction.
    std::string getOperationName() const;

protected:
    /// For subclasses, which pass their own name and code.
    /// @{
    OperationException(const std::string& operationName, const char* name, int code, const char* catalogName,
                       int entryCode, const char* entryName, const char* entryText, const char* file, int line,
                       const char* function);
    OperationException(const std::string& operationName, const char* name, int code, const RT::ILocalizable* text,
                       const char* file, int line, const char* function);
    /// @}
};

} // namespace ZEL::EXCEPTIONS

#endif
