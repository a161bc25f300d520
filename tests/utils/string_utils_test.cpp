#include "zel/utils/StringUtils.h"

#include "support/Failure.h"
#include "support/Generator.h"

#include <algorithm>
#include <climits>
#include <clocale>
#include <limits>
#include <locale>
#include <map>
#include <sstream>

#include <gtest/gtest.h>

using std::string_literals::operator""s;
using ZEL::RT::StringUtils;
using Texts = std::vector<std::string>;

namespace {

const std::string refusal = "InvalidArgumentException ZEL -1009 code: The input string cannot be converted to an "
                            "integer common/utils/StringUtils::";

struct DecimalComma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    std::string do_grouping() const override { return "\3"; }
};

// Whatever asks the global locales has a decimal comma and groups the digits.
struct Numbers : testing::Test {
    Numbers() {
        std::locale::global(std::locale(std::locale::classic(), new DecimalComma));
        std::setlocale(LC_ALL, "de_DE.UTF-8");
    }
};

template <class T> T read(const std::string& text) {
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    T value{};
    return in >> value ? value : T{-911};
}

template <class T> void compare(T (*convert)(const std::string&), const char* place, const std::string& text) {
    const T value = read<T>(text);
    const bool refused = (value == 0 && text != "0") || value == -911;
    T converted = -911;
    EXPECT_EQ(failureOf([&] { converted = convert(text); }), refused ? refusal + place : "") << text;
    EXPECT_EQ(converted, refused ? -911 : value) << text;
}

void compareFractions(const std::string& text) {
    compare(&StringUtils::AsDouble, "AsDouble() @68", text);
    compare(&StringUtils::AsFloat, "AsFloat() @77", text);
}

void compareAll(const std::string& text) {
    compareFractions(text);
    compare(&StringUtils::AsInteger, "AsInteger() @58", text);
    compare(&StringUtils::AsLong, "AsLong() @86", text);
    compare(&StringUtils::AsInt64, "AsInt64() @95", text);
    EXPECT_EQ(StringUtils::AsTimeT(text), read<std::time_t>(text)) << text;
}

TEST_F(Numbers, AreReadAsByTheClassicStream) {
    for (const char* line :
         {"|0|00| 0|0.0|-0|+5|+-5|- 5|abc|12abc|-911|-911.0|12e|12e+|12E-2x|1e5e6|1e5.5|0x10|1.5.5|.5|5.|.|.e5|1.e5|e5",
          "1e400|-1e400|1e39|1e-310|1e-400|1e-40|1e-50|nan|inf|1.234,5|\t\n\v\f\r 7|\xa0 7|2147483647|2147483648",
          "-2147483648|-2147483649|9223372036854775807|9223372036854775808|-9223372036854775808|-9223372036854775809",
          "1.7976931348623157e308|1.7976931348623159e308|4.9e-324|37034055e19"}) // the last is rounded twice in the x87
        for (const std::string& text : StringUtils::Tokenize(line, "|"))
            compareAll(text);
    for (const std::string& text : {"7\0008"s, "\0007"s, std::string(400, '9'), "0." + std::string(330, '0') + "7e331"})
        compareAll(text);

    Generator generated{
        StringUtils::Tokenize("0|1|7|12|+|-|.|e|E| |x|\t|911|,|5|000|e308|e-308|e-45|2147483648|3.4028236|9|2|3", "|")};
    for (int round = 0; round < 4000; ++round)
        compareAll(generated(5));
    std::mt19937_64 random(1);
    for (int round = 0; round < 20000; ++round)
        compareFractions(std::to_string(random() >> random() % 64) + "e" + std::to_string(round % 50 - 25));
}

template <class... T> void compareWritten(T... values) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    ((out << values << ' '), ...);
    EXPECT_EQ(((StringUtils::ToString(values) + ' ') + ...), out.str());
}

