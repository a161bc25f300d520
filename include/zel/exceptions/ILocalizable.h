/// @file
/// Entry of a message catalogue.
#ifndef ZEL_EXCEPTIONS_ILOCALIZABLE_H
#define ZEL_EXCEPTIONS_ILOCALIZABLE_H

#include "zel/exceptions/Mixinable.h"

#include <string>

namespace ZEL::RT {

/// Entry of a message catalogue: catalogue name, entry code, entry name, text, and the locale of that text.
/// The references live as long as the entry. Virtual functions in slot order.
class ZEL_API ILocalizable : public Mixinable {
public:
    ~ILocalizable() override;

    /// The message's number in its catalogue, such as -1001; the library's own are negative.
    virtual int getEntryCode() const = 0;

    /// The message's symbolic name, such as "code".
    virtual const std::string& getEntryName() const = 0;

    /// Which catalogue the message is from, such as "ZEL".
    virtual const std::string& getCatalogName() const = 0;

    /// What the user is to read.
    virtual const std::string& getEntryText() const = 0;

    /// The locale that the text is written for; "" when it is not told.
    virtual const std::string& getEntryLocale() const = 0;
};

} // namespace ZEL::RT

#endif
