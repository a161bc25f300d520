#include "zel/api/zel_password.h"

#include "support/Sanitizers.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>
#include <pthread.h>

namespace {

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
