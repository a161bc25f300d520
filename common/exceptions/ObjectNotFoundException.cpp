#include "zel/exceptions/ObjectNotFoundException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::ObjectNotFound);
}

ObjectNotFoundException::ObjectNotFoundException(const std::string& objectType, const std::string& objectName,
                                                 const char* catalogName, int entryCode, const char* entryName,
                                                 const char* entryText, const char* file, int line,
                                                 const char* function)
    : ObjectException(objectType, objectName, self.name, self.code, catalogName, entryCode, entryName, entryText, file,
                      line, function) {}

ObjectNotFoundException::ObjectNotFoundException(const std::string& objectType, const std::string& objectName,
                                                 const RT::ILocalizable* text, const char* file, int line,
                                                 const char* function)
    : ObjectException(objectType, objectName, self.name, self.code, text, file, line, function) {}

ObjectNotFoundException::ObjectNotFoundException(const ObjectNotFoundException& other) = default;

ObjectNotFoundException::~ObjectNotFoundException() = default;

ObjectNotFoundException* ObjectNotFoundException::clone() const { return new ObjectNotFoundException(*this); }

bool ObjectNotFoundException::instanceOf(int code) const { return answersTo(Row::ObjectNotFound, code); }

bool ObjectNotFoundException::instanceOf(const std::string& name) const { return answersTo(Row::ObjectNotFound, name); }

} // namespace ZEL::EXCEPTIONS
