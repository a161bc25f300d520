// Five bytes of policy and then pass phrases, each ended by a NUL: accepted or refused as the wording of the policy has
// it, and by no byte behind the phrase.
#include "zel/api/zel_password.h"

#include "Target.h"

#include <clocale>
#include <cstring>

namespace {

const std::string special = "!@#$%^&*()_-+=~{}[]<>?/`:;',.|\\\"";

bool isSpecial(char c) { return special.find(c) != std::string::npos; }
bool isCapital(char c) { return c >= 'A' && c <= 'Z'; }
bool isSmall(char c) { return c >= 'a' && c <= 'z'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

// The outermost values of a byte stand for those of a number.
std::int32_t wide(std::uint8_t byte) {
    const auto value = static_cast<std::int8_t>(byte);
    return value == INT8_MIN ? INT32_MIN : value == INT8_MAX ? INT32_MAX : value;
}

bool isAccepted(const std::string& phrase, const zel_PasswordPolicy& policy) {
    const auto has = [&phrase](bool (*is)(char)) { return std::any_of(phrase.begin(), phrase.end(), is); };
    const bool small = has(isSmall), capital = has(isCapital);
    return !has([](char c) { return !isSpecial(c) && !isCapital(c) && !isSmall(c) && !isDigit(c); }) &&
           phrase.size() >= static_cast<std::uint32_t>(policy.minLength) &&
           (policy.maxLength <= 0 || phrase.size() <= static_cast<std::uint32_t>(policy.maxLength)) &&
           (policy.requireSpecial <= 0 || has(isSpecial)) &&
           (policy.requireDigitAndLetter <= 0 || (has(isDigit) && (small || capital))) &&
           (policy.requireMixedCase <= 0 || (small && capital));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const char* const inForce = std::setlocale(LC_ALL, "C.UTF-8");
    std::uint8_t bytes[5] = {};
    std::memcpy(bytes, data, std::min(size, sizeof bytes));
    const zel_PasswordPolicy policy{wide(bytes[0]), wide(bytes[1]), wide(bytes[2]), wide(bytes[3]), wide(bytes[4])};
    check("special characters", std::string(zel_getSpecialCharacters()), special);
    // Each in memory of its own, for the sanitizer to watch.
    for (std::size_t at = std::min(size, sizeof bytes); at <= size;) {
        const std::uint8_t* const end = std::find(data + at, data + size, 0);
        std::vector<char> phrase(data + at, end);
        phrase.push_back('\0');
        check(phrase.data(), zel_verifyPassword(phrase.data(), &policy), int{isAccepted(phrase.data(), policy)});
        at = static_cast<std::size_t>(end - data) + 1;
    }
    return inForce == nullptr ? -1 : 0;
}
