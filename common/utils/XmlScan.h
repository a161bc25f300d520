/// @file
/// Finding elements and attributes in views, beneath XmlUtils and the properties store.
#ifndef ZEL_COMMON_UTILS_XMLSCAN_H
#define ZEL_COMMON_UTILS_XMLSCAN_H

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace ZEL {

/// Finds the elements of one name in a text, one behind the other, in time proportional to the text.
class ElementFinder {
public:
    /// The text must outlive the finder and what it finds.
    ElementFinder(std::string_view name, std::string_view text);

    /// The first element in the text behind the one found before, tags included; empty if there is none.
    std::string_view next();

private:
    class Pattern {
    public:
        explicit Pattern(std::string pattern) : pattern_(std::move(pattern)) {}
        std::size_t size() const { return pattern_.size(); }

        /// The first occurrence at or after \c from, which never decreases from one call to the next.
        std::size_t find(std::string_view text, std::size_t from);

    private:
        std::string pattern_;
        std::size_t found_ = 0;
        bool searched_ = false;
    };

    /// The length of the element that begins at \c start with an opening tag; 0 if it has no end.
    std::size_t elementLength(std::size_t start);

    std::string_view text_;
    std::size_t rest_ = 0;
    std::array<Pattern, 3> openings_;
    Pattern closing_;
    Pattern selfClosing_;
};

/// The text between the first ">" and the last "<" of an element; empty if it has none between them.
std::string_view elementValue(std::string_view element);

/// The text between the quotes of the first \c name="..." in a text.
std::optional<std::string_view> attributeValue(std::string_view name, std::string_view text);

} // namespace ZEL

#endif
