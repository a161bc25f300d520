/// @file
/// Numbers from texts and back, as the classic streams do it, whatever the global locale, and without a stream.
#ifndef ZEL_COMMON_UTILS_NUMBERS_H
#define ZEL_COMMON_UTILS_NUMBERS_H

#include <string>
#include <string_view>

namespace ZEL {

/// Reads a number from the head of \c text exactly as an input stream with the classic locale and default flags does:
/// white space is skipped, what follows the number is ignored, and an exponent without digits spoils the number.
/// \c value is left alone if there is no number or it does not fit; a fraction too small for its type does not fit
/// either, which is the one departure: the stream makes it 0.
/// For int, long, long long, float and double.
template <class Number> void readNumber(std::string_view text, Number& value);

/// The text that an output stream with the classic locale and default flags makes of \c value.
/// For int, unsigned int, long, long long and double.
template <class Number> std::string writeNumber(Number value);

/// The same for an address: hexadecimal with the prefix 0x, but "0" for null.
std::string writeAddress(const void* address);

} // namespace ZEL

#endif
