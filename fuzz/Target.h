// What the targets share: inputs in fields, and comparisons that say what differs.
#ifndef ZEL_FUZZ_TARGET_H
#define ZEL_FUZZ_TARGET_H

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

using Texts = std::vector<std::string>;

// So many fields with tabs between. The last one takes the rest of the input; those that are missing are empty.
template <std::size_t count> std::array<std::string, count> fields(const std::uint8_t* data, std::size_t size) {
    std::array<std::string, count> result;
    const std::uint8_t* const end = data + size;
    for (std::string& field : result) {
        const std::uint8_t* const tab = &field == &result.back() ? end : std::find(data, end, '\t');
        field.assign(data, tab);
        data = tab == end ? end : tab + 1;
    }
    return result;
}

// With the letters from 'A' on small, or those from 'a' on as capitals.
inline std::string recased(std::string text, char first) {
    for (char& c : text)
        c = c >= first && c < first + 26 ? static_cast<char>(c ^ ' ') : c;
    return text;
}

inline void print(const std::string& text) {
    std::fputs(" \"", stderr);
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fputs("\"", stderr);
}

inline void print(const Texts& texts) {
    std::for_each(texts.begin(), texts.end(), [](auto& text) { print(text); });
}

template <class Value> void print(const Value& value) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.precision(17);
    text << value;
    print(text.str());
}

template <class T> void check(const char* what, const T& is, const T& expected) {
    if (is == expected)
        return;
    std::fprintf(stderr, "%s: is", what);
    print(is);
    std::fputs(", not", stderr);
    print(expected);
    std::fputs("\n", stderr);
    std::abort();
}

inline void check(const char* what, bool holds) {
    check(what, std::string(holds ? "so" : "not so"), std::string("so"));
}

#endif
