// Rows of a size, a count and two texts with a tab between. Sizes and counts are a digit each or another byte, of which
// those just below '0' mean the largest counts of all. What the functions make of them, in memory of just that size, is
// what a plain model without memory says.
#include "zel/utils/vor_runtime.h"

#include "Target.h"

#include <cstdarg>
#include <cstring>
#include <memory>

namespace {

// Ends with the text, so that the sanitizer sees who reads on.
std::vector<char> block(const std::string& text) { return {text.c_str(), text.c_str() + text.size() + 1}; }

bool isSameSign(int order, int expected) { return (order > 0) == (expected > 0) && (order < 0) == (expected < 0); }

void checkPut(const char* what, decltype(&vor_safeStrcpy) put, const std::string& before, const std::string& text,
              std::size_t count, const std::string& after) {
    std::vector<char> memory(before.begin(), before.end());
    char* const result = before.empty() || count == 0 ? nullptr : memory.data();
    const auto source = block(text);
    check(what, put(memory.data(), before.size(), source.data(), count), result);
    check(what, put(nullptr, before.size(), source.data(), count) == nullptr);
    check(what, put(memory.data(), before.size(), nullptr, count) == nullptr);
    check(what, std::string(memory.begin(), memory.end()), after);
}

void checkPutting(std::size_t size, std::size_t count, const std::string& before, const std::string& text) {
    std::string memory = before + '\0';
    memory.resize(size, '#');
    std::string copied = memory, appended = memory;
    if (const std::size_t n = std::min(count, size - 1); size != 0 && n != 0) {
        copied = text.substr(0, n);
        copied.resize(n + 1);
        copied += memory.substr(n + 1);
    }
    if (const std::size_t length = memory.find('\0'); length != std::string::npos) {
        const std::size_t n = std::min(count, size - length - 1);
        const std::string piece = text.substr(0, n) + '\0';
        appended.replace(length, piece.size(), piece);
        appended[length + n] = '\0';
    }
    checkPut("vor_safeStrcpy", &vor_safeStrcpy, memory, text, count, copied);
    checkPut("vor_safeStrcat", &vor_safeStrcat, memory, text, count, appended);
}

int format(char* text, std::size_t count, ...) {
    std::va_list arguments;
    va_start(arguments, count);
    const int length = vor_safeVsprintf(text, 1, count, "%s", arguments);
    va_end(arguments);
    return length;
}

void checkFormatting(std::size_t count, const std::string& text) {
    std::vector<char> cut(count), whole(text.size() + 1);
    check("vor_safeVsprintf", format(cut.data(), count, text.c_str()), static_cast<int>(text.size()));
    check("vor_safeVsprintf", count == 0 ? "" : std::string(cut.data()), text.substr(0, count == 0 ? 0 : count - 1));
    check("vor_safeSprintf", vor_safeSprintf(whole.data(), 1, "%s", text.c_str()), static_cast<int>(text.size()));
    check("vor_safeSprintf", std::string(whole.data()), text);
}

void checkComparing(const std::string& left, const std::string& right, std::size_t count) {
    const auto a = block(left), b = block(right);
    const std::string smallLeft = recased(left, 'A'), smallRight = recased(right, 'A');
    const auto same = [](const char* what, int order, int expected) { check(what, isSameSign(order, expected), true); };
    same("vor_safeStrcmp", vor_safeStrcmp(a.data(), b.data()), left.compare(right));
    same("vor_safeStrncmp", vor_safeStrncmp(a.data(), b.data(), count), left.compare(0, count, right, 0, count));
    same("vor_safeStrcasecmp", vor_safeStrcasecmp(a.data(), b.data()), smallLeft.compare(smallRight));
    same("vor_safeStrncasecmp", vor_safeStrncasecmp(a.data(), b.data(), count),
         smallLeft.compare(0, count, smallRight, 0, count));
    const char* const found = vor_safeStrstr(a.data(), b.data());
    check("vor_safeStrstr", found == nullptr ? std::string::npos : static_cast<std::size_t>(found - a.data()),
          left.find(right));
}

void checkChanging(const std::string& text, const std::string& other, std::size_t size) {
    const std::unique_ptr<char, decltype(&vor_safeFreeBuffer)> lower(vor_safeToLower(block(text).data(), size),
                                                                     &vor_safeFreeBuffer);
    check("vor_safeToLower", std::string(lower.get(), std::max(size, text.size()) + 1),
          recased(text, 'A') + std::string(std::max(size, text.size()) + 1 - text.size(), '\0'));

    auto replaced = block(text);
    std::string expected = text + '\0';
    const char from = other.empty() ? 'a' : other.front(), to = static_cast<char>(size);
    check("vor_safeCharReplace", vor_safeCharReplace(replaced.data(), from, to),
          static_cast<int>(std::count(text.begin(), text.end(), from)));
    std::replace(expected.begin(), expected.end() - 1, from, to);
    check("vor_safeCharReplace", std::string(replaced.begin(), replaced.end()), expected);
}

void checkTokens(const std::string& text, const std::string& delimiters) {
    auto cut = block(text);
    const auto between = block(delimiters);
    std::string tokens, expected;
    char* state = nullptr;
    for (const char* token = vor_safeStrtok(cut.data(), between.data(), &state); token != nullptr;
         token = vor_safeStrtok(nullptr, between.data(), &state))
        tokens.append(token) += '\n';
    for (const char c : text)
        if (delimiters.find(c) == std::string::npos)
            expected += c;
        else if (!expected.empty() && expected.back() != '\n')
            expected += '\n';
    if (!expected.empty() && expected.back() != '\n')
        expected += '\n';
    check("vor_safeStrtok", tokens, expected);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t length) {
    for (const std::uint8_t* const end = data + length; end - data > 2;) {
        const std::uint8_t* const next = std::find(data + 2, end, '\n');
        const auto row = fields<2>(data + 2, static_cast<std::size_t>(next - data) - 2);
        const std::string text = row[0].c_str(), other = row[1].c_str();
        const std::size_t size = static_cast<std::uint8_t>(data[0] - '0');
        const auto count = static_cast<std::size_t>(static_cast<std::int8_t>(data[1] - '0'));
        checkPutting(size, count, text, other);
        checkFormatting(size, text);
        checkComparing(text, other, count);
        checkChanging(text, other, size);
        checkTokens(text, other);
        data = next + (next != end);
    }
    return 0;
}
