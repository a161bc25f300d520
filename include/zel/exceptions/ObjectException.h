/// @file
/// ObjectException.
#ifndef ZEL_EXCEPTIONS_OBJECTEXCEPTION_H
#define ZEL_EXCEPTIONS_OBJECTEXCEPTION_H

#include "zel/exceptions/RuntimeException.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// A failure that concerns a named object of some type. It calls itself "ObjectNotFoundException" and answers to
/// that name, while its code is its own; clients rely on it.
class ZEL_API ObjectException : public RuntimeException {
public:
    /// With the message part by part; parameters as for ZelException.
    ObjectException(const std::string& objectType, const std::string& objectName, const char* catalogName,
                    int entryCode, const char* entryName, const char* entryText, const char* file, int line,
                    const char* function);

    /// With a catalogued message, borrowed; parameters as for ZelException.
    ObjectException(const std::string& objectType, const std::string& objectName, const RT::ILocalizable* text,
                    const char* file, int line, const char* function);

    /// Shares the properties, as every copy does.
    ObjectException(const ObjectException& other);
    ~ObjectException() override;

    ObjectException* clone() const override;
    bool instanceOf(int code) const override;
    bool instanceOf(const std::string& name) const override;

    /// Property "ObjectType": the kind of object; "" when not set.
    /// @{
    std::string getObjectType() const;
    void setObjectType(const std::string& objectType);
    /// @}

    /// Property "ObjectName": the object; "" when not set.
    /// @{
    std::string getObjectName() const;
    void setObjectName(const std::string& objectName);
    /// @}

protected:
    /// For subclasses, which pass their own name and code.
    /// @{
    ObjectException(const std::string& objectType, const std::string& objectName, const char* name, int code,
                    const char* catalogName, int entryCode, const char* entryName, const char* entryText,
                    const char* file, int line, const char* function);
    ObjectException(const std::string& objectType, const std::string& objectName, const char* name, int code,
                    const RT::ILocalizable* text, const char* file, int line, const char* function);
    /// @}
};

} // namespace ZEL::EXCEPTIONS

#endif
