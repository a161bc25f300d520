// Two texts with a tab between, cut, cleaned and compared with each other: as the plain wording says it.
#include "zel/utils/StringUtils.h"

#include "Target.h"

using std::string_literals::operator""s;
using ZEL::RT::StringUtils;

namespace {

Texts pieces(const std::string& text, const std::string& delimiters) {
    Texts result{""};
    for (const char c : text)
        if (delimiters.find(c) != std::string::npos)
            result.emplace_back();
        else
            result.back() += c;
    return result;
}

bool isBlank(char c) { return c == ' ' || c == '\r' || c == '\n'; }

std::string trimmed(std::string text) {
    while (!text.empty() && isBlank(text.back()))
        text.pop_back();
    while (!text.empty() && isBlank(text.front()))
        text.erase(0, 1);
    return text;
}

std::string sanitized(const std::string& text) {
    std::string kept;
    for (const char c : text)
        if (c == '\0' || c == '\n' || c == '\r' || static_cast<unsigned char>(c) > 127 || (c >= ' ' && c < '\x7F'))
            kept += c;
    return kept;
}

// All that has ever been in the memory of a text is gone, what lies behind its present end included.
void checkShredding(std::string text, std::size_t used) {
    text.resize(used);
    const char* const memory = text.data();
    const std::size_t capacity = text.capacity();
    StringUtils::shredString(text);
    check("shredded", text, " "s);
    check("shredded memory", std::string(memory, capacity), " "s + std::string(capacity - 1, '\0'));
}

void checkOne(const std::string& text) {
    check("ToUppercase", StringUtils::ToUppercase(text), recased(text, 'a'));
    check("ToLowercase", StringUtils::ToLowercase(text), recased(text, 'A'));
    std::string changed = text;
    check("Trim", StringUtils::Trim(text), trimmed(text));
    StringUtils::Trim(changed);
    check("Trim in place", changed, trimmed(text));
    changed = text;
    StringUtils::Sanitize(changed);
    check("Sanitize", changed, sanitized(text));
}

void checkBoth(const std::string& text, const std::string& other) {
    check("Tokenize", StringUtils::Tokenize(text, other), pieces(text, other));
    check("StartsWith", StringUtils::StartsWith(text, other), text.find(other) == 0);
    check("EndsWith", StringUtils::EndsWith(text, other),
          text.find(other) != std::string::npos && text.rfind(other) == text.size() - other.size());
    check("Matches", StringUtils::Matches(text, other), other.empty() || text == other);
}

// Without a text, there is no name.
void checkLocation(const std::string& className, const std::string& function, int line) {
    std::string location = className.empty() ? "" : className + "::";
    location += function.empty() ? "" : function + "()";
    if (location.empty())
        location = "Unknown Location";
    else if (line > 0)
        location += " @" + std::to_string(line);
    check("ToLocation",
          StringUtils::ToLocation(className.empty() ? nullptr : className.c_str(),
                                  function.empty() ? nullptr : function.c_str(), line),
          location);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string row(reinterpret_cast<const char*>(data), size);
    const auto [left, right] = fields<2>(data, size);
    checkOne(row);
    checkOne(right);
    checkBoth(left, right);
    checkBoth(right, left);
    checkShredding(row, left.size());
    checkLocation(left.c_str(), right.c_str(), static_cast<int>(left.size()) - 2);
    return 0;
}
