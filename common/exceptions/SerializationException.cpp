#include "zel/exceptions/SerializationException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::Serialization);
}

SerializationException::SerializationException(const char* catalogName, int entryCode, const char* entryName,
                                               const char* entryText, const char* file, int line, const char* function)
    : SystemException(self.name, self.code, catalogName, entryCode, entryName, entryText, file, line, function) {}

SerializationException::SerializationException(const std::string& systemMessage, const char* catalogName, int entryCode,
                                               const char* entryName, const char* entryText, const char* file, int line,
                                               const char* function)
    : SystemException(self.name, self.code, catalogName, entryCode, entryName, entryText, file, line, function) {
    setSystemMessage(systemMessage);
}

SerializationException::SerializationException(const std::string& systemMessage, const RT::ILocalizable* text,
                                               const char* file, int line, const char* function)
    : SystemException(self.name, self.code, text, file, line, function) {
    setSystemMessage(systemMessage);
}

SerializationException::SerializationException(const std::string& systemMessage, const char* file, int line,
                                               const char* function)
    : SystemException(self.name, self.code, messageCatalog, self.entryCode, messageName, self.entryText, file, line,
                      function) {
    setSystemMessage(systemMessage);
}

SerializationException::SerializationException(const char* name, int code, const char* catalogName, int entryCode,
                                               const char* entryName, const char* entryText, const char* file, int line,
                                               const char* function)
    : SystemException(name, code, catalogName, entryCode, entryName, entryText, file, line, function) {}

SerializationException::SerializationException(const char* name, int code, const RT::ILocalizable* text,
                                               const char* file, int line, const char* function)
    : SystemException(name, code, text, file, line, function) {}

SerializationException::SerializationException(const std::string& systemMessage, const char* name, int code,
                                               const char* catalogName, int entryCode, const char* entryName,
                                               const char* entryText, const char* file, int line, const char* function)
    : SystemException(name, code, catalogName, entryCode, entryName, entryText, file, line, function) {
    setSystemMessage(systemMessage);
}

SerializationException::SerializationException(const std::string& systemMessage, const char* name, int code,
                                               const RT::ILocalizable* text, const char* file, int line,
                                               const char* function)
    : SystemException(name, code, text, file, line, function) {
    setSystemMessage(systemMessage);
}

SerializationException::SerializationException(const SerializationException& other) = default;

SerializationException::~SerializationException() = default;

SerializationException* SerializationException::clone() const { return new SerializationException(*this); }

bool SerializationException::instanceOf(int code) const { return answersTo(Row::Serialization, code); }

bool SerializationException::instanceOf(const std::string& name) const { return answersTo(Row::Serialization, name); }

} // namespace ZEL::EXCEPTIONS
