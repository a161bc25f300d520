/// @file
/// Catalogue entry that holds its parts.
#ifndef ZEL_EXCEPTIONS_LOCALTEXT_H
#define ZEL_EXCEPTIONS_LOCALTEXT_H

#include "zel/exceptions/ILocalizable.h"

#include <string>

namespace ZEL::RT {

/// A catalogue entry as a plain value. Nothing is looked up: it answers with what it was made of.
class ZEL_API LocalText : public ILocalizable {
public:
    /// All five parts; the text comes behind the name.
    LocalText(const std::string& catalogName, int entryCode, const std::string& entryName, const std::string& entryText,
              const std::string& locale);

    /// The locale is "".
    LocalText(const std::string& catalogName, int entryCode, const std::string& entryName,
              const std::string& entryText);

    /// The third argument is the text. The entry name is the code in decimal, such as "-1001"; the locale is "".
    LocalText(const std::string& catalogName, int entryCode, const std::string& entryText);

    /// Copies the five parts of any entry.
    LocalText(const ILocalizable& other);

    /// Copies have strings of their own: references into one entry do not follow the other.
    /// @{
    LocalText(const LocalText&);
    LocalText& operator=(const LocalText&);
    /// @}
    ~LocalText() override;

    int getEntryCode() const override;
    const std::string& getEntryName() const override;
    const std::string& getCatalogName() const override;
    const std::string& getEntryText() const override;
    const std::string& getEntryLocale() const override;

    /// @return the entry text alone.
    virtual std::string toString() const;

private:
    struct Layout;

    std::string catalogName_;
    std::string entryText_;
    int entryCode_;
    std::string entryName_;
    std::string entryLocale_;
};

} // namespace ZEL::RT

#endif
