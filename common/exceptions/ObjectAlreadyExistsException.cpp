#include "zel/exceptions/ObjectAlreadyExistsException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::ObjectAlreadyExists);
}

ObjectAlreadyExistsException::ObjectAlreadyExistsException(const std::string& objectType, const std::string& objectName,
                                                           const char* catalogName, int entryCode,
                                                           const char* entryName, const char* entryText,
                                                           const char* file, int line, const char* function)
    : ObjectException(objectType, objectName, self.name, self.code, catalogName, entryCode, entryName, entryText, file,
                      line, function) {}

ObjectAlreadyExistsException::ObjectAlreadyExistsException(const std::string& objectType, const std::string& objectName,
                                                           const RT::ILocalizable* text, const char* file, int line,
                                                           const char* function)
    : ObjectException(objectType, objectName, self.name, self.code, text, file, line, function) {}

ObjectAlreadyExistsException::ObjectAlreadyExistsException(const ObjectAlreadyExistsException& other) = default;

ObjectAlreadyExistsException::~ObjectAlreadyExistsException() = default;

ObjectAlreadyExistsException* ObjectAlreadyExistsException::clone() const {
    return new ObjectAlreadyExistsException(*this);
}

bool ObjectAlreadyExistsException::instanceOf(int code) const { return answersTo(Row::ObjectAlreadyExists, code); }

bool ObjectAlreadyExistsException::instanceOf(const std::string& name) const {
    return answersTo(Row::ObjectAlreadyExists, name);
}

} // namespace ZEL::EXCEPTIONS
