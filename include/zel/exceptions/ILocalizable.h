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

    virtual int getEntryCode() const = 0;
    virtual const std::string& getEntryName() const = 0;
    virtual const std::string& getCatalogName() const = 0;
    virtual const std::string& getEntryText() const = 0;
    virtual const std::string& getEntryLocale() const = 0;
};

} // namespace ZEL::RT

#endif
