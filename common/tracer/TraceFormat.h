#ifndef ZEL_COMMON_TRACER_TRACEFORMAT_H
#define ZEL_COMMON_TRACER_TRACEFORMAT_H

#include <cstdarg>
#include <cstddef>
#include <string_view>

namespace ZEL::RT {

constexpr std::size_t formattedSize = 1024; // of a formatted text, its NUL included

// Formats like vsnprintf into the buffer of the given size, which is not 0; the result lies in there. What cannot be
// formatted, such as a wide character that the locale lacks, leaves the text written until then. Null is an empty
// format.
std::string_view formatTrace(char* buffer, std::size_t size, const char* format, va_list arguments)
    __attribute__((format(printf, 3, 0)));

} // namespace ZEL::RT

#endif
