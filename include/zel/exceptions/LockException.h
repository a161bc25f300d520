/// @file
/// LockException.
#ifndef ZEL_EXCEPTIONS_LOCKEXCEPTION_H
#define ZEL_EXCEPTIONS_LOCKEXCEPTION_H

#include "zel/exceptions/SystemException.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// A lock could not be made, taken or given back. Answers neither to the code nor to the name of SystemException.
class ZEL_API LockException : public SystemException {
public:
    /// With the message part by part; parameters as for ZelException.
    LockException(const char* catalogName, int entryCode, const char* entryName, const char* entryText,
                  const char* file, int line, const char* function);

    /// With a catalogued message, borrowed; parameters as for ZelException.
    LockException(const RT::ILocalizable* text, const char* file, int line, const char* function);

    /// Shares the properties, as every copy does.
    LockException(const LockException& other);
    ~LockException() override;

    LockException* clone() const override;
    bool instanceOf(int code) const override;
    bool instanceOf(const std::string& name) const override;
};

} // namespace ZEL::EXCEPTIONS

#endif
