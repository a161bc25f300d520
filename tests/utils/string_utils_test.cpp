#include "zel/utils/StringUtils.h"

#include "support/Refusal.h"

#include <algorithm>
#include <clocale>
#include <limits>
#include <locale>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

using std::string_literals::operator""s;
using ZEL::RT::StringUtils;

namespace {

struct DecimalComma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

// Under global locales in which whatever asks them reads and writes "1.234,5".
class Numbers : public testing::Test {
protected:
    void SetUp() override {
        std::locale::global(std::locale(std::locale::classic(), new DecimalComma));
        for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8"})
            std::setlocale(LC_ALL, name);
    }
};

template <class T> T read(const std::string& text) {
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    T value{};
    return in >> value ? value : T{-911};
}

template <class T> void compare(T (*convert)(const std::string&), const std::string& text) {
    const T value = read<T>(text);
    T converted = -911;
    const std::string refusal = refusalOf([&] { converted = convert(text); });
    EXPECT_EQ(!refusal.empty(), (value == 0 && text != "0") || value == -911) << text;
    EXPECT_EQ(converted, refusal.empty() ? value : -911) << text;
}

void compareAll(const std::string& text) {
    compare(&StringUtils::AsInteger, text);
    compare(&StringUtils::AsLong, text);
    compare(&StringUtils::AsInt64, text);
    compare(&StringUtils::AsDouble, text);
    compare(&StringUtils::AsFloat, text);
    EXPECT_EQ(StringUtils::AsTimeT(text), read<std::time_t>(text)) << text;
}

TEST_F(Numbers, AreReadAsByTheClassicStream) {
    for (const char* text :
         {"",       "0",   "00",    " 0",     "0.0",   "-0",     "+5",     "+-5",   "- 5",   "abc", "12abc", "-911",
          "-911.0", "12e", "12e+",  "12E-2x", "1e5e6", "1e5.5",  "0x10",   "1.5.5", ".5",    "5.",  ".",     ".e5",
          "1.e5",   "e5",  "1e400", "-1e400", "1e39",  "1e-310", "1e-400", "1e-40", "1e-50", "nan", "inf",   "1.234,5"})
        compareAll(text);
    for (const char* text : {"\t\n\v\f\r 7", "\xa0 7", "2147483647", "2147483648", "-2147483648", "-2147483649",
                             "9223372036854775807", "9223372036854775808", "-9223372036854775808",
                             "-9223372036854775809", "1.7976931348623157e308", "1.7976931348623159e308", "4.9e-324"})
        compareAll(text);
    for (const std::string& text : {"7\0008"s, "\0007"s, std::string(400, '9'), "0." + std::string(330, '0') + "7e331"})
        compareAll(text);
    compareAll("37034055e19"); // rounded twice in the x87 unit

    std::mt19937 random(1);
    const char* const parts[] = {"0",    "1",     "7",    "12",         "+",         "-", ".", "e",
                                 "E",    " ",     "x",    "\t",         "911",       ",", "5", "000",
                                 "e308", "e-308", "e-45", "2147483648", "3.4028236", "9", "2", "3"};
    for (int round = 0; round < 4000; ++round) {
        std::string text;
        for (std::size_t length = 1 + random() % 5; length != 0; --length)
            text += parts[random() % std::size(parts)];
        compareAll(text);
    }
    for (int round = 0; round < 20000; ++round) {
        const std::uint64_t digits = (std::uint64_t{random()} << 32 | random()) >> random() % 64;
        const std::string text = std::to_string(digits) + "e" + std::to_string(static_cast<int>(random() % 50) - 25);
        compare(&StringUtils::AsDouble, text);
        compare(&StringUtils::AsFloat, text);
    }
}

template <class T> void compareWritten(T value) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << value;
    EXPECT_EQ(StringUtils::ToString(value), out.str());
}

TEST_F(Numbers, AreWrittenAsByTheClassicStream) {
    using Limits = std::numeric_limits<long long>;
    for (const long long value : {0LL, 1LL, -1LL, 1234567LL, 2147483648LL, Limits::min(), Limits::max()}) {
        compareWritten(value);
        compareWritten(static_cast<long>(value));
        compareWritten(static_cast<int>(value));
        compareWritten(static_cast<unsigned int>(value));
        compareWritten(reinterpret_cast<const void*>(static_cast<std::uintptr_t>(value)));
    }
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double value : {0.0, -0.0, 0.1, 1234567.5, 999999.5, 0.0001, 0.00001, 123456.5, -1.2345678e-300,
                               4.9e-324, 1.7976931348623157e308, -infinity, infinity - infinity}) {
        compareWritten(value);
        compareWritten(static_cast<float>(value));
    }
}

