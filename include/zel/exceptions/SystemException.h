/// @file
/// SystemException.
#ifndef ZEL_EXCEPTIONS_SYSTEMEXCEPTION_H
#define ZEL_EXCEPTIONS_SYSTEMEXCEPTION_H

#include "zel/exceptions/RuntimeException.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// A failure that the system reported, with its error number and message.
class ZEL_API SystemException : public RuntimeException {
public:
    /// With the message part by part; parameters as for ZelException.
    SystemException(const char* catalogName, int entryCode, const char* entryName, const char* entryText,
                    const char* file, int line, const char* function);

    /// The same, and the system's error number.
    SystemException(int systemError, const char* catalogName, int entryCode, const char* entryName,
                    const char* entryText, const char* file, int line, const char* function);

    /// With a catalogued message, borrowed; parameters as for ZelException.
    SystemException(const RT::ILocalizable* text, const char* file, int line, const char* function);

    /// Shares the properties, as every copy does.
    SystemException(const SystemException& other);
    ~SystemException() override;

    SystemException* clone() const override;
    bool instanceOf(int code) const override;
    bool instanceOf(const std::string& name) const override;

    /// Property "SystemError": the system's error number, kept as decimal text.
    /// @throws ZEL::EXCEPTIONS::InvalidArgumentException entry -1009 when it is asked for and none was set.
    /// @{
    int getSystemError() const;
    void setSystemError(int systemError);
    /// @}

    /// Property "SystemMessage": the system's words; "" when not set.
    /// @{
    std::string getSystemMessage() const;
    void setSystemMessage(const std::string& systemMessage);
    /// @}

protected:
    /// For subclasses, which pass their own name and code.
    /// @{
    SystemException(const char* name, int code, const char* catalogName, int entryCode, const char* entryName,
                    const char* entryText, const char* file, int line, const char* function);
    SystemException(const char* name, int code, const RT::ILocalizable* text, const char* file, int line,
                    const char* function);
    /// @}
};

} // namespace ZEL::EXCEPTIONS

#endif
