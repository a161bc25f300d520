#include "zel/utils/StringUtils.h"

#include "zel/exceptions/InvalidArgumentException.h"

#include "exceptions/Failure.h"
#include "utils/Numbers.h"
#include "utils/Shred.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>

namespace ZEL::RT {

namespace {

using EXCEPTIONS::Failure;

constexpr const char* source = "common/utils/StringUtils";
constexpr const char* unreadable = "The input string cannot be converted to an integer";

constexpr Failure asInteger{-1009, unreadable, 58, "AsInteger"};
constexpr Failure asDouble{-1009, unreadable, 68, "AsDouble"};
constexpr Failure asFloat{-1009, unreadable, 77, "AsFloat"};
constexpr Failure asLong{-1009, unreadable, 86, "AsLong"};
constexpr Failure asInt64{-1009, unreadable, 95, "AsInt64"};

// What a conversion holds as long as no number was read. Callers of AsTimeT know it.
constexpr int nothingRead = -911;

constexpr const char* trimmed = " \r\n";

template <class Number> Number asNumber(const std::string& text, const Failure& failure) {
    Number value = nothingRead;
    readNumber(text, value);
    if ((value == 0 && text != "0") || value == nothingRead)
        EXCEPTIONS::raise<EXCEPTIONS::InvalidArgumentException>(source, failure);
    return value;
}

template <int (*convert)(int)> std::string convertBytes(const std::string& text) {
    std::string result = text;
    for (char& c : result)
        c = static_cast<char>(convert(static_cast<unsigned char>(c)));
    return result;
}

bool isUnwanted(char c) { return (c >= 1 && c <= 31 && c != '\n' && c != '\r') || c == 127; }

// The pieces of text; find gives the first of its so many delimiters in a range.
template <class Find> std::vector<std::string> split(const std::string& text, std::ptrdiff_t delimiters, Find find) {
    const char* const end = text.data() + text.size();
    std::vector<std::string> pieces;
    pieces.reserve(static_cast<std::size_t>(delimiters) + 1);
    const char* start = text.data();
    for (; delimiters != 0; --delimiters) {
        const char* const delimiter = find(start, end);
        pieces.emplace_back(start, delimiter);
        start = delimiter + 1;
    }
    pieces.emplace_back(start, end);
    return pieces;
}

} // namespace

bool StringUtils::StartsWith(const std::string& text, const std::string& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

bool StringUtils::EndsWith(const std::string& text, const std::string& suffix) {
    return text.size() >= suffix.size() && text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

bool StringUtils::Matches(const std::string& text, const std::string& pattern) {
    return pattern.empty() || text == pattern;
}

int StringUtils::AsInteger(const std::string& text) { return asNumber<int>(text, asInteger); }

double StringUtils::AsDouble(const std::string& text) { return asNumber<double>(text, asDouble); }

float StringUtils::AsFloat(const std::string& text) { return asNumber<float>(text, asFloat); }

long StringUtils::AsLong(const std::string& text) { return asNumber<long>(text, asLong); }

std::int64_t StringUtils::AsInt64(const std::string& text) { return asNumber<std::int64_t>(text, asInt64); }

std::time_t StringUtils::AsTimeT(const std::string& text) {
    std::time_t value = nothingRead;
    readNumber(text, value);
    return value;
}

bool StringUtils::AsBoolean(const std::string& text) {
    const std::string lowered = ToLowercase(text);
    if (StartsWith("yes", lowered) || StartsWith("true", lowered))
        return true;
    if (StartsWith("no", lowered) || StartsWith("false", lowered))
        return false;
    return AsInteger(lowered) != 0;
}

std::string StringUtils::ToUppercase(const std::string& text) { return convertBytes<std::toupper>(text); }

std::string StringUtils::ToLowercase(const std::string& text) { return convertBytes<std::tolower>(text); }

std::string StringUtils::Trim(const std::string& text) {
    const std::size_t first = text.find_first_not_of(trimmed);
    if (first == std::string::npos)
        return std::string();
    return text.substr(first, text.find_last_not_of(trimmed) + 1 - first);
}

void StringUtils::Trim(std::string& text) {
    // With nothing to keep, the position is the last one there is, and one more is 0.
    text.erase(text.find_last_not_of(trimmed) + 1);
    text.erase(0, text.find_first_not_of(trimmed));
}

void StringUtils::Sanitize(std::string& text) {
    text.erase(std::remove_if(text.begin(), text.end(), isUnwanted), text.end());
}

void StringUtils::shredString(std::string& text) {
    // Within its capacity the text moves nowhere, so this reaches every byte that it has ever used where it is.
    text.resize(text.capacity());
    shred(text.data(), text.size());
    text.assign(1, ' ');
}

std::vector<std::string> StringUtils::Tokenize(const std::string& text, const std::string& delimiters) {
    if (delimiters.size() == 1) {
        const char wanted = delimiters.front();
        return split(text, std::count(text.begin(), text.end(), wanted), [wanted](const char* begin, const char* end) {
            // Most pieces are so short that a loop is done before memchr would have begun.
            const char* const near = begin + std::min(end - begin, std::ptrdiff_t{16});
            const char* const found = std::find(begin, near, wanted);
            return found != near
                       ? found
                       : static_cast<const char*>(std::memchr(near, wanted, static_cast<std::size_t>(end - near)));
        });
    }
    std::array<bool, 256> wanted{};
    for (const char c : delimiters)
        wanted[static_cast<unsigned char>(c)] = true;
    const auto isWanted = [&wanted](char c) { return wanted[static_cast<unsigned char>(c)]; };
    return split(text, std::count_if(text.begin(), text.end(), isWanted),
                 [isWanted](const char* begin, const char* end) { return std::find_if(begin, end, isWanted); });
}

std::string StringUtils::ToString(unsigned int value) { return writeNumber(value); }

std::string StringUtils::ToString(int value) { return writeNumber(value); }

std::string StringUtils::ToString(long value) { return writeNumber(value); }

std::string StringUtils::ToString(long long value) { return writeNumber(value); }

std::string StringUtils::ToString(float value) { return writeNumber(double{value}); }

std::string StringUtils::ToString(double value) { return writeNumber(value); }

std::string StringUtils::ToString(const void* value) { return writeAddress(value); }

std::string StringUtils::ToLocation(const char* className, const char* function, int line) {
    if (className == nullptr && function == nullptr)
        return "Unknown Location";
    std::string location;
    if (className != nullptr)
        location.append(className).append("::");
    if (function != nullptr)
        location.append(function).append("()");
    if (line > 0)
        location.append(" @").append(writeNumber(line));
    return location;
}

} // namespace ZEL::RT