TEST(StringUtils, RefusalsNameTheConversion) {
    const auto refusal = [](const char* place) {
        return "ZEL -1009 code: The input string cannot be converted to an integer common/utils/StringUtils:"s + place;
    };
    EXPECT_EQ(refusalOf([] { StringUtils::AsInteger("x"); }), refusal("58 AsInteger"));
    EXPECT_EQ(refusalOf([] { StringUtils::AsDouble("x"); }), refusal("68 AsDouble"));
    EXPECT_EQ(refusalOf([] { StringUtils::AsFloat("x"); }), refusal("77 AsFloat"));
    EXPECT_EQ(refusalOf([] { StringUtils::AsLong("x"); }), refusal("86 AsLong"));
    EXPECT_EQ(refusalOf([] { StringUtils::AsInt64("x"); }), refusal("95 AsInt64"));

    for (const char* text : {"", "Y", "ye", "YES", "t", "TRU", "true", "2", "-1", " 5"})
        EXPECT_TRUE(StringUtils::AsBoolean(text)) << text;
    for (const char* text : {"n", "No", "f", "fal", "FALSE", "0"})
        EXPECT_FALSE(StringUtils::AsBoolean(text)) << text;
    for (const char* text : {"yesterday", "maybe", "es", "nope", "00", " "})
        EXPECT_EQ(refusalOf([&] { StringUtils::AsBoolean(text); }), refusal("58 AsInteger")) << text;
}

TEST(StringUtils, Comparisons) {
    const struct {
        const char* text;
        const char* part;
        bool starts, ends, matches;
    } rows[] = {
        {"abab", "ab", true, true, false}, {"abab", "", true, true, true},     {"", "a", false, false, false},
        {"ab", "ab", true, true, true},    {"ab", "abc", false, false, false}, {"xab", "ab", false, true, false},
        {"abx", "ab", true, false, false}, {"ab", "a*", false, false, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(StringUtils::StartsWith(row.text, row.part), row.starts) << row.text << ' ' << row.part;
        EXPECT_EQ(StringUtils::EndsWith(row.text, row.part), row.ends) << row.text << ' ' << row.part;
        EXPECT_EQ(StringUtils::Matches(row.text, row.part), row.matches) << row.text << ' ' << row.part;
    }
}

TEST(StringUtils, CleaningAndCase) {
    const std::string trimmed[][2] = {
        {"", ""}, {" \r\n ", ""}, {"\t", "\t"}, {"\n\ta b\t\r ", "\ta b\t"}, {" \0 "s, "\0"s}};
    for (const auto& [text, expected] : trimmed) {
        std::string inPlace = text;
        StringUtils::Trim(inPlace);
        EXPECT_EQ(inPlace, expected);
        EXPECT_EQ(StringUtils::Trim(text), expected);
    }
    std::string all;
    for (int c = 0; c < 256; ++c)
        all += static_cast<char>(c);
    std::string clean = all + all;
    StringUtils::Sanitize(clean);
    const std::string kept = "\0\n\r"s + all.substr(32, 95) + all.substr(128);
    EXPECT_EQ(clean, kept + kept);
    EXPECT_EQ(StringUtils::ToUppercase("aZ{\xe4\0z"s), "AZ{\xe4\0Z"s);
    EXPECT_EQ(StringUtils::ToLowercase("aZ[\xc4\0Z"s), "az[\xc4\0z"s);
}

TEST(StringUtils, ShreddingLeavesNoOldByte) {
    for (const std::size_t length : {1u, 2u, 3u, 4u, 15u, 16u, 5000u}) {
        for (const std::size_t used : {std::size_t{0}, std::size_t{1}, length}) {
            std::string secret(length, 'S');
            secret.resize(used);
            const char* const memory = secret.data();
            const std::size_t capacity = secret.capacity();
            StringUtils::shredString(secret);
            EXPECT_EQ(secret, " ");
            EXPECT_EQ(secret.data(), memory);
            EXPECT_EQ(std::count(memory, memory + capacity, 'S'), 0) << length << ' ' << used;
        }
    }
}

TEST(StringUtils, TokensAndLocations) {
    using Pieces = std::vector<std::string>;
    EXPECT_EQ(StringUtils::Tokenize("", ","), Pieces{""});
    EXPECT_EQ(StringUtils::Tokenize(",", ","), (Pieces{"", ""}));
    EXPECT_EQ(StringUtils::Tokenize("a,,b,", ","), (Pieces{"a", "", "b", ""}));
    EXPECT_EQ(StringUtils::Tokenize("a,b", ""), Pieces{"a,b"});
    EXPECT_EQ(StringUtils::Tokenize("a\xff,\0c"s, "\xff\0"s), (Pieces{"a", ",", "c"}));
    EXPECT_EQ(StringUtils::Tokenize("a\0b"s, "\0"s), (Pieces{"a", "b"}));

    EXPECT_EQ(StringUtils::ToLocation(nullptr, nullptr, 5), "Unknown Location");
    EXPECT_EQ(StringUtils::ToLocation("C", "f", 12), "C::f() @12");
    EXPECT_EQ(StringUtils::ToLocation("C", nullptr, 0), "C::");
    EXPECT_EQ(StringUtils::ToLocation(nullptr, "f", -1), "f()");
}

} // namespace
