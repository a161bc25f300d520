#include "zel/utils/EnvUtils.h"
#include "zel/utils/vor_runtime.h"

#include <cstdint>
#include <cstring>
#include <limits>

#include <gtest/gtest.h>

namespace {

// What a buffer of 8 bytes holds after a call, "refused" if that gave null; nothing may be written behind it.
std::string putInto8(char* (*put)(char*, std::size_t, const char*, std::size_t), const char* before, std::size_t size,
                     const char* text, std::size_t count) {
    char buffer[9];
    std::memset(buffer, '#', sizeof buffer);
    std::strcpy(buffer, before);
    const char* const result = put(buffer, size, text, count);
    EXPECT_EQ(buffer[8], '#');
    EXPECT_EQ(put(nullptr, size, text, count), nullptr);
    EXPECT_TRUE(result == buffer || std::strcmp(buffer, before) == 0);
    return result == buffer ? std::string(buffer, 8).c_str() : "refused";
}

TEST(Runtime, CopyingAndAppendingStayInTheBuffer) {
    const auto copy = &vor_safeStrcpy;
    EXPECT_EQ(putInto8(copy, "xyz", 8, "abcdefghij", 10), "abcdefg");
    EXPECT_EQ(putInto8(copy, "xyz", 8, "abcdefghij", 8), "abcdefg");
    EXPECT_EQ(putInto8(copy, "uvwxyz", 8, "abcdefghij", 3), "abc");
    EXPECT_EQ(putInto8(copy, "xyz", 8, "ab", SIZE_MAX), "ab");
    EXPECT_EQ(putInto8(copy, "xyz", 1, "abc", 3), "xyz");
    EXPECT_EQ(putInto8(copy, "xyz", 0, "abc", 3), "refused");
    EXPECT_EQ(putInto8(copy, "xyz", 8, "abc", 0), "refused");
    EXPECT_EQ(putInto8(copy, "xyz", 8, nullptr, 3), "refused");
    const auto append = &vor_safeStrcat;
    EXPECT_EQ(putInto8(append, "abc", 8, "defghij", 7), "abcdefg");
    EXPECT_EQ(putInto8(append, "abc", 8, "defghij", 5), "abcdefg");
    EXPECT_EQ(putInto8(append, "abc", 8, "defghij", 3), "abcdef");
    EXPECT_EQ(putInto8(append, "abc", 8, "d", 3), "abcd");
    EXPECT_EQ(putInto8(append, "abc", 8, "defghij", SIZE_MAX - 1), "abcdefg");
    EXPECT_EQ(putInto8(append, "abcdefg", 8, "h", 1), "abcdefg");
    EXPECT_EQ(putInto8(append, "abcdefg", 4, "hi", 2), "abcdefg") << "longer than its size says";
    EXPECT_EQ(putInto8(append, "abc", 0, "d", 1), "refused");
    EXPECT_EQ(putInto8(append, "abc", 8, "d", 0), "refused");
    EXPECT_EQ(putInto8(append, "abc", 8, nullptr, 1), "refused");
}

TEST(Runtime, LowerCaseCopies) {
    char* copy = vor_safeToLower("MiXed \xc4 9", 9);
    EXPECT_STREQ(copy, "mixed \xc4 9");
    EXPECT_EQ(vor_safeFreeBuffer(copy), 0);
    copy = vor_safeToLower("LONGER THAN IT SAYS", 2);
    EXPECT_STREQ(copy, "longer than it says");
    vor_safeFreeBuffer(copy);
    EXPECT_EQ(vor_safeToLower("A", SIZE_MAX), nullptr);
    EXPECT_EQ(vor_safeToLower(nullptr, 1), nullptr);
    EXPECT_EQ(vor_safeFreeBuffer(nullptr), 1);
}

int vsprintfOf(char* dst, std::size_t size, std::size_t count, const char* format, ...)
    __attribute__((format(printf, 4, 5)));
int vsprintfOf(char* dst, std::size_t size, std::size_t count, const char* format, ...) {
    va_list args;
    va_start(args, format);
    const int result = vor_safeVsprintf(dst, size, count, format, args);
    va_end(args);
    return result;
}

TEST(Runtime, FormattingIsBoundByTheCountAlone) {
    char buffer[16] = "";
    EXPECT_EQ(vor_safeSprintf(buffer, 2, "%s-%d", "abc", 42), 6);
    EXPECT_STREQ(buffer, "abc-42");
    EXPECT_EQ(vsprintfOf(buffer, 1, 4, "%s", "longer"), 6);
    EXPECT_STREQ(buffer, "lon");
    EXPECT_EQ(vsprintfOf(nullptr, 0, 0, "%d", 123), 3);
    EXPECT_EQ(vsprintfOf(nullptr, 4, 4, "%d", 123), -1);
    EXPECT_EQ(vor_safeSprintf(nullptr, 4, "%d", 1), -1);
}

TEST(Runtime, TextsAndNulls) {
    char text[] = "a.b.c";
    EXPECT_EQ(vor_safeCharReplace(text, '.', '/'), 2);
    EXPECT_STREQ(text, "a/b/c");
    EXPECT_EQ(vor_safeCharReplace(nullptr, 'a', 'b'), 0);

    char* state = nullptr;
    EXPECT_EQ(vor_safeStrtok(nullptr, "/", &state), nullptr);
    EXPECT_STREQ(vor_safeStrtok(text, "/", &state), "a");
    EXPECT_STREQ(vor_safeStrtok(nullptr, "/", &state), "b");
    EXPECT_EQ(vor_safeStrtok(text, nullptr, &state), nullptr);
    EXPECT_EQ(vor_safeStrtok(text, "/", nullptr), nullptr);

    EXPECT_EQ(vor_safeStrcmp(nullptr, nullptr), 0);
    EXPECT_LT(vor_safeStrncmp(nullptr, "", 1), 0);
    EXPECT_GT(vor_safeStrcasecmp("", nullptr), 0);
    EXPECT_LT(vor_safeStrncasecmp(nullptr, "", 0), 0);
    EXPECT_EQ(vor_safeStrncasecmp("ABc", "abD", 2), 0);
    const char* const haystack = "needle";
    EXPECT_EQ(vor_safeStrstr(haystack, "dl"), haystack + 3);
    EXPECT_EQ(vor_safeStrstr(haystack, nullptr), nullptr);
    EXPECT_EQ(vor_safeStrstr(nullptr, ""), nullptr);
}

TEST(Runtime, Environment) {
    char* value = nullptr;
    std::size_t length = 99;
    EXPECT_EQ(vor_safeGetenv(&value, &length, "ZEL_TEST_UNSET"), nullptr);
    EXPECT_EQ(value, nullptr);
    EXPECT_EQ(length, 0u);
    EXPECT_EQ(vor_safeSetenv("ZEL_TEST_SET", "a=b"), 0);
    EXPECT_STREQ(vor_safeGetenv(&value, &length, "ZEL_TEST_SET"), "a=b");
    EXPECT_EQ(length, 3u);
    vor_safeGetenvFree(value);
    EXPECT_EQ(vor_safeSetenv("ZEL_TEST_EMPTY", ""), 0);
    EXPECT_STREQ(vor_safeGetenv(&value, &length, "ZEL_TEST_EMPTY"), "");
    EXPECT_EQ(vor_safeSetenv(nullptr, ""), -1);
    EXPECT_EQ(vor_safeSetenv("ZEL_TEST_SET", nullptr), -1);
    EXPECT_EQ(vor_safeGetenv(&value, nullptr, "ZEL_TEST_SET"), nullptr);
    EXPECT_EQ(vor_safeGetenv(&value, &length, nullptr), nullptr);

    using ZEL::RT::EnvUtils;
    EXPECT_EQ(EnvUtils::GetEnv("ZEL_TEST_SET", "fallback"), "a=b");
    EXPECT_EQ(EnvUtils::GetEnv("ZEL_TEST_EMPTY", "fallback"), "fallback");
    EXPECT_EQ(EnvUtils::GetEnv("ZEL_TEST_UNSET", "fallback"), "fallback");
}

TEST(Runtime, TimesThatCannotBeBrokenDown) {
    for (const auto function : {&vor_safeLocaltime, &vor_safeGmtime}) {
        std::tm fields{};
        const std::time_t dayTwo = 86400 * 3 / 2;
        EXPECT_EQ(function(&fields, &dayTwo), &fields);
        EXPECT_EQ(fields.tm_year, 70);
        EXPECT_NE(fields.tm_zone, nullptr);
        EXPECT_EQ(function(nullptr, &dayTwo), nullptr);
        EXPECT_EQ(function(&fields, nullptr), nullptr);
        const std::time_t far = std::numeric_limits<std::time_t>::max();
        EXPECT_EQ(function(&fields, &far), sizeof far == 8 ? nullptr : &fields);
    }
}

} // namespace
