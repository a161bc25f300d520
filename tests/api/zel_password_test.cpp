#include "zel/api/zel_password.h"

#include "support/Sanitizers.h"

#include <algorithm>
#include <clocale>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <pthread.h>

namespace {

int verify(const std::string& phrase, const zel_PasswordPolicy& policy) {
    return zel_verifyPassword(phrase.c_str(), &policy);
}

TEST(Password, Policies) {
    const struct {
        const char* phrase;
        zel_PasswordPolicy policy;
        int result;
    } rows[] = {
        {"abc", {3, 3, 0, 0, 0}, 1},  {"abcd", {3, 3, 0, 0, 0}, 0},     {"ab", {3, 3, 0, 0, 0}, 0},
        {"abcd", {0, 0, 0, 0, 0}, 1}, {"abcd", {0, -1, 0, 0, 0}, 1},    {"abcd", {-1, 0, 0, 0, 0}, 0},
        {"", {0, 0, -1, -1, -1}, 1},  {"", {INT32_MIN, 0, 0, 0, 0}, 0}, {"", {0, 0, 0, 0, 1}, 0},
        {"abc", {0, 0, 1, 0, 0}, 0},  {"abc\"", {0, 0, 2, 0, 0}, 1},    {"Abc1", {0, 0, 0, 1, 1}, 1},
        {"abc1", {0, 0, 0, 1, 1}, 0}, {"ABC1", {0, 0, 0, 1, 2}, 0},     {"ABC1", {0, 0, 0, 2, -1}, 1},
        {"1!2", {0, 0, 1, 1, 0}, 0},  {"abc!", {0, 0, 1, 1, 0}, 0},     {"Aa1!", {4, 4, 1, 1, 1}, 1},
    };
    for (const auto& row : rows)
        EXPECT_EQ(verify(row.phrase, row.policy), row.result) << row.phrase << ", row " << &row - rows;
}

TEST(Password, EveryByteInAnyPlaceAndLocale) {
    const std::string special = "!@#$%^&*()_-+=~{}[]<>?/`:;',.|\\\"";
    EXPECT_EQ(zel_getSpecialCharacters(), special);
    for (const char* locale : {"C", "C.UTF-8"}) {
        if (std::setlocale(LC_ALL, locale) == nullptr)
            GTEST_SKIP() << locale << " is not installed";
        for (std::size_t i = 3; i < 3 * 256; ++i) {
            const char c = static_cast<char>(i / 3);
            const bool upper = c >= 'A' && c <= 'Z', lower = c >= 'a' && c <= 'z', digit = c >= '0' && c <= '9';
            const bool isSpecial = special.find(c) != std::string::npos;
            const std::string small = std::string("bb").insert(i % 3, 1, c),
                              capital = std::string("BB").insert(i % 3, 1, c);
            EXPECT_EQ(verify(small, {0, 0, 0, 0, 0}), upper || lower || digit || isSpecial) << i / 3;
            EXPECT_EQ(verify(small, {0, 0, 1, 0, 0}), isSpecial) << i / 3;
            EXPECT_EQ(verify(small, {0, 0, 0, 1, 0}), digit) << i / 3;
            EXPECT_EQ(verify(small, {0, 0, 0, 0, 1}), upper) << i / 3;
            EXPECT_EQ(verify(capital, {0, 0, 0, 0, 1}), lower) << i / 3;
        }
    }
}

// In the stack of a thread that checks the phrase and does nothing else.
TEST(Password, NothingOfThePhraseStaysOnTheStack) {
    if (threadSanitizer || addressSanitizer)
        GTEST_SKIP() << "their own calls use the stack, too";
    static const char phrase[] = "Unmistakable-1";
    std::vector<char> memory(1 << 18);
    const auto check = [](void* unexpected) -> void* {
        const zel_PasswordPolicy policy = {14, 14, 1, 1, 1};
        return zel_verifyPassword(phrase, &policy) == 1 ? nullptr : unexpected;
    };
    pthread_t thread;
    pthread_attr_t attributes;
    void* refused = memory.data();
    ASSERT_EQ(::pthread_attr_init(&attributes) + ::pthread_attr_setstack(&attributes, memory.data(), memory.size()), 0);
    ASSERT_EQ(::pthread_create(&thread, &attributes, check, memory.data()) + ::pthread_join(thread, &refused), 0);
    EXPECT_EQ(refused, nullptr);
    EXPECT_EQ(std::search(memory.begin(), memory.end(), phrase + 2, phrase + 8), memory.end());
}

} // namespace
