#include "zel/exceptions/IOException.h"

#include "exceptions/Catalogue.h"

namespace ZEL::EXCEPTIONS {

namespace {
constexpr const ClassRow& self = catalogue(Row::IO);
}

IOException::IOException(const std::string& fileName, const char* catalogName, int entryCode, const char* entryName,
                         const char* entryText, const char* file, int line, const char* function)
    : SystemException(self.name, self.code, catalogName, entryCode, entryName, entryText, file, line, function) {
    setFileName(fileName);
}

IOException::IOException(const std::string& fileName, const RT::ILocalizable* text, const char* file, int line,
                         const char* function)
    : SystemException(self.name, self.code, text, file, line, function) {
    setFileName(fileName);
}

IOException::IOException(const IOException& other) = default;

IOException::~IOException() = default;

IOException* IOException::clone() const { return new IOException(*this); }

bool IOException::instanceOf(int code) const { return answersTo(Row::IO, code); }

bool IOException::instanceOf(const std::string& name) const { return answersTo(Row::IO, name); }

std::string IOException::getFileName() const { return retrieveProperty("FileName"); }

void IOException::setFileName(const std::string& fileName) { assignProperty("FileName", fileName); }

} // namespace ZEL::EXCEPTIONS
