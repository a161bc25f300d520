#include "zel/api/zel_password.h"

#include <algorithm>
#include <clocale>
#include <string>

#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/mman.h>

namespace {

constexpr char special[] = "!@#$%^&*()_-+=~{}[]<>?/`:;',.|\\\"";

TEST(Password, Policies) {
    const struct {
        const char* phrase;
        zel_PasswordPolicy policy;
        int result;
    } rows[] = {
        {"abc", {3, 3, 0, 0, 0}, 1},      {"abcd", {3, 3, 0, 0, 0}, 0},  {"ab", {3, 3, 0, 0, 0}, 0},
        {"abcd", {0, 0, 0, 0, 0}, 1},     {"abcd", {0, -1, 0, 0, 0}, 1}, {"abcd", {-1, 0, 0, 0, 0}, 0},
        {"", {INT32_MIN, 0, 0, 0, 0}, 0}, {"", {0, 0, 0, 0, 0}, 1},      {"", {1, 0, 0, 0, 0}, 0},
        {"", {0, 0, -1, -1, -1}, 1},      {"", {0, 0, 1, 0, 0}, 0},      {"", {0, 0, 0, 1, 0}, 0},
        {"", {0, 0, 0, 0, 1}, 0},         {"abc", {0, 0, 1, 0, 0}, 0},   {"abc\"", {0, 0, 2, 0, 0}, 1},
        {"Abc1", {0, 0, 0, 1, 1}, 1},     {"abc1", {0, 0, 0, 1, 1}, 0},  {"ABC1", {0, 0, 0, 1, 2}, 0},
        {"ABC1", {0, 0, 0, 2, -1}, 1},    {"1!2", {0, 0, 1, 1, 0}, 0},   {"Aa1!", {4, 4, 1, 1, 1}, 1},
    };
    for (const auto& row : rows)
        EXPECT_EQ(zel_verifyPassword(row.phrase, &row.policy), row.result) << row.phrase << ", row " << &row - rows;
    EXPECT_EQ(zel_verifyPassword(nullptr, &rows[0].policy), -1);
    EXPECT_EQ(zel_verifyPassword("abc", nullptr), -1);
    EXPECT_STREQ(zel_getSpecialCharacters(), special);
}

void checkEveryByte() {
    const zel_PasswordPolicy anything = {0, 0, 0, 0, 0}, withSpecial = {0, 0, 1, 0, 0}, withDigit = {0, 0, 0, 1, 0},
                             mixed = {0, 0, 0, 0, 1};
    for (int byte = 1; byte < 256; ++byte)
        for (const std::size_t place : {0u, 1u, 2u}) { // first, within, last
            const char c = static_cast<char>(byte);
            const bool upper = c >= 'A' && c <= 'Z', lower = c >= 'a' && c <= 'z', digit = c >= '0' && c <= '9';
            const bool isSpecial = std::string(special).find(c) != std::string::npos;
            const std::string small = std::string("bb").insert(place, 1, c);
            const std::string capital = std::string("BB").insert(place, 1, c);
            EXPECT_EQ(zel_verifyPassword(small.c_str(), &anything), upper || lower || digit || isSpecial) << byte;
            EXPECT_EQ(zel_verifyPassword(small.c_str(), &withSpecial), isSpecial) << byte;
            EXPECT_EQ(zel_verifyPassword(small.c_str(), &withDigit), digit) << byte;
            EXPECT_EQ(zel_verifyPassword(small.c_str(), &mixed), upper) << byte;
            EXPECT_EQ(zel_verifyPassword(capital.c_str(), &mixed), lower) << byte;
        }
}

TEST(Password, EveryByteInTheClassicLocale) { checkEveryByte(); }

TEST(Password, EveryByteInAUtf8Locale) {
    if (std::setlocale(LC_ALL, "C.UTF-8") == nullptr && std::setlocale(LC_ALL, "en_US.UTF-8") == nullptr)
        GTEST_SKIP() << "no UTF-8 locale is installed";
    checkEveryByte();
}

constexpr char phrase[] = "Zq7!Zq7!Zq7!Zq7!Zq7!Zq7!Zq7!Zq7!Zq7!Zq7!Zq7!Zq7!Zq7!Zq7!Zq7!Zq7!";

TEST(Password, NothingStaysOnTheStack) {
    constexpr std::size_t size = 1 << 18;
    void* const stack = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    const auto verify = [](void* result) -> void* {
        const zel_PasswordPolicy policy = {64, 64, 1, 1, 1};
        *static_cast<int*>(result) = zel_verifyPassword(phrase, &policy);
        return nullptr;
    };
    int result = 0;
    pthread_t thread;
    pthread_attr_t attributes;
    ASSERT_EQ(::pthread_attr_init(&attributes) + ::pthread_attr_setstack(&attributes, stack, size), 0);
    ASSERT_EQ(::pthread_create(&thread, &attributes, verify, &result) + ::pthread_join(thread, nullptr), 0);
    EXPECT_EQ(result, 1);
    const char* const begin = static_cast<const char*>(stack);
    for (const char* const piece : {phrase, phrase + 2})
        EXPECT_EQ(std::search(begin, begin + size, piece, piece + 4), begin + size);
}

} // namespace
