// Reading works in two steps. First the characters are found which the stream would take in: its scan is greedier than
// the conversion, so that "12e" is taken whole and then refused, where std::from_chars would be content with "12".
// Then std::from_chars converts exactly these, and must use them up. It knows no locale, rounds correctly and reports
// what does not fit.
#include "utils/Numbers.h"

#include <charconv>
#include <cstdint>
#include <limits>
#include <system_error>
#include <type_traits>

#ifdef __i386__
#include <fpu_control.h>
#endif

namespace ZEL {

namespace {

constexpr std::string_view WHITE_SPACE = " \t\n\v\f\r";
constexpr int STREAM_PRECISION = 6;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// The C++ library calculates with doubles in the x87 unit, where a product is rounded to 64 bits first and then to 53:
// the odd short text, such as 37034055e19, would come out one unit off. Rounding to 53 bits at once makes it right.
// Elsewhere doubles are never wider than they should be.
class DoubleRounding {
#ifdef __i386__
public:
    DoubleRounding() {
        _FPU_GETCW(kept_);
        fpu_control_t rounding = static_cast<fpu_control_t>((kept_ & ~_FPU_EXTENDED) | _FPU_DOUBLE);
        _FPU_SETCW(rounding);
    }
    ~DoubleRounding() { _FPU_SETCW(kept_); }
    DoubleRounding(const DoubleRounding&) = delete;
    DoubleRounding& operator=(const DoubleRounding&) = delete;

private:
    fpu_control_t kept_;
#endif
};

std::string_view skipWhiteSpace(std::string_view text) {
    const std::size_t start = text.find_first_not_of(WHITE_SPACE);
    return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

// The length of the sign, if there is one.
std::size_t signLength(std::string_view text, std::size_t at) {
    return at < text.size() && (text[at] == '+' || text[at] == '-') ? 1 : 0;
}

std::size_t scanInteger(std::string_view text) {
    std::size_t at = signLength(text, 0);
    while (at < text.size() && isDigit(text[at]))
        ++at;
    return at;
}

// One decimal point ahead of the exponent, one exponent behind a digit; a sign directly behind the "e" belongs to it.
std::size_t scanFloating(std::string_view text) {
    bool digits = false;
    bool point = false;
    bool exponent = false;
    std::size_t at = signLength(text, 0);
    for (; at < text.size(); ++at) {
        const char c = text[at];
        if (isDigit(c)) {
            digits = true;
        } else if (c == '.' && !point && !exponent) {
            point = true;
        } else if ((c == 'e' || c == 'E') && digits && !exponent) {
            exponent = true;
            at += signLength(text, at + 1);
        } else {
            break;
        }
    }
    return at;
}

std::from_chars_result convert(const char* begin, const char* end, double& value) {
    [[maybe_unused]] const DoubleRounding rounding;
    return std::from_chars(begin, end, value);
}

// Also for float, whose products fit the x87 unit whole.
template <class Number> std::from_chars_result convert(const char* begin, const char* end, Number& value) {
    return std::from_chars(begin, end, value);
}

} // namespace

template <class Number> bool readNumber(std::string_view text, Number& value) {
    text = skipWhiteSpace(text);
    text = text.substr(0, std::is_integral_v<Number> ? scanInteger(text) : scanFloating(text));
    // A plus sign is the one thing that the stream takes and the conversion does not; what follows it is no sign.
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    Number read{};
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = convert(text.data(), end, read);
    if (result.ec != std::errc() || result.ptr != end)
        return false;
    value = read;
    return true;
}

template <class Number> std::string writeNumber(Number value) {
    // Room for a sign and the digits of any integer, and for any floating-point number in six digits.
    char text[std::numeric_limits<long long>::digits10 + 3];
    if constexpr (std::is_integral_v<Number>) {
        return std::string(text, std::to_chars(text, text + sizeof text, value).ptr);
    } else {
        return std::string(
            text, std::to_chars(text, text + sizeof text, value, std::chars_format::general, STREAM_PRECISION).ptr);
    }
}

std::string writeAddress(const void* address) {
    const auto number = reinterpret_cast<std::uintptr_t>(address);
    char text[2 * sizeof number];
    const std::string digits(text, std::to_chars(text, text + sizeof text, number, 16).ptr);
    return number == 0 ? digits : "0x" + digits;
}

template bool readNumber(std::string_view, int&);
template bool readNumber(std::string_view, long&);
template bool readNumber(std::string_view, long long&);
template bool readNumber(std::string_view, float&);
template bool readNumber(std::string_view, double&);
template std::string writeNumber(int);
template std::string writeNumber(unsigned int);
template std::string writeNumber(long);
template std::string writeNumber(long long);
template std::string writeNumber(double);

} // namespace ZEL
