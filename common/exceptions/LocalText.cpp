#include "zel/exceptions/LocalText.h"

#include "zel/utils/StringUtils.h"

#include <cstddef>

namespace ZEL::RT {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
struct LocalText::Layout {
    static constexpr std::size_t word = sizeof(void*); // an int takes one, too
    static constexpr std::size_t string = sizeof(std::string);
    static_assert(offsetof(LocalText, catalogName_) == word);
    static_assert(offsetof(LocalText, entryText_) == word + string);
    static_assert(offsetof(LocalText, entryCode_) == word + 2 * string);
    static_assert(offsetof(LocalText, entryName_) == 2 * word + 2 * string);
    static_assert(offsetof(LocalText, entryLocale_) == 2 * word + 3 * string);
};
#pragma GCC diagnostic pop

LocalText::LocalText(const std::string& catalogName, int entryCode, const std::string& entryName,
                     const std::string& entryText, const std::string& locale)
    : catalogName_(catalogName), entryText_(entryText), entryCode_(entryCode), entryName_(entryName),
      entryLocale_(locale) {}

LocalText::LocalText(const std::string& catalogName, int entryCode, const std::string& entryName,
                     const std::string& entryText)
    : LocalText(catalogName, entryCode, entryName, entryText, std::string()) {}

LocalText::LocalText(const std::string& catalogName, int entryCode, const std::string& entryText)
    : LocalText(catalogName, entryCode, StringUtils::ToString(entryCode), entryText) {}

LocalText::LocalText(const ILocalizable& other)
    : LocalText(other.getCatalogName(), other.getEntryCode(), other.getEntryName(), other.getEntryText(),
                other.getEntryLocale()) {}

LocalText::LocalText(const LocalText&) = default;

LocalText& LocalText::operator=(const LocalText&) = default;

LocalText::~LocalText() = default;

int LocalText::getEntryCode() const { return entryCode_; }

const std::string& LocalText::getEntryName() const { return entryName_; }

const std::string& LocalText::getCatalogName() const { return catalogName_; }

const std::string& LocalText::getEntryText() const { return entryText_; }

const std::string& LocalText::getEntryLocale() const { return entryLocale_; }

std::string LocalText::toString() const { return entryText_; }

} // namespace ZEL::RT
