#include "zel/exceptions/RuntimeException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

RuntimeException::RuntimeException(const char* name, int code, const char* catalogName, int entryCode,
                                   const char* entryName, const char* entryText, const char* file, int line,
                                   const char* function)
    : ZelException(name, code, catalogName, entryCode, entryName, entryText, file, line, function) {}

RuntimeException::RuntimeException(const char* name, int code, const RT::ILocalizable* text, const char* file, int line,
                                   const char* function)
    : ZelException(name, code, text, file, line, function) {}

RuntimeException::RuntimeException(const RuntimeException& other) = default;

RuntimeException::~RuntimeException() = default;

RuntimeException* RuntimeException::clone() const { return new RuntimeException(*this); }

bool RuntimeException::instanceOf(int code) const { return answersTo(Row::Runtime, code); }

bool RuntimeException::instanceOf(const std::string& name) const { return answersTo(Row::Runtime, name); }

} // namespace ZEL::EXCEPTIONS
