#include "bench.h"
#include "inputs.h"

#include <charconv>
#include <cstring>
#include <sstream>

#include <zel/zel.h>

namespace {

using namespace bench;
using ZEL::RT::StringUtils;

// Takes the values of an array in turns.
template <class Values, class Convert> Body convertEach(const Values& values, Convert convert) {
    return [&values, convert](std::size_t times) {
        for (std::size_t i = 0; i < times; ++i)
            keep(convert(values[i % values.size()]));
    };
}

template <class Number> Number fromChars(const std::string& text) {
    Number number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

template <class Number> std::string print(Number number) {
    std::ostringstream stream;
    stream << number;
    return stream.str();
}

// Looks for each delimiter and takes no field.
Body searchFields(const std::string& text, char delimiter) {
    return each([text, delimiter] {
        const char* at = text.data();
        const char* const end = at + text.size();
        while (const void* found = std::memchr(at, delimiter, static_cast<std::size_t>(end - at))) {
            at = static_cast<const char*>(found) + 1;
            keep(at);
        }
    });
}

Body tokenize(const std::string& text, const std::string& delimiters) {
    return each([text, delimiters] { keep(StringUtils::Tokenize(text, delimiters)); });
}

const Rows rows([] {
    row("AsInteger", convertEach(inputs::integers, StringUtils::AsInteger))
        .limit("std::from_chars", convertEach(inputs::integers, fromChars<int>), 2.0);
    row("AsDouble", convertEach(inputs::doubles, StringUtils::AsDouble))
        .limit("std::from_chars", convertEach(inputs::doubles, fromChars<double>), 2.5);
    row("ToString, int", convertEach(inputs::integerValues, [](int number) { return StringUtils::ToString(number); }))
        .peer("std::ostringstream", convertEach(inputs::integerValues, print<int>), 0.12);
    row("ToString, double",
        convertEach(inputs::doubleValues, [](double number) { return StringUtils::ToString(number); }))
        .peer("std::ostringstream", convertEach(inputs::doubleValues, print<double>), 0.25);

    const std::string commas = inputs::fields(1000, ",");
    row("Tokenize 1,000 fields, one delimiter", tokenize(commas, ","))
        .limit("memchr alone", searchFields(commas, ','), 2.6);
    row("Tokenize 1,000 fields, three delimiters", tokenize(inputs::fields(1000, ",;|"), ",;|"));
    for (const std::size_t count : {10u, 100u, 1'000u, 10'000u, 100'000u}) {
        const std::string text = inputs::fields(count, ",");
        row("growth, Tokenize " + std::to_string(count), tokenize(text, ",")).growth("Tokenize", text.size());
    }
});

} // namespace
