/// @file
/// XmlException.
#ifndef ZEL_EXCEPTIONS_XMLEXCEPTION_H
#define ZEL_EXCEPTIONS_XMLEXCEPTION_H

#include "zel/exceptions/SerializationException.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// An XML text could not be read. It has no identity of its own: name, code and answers are those of
/// SerializationException.
class ZEL_API XmlException : public SerializationException {
public:
    /// With the message part by part; parameters as for ZelException.
    XmlException(const char* catalogName, int entryCode, const char* entryName, const char* entryText, const char* file,
                 int line, const char* function);

    /// With a catalogued message, borrowed; parameters as for ZelException.
    XmlException(const RT::ILocalizable* text, const char* file, int line, const char* function);

    /// Shares the properties, as every copy does.
    XmlException(const XmlException& other);
    ~XmlException() override;

    XmlException* clone() const override;
    bool instanceOf(int code) const override;
    bool instanceOf(const std::string& name) const override;
};

} // namespace ZEL::EXCEPTIONS

#endif
