/// @file
/// NullPointerException.
#ifndef ZEL_EXCEPTIONS_NULLPOINTEREXCEPTION_H
#define ZEL_EXCEPTIONS_NULLPOINTEREXCEPTION_H

#include "zel/exceptions/SystemException.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// A null pointer was followed. Answers neither to the code nor to the name of SystemException.
class ZEL_API NullPointerException : public SystemException {
public:
    /// With the message part by part; parameters as for ZelException.
    NullPointerException(const char* catalogName, int entryCode, const char* entryName, const char* entryText,
                         const char* file, int line, const char* function);

    /// With a catalogued message, borrowed; parameters as for ZelException.
    NullPointerException(const RT::ILocalizable* text, const char* file, int line, const char* function);

    /// With the default message: entry -1004, "A NULL pointer was encountered during the operation".
    NullPointerException(const char* file, int line, const char* function);

    /// Shares the properties, as every copy does.
    NullPointerException(const NullPointerException& other);
    ~NullPointerException() override;

    NullPointerException* clone() const override;
    bool instanceOf(int code) const override;
    bool instanceOf(const std::string& name) const override;
};

} // namespace ZEL::EXCEPTIONS

#endif
