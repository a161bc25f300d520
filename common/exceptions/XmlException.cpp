#include "zel/exceptions/XmlException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::Xml);
}

XmlException::XmlException(const char* catalogName, int entryCode, const char* entryName, const char* entryText,
                           const char* file, int line, const char* function)
    : SerializationException(self.name, self.code, catalogName, entryCode, entryName, entryText, file, line, function) {
}

XmlException::XmlException(const RT::ILocalizable* text, const char* file, int line, const char* function)
    : SerializationException(self.name, self.code, text, file, line, function) {}

XmlException::XmlException(const XmlException& other) = default;

XmlException::~XmlException() = default;

XmlException* XmlException::clone() const { return new XmlException(*this); }

bool XmlException::instanceOf(int code) const { return answersTo(Row::Xml, code); }

bool XmlException::instanceOf(const std::string& name) const { return answersTo(Row::Xml, name); }

} // namespace ZEL::EXCEPTIONS
