#include "zel/exceptions/LockException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::Lock);
}

LockException::LockException(const char* catalogName, int entryCode, const char* entryName, const char* entryText,
                             const char* file, int line, const char* function)
    : SystemException(self.name, self.code, catalogName, entryCode, entryName, entryText, file, line, function) {}

LockException::LockException(const RT::ILocalizable* text, const char* file, int line, const char* function)
    : SystemException(self.name, self.code, text, file, line, function) {}

LockException::LockException(const LockException& other) = default;

LockException::~LockException() = default;

LockException* LockException::clone() const { return new LockException(*this); }

bool LockException::instanceOf(int code) const { return answersTo(Row::Lock, code); }

bool LockException::instanceOf(const std::string& name) const { return answersTo(Row::Lock, name); }

} // namespace ZEL::EXCEPTIONS
