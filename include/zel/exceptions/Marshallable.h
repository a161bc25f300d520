/// @file
/// Capability: being turned into one text and back.
#ifndef ZEL_EXCEPTIONS_MARSHALLABLE_H
#define ZEL_EXCEPTIONS_MARSHALLABLE_H

#include "zel/exceptions/Mixinable.h"

#include <string>

namespace ZEL {

/// What converts its whole state to one text and back; local files save and refresh any object that does. Virtual
/// functions in slot order: unmarshal() comes before marshal(), and callers depend on it.
class ZEL_API Marshallable : public Mixinable {
public:
    ~Marshallable() override;

    /// Replaces the state by the one that \p text describes.
    virtual void unmarshal(const std::string& text) = 0;

    /// @return the whole state as one text.
    virtual std::string marshal() const = 0;
};

} // namespace ZEL

#endif
