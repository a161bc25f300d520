/** @file
 * Flat functions: checking pass phrases against a policy.
 *
 * The answer is yes or no, never why not. Nothing throws, nothing is traced, and no copy of the phrase is made; any
 * thread may call.
 */
#ifndef ZEL_API_ZEL_PASSWORD_H
#define ZEL_API_ZEL_PASSWORD_H

#include "zel/export.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** What a pass phrase has to be. Lengths are in bytes. */
typedef struct zel_PasswordPolicy {
    int32_t minLength;             /**< At least so many; taken as unsigned, so that a negative one refuses all. */
    int32_t maxLength;             /**< At most so many; 0 or less: any number. */
    int32_t requireSpecial;        /**< Above 0: at least one special character. */
    int32_t requireDigitAndLetter; /**< Above 0: at least one digit and one letter, of either case. */
    int32_t requireMixedCase;      /**< Above 0: at least one capital and one small letter. */
} zel_PasswordPolicy;

#ifdef __cplusplus
static_assert(sizeof(zel_PasswordPolicy) == 20, "callers of every word size share this record");
#endif

/**
 * Checks a pass phrase.
 * It consists of letters and digits, as the C locale in force classifies single bytes, and special characters. White
 * space and everything else is refused by every policy: in a UTF-8 locale, for example, all that is not ASCII.
 * Result: 1 if the phrase satisfies the policy, 0 if not, -1 if either pointer is null.
 */
ZEL_API int zel_verifyPassword(const char* passPhrase, const zel_PasswordPolicy* policy);

/** The 32 special characters as a text. It is the library's own: neither to be changed nor freed. */
ZEL_API const char* zel_getSpecialCharacters(void);

#ifdef __cplusplus
}
#endif

#endif
