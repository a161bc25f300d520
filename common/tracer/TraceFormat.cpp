// Nearly every trace message is plain text with a name or a number in it. The C library's formatter, made for widths,
// precisions, floating point and files, takes several times as long over these as the message needs; whatever else a
// format asks for is left to it.
#include "tracer/TraceFormat.h"

#include "zel/utils/vor_runtime.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace ZEL::RT {

namespace {

// How long the conversion is that begins with a "%" here, if it is one that Message knows; 0 otherwise.
std::size_t conversionLength(const char* percent) {
    switch (percent[1]) {
    case 's':
    case 'd':
    case 'u':
    case 'x':
    case '%':
        return 2;
    case 'l':
        return percent[2] == 'u' || percent[2] == 'x' ? 3 : 0;
    default:
        return 0;
    }
}

// The next "%" or the end. Formats are short: a call would cost more than the look at each character.
const char* nextConversion(const char* format) {
    while (*format != '%' && *format != '\0')
        ++format;
    return format;
}

bool isSimple(const char* format) {
    while (*(format = nextConversion(format)) != '\0') {
        const std::size_t length = conversionLength(format);
        if (length == 0)
            return false;
        format += length;
    }
    return true;
}

// A text that ends where its room ends.
class Message {
public:
    Message(char* buffer, std::size_t size) : begin_(buffer), at_(buffer), end_(buffer + size - 1) {}

    void add(std::string_view text) {
        const std::size_t n = std::min(text.size(), static_cast<std::size_t>(end_ - at_));
        std::memcpy(at_, text.data(), n);
        at_ += n;
    }

    template <class Number> void add(Number number, int base) {
        char digits[24];
        const char* const end = std::to_chars(digits, std::end(digits), number, base).ptr;
        add({digits, static_cast<std::size_t>(end - digits)});
    }

    std::string_view finish() {
        *at_ = '\0';
        return {begin_, static_cast<std::size_t>(at_ - begin_)};
    }

private:
    char* const begin_;
    char* at_;
    char* const end_;
};

// A percent sign is its own letter.
void addConversion(Message& message, std::string_view conversion, va_list* arguments) {
    const int base = conversion.back() == 'x' ? 16 : 10;
    switch (conversion[1]) {
    case 's': {
        const char* const text = va_arg(*arguments, const char*);
        return message.add(text != nullptr ? text : "(null)");
    }
    case 'd':
        return message.add(va_arg(*arguments, int), base);
    case 'u':
    case 'x':
        return message.add(va_arg(*arguments, unsigned int), base);
    case 'l':
        return message.add(va_arg(*arguments, unsigned long), base);
    default:
        return message.add("%");
    }
}

} // namespace

std::string_view formatTrace(char* buffer, std::size_t size, const char* format, va_list arguments) {
    buffer[0] = '\0';
    if (format == nullptr)
        return {};
    if (!isSimple(format)) {
        vor_safeVsprintf(buffer, size, size, format, arguments);
        buffer[size - 1] = '\0';
        return buffer;
    }
    va_list rest;
    va_copy(rest, arguments); // a parameter of this type may be no more than a pointer, which has no address to pass
    Message message(buffer, size);
    while (true) {
        const char* const percent = nextConversion(format);
        message.add({format, static_cast<std::size_t>(percent - format)});
        if (*percent == '\0')
            break;
        const std::size_t length = conversionLength(percent);
        addConversion(message, {percent, length}, &rest);
        format = percent + length;
    }
    va_end(rest);
    return message.finish();
}

} // namespace ZEL::RT
