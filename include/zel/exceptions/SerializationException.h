/// @file
/// SerializationException.
#ifndef ZEL_EXCEPTIONS_SERIALIZATIONEXCEPTION_H
#define ZEL_EXCEPTIONS_SERIALIZATIONEXCEPTION_H

#include "zel/exceptions/SystemException.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// A text could not be turned into an object, or an object into a text.
class ZEL_API SerializationException : public SystemException {
public:
    /// With the message part by part; parameters as for ZelException.
    SerializationException(const char* catalogName, int entryCode, const char* entryName, const char* entryText,
                           const char* file, int line, const char* function);

    /// The same, and the system's message.
    SerializationException(const std::string& systemMessage, const char* catalogName, int entryCode,
                           const char* entryName, const char* entryText, const char* file, int line,
                           const char* function);

    /// With a catalogued message, borrowed; parameters as for ZelException.
    SerializationException(const std::string& systemMessage, const RT::ILocalizable* text, const char* file, int line,
                           const char* function);

    /// With the default message: entry -1056, "Error converting string to object".
    SerializationException(const std::string& systemMessage, const char* file, int line, const char* function);

    /// Shares the properties, as every copy does.
    SerializationException(const SerializationException& other);
    ~SerializationException() override;

    SerializationException* clone() const override;
    bool instanceOf(int code) const override;
    bool instanceOf(const std::string& name) const override;

protected:
    /// For subclasses, which pass their own name and code.
    /// @{
    SerializationException(const char* name, int code, const char* catalogName, int entryCode, const char* entryName,
                           const char* entryText, const char* file, int line, const char* function);
    SerializationException(const char* name, int code, const RT::ILocalizable* text, const char* file, int line,
                           const char* function);
    SerializationException(const std::string& systemMessage, const char* name, int code, const char* catalogName,
                           int entryCode, const char* entryName, const char* entryText, const char* file, int line,
                           const char* function);
    SerializationException(const std::string& systemMessage, const char* name, int code, const RT::ILocalizable* text,
                           const char* file, int line, const char* function);
    /// @}
};

} // namespace ZEL::EXCEPTIONS

#endif
