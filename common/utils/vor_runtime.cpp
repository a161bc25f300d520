#include "zel/utils/vor_runtime.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <strings.h>

namespace {

// What setting a variable allocates beyond name and value: "=", the NUL and 8 bytes to spare.
constexpr std::size_t assignmentExtra = 10;

// The order of two texts of which at least one is null: null comes before any text.
int compareNulls(const char* a, const char* b) {
    return static_cast<int>(a != nullptr) - static_cast<int>(b != nullptr);
}

// localtime and gmtime know no year that does not fit an int, and answer null then.
tm* breakDown(tm* (*convert)(const time_t*), tm* out, const time_t* time) {
    const tm* shared = time != nullptr ? convert(time) : nullptr;
    if (out == nullptr || shared == nullptr)
        return nullptr;
    *out = *shared;
    return out;
}

} // namespace

int vor_safeFreeBuffer(void* buffer) {
    if (buffer == nullptr)
        return 1;
    std::free(buffer);
    return 0;
}

char* vor_safeToLower(const char* text, std::size_t length) {
    if (text == nullptr || length == SIZE_MAX)
        return nullptr;
    // A length that falls short of the text must not cost the caller the heap.
    const std::size_t used = std::strlen(text);
    char* copy = static_cast<char*>(std::calloc(std::max(length, used) + 1, 1));
    if (copy != nullptr)
        std::transform(text, text + used, copy, [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return copy;
}

char* vor_safeStrcpy(char* dst, std::size_t size, const char* src, std::size_t count) {
    if (dst == nullptr || src == nullptr || count == 0 || size == 0)
        return nullptr;
    const std::size_t n = std::min(count, size - 1);
    if (n != 0) {
        std::strncpy(dst, src, n);
        dst[n] = '\0';
    }
    return dst;
}

char* vor_safeStrcat(char* dst, std::size_t size, const char* src, std::size_t count) {
    if (dst == nullptr || src == nullptr || count == 0 || size == 0)
        return nullptr;
    const std::size_t used = ::strnlen(dst, size);
    if (used == size)
        return dst;
    const std::size_t n = std::min(count, size - used - 1);
    if (n != 0) {
        const std::size_t appended = ::strnlen(src, n);
        std::memcpy(dst + used, src, appended);
        dst[used + appended] = '\0';
        dst[used + n] = '\0';
    }
    return dst;
}

int vor_safeSprintf(char* dst, std::size_t, const char* format, ...) {
    if (dst == nullptr || format == nullptr)
        return -1;
    va_list args;
    va_start(args, format);
    const int written = std::vsprintf(dst, format, args);
    va_end(args);
    return written;
}

int vor_safeVsprintf(char* dst, std::size_t, std::size_t count, const char* format, va_list args) {
    if ((dst == nullptr && count != 0) || format == nullptr)
        return -1;
    return std::vsnprintf(dst, count, format, args);
}

char* vor_safeStrtok(char* text, const char* delimiters, char** state) {
    if (delimiters == nullptr || state == nullptr || (text == nullptr && *state == nullptr))
        return nullptr;
    return ::strtok_r(text, delimiters, state);
}

int vor_safeStrcmp(const char* a, const char* b) {
    return a == nullptr || b == nullptr ? compareNulls(a, b) : std::strcmp(a, b);
}

int vor_safeStrncmp(const char* a, const char* b, std::size_t count) {
    return a == nullptr || b == nullptr ? compareNulls(a, b) : std::strncmp(a, b, count);
}

int vor_safeStrcasecmp(const char* a, const char* b) {
    return a == nullptr || b == nullptr ? compareNulls(a, b) : ::strcasecmp(a, b);
}

int vor_safeStrncasecmp(const char* a, const char* b, std::size_t count) {
    return a == nullptr || b == nullptr ? compareNulls(a, b) : ::strncasecmp(a, b, count);
}

char* vor_safeStrstr(const char* haystack, const char* needle) {
    if (haystack == nullptr || needle == nullptr)
        return nullptr;
    return const_cast<char*>(std::strstr(haystack, needle));
}

int vor_safeCharReplace(char* text, char from, char to) {
    int replaced = 0;
    for (; text != nullptr && *text != '\0'; ++text) {
        if (*text == from) {
            *text = to;
            ++replaced;
        }
    }
    return replaced;
}

char* vor_safeGetenv(char** value, std::size_t* length, const char* name) {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): borrowing from the environment is what this is for.
    char* found = name != nullptr && value != nullptr && length != nullptr ? std::getenv(name) : nullptr;
    if (value != nullptr)
        *value = found;
    if (length != nullptr)
        *length = found != nullptr ? std::strlen(found) : 0;
    return found;
}

void vor_safeGetenvFree(char*) {}

int vor_safeSetenv(const char* name, const char* value) {
    if (name == nullptr || value == nullptr)
        return -1;
    const std::size_t nameLength = std::strlen(name);
    const std::size_t valueLength = std::strlen(value);
    const std::size_t size = nameLength + valueLength + assignmentExtra;
    char* assignment = static_cast<char*>(std::calloc(size, 1));
    if (assignment == nullptr)
        return -1;
    vor_safeStrcpy(assignment, size, name, nameLength);
    vor_safeStrcat(assignment, size, "=", 1);
    vor_safeStrcat(assignment, size, value, valueLength);
    const int result = ::putenv(assignment); // NOLINT(concurrency-mt-unsafe): so is changing it.
    if (result < 0)
        std::free(assignment);
    return result; // NOLINT(clang-analyzer-unix.Malloc): the text is the environment's now.
}

tm* vor_safeLocaltime(tm* out, const time_t* time) { return breakDown(&::localtime, out, time); }

tm* vor_safeGmtime(tm* out, const time_t* time) { return breakDown(&::gmtime, out, time); }
