/// @file
/// BadAllocException.
#ifndef ZEL_EXCEPTIONS_BADALLOCEXCEPTION_H
#define ZEL_EXCEPTIONS_BADALLOCEXCEPTION_H

#include "zel/exceptions/SystemException.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// Memory ran out.
class ZEL_API BadAllocException : public SystemException {
public:
    /// With the message part by part; parameters as for ZelException.
    BadAllocException(const char* catalogName, int entryCode, const char* entryName, const char* entryText,
                      const char* file, int line, const char* function);

    /// With a catalogued message, borrowed; parameters as for ZelException.
    BadAllocException(const RT::ILocalizable* text, const char* file, int line, const char* function);

    /// With the default message: entry -1001, "A memory allocation error occurred".
    BadAllocException(const char* file, int line, const char* function);

    /// Shares the properties, as every copy does.
    BadAllocException(const BadAllocException& other);
    ~BadAllocException() override;

    BadAllocException* clone() const override;
    bool instanceOf(int code) const override;
    bool instanceOf(const std::string& name) const override;
};

} // namespace ZEL::EXCEPTIONS

#endif