TEST_F(Numbers, AreWrittenAsByTheClassicStream) {
    for (const long long value : {0LL, 1LL, -1LL, 1234567LL, 2147483648LL, LLONG_MIN, LLONG_MAX})
        compareWritten(value, static_cast<long>(value), static_cast<int>(value), static_cast<unsigned int>(value),
                       reinterpret_cast<const void*>(static_cast<std::uintptr_t>(value)));
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double value : {0.0, -0.0, 0.1, 1234567.5, 999999.5, 0.0001, 0.00001, 123456.5, -1.2345678e-300,
                               4.9e-324, 1.7976931348623157e308, -infinity, infinity - infinity})
        compareWritten(value, static_cast<float>(value));
}

TEST(StringUtils, WordsAreBooleans) {
    for (const char* text : {"", "Y", "ye", "YES", "t", "TRU", "true", "2", "-1", " 5"})
        EXPECT_TRUE(StringUtils::AsBoolean(text)) << text;
    for (const char* text : {"n", "No", "f", "fal", "FALSE", "0"})
        EXPECT_FALSE(StringUtils::AsBoolean(text)) << text;
    for (const char* text : {"yesterday", "maybe", "es", "nope", "00", " "})
        EXPECT_EQ(failureOf([&] { StringUtils::AsBoolean(text); }), refusal + "AsInteger() @58") << text;
}

TEST(StringUtils, Comparisons) {
    const Texts texts = {"", "a", "ab", "abab", "xab", "abx", "abc", "a*"};
    for (const std::string& text : texts)
        for (const std::string& part : texts) {
            SCOPED_TRACE(text + ' ' + part);
            EXPECT_EQ(StringUtils::StartsWith(text, part), text.find(part) == 0);
            const std::string reversed(text.rbegin(), text.rend());
            EXPECT_EQ(StringUtils::EndsWith(text, part), reversed.find({part.rbegin(), part.rend()}) == 0);
            EXPECT_EQ(StringUtils::Matches(text, part), part.empty() || part == text);
        }
}

TEST(StringUtils, CleaningAndCase) {
    for (const auto& [text, expected] : std::map<std::string, std::string>{
             {"", ""}, {" \r\n ", ""}, {"\t", "\t"}, {"\n\ta b\t\r ", "\ta b\t"}, {" \0 "s, "\0"s}}) {
        std::string inPlace = text;
        StringUtils::Trim(inPlace);
        EXPECT_TRUE(inPlace == expected && StringUtils::Trim(text) == expected) << text;
    }
    std::string all;
    for (int c = 0; c < 256; ++c)
        all += static_cast<char>(c);
    const std::string kept = "\0\n\r"s + all.substr(32, 95) + all.substr(128);
    all += all;
    StringUtils::Sanitize(all);
    EXPECT_EQ(all, kept + kept);
    EXPECT_EQ(StringUtils::ToUppercase("aZ{\xe4\0z"s), "AZ{\xe4\0Z"s);
    EXPECT_EQ(StringUtils::ToLowercase("aZ[\xc4\0Z"s), "az[\xc4\0z"s);
}

TEST(StringUtils, ShreddingLeavesNoOldByte) {
    for (const std::size_t length : {1u, 4u, 15u, 16u, 5000u})
        for (const std::size_t used : {std::size_t{0}, std::size_t{1}, length}) {
            std::string secret(length, 'S');
            secret.resize(used);
            const char *const memory = secret.data(), *const end = memory + secret.capacity();
            StringUtils::shredString(secret);
            EXPECT_TRUE(secret == " " && secret.data() == memory && std::find(memory, end, 'S') == end) << length;
        }
}

TEST(StringUtils, TokensAndLocations) {
    EXPECT_EQ(StringUtils::Tokenize("", ","), Texts{""});
    EXPECT_EQ(StringUtils::Tokenize("a,,b,", ","), (Texts{"a", "", "b", ""}));
    EXPECT_EQ(StringUtils::Tokenize("a,b", ""), Texts{"a,b"});
    EXPECT_EQ(StringUtils::Tokenize("a\xff,\0c"s, "\xff\0"s), (Texts{"a", ",", "c"}));
    EXPECT_EQ(StringUtils::ToLocation(nullptr, nullptr, 5), "Unknown Location");
    EXPECT_EQ(StringUtils::ToLocation("C", "f", 12), "C::f() @12");
    EXPECT_EQ(StringUtils::ToLocation("C", nullptr, 0) + StringUtils::ToLocation(nullptr, "f", -1), "C::f()");
}

} // namespace
