#include "zel/utils/EnvUtils.h"
#include "zel/utils/vor_runtime.h"

#include <gtest/gtest.h>

using ZEL::RT::EnvUtils;

TEST(Runtime, EnvironmentWithAFallback) {
    EXPECT_EQ(vor_safeSetenv("ZEL_TEST_SET", "a=b") + vor_safeSetenv("ZEL_TEST_EMPTY", ""), 0);
    EXPECT_EQ(EnvUtils::GetEnv("ZEL_TEST_SET", "fallback"), "a=b");
    EXPECT_EQ(EnvUtils::GetEnv("ZEL_TEST_EMPTY", "fallback"), "fallback");
    EXPECT_EQ(EnvUtils::GetEnv("ZEL_TEST_UNSET", "fallback"), "fallback");
}
