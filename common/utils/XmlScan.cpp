// An element is looked for by plain substrings, again and again in the rest of the text behind the one before.
// Searching afresh each time would cost the length of the text for each element whose opening has a rarer form, or has
// no closing tag ahead. So each pattern remembers where it occurs next, or that it doesn't occur any more: places where
// a search starts only move on, hence every stretch of the text is searched once for each of five patterns.
#include "utils/XmlScan.h"

#include <string.h>

namespace ZEL {

namespace {

constexpr std::size_t absent = std::string_view::npos;

// Linear in the text for any pattern, unlike std::string_view::find. No pattern is empty.
std::size_t findFrom(std::string_view text, std::string_view pattern, std::size_t from) {
    if (from >= text.size())
        return absent;
    const void* found = ::memmem(text.data() + from, text.size() - from, pattern.data(), pattern.size());
    return found != nullptr ? static_cast<std::size_t>(static_cast<const char*>(found) - text.data()) : absent;
}

std::string join(std::string_view head, std::string_view name, std::string_view tail) {
    std::string joined;
    joined.reserve(head.size() + name.size() + tail.size());
    return joined.append(head).append(name).append(tail);
}

} // namespace

std::size_t ElementFinder::Pattern::find(std::string_view text, std::size_t from) {
    if (!searched_ || found_ < from) {
        // Elements mostly stand directly behind one another.
        const bool here = from <= text.size() && text.compare(from, pattern_.size(), pattern_) == 0;
        found_ = here ? from : findFrom(text, pattern_, from);
        searched_ = true;
    }
    return found_;
}

ElementFinder::ElementFinder(std::string_view name, std::string_view text)
    : text_(text), openings_{Pattern(join("<", name, ">")), Pattern(join("<", name, " ")),
                             Pattern(join("<", name, "/>"))},
      closing_(join("</", name, ">")), selfClosing_("/>") {}

std::string_view ElementFinder::next() {
    for (Pattern& opening : openings_) {
        std::size_t start = opening.find(text_, rest_);
        if (start == absent)
            continue;
        const std::string_view element = text_.substr(start, elementLength(start));
        if (element.empty())
            break;
        // The search goes on behind the first place in the rest where the element's text stands. That is where it was
        // found, since the first occurrence of its opening is there, unless a name with "/>" in it ended it within
        // its own opening.
        if (element.size() < opening.size())
            start = findFrom(text_, element, rest_);
        rest_ = start + element.size();
        return element;
    }
    return std::string_view();
}

std::size_t ElementFinder::elementLength(std::size_t start) {
    // With a name of slashes alone, or none, an element may close by its own opening; it has the same length either
    // way.
    const std::size_t closing = closing_.find(text_, start);
    if (closing != absent)
        return closing + closing_.size() - start;
    const std::size_t end = selfClosing_.find(text_, start);
    if (end == absent || text_.substr(start + 1, end - start - 1).find('<') != absent)
        return 0;
    return end + selfClosing_.size() - start;
}

std::string_view elementValue(std::string_view element) {
    const std::size_t first = element.find('>');
    const std::size_t last = element.rfind('<');
    if (first == absent || last == absent || last < first)
        return std::string_view();
    return element.substr(first + 1, last - first - 1);
}

std::optional<std::string_view> attributeValue(std::string_view name, std::string_view text) {
    const std::string opening = join("", name, "=\"");
    const std::size_t found = findFrom(text, opening, 0);
    if (found == absent)
        return std::nullopt;
    const std::size_t start = found + opening.size();
    const std::size_t end = text.find('"', start);
    if (end == absent)
        return std::nullopt;
    return text.substr(start, end - start);
}

} // namespace ZEL
