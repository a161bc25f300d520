#include "bench.h"
#include "inputs.h"

#include <string>
#include <vector>

#include <absl/strings/numbers.h>
#include <absl/strings/str_cat.h>
#include <absl/strings/str_split.h>

namespace {

using namespace bench;

template <class Values, class Convert> Body convertEach(const Values& values, Convert convert) {
    return [&values, convert](std::size_t times) {
        for (std::size_t i = 0; i < times; ++i)
            keep(convert(values[i % values.size()]));
    };
}

int asInteger(const std::string& text) {
    int number = 0;
    return absl::SimpleAtoi(text, &number) ? number : -1;
}

double asDouble(const std::string& text) {
    double number = 0;
    return absl::SimpleAtod(text, &number) ? number : -1;
}

template <class Delimiter> Body split(const std::string& text, Delimiter delimiter) {
    return each([text, delimiter] {
        const std::vector<std::string> pieces = absl::StrSplit(text, delimiter);
        keep(pieces);
    });
}

const Peers peers([] {
    find("AsInteger").peer("absl::SimpleAtoi", convertEach(inputs::integers, asInteger), 1.0);
    find("AsDouble").peer("absl::SimpleAtod", convertEach(inputs::doubles, asDouble), 0.9);
    find("ToString, int")
        .peer("absl::StrCat", convertEach(inputs::integerValues, [](int number) { return absl::StrCat(number); }), 2.0);
    find("ToString, double")
        .peer("absl::StrCat", convertEach(inputs::doubleValues, [](double number) { return absl::StrCat(number); }),
              3.5);
    find("Tokenize 1,000 fields, one delimiter").peer("absl::StrSplit", split(inputs::fields(1000, ","), ','), 0.9);
    find("Tokenize 1,000 fields, three delimiters")
        .peer("absl::StrSplit", split(inputs::fields(1000, ",;|"), absl::ByAnyChar(",;|")), 0.65);
});

} // namespace
