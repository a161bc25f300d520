// The characters that the stream would take in are found first: its scan is greedier than the conversion, so that as a
// floating-point number "12e" is taken whole and then refused, where std::from_chars would be content with "12". Then
// std::from_chars has to use up exactly these.
#include "utils/Numbers.h"

#include <algorithm>
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

constexpr std::string_view whiteSpace = " \t\n\v\f\r";
constexpr int streamPrecision = 6;

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

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// The length of the sign at a place, if there is one.
std::size_t signLength(std::string_view text, std::size_t at) {
    return at < text.size() && (text[at] == '+' || text[at] == '-') ? 1 : 0;
}

// A plus sign is the one thing that the stream takes and the conversion does not.
std::string_view withoutPlus(std::string_view text) {
    const bool plus = text.size() > 1 && text.front() == '+' && text[1] != '-';
    return text.substr(plus ? 1 : 0);
}

template <class Integer> void readInteger(std::string_view text, Integer& value) {
    text = withoutPlus(text);
    std::from_chars(text.data(), text.data() + text.size(), value);
}

// What the stream takes in: one decimal point ahead of the exponent, one exponent behind a digit; a sign directly
// behind the "e" belongs to it.
std::string_view scanFloating(std::string_view text) {
    bool point = false;
    bool exponent = false;
    std::size_t at = signLength(text, 0);
    for (; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '.' && !point && !exponent) {
            point = true;
        } else if ((c == 'e' || c == 'E') && !exponent) {
            exponent = true;
            at += signLength(text, at + 1);
        } else if (!isDigit(c)) {
            break;
        }
    }
    return text.substr(0, at);
}

template <class Floating> void readFloating(std::string_view text, Floating& value) {
    text = withoutPlus(scanFloating(text));
    const char* const end = text.data() + text.size();
    Floating read{};
    [[maybe_unused]] const DoubleRounding rounding;
    const std::from_chars_result result = std::from_chars(text.data(), end, read);
    if (result.ec == std::errc() && result.ptr == end)
        value = read;
}

} // namespace

template <class Number> void readNumber(std::string_view text, Number& value) {
    text.remove_prefix(std::min(text.find_first_not_of(whiteSpace), text.size()));
    if constexpr (std::is_integral_v<Number>)
        readInteger(text, value);
    else
        readFloating(text, value);
}

template <class Number> std::string writeNumber(Number value) {
    char text[std::numeric_limits<Number>::digits10 + 3]; // the digits and a sign
    return std::string(text, std::to_chars(text, text + sizeof text, value).ptr);
}

template <> std::string writeNumber(double value) {
    // Sign, digits, point, "e" and an exponent of a sign and three digits.
    char text[streamPrecision + 7];
    const std::to_chars_result end =
        std::to_chars(text, text + sizeof text, value, std::chars_format::general, streamPrecision);
    return std::string(text, end.ptr);
}

std::string writeAddress(const void* address) {
    char text[2 * sizeof address];
    const auto number = reinterpret_cast<std::uintptr_t>(address);
    const char* const end = std::to_chars(text, text + sizeof text, number, 16).ptr;
    const std::string_view digits(text, static_cast<std::size_t>(end - text));
    return std::string(address != nullptr ? "0x" : "").append(digits);
}

template void readNumber(std::string_view, int&);
template void readNumber(std::string_view, long&);
template void readNumber(std::string_view, long long&);
template void readNumber(std::string_view, float&);
template void readNumber(std::string_view, double&);
template std::string writeNumber(int);
template std::string writeNumber(unsigned int);
template std::string writeNumber(long);
template std::string writeNumber(long long);

} // namespace ZEL
