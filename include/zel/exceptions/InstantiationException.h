/// @file
/// InstantiationException.
#ifndef ZEL_EXCEPTIONS_INSTANTIATIONEXCEPTION_H
#define ZEL_EXCEPTIONS_INSTANTIATIONEXCEPTION_H

#include "zel/exceptions/ObjectException.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// An object could not be made.
class ZEL_API InstantiationException : public ObjectException {
public:
    /// With the message part by part; parameters as for ZelException.
    InstantiationException(const std::string& objectType, const std::string& objectName, const char* catalogName,
                           int entryCode, const char* entryName, const char* entryText, const char* file, int line,
                           const char* function);

    /// With a catalogued message, borrowed; parameters as for ZelException.
    InstantiationException(const std::string& objectType, const std::string& objectName, const RT::ILocalizable* text,
                           const char* file, int line, const char* function);

    /// Shares the properties, as every copy does.
    InstantiationException(const InstantiationException& other);
    ~InstantiationException() override;

    InstantiationException* clone() const override;
    bool instanceOf(int code) const override;
    bool instanceOf(const std::string& name) const override;
};

} // namespace ZEL::EXCEPTIONS

#endif
