#include "zel/exceptions/ObjectException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::Object);
}

ObjectException::ObjectException(const std::string& objectType, const std::string& objectName, const char* catalogName,
                                 int entryCode, const char* entryName, const char* entryText, const char* file,
                                 int line, const char* function)
    : RuntimeException(self.name, self.code, catalogName, entryCode, entryName, entryText, file, line, function) {
    setObjectType(objectType);
    setObjectName(objectName);
}

ObjectException::ObjectException(const std::string& objectType, const std::string& objectName,
                                 const RT::ILocalizable* text, const char* file, int line, const char* function)
    : RuntimeException(self.name, self.code, text, file, line, function) {
    setObjectType(objectType);
    setObjectName(objectName);
}

ObjectException::ObjectException(const std::string& objectType, const std::string& objectName, const char* name,
                                 int code, const char* catalogName, int entryCode, const char* entryName,
                                 const char* entryText, const char* file, int line, const char* function)
    : RuntimeException(name, code, catalogName, entryCode, entryName, entryText, file, line, function) {
    setObjectType(objectType);
    setObjectName(objectName);
}

ObjectException::ObjectException(const std::string& objectType, const std::string& objectName, const char* name,
                                 int code, const RT::ILocalizable* text, const char* file, int line,
                                 const char* function)
    : RuntimeException(name, code, text, file, line, function) {
    setObjectType(objectType);
    setObjectName(objectName);
}

ObjectException::ObjectException(const ObjectException& other) = default;

ObjectException::~ObjectException() = default;

ObjectException* ObjectException::clone() const { return new ObjectException(*this); }

bool ObjectException::instanceOf(int code) const { return answersTo(Row::Object, code); }

bool ObjectException::instanceOf(const std::string& name) const { return answersTo(Row::Object, name); }

std::string ObjectException::getObjectType() const { return retrieveProperty("ObjectType"); }

void ObjectException::setObjectType(const std::string& objectType) { assignProperty("ObjectType", objectType); }

std::string ObjectException::getObjectName() const { return retrieveProperty("ObjectName"); }

void ObjectException::setObjectName(const std::string& objectName) { assignProperty("ObjectName", objectName); }

} // namespace ZEL::EXCEPTIONS
