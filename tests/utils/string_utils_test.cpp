#include "zel/exceptions/InvalidArgumentException.h"
#include "zel/utils/StringUtils.h"

#include <algorithm>
#include <clocale>
#include <limits>
#include <locale>
#include <optional>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

using ZEL::EXCEPTIONS::InvalidArgumentException;
using ZEL::RT::StringUtils;

namespace {

using std::string_literals::operator""s;

struct DecimalComma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

// Global locales in which whatever asks them reads and writes "1.234,5".
class Numbers : public testing::Test {
protected:
    void SetUp() override {
        std::locale::global(std::locale(std::locale::classic(), new DecimalComma));
        for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE", "fr_FR"})
            if (std::setlocale(LC_ALL, name) != nullptr)
                break;
    }
};

template <class T> T read(const std::string& text) {
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    T value{};
    return in >> value ? value : T{-911};
}

template <class T> std::string write(const T& value) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << value;
    return out.str();
}

template <class T> void compare(T (*convert)(const std::string&), const std::string& text) {
    const T value = read<T>(text);
    const bool refused = (value == 0 && text != "0") || value == -911;
    try {
        const T converted = convert(text);
        EXPECT_FALSE(refused) << text;
        EXPECT_EQ(converted, value) << text;
    } catch (const InvalidArgumentException&) {
        EXPECT_TRUE(refused) << text << " is " << value;
    }
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
    const std::string texts[] = {
        "",
        "0",
        "00",
        " 0",
        "0.0",
        "-0",
        "+0",
        "5",
        "+5",
        "-5",
        "+-5",
        "--5",
        "+",
        "-",
        "- 5",
        "abc",
        "12abc",
        "-911",
        "-911.0",
        "911",
        "-912",
        "12e",
        "12e+",
        "12e5",
        "12E-2x",
        "1e5e6",
        "1e5.5",
        "0x10",
        "1.5.5",
        ".5",
        "5.",
        ".",
        "-.5",
        ".e5",
        "1.e5",
        "e5",
        "1e400",
        "-1e400",
        "1e39",
        "1e-310",
        "1e-400",
        "1e-40",
        "1e-50",
        "nan",
        "inf",
        "infinity",
        "1,5",
        "1.234,5",
        "1.234",
        "\t\n\v\f\r 7",
        "\xa0"s + "7",
        "7\0008"s,
        "\0007"s,
        "2147483647",
        "2147483648",
        "-2147483648",
        "-2147483649",
        "9223372036854775807",
        "9223372036854775808",
        "-9223372036854775808",
        "-9223372036854775809",
        "1.7976931348623157e308",
        "1.7976931348623159e308",
        "4.9e-324",
        "2e-324",
        std::string(400, '9'),
        std::string(400, '0') + "7",
        "0." + std::string(400, '0') + "7",
        "0." + std::string(330, '0') + "7e331",
        "37034055e19", // rounded twice in the x87 unit
    };
    for (const std::string& text : texts)
        compareAll(text);
}

TEST_F(Numbers, AreReadAsByTheClassicStreamWhateverTheText) {
    std::mt19937 random(1);
    const std::string parts[] = {"0", "1",  "7",   "12",   "+",     "-",    ".",          "e",         "E",    " ",
                                 "x", "\t", "911", "e308", "e-308", "e-45", "2147483648", "3.4028236", "0000", ","};
    for (int round = 0; round < 4000; ++round) {
        std::string text;
        for (std::size_t length = 1 + random() % 5; length != 0; --length)
            text += parts[random() % std::size(parts)];
        compareAll(text);
    }
    for (int round = 0; round < 40000; ++round) {
        const std::string text = std::to_string((std::uint64_t{random()} << 32 | random()) >> random() % 64) + "e" +
                                 std::to_string(static_cast<int>(random() % 50) - 25);
        compare(&StringUtils::AsDouble, text);
        compare(&StringUtils::AsFloat, text);
    }
}

TEST_F(Numbers, AreWrittenAsByTheClassicStream) {
    for (const long long value : {0LL, 1LL, -1LL, 1234567LL, 2147483648LL, std::numeric_limits<long long>::min(),
                                  std::numeric_limits<long long>::max()}) {
        EXPECT_EQ(StringUtils::ToString(value), write(value));
        EXPECT_EQ(StringUtils::ToString(static_cast<long>(value)), write(static_cast<long>(value)));
        EXPECT_EQ(StringUtils::ToString(static_cast<int>(value)), write(static_cast<int>(value)));
        EXPECT_EQ(StringUtils::ToString(static_cast<unsigned int>(value)), write(static_cast<unsigned int>(value)));
        const void* const address = reinterpret_cast<const void*>(static_cast<std::uintptr_t>(value));
        EXPECT_EQ(StringUtils::ToString(address), write(address));
    }
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double value : {0.0, -0.0, 0.1, 1.5, 1234567.5, 999999.5, 0.0001, 0.00001, 123456.5, 1e100, -1e-300,
                               4.9e-324, 1.7976931348623157e308, infinity, -infinity, -(infinity - infinity)}) {
        EXPECT_EQ(StringUtils::ToString(value), write(value));
        EXPECT_EQ(StringUtils::ToString(static_cast<float>(value)), write(static_cast<float>(value)));
    }
}

