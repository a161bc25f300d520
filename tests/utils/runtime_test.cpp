#include "zel/utils/EnvUtils.h"
#include "zel/utils/vor_runtime.h"

#include <cstdint>
#include <cstring>
#include <limits>

#include <gtest/gtest.h>

namespace {

constexpr std::size_t ROOM = 8;

TEST(Runtime, CopyingAndAppendingStayInTheBuffer) {
    using Put = char* (*)(char*, std::size_t, const char*, std::size_t);
    const struct {
        Put put;
        const char* before;
        std::size_t size;
        const char* text;
        std::size_t count;
        bool refused;
        const char* after;
    } rows[] = {
        {vor_safeStrcpy, "xyz", ROOM, "abcdefghij", 10, false, "abcdefg"},
        {vor_safeStrcpy, "xyz", ROOM, "abcdefghij", 3, false, "abc"},
        {vor_safeStrcpy, "xyz", ROOM, "abcdefghij", 7, false, "abcdefg"},
        {vor_safeStrcpy, "xyz", ROOM, "abcdefghij", 8, false, "abcdefg"},
        {vor_safeStrcpy, "xyz", ROOM, "ab", 5, false, "ab"},
        {vor_safeStrcpy, "xyz", 1, "abc", 3, false, "xyz"},
        {vor_safeStrcpy, "xyz", 0, "abc", 3, true, "xyz"},
        {vor_safeStrcpy, "xyz", ROOM, "abc", 0, true, "xyz"},
        {vor_safeStrcpy, "xyz", ROOM, nullptr, 3, true, "xyz"},
        {vor_safeStrcpy, "xyz", ROOM, "abc", SIZE_MAX, false, "abc"},
        {vor_safeStrcat, "abc", ROOM, "defghij", 7, false, "abcdefg"},
        {vor_safeStrcat, "abc", ROOM, "defghij", 4, false, "abcdefg"},
        {vor_safeStrcat, "abc", ROOM, "defghij", 3, false, "abcdef"},
        {vor_safeStrcat, "abc", ROOM, "d", 3, false, "abcd"},
        {vor_safeStrcat, "abc", ROOM, "defghij", SIZE_MAX - 1, false, "abcdefg"},
        {vor_safeStrcat, "abcdefg", ROOM, "h", 1, false, "abcdefg"},
        {vor_safeStrcat, "abcdefg", 4, "hi", 2, false, "abcdefg"}, // longer than its size says
        {vor_safeStrcat, "abc", ROOM, nullptr, 1, true, "abc"},
        {vor_safeStrcat, "abc", ROOM, "d", 0, true, "abc"},
        {vor_safeStrcat, "abc", 0, "d", 1, true, "abc"},
    };
    for (const auto& row : rows) {
        char buffer[ROOM + 1] = "";
        std::strcpy(buffer, row.before);
        buffer[ROOM] = '#';
        const std::size_t line = static_cast<std::size_t>(&row - rows);
        EXPECT_EQ(row.put(buffer, row.size, row.text, row.count), row.refused ? nullptr : buffer) << "row " << line;
        EXPECT_STREQ(std::string(buffer, ROOM).c_str(), row.after) << "row " << line;
        EXPECT_EQ(buffer[ROOM], '#') << "row " << line;
        EXPECT_EQ(row.put(nullptr, row.size, row.text, row.count), nullptr);
    }
}

TEST(Runtime, LowerCaseCopies) {
    char* copy = vor_safeToLower("MiXed \xc4 9", 9);
    EXPECT_STREQ(copy, "mixed \xc4 9");
    EXPECT_EQ(vor_safeFreeBuffer(copy), 0);
    copy = vor_safeToLower("LONGER THAN IT SAYS", 2);
    EXPECT_STREQ(copy, "longer than it says");
    EXPECT_EQ(vor_safeFreeBuffer(copy), 0);
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

    EXPECT_GT(vor_safeStrcmp("b", "a"), 0);
    EXPECT_EQ(vor_safeStrncmp("ab", "ac", 1), 0);
    EXPECT_EQ(vor_safeStrcasecmp("AB", "ab"), 0);
    EXPECT_EQ(vor_safeStrncasecmp("ABc", "abD", 2), 0);
    EXPECT_EQ(vor_safeStrcmp(nullptr, nullptr), 0);
    EXPECT_LT(vor_safeStrncmp(nullptr, "", 1), 0);
    EXPECT_GT(vor_safeStrcasecmp("", nullptr), 0);
    EXPECT_LT(vor_safeStrncasecmp(nullptr, "", 0), 0);

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
