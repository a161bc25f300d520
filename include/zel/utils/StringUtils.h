/// @file
/// Operations on strings of bytes.
#ifndef ZEL_UTILS_STRINGUTILS_H
#define ZEL_UTILS_STRINGUTILS_H

#include "zel/export.h"

#include <cstdint>
#include <ctime>
#include <string>
#include <vector>

namespace ZEL::RT {

/// Static operations on strings: tests, conversions, cleaning and splitting. All work on bytes, embedded NULs
/// included, and may be called from any thread.
///
/// The conversions from text read a number as an input stream with the classic locale does, whatever the global locale:
/// leading white space is skipped, what follows the number is ignored ("12abc" is 12). The throwing ones then refuse
/// - a text without a number, or with one that does not fit the type;
/// - the value 0 in any spelling but "0", so that "00", " 0" and "0.0" fail;
/// - the value -911, which marks "no number" inside.
class ZEL_API StringUtils {
public:
    /// Byte by byte; every text starts and ends with the empty one.
    /// @{
    static bool StartsWith(const std::string& text, const std::string& prefix);
    static bool EndsWith(const std::string& text, const std::string& suffix);
    /// @}

    /// Whether \c text equals \c pattern. There are no wildcards, but an empty pattern matches everything.
    static bool Matches(const std::string& text, const std::string& pattern);

    /// The number in a text.
    /// @throws ZEL::EXCEPTIONS::InvalidArgumentException entry -1009 for a text that is refused, as described above;
    /// the message speaks of an integer for every type.
    /// @{
    static int AsInteger(const std::string& text);
    static double AsDouble(const std::string& text);
    static float AsFloat(const std::string& text);
    static long AsLong(const std::string& text);
    static std::int64_t AsInt64(const std::string& text);
    /// @}

    /// Seconds from a text. Never throws: -911 stands for a text without a number that fits.
    static std::time_t AsTimeT(const std::string& text);

    /// True for "yes", "true" and what they begin with, the empty text included; false for "no", "false" and what they
    /// begin with; else whether the integer in the text is other than 0. Capitals count as small letters.
    /// @throws ZEL::EXCEPTIONS::InvalidArgumentException as AsInteger does.
    static bool AsBoolean(const std::string& text);

    /// Copies with \c toupper or \c tolower of the current C locale applied to every byte.
    /// @{
    static std::string ToUppercase(const std::string& text);
    static std::string ToLowercase(const std::string& text);
    /// @}

    /// Without leading and trailing blanks, carriage returns and line feeds; tabs stay. A text that may be changed is
    /// trimmed in place, any other is copied.
    /// @{
    static std::string Trim(const std::string& text);
    static void Trim(std::string& text);
    /// @}

    /// Removes the control characters 1 to 31 and 127 in place, except line feed and carriage return. NULs stay.
    static void Sanitize(std::string& text);

    /// Overwrites all the memory that the text occupies or has reserved and leaves a single blank.
    static void shredString(std::string& text);

    /// The pieces between the characters of \c delimiters, empty ones included: one more than there are delimiters in
    /// the text, so that the empty text gives one empty piece.
    static std::vector<std::string> Tokenize(const std::string& text, const std::string& delimiters);

    /// The value as an output stream with the classic locale writes it: floating-point numbers with six significant
    /// digits, an address in hexadecimal with the prefix 0x (null as "0").
    /// @{
    static std::string ToString(unsigned int value);
    static std::string ToString(int value);
    static std::string ToString(long value);
    static std::string ToString(long long value);
    static std::string ToString(float value);
    static std::string ToString(double value);
    static std::string ToString(const void* value);
    /// @}

    /// A place in a source, such as "Class::function() @12". A null name is left out, and so is a line below 1; without
    /// either name it is "Unknown Location".
    static std::string ToLocation(const char* className, const char* function, int line);
};

} // namespace ZEL::RT

#endif
