/// @file
/// ObjectAlreadyExistsException.
#ifndef ZEL_EXCEPTIONS_OBJECTALREADYEXISTSEXCEPTION_H
#define ZEL_EXCEPTIONS_OBJECTALREADYEXISTSEXCEPTION_H

#include "zel/exceptions/ObjectException.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// An object exists that must not.
class ZEL_API ObjectAlreadyExistsException : public ObjectException {
public:
    /// With the message part by part; parameters as for ZelException.
    ObjectAlreadyExistsException(const std::string& objectType, const std::string& objectName, const char* catalogName,
                                 int entryCode, const char* entryName, const char* entryText, const char* file,
                                 int line, const char* function);

    /// With a catalogued message, borrowed; parameters as for ZelException.
    ObjectAlreadyExistsException(const std::string& objectType, const std::string& objectName,
                                 const RT::ILocalizable* text, const char* file, int line, const char* function);

    /// Shares the properties, as every copy does.
    ObjectAlreadyExistsException(const ObjectAlreadyExistsException& other);
    ~ObjectAlreadyExistsException() override;

    ObjectAlreadyExistsException* clone() const override;
    bool instanceOf(int code) const override;
    bool instanceOf(const std::string& name) const override;
};

} // namespace ZEL::EXCEPTIONS

#endif
