// A text, or a long row of them with "|" between, read as numbers and Booleans, and the first bytes as numbers in
// memory: the library does with them what the classic streams do, though all that asks the global locales has a decimal
// comma and groups the digits.
#include "zel/utils/StringUtils.h"

#include "Target.h"
#include "support/Failure.h"

#include <clocale>
#include <cstring>
#include <locale>
#include <sstream>
#include <tuple>

using ZEL::RT::StringUtils;

namespace {

struct DecimalComma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    std::string do_grouping() const override { return "\3"; }
};

// These are made while the global locale is still the classic one.
std::istringstream in;
std::ostringstream out;
[[maybe_unused]] const std::locale classic = std::locale::global(std::locale(std::locale::classic(), new DecimalComma));
[[maybe_unused]] const char* const german = std::setlocale(LC_ALL, "de_DE.UTF-8");

// Longer inputs are rows for all conversions. The others are one text for one of them, which a byte of the text
// chooses: exceptions would keep a fuzzer from its work.
constexpr std::size_t longestText = 64;

template <class T> T read(const std::string& text) {
    in.clear();
    in.str(text);
    T value{};
    return in >> value ? value : T{-911};
}

template <class T> void checkWritten(T value) {
    out.str("");
    out << value;
    check("ToString", StringUtils::ToString(value), out.str());
}

template <class... T> void checkBytes(const std::uint8_t* data, std::size_t size) {
    std::tuple<T...> values;
    std::apply(
        [&](T&... value) { ((std::memcpy(&value, data, std::min(size, sizeof value)), checkWritten(value)), ...); },
        values);
}

template <class T> bool isRefused(T value, const std::string& text) {
    return (value == 0 && text != "0") || value == -911;
}

template <class T>
void checkRead(T (*convert)(const std::string&), const std::string& place, const std::string& text, T value,
               bool refused) {
    T converted{};
    check(place.c_str(), failureOf([&] { converted = convert(text); }),
          refused ? "InvalidArgumentException ZEL -1009 code: The input string cannot be converted to an integer "
                    "common/utils/StringUtils::" +
                        place
                  : "");
    check(place.c_str(), converted, refused ? T{} : value);
}

template <class T> void checkNumber(T (*convert)(const std::string&), const char* place, const std::string& text) {
    const T value = read<T>(text);
    checkRead(convert, place, text, value, isRefused(value, text));
    checkWritten(value);
}

void checkBoolean(const std::string& text) {
    const std::string lowered = recased(text, 'A');
    const auto begins = [&lowered](const std::string& word) { return word.compare(0, lowered.size(), lowered) == 0; };
    const bool yes = begins("yes") || begins("true"), no = begins("no") || begins("false");
    const int value = read<int>(lowered);
    checkRead(&StringUtils::AsBoolean, "AsInteger() @58", text, yes || (!no && value != 0),
              !yes && !no && isRefused(value, lowered));
}

using Text = const std::string&;
constexpr void (*checks[])(Text) = {
    [](Text text) { checkNumber(&StringUtils::AsInteger, "AsInteger() @58", text); },
    [](Text text) { checkNumber(&StringUtils::AsDouble, "AsDouble() @68", text); },
    [](Text text) { checkNumber(&StringUtils::AsFloat, "AsFloat() @77", text); },
    [](Text text) { checkNumber(&StringUtils::AsLong, "AsLong() @86", text); },
    [](Text text) { checkNumber(&StringUtils::AsInt64, "AsInt64() @95", text); },
    [](Text text) { check("AsTimeT()", StringUtils::AsTimeT(text), read<std::time_t>(text)); },
    [](Text text) { checkBoolean(text); },
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    checkBytes<double, float, unsigned int, long long, const void*>(data, size);
    const std::string input(data, data + size);
    if (size <= longestText)
        return checks[static_cast<std::uint8_t>(input[size / 2]) % std::size(checks)](input), 0;
    for (std::size_t start = 0, end = 0; end != std::string::npos; start = end + 1) {
        end = input.find('|', start);
        for (const auto& checkText : checks)
            checkText(input.substr(start, end - start));
    }
    return 0;
}