TEST(StringUtils, RefusalNamesTheConversion) {
    const struct {
        void (*convert)(const std::string&);
        int line;
        const char* operation;
    } rows[] = {
        {[](const std::string& text) { StringUtils::AsInteger(text); }, 58, "AsInteger"},
        {[](const std::string& text) { StringUtils::AsDouble(text); }, 68, "AsDouble"},
        {[](const std::string& text) { StringUtils::AsFloat(text); }, 77, "AsFloat"},
        {[](const std::string& text) { StringUtils::AsLong(text); }, 86, "AsLong"},
        {[](const std::string& text) { StringUtils::AsInt64(text); }, 95, "AsInt64"},
        {[](const std::string& text) { StringUtils::AsBoolean(text); }, 58, "AsInteger"},
    };
    for (const auto& row : rows) {
        try {
            row.convert("maybe");
            ADD_FAILURE() << row.operation;
        } catch (const InvalidArgumentException& e) {
            EXPECT_EQ(e.getCatalogName(), "ZEL");
            EXPECT_EQ(e.getEntryCode(), -1009);
            EXPECT_EQ(e.getEntryName(), "code");
            EXPECT_STREQ(e.what(), "The input string cannot be converted to an integer");
            EXPECT_STREQ(e.getSourceFile(), "common/utils/StringUtils");
            EXPECT_EQ(e.getSourceLine(), row.line);
            EXPECT_STREQ(e.getSourceFunction(), row.operation);
        }
    }
}

TEST(StringUtils, Booleans) {
    for (const char* text : {"", "Y", "ye", "Yes", "YES", "t", "TRU", "true", "2", "-1", " 5"})
        EXPECT_TRUE(StringUtils::AsBoolean(text)) << text;
    for (const char* text : {"n", "No", "f", "fal", "FALSE", "0"})
        EXPECT_FALSE(StringUtils::AsBoolean(text)) << text;
    for (const char* text : {"yesterday", "maybe", "es", "truee", "nope", "00", " "})
        EXPECT_THROW(StringUtils::AsBoolean(text), InvalidArgumentException) << text;
}

TEST(StringUtils, Comparisons) {
    const struct {
        const char* text;
        const char* part;
        bool starts, ends, matches;
    } rows[] = {
        {"abab", "ab", true, true, false}, {"abab", "", true, true, true},    {"", "", true, true, true},
        {"", "a", false, false, false},    {"ab", "ab", true, true, true},    {"ab", "abc", false, false, false},
        {"xab", "ab", false, true, false}, {"abx", "ab", true, false, false}, {"ab", "a*", false, false, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(StringUtils::StartsWith(row.text, row.part), row.starts) << row.text << ' ' << row.part;
        EXPECT_EQ(StringUtils::EndsWith(row.text, row.part), row.ends) << row.text << ' ' << row.part;
        EXPECT_EQ(StringUtils::Matches(row.text, row.part), row.matches) << row.text << ' ' << row.part;
    }
}

TEST(StringUtils, TrimmingKeepsTabs) {
    const struct {
        std::string text, expected;
    } rows[] = {
        {"", ""}, {" \r\n ", ""}, {"\t", "\t"}, {" a b\r\n", "a b"}, {"\n\ta\t ", "\ta\t"}, {" \0 "s, "\0"s},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(StringUtils::Trim(std::as_const(row.text)), row.expected);
        std::string text = row.text;
        StringUtils::Trim(text);
        EXPECT_EQ(text, row.expected);
    }
}

TEST(StringUtils, EveryByte) {
    std::string all;
    for (int c = 0; c < 256; ++c)
        all += static_cast<char>(c);
    std::string upper = all, lower = all;
    for (char& c : upper)
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    for (char& c : lower)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    EXPECT_EQ(StringUtils::ToUppercase(all), upper);
    EXPECT_EQ(StringUtils::ToLowercase(all), lower);

    std::string sane = all + all;
    StringUtils::Sanitize(sane);
    const std::string kept = "\0\n\r"s + all.substr(32, 95) + all.substr(128);
    EXPECT_EQ(sane, kept + kept);
}

TEST(StringUtils, ShreddingLeavesNoOldByte) {
    for (const std::size_t length : {1u, 2u, 3u, 4u, 15u, 16u, 100u, 5000u}) {
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

TEST(StringUtils, Tokens) {
    const struct {
        std::string text, delimiters;
        std::vector<std::string> pieces;
    } rows[] = {
        {"", ",", {""}},
        {",", ",", {"", ""}},
        {"a,,b,", ",", {"a", "", "b", ""}},
        {"abc", "", {"abc"}},
        {"a,b", ";", {"a,b"}},
        {"a,b;c", ";,", {"a", "b", "c"}},
        {"a\xff"
         "b\0c"s,
         "\xff\0"s,
         {"a", "b", "c"}},
        {"a\0b"s, "\0"s, {"a", "b"}},
        {"a;,", ",;;", {"a", "", ""}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(StringUtils::Tokenize(row.text, row.delimiters), row.pieces) << row.text << ' ' << row.delimiters;
}

TEST(StringUtils, Locations) {
    EXPECT_EQ(StringUtils::ToLocation(nullptr, nullptr, 5), "Unknown Location");
    EXPECT_EQ(StringUtils::ToLocation("C", "f", 12), "C::f() @12");
    EXPECT_EQ(StringUtils::ToLocation("C", nullptr, 0), "C::");
    EXPECT_EQ(StringUtils::ToLocation(nullptr, "f", -1), "f()");
    EXPECT_EQ(StringUtils::ToLocation("", nullptr, 1), ":: @1");
}

} // namespace
