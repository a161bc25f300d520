// An integer is a sign and digits, and no more to it. For a floating-point number the characters are found first that
// the stream would take in: its scan is greedier than the conversion, so that "12e" is taken whole and then refused,
// where std::from_chars would be content with "12". Then std::from_chars has to use up exactly these.
//
// Integers are converted here, since the standard templates for them bring tables along that bind to one copy in the
// whole process and so would keep this library from being unloaded.
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

constexpr std::string_view WHITE_SPACE = " \t\n\v\f\r";
constexpr int STREAM_PRECISION = 6;

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

template <class Integer> bool readInteger(std::string_view text, Integer& value) {
    using Magnitude = std::make_unsigned_t<Integer>;
    const bool negative = !text.empty() && text.front() == '-';
    const Magnitude limit = static_cast<Magnitude>(std::numeric_limits<Integer>::max()) + Magnitude{negative};
    text.remove_prefix(signLength(text, 0));
    if (text.empty() || !isDigit(text.front()))
        return false;
    Magnitude magnitude = 0;
    for (std::size_t at = 0; at < text.size() && isDigit(text[at]); ++at) {
        const auto digit = static_cast<Magnitude>(text[at] - '0');
        if (magnitude > (limit - digit) / 10)
            return false;
        magnitude = magnitude * 10 + digit;
    }
    value = static_cast<Integer>(negative ? Magnitude{0} - magnitude : magnitude);
    return true;
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

template <class Floating> bool readFloating(std::string_view text, Floating& value) {
    text = scanFloating(text);
    // A plus sign is the one thing that the stream takes and the conversion does not.
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    const char* const end = text.data() + text.size();
    Floating read{};
    [[maybe_unused]] const DoubleRounding rounding;
    const std::from_chars_result result = std::from_chars(text.data(), end, read);
    if (result.ec != std::errc() || result.ptr != end)
        return false;
    value = read;
    return true;
}

template <class Unsigned> std::string writeDigits(Unsigned value, unsigned int base, std::string_view prefix) {
    // Digits come out from the last to the first, and so they are laid down.
    std::string text;
    do {
        text += "0123456789abcdef"[value % base];
        value /= base;
    } while (value != 0);
    text.append(prefix.rbegin(), prefix.rend());
    std::reverse(text.begin(), text.end());
    return text;
}

} // namespace

template <class Number> bool readNumber(std::string_view text, Number& value) {
    text.remove_prefix(std::min(text.find_first_not_of(WHITE_SPACE), text.size()));
    if constexpr (std::is_integral_v<Number>)
        return readInteger(text, value);
    else
        return readFloating(text, value);
}

template <class Number> std::string writeNumber(Number value) {
    using Magnitude = std::make_unsigned_t<Number>;
    if (value < 0)
        return writeDigits(Magnitude{0} - static_cast<Magnitude>(value), 10, "-");
    return writeDigits(static_cast<Magnitude>(value), 10, "");
}

template <> std::string writeNumber(double value) {
    // Sign, digits, point, "e" and an exponent of a sign and three digits.
    char text[STREAM_PRECISION + 7];
    const std::to_chars_result end =
        std::to_chars(text, text + sizeof text, value, std::chars_format::general, STREAM_PRECISION);
    return std::string(text, end.ptr);
}

std::string writeAddress(const void* address) {
    return writeDigits(reinterpret_cast<std::uintptr_t>(address), 16, address != nullptr ? "0x" : "");
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

} // namespace ZEL
