#include "zel/api/zel_password.h"

#include <cctype>
#include <cstddef>
#include <cstring>

namespace {

constexpr int misuse = -1;
constexpr int refused = 0;
constexpr int accepted = 1;

constexpr char specialCharacters[] = "!@#$%^&*()_-+=~{}[]<>?/`:;',.|\\\"";
static_assert(sizeof specialCharacters == 32 + 1);

} // namespace

// All refusals are alike, so the phrase is read once, byte by byte, and nothing is kept but what kinds there were.
int zel_verifyPassword(const char* passPhrase, const zel_PasswordPolicy* policy) {
    if (passPhrase == nullptr || policy == nullptr)
        return misuse;
    std::size_t length = 0;
    bool upper = false, lower = false, digit = false, special = false;
    for (; passPhrase[length] != '\0'; ++length) {
        const int c = static_cast<unsigned char>(passPhrase[length]);
        if (std::isupper(c))
            upper = true;
        else if (std::islower(c))
            lower = true;
        else if (std::isdigit(c))
            digit = true;
        else if (std::strchr(specialCharacters, c) != nullptr)
            special = true;
        else
            return refused;
    }
    if (static_cast<std::size_t>(policy->minLength) > length)
        return refused;
    if (policy->maxLength > 0 && static_cast<std::size_t>(policy->maxLength) < length)
        return refused;
    if (policy->requireSpecial > 0 && !special)
        return refused;
    if (policy->requireDigitAndLetter > 0 && !(digit && (upper || lower)))
        return refused;
    if (policy->requireMixedCase > 0 && !(upper && lower))
        return refused;
    return accepted;
}

const char* zel_getSpecialCharacters(void) { return specialCharacters; }
