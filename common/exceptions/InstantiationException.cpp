#include "zel/exceptions/InstantiationException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::Instantiation);
}

InstantiationException::InstantiationException(const std::string& objectType, const std::string& objectName,
                                               const char* catalogName, int entryCode, const char* entryName,
                                               const char* entryText, const char* file, int line, const char* function)
    : ObjectException(objectType, objectName, self.name, self.code, catalogName, entryCode, entryName, entryText, file,
                      line, function) {}

InstantiationException::InstantiationException(const std::string& objectType, const std::string& objectName,
                                               const RT::ILocalizable* text, const char* file, int line,
                                               const char* function)
    : ObjectException(objectType, objectName, self.name, self.code, text, file, line, function) {}

InstantiationException::InstantiationException(const InstantiationException& other) = default;

InstantiationException::~InstantiationException() = default;

InstantiationException* InstantiationException::clone() const { return new InstantiationException(*this); }

bool InstantiationException::instanceOf(int code) const { return answersTo(Row::Instantiation, code); }

bool InstantiationException::instanceOf(const std::string& name) const { return answersTo(Row::Instantiation, name); }

} // namespace ZEL::EXCEPTIONS
