// What the sanitizers cannot follow. Skipping says why in the test.
#ifndef ZEL_TESTS_SUPPORT_SANITIZERS_H
#define ZEL_TESTS_SUPPORT_SANITIZERS_H

#if defined(__SANITIZE_THREAD__)
constexpr bool threadSanitizer = true, addressSanitizer = false;
#elif defined(__SANITIZE_ADDRESS__)
constexpr bool threadSanitizer = false, addressSanitizer = true;
#else
constexpr bool threadSanitizer = false, addressSanitizer = false;
#endif

#endif
