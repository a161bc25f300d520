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

// A text that ends where its room ends.
class Message {
public:
    Message(char* buffer, std::size_t size) : begin_(buffer), at_(buffer), end_(buffer + size - 1) {}

    // Adds the format up to its next conversion, which is returned, or to its end.
    const char* addPlain(const char* format) {
        const char* const percent = std::strchr(format, '%');
        add(percent != nullptr ? std::string_view(format, static_cast<std::size_t>(percent - format)) : format);
        return percent;
    }

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

// Adds what the conversion behind a "%" asks for, and returns where that ends; null when it is not one of the few.
const char* addConversion(Message& message, const char* letter, va_list* arguments) {
    switch (*letter) {
    case 's': {
        const char* const text = va_arg(*arguments, const char*);
        message.add(text != nullptr ? text : "(null)");
        return letter + 1;
    }
    case 'd':
        message.add(va_arg(*arguments, int), 10);
        return letter + 1;
    case 'u':
        message.add(va_arg(*arguments, unsigned int), 10);
        return letter + 1;
    case 'x':
        message.add(va_arg(*arguments, unsigned int), 16);
        return letter + 1;
    case '%':
        message.add("%");
        return letter + 1;
    case 'l':
        if (letter[1] != 'u' && letter[1] != 'x')
            return nullptr;
        message.add(va_arg(*arguments, unsigned long), letter[1] == 'u' ? 10 : 16);
        return letter + 2;
    default:
        return nullptr;
    }
}

} // namespace

std::string_view formatTrace(char* buffer, std::size_t size, const char* format, va_list arguments) {
    buffer[0] = '\0';
    if (format == nullptr)
        return {};
    va_list rest;
    va_copy(rest, arguments);
    Message message(buffer, size);
    const char* at = message.addPlain(format);
    bool known = true;
    while (at != nullptr && known) {
        at = addConversion(message, at + 1, &rest);
        known = at != nullptr;
        if (known)
            at = message.addPlain(at);
    }
    va_end(rest);
    if (known)
        return message.finish();
    vor_safeVsprintf(buffer, size, size, format, arguments);
    buffer[size - 1] = '\0';
    return buffer;
}

} // namespace ZEL::RT
