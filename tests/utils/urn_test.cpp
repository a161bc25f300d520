#include "zel/utils/UrnUtils.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

using ZEL::RT::UrnUtils;

extern const std::string earlyNames; // early_names.cpp

namespace {

constexpr std::size_t absent = std::string::npos;

std::string parts(const std::string& name) {
    return UrnUtils::GetFormat(name) + '|' + UrnUtils::GetUserInfo(name) + '|' + UrnUtils::GetHost(name) + '|' +
           std::to_string(UrnUtils::GetPort(name)) + '|' + UrnUtils::GetPath(name) + '|' + UrnUtils::GetFragment(name) +
           '|' + UrnUtils::GetQueries(name);
}

TEST(Urn, Examples) {
    EXPECT_EQ(UrnUtils::ToURN("f", "h", 80, "p", "x", "y"), "f://h:/p#x?y");
    EXPECT_EQ(UrnUtils::ToURN("f", "", 80, "/p", "", ""), "f:///p");
    EXPECT_EQ(UrnUtils::ToURN("f", "h", "p"), "f://h/p");
    EXPECT_EQ(parts("h/p"), "|h||0|p||");
    EXPECT_EQ(parts("f://hp"), "f|f://hp||0|||");
    EXPECT_EQ(parts("f://h/pqrstu"), "f|h/pqr||0|pqrstu||");
    EXPECT_EQ(parts("fmt://h/a/b#f?q"), "fmt|h/a/b#f||0|a/b|f|?q");
    EXPECT_EQ(parts("h/a?q#f"), "|h||0|a?q|f|?q#f"); // the fragment ends the path before the query does
    EXPECT_TRUE(UrnUtils::Matches("f://h/a", "f://other/ab#x?y"));
    EXPECT_FALSE(UrnUtils::Matches("f://other/ab", "f://h/a"));
    EXPECT_FALSE(UrnUtils::Matches("f://", "F://h/a"));
}

TEST(Urn, EarlyInitialisersHaveTheSeparators) { EXPECT_EQ(earlyNames, "f://h:/p#x?y@"); }

// The operations in the words in which they are described, step by step.
std::string plainFormat(const std::string& name) {
    return name.find("://") != absent ? name.substr(0, name.find("://")) : "";
}

std::size_t plainStart(const std::string& name) { return name.find("://") != absent ? name.find("://") + 3 : 0; }

std::string plainUserInfo(const std::string& name) {
    const std::size_t slash = name.find("/", plainStart(name));
    return slash == absent ? name : name.substr(plainStart(name), slash);
}

std::string plainPath(const std::string& name) {
    std::size_t p = name.find("/", plainStart(name));
    if (p++ == absent)
        return "";
    const std::size_t end = name.find("#", p) != absent ? name.find("#", p) : name.find("?", p);
    return name.substr(p, end == absent ? absent : end - p);
}

std::string plainFragment(const std::string& name) {
    const std::size_t hash = name.find("#"), question = name.find("?", hash);
    return hash == absent ? "" : name.substr(hash + 1, question == absent ? absent : question - hash - 1);
}

std::string plainQueries(const std::string& name) {
    return name.find("?") == absent ? "" : name.substr(name.find("?"));
}

bool plainMatches(const std::string& pattern, const std::string& name) {
    return (plainFormat(pattern).empty() || plainFormat(pattern) == plainFormat(name)) &&
           (plainPath(pattern).empty() || plainPath(name).find(plainPath(pattern)) == 0) &&
           (plainFragment(pattern).empty() || plainFragment(pattern) == plainFragment(name));
}

std::string plainUrn(const std::string& format, const std::string& host, int port, const std::string& path,
                     const std::string& fragment, const std::string& query) {
    return (format.empty() ? "" : format + "://") + (host.empty() ? "" : host + (port != 0 ? ":" : "")) +
           (path.empty() ? "" : (path.find("/") != 0 ? "/" : "") + path) + (fragment.empty() ? "" : "#" + fragment) +
           (query.empty() ? "" : "?" + query);
}

TEST(Urn, GeneratedNamesGiveWhatTheStepsGive) {
    const std::string pieces[] = {"://", "/", "#", "?", ":", "@", "f", "h", "p", "f://", "f://h/", "\xff"};
    std::mt19937 random(1);
    const auto generated = [&](std::size_t longest) {
        std::string text;
        for (std::size_t length = random() % (longest + 1); length != 0; --length)
            text += pieces[random() % std::size(pieces)];
        return text;
    };
    int matching = 0, different = 0;
    for (int round = 0; round < 50000; ++round) {
        const std::string name = generated(9);
        ASSERT_EQ(parts(name), plainFormat(name) + '|' + plainUserInfo(name) + "||0|" + plainPath(name) + '|' +
                                   plainFragment(name) + '|' + plainQueries(name))
            << name;
        const std::string pattern = random() % 2 == 0 ? generated(4) : name.substr(0, random() % (name.size() + 1));
        const bool matches = plainMatches(pattern, name);
        ASSERT_EQ(UrnUtils::Matches(pattern, name), matches) << pattern << ' ' << name;
        ++(matches ? matching : different);

        const std::string format = generated(2), host = generated(2), path = generated(2), query = generated(2);
        const int port = static_cast<int>(random() % 3) - 1;
        ASSERT_EQ(UrnUtils::ToURN(format, host, port, path, pattern, query),
                  plainUrn(format, host, port, path, pattern, query));
    }
    EXPECT_GT(std::min(matching, different), 10000);
}

} // namespace
