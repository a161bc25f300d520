#include "zel/utils/EnvUtils.h"
#include "zel/utils/vor_runtime.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

#include <gtest/gtest.h>

using ZEL::RT::EnvUtils;

namespace {

void compare(decltype(&vor_safeStrcpy) put, const std::string& before, std::size_t size, const std::string& text,
             std::size_t count, const std::string& after) {
    char buffer[9];
    std::memset(buffer, '#', sizeof buffer);
    before.copy(buffer, 8);
    buffer[before.size()] = '\0';
    EXPECT_EQ(put(buffer, size, text.c_str(), count), size == 0 || count == 0 ? nullptr : buffer);
    EXPECT_TRUE(buffer == after && buffer[8] == '#') << before << ' ' << size << ' ' << text << ' ' << count;
    EXPECT_TRUE(!put(buffer, size, nullptr, count) && !put(nullptr, size, text.c_str(), count) && buffer == after);
}

TEST(Runtime, CopyingAndAppendingStayInTheBuffer) {
    for (const std::string before : {"", "abc", "abcdefg"})
        for (const std::string text : {"", "h", "hijkl", "hijklmnopq"})
            for (const std::size_t size : {0u, 1u, 3u, 4u, 7u, 8u})
                for (const std::size_t count :
                     std::initializer_list<std::size_t>{0, 1, 3, 7, 8, 10, SIZE_MAX - 1, SIZE_MAX}) {
                    const std::size_t room = size > before.size() && count != 0 ? size - before.size() - 1 : 0;
                    const std::string copied =
                        size <= 1 || count == 0 ? before : text.substr(0, std::min(count, size - 1));
                    compare(&vor_safeStrcpy, before, size, text, count, copied);
                    compare(&vor_safeStrcat, before, size, text, count, before + text.substr(0, std::min(count, room)));
                }
}

TEST(Runtime, EnvironmentWithAFallback) {
    EXPECT_EQ(vor_safeSetenv("ZEL_TEST_SET", "a=b") + vor_safeSetenv("ZEL_TEST_EMPTY", ""), 0);
    EXPECT_EQ(EnvUtils::GetEnv("ZEL_TEST_SET", "fallback"), "a=b");
    EXPECT_EQ(EnvUtils::GetEnv("ZEL_TEST_EMPTY", "fallback"), "fallback");
    EXPECT_EQ(EnvUtils::GetEnv("ZEL_TEST_UNSET", "fallback"), "fallback");
}

} // namespace
