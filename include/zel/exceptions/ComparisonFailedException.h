/// @file
/// ComparisonFailedException.
#ifndef ZEL_EXCEPTIONS_COMPARISONFAILEDEXCEPTION_H
#define ZEL_EXCEPTIONS_COMPARISONFAILEDEXCEPTION_H

#include "zel/exceptions/RuntimeException.h"

#include <string>

namespace ZEL::EXCEPTIONS {

/// Two things that must be equal differ. Its name string, and the name it answers to, is
/// "ComparisionFailedException"; clients match that text.
class ZEL_API ComparisonFailedException : public RuntimeException {
public:
    /// With the message part by part; parameters as for ZelException.
    ComparisonFailedException(const char* catalogName, int entryCode, const char* entryName, const char* entryText,
                              const char* file, int line, const char* function);

    /// With a catalogued message, borrowed; parameters as for ZelException.
    ComparisonFailedException(const RT::ILocalizable* text, const char* file, int line, const char* function);

    /// With the default message: entry -1006, "The arguments specified in the operation were invalid".
    ComparisonFailedException(const char* file, int line, const char* function);

    /// Shares the properties, as every copy does.
    ComparisonFailedException(const ComparisonFailedException& other);
    ~ComparisonFailedException() override;

    ComparisonFailedException* clone() const override;
    bool instanceOf(int code) const override;
    bool instanceOf(const std::string& name) const override;
};

} // namespace ZEL::EXCEPTIONS

#endif
