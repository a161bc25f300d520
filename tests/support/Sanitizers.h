// What the sanitizers cannot follow. Skipping says why in the test.
#ifndef ZEL_TESTS_SUPPORT_SANITIZERS_H
#define ZEL_TESTS_SUPPORT_SANITIZERS_H

#ifdef __SANITIZE_THREAD__
constexpr bool threadSanitizer = true;
#else
constexpr bool threadSanitizer = false;
#endif

#ifdef __SANITIZE_ADDRESS__
constexpr bool addressSanitizer = true;
#else
constexpr bool addressSanitizer = false;
#endif

#endif
