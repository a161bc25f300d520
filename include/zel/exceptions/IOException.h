/// @file
/// IOException.
#ifndef ZEL_EXCEPTIONS_IOEXCEPTION_H
#define ZEL_EXCEPTIONS_IOEXCEPTION_H

#include "zel/exceptions/SystemException.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// A failure of input or output on a file. It answers to the code of SystemException but not to its name.
class ZEL_API IOException : public SystemException {
public:
    /// With the message part by part; parameters as for ZelException.
    IOException(const std::string& fileName, const char* catalogName, int entryCode, const char* entryName,
                const char* entryText, const char* file, int line, const char* function);

    /// With a catalogued message, borrowed; parameters as for ZelException.
    IOException(const std::string& fileName, const RT::ILocalizable* text, const char* file, int line,
                const char* function);

    /// Shares the properties, as every copy does.
    IOException(const IOException& other);
    ~IOException() override;

    IOException* clone() const override;
    bool instanceOf(int code) const override;
    bool instanceOf(const std::string& name) const override;

    /// Property "FileName": the file that the operation was about, as the caller named it; "" when not set.
    /// @{
    std::string getFileName() const;
    void setFileName(const std::string& fileName);
    /// @}
};

} // namespace ZEL::EXCEPTIONS

#endif
