#include "zel/utils/UrnUtils.h"

#include "support/Generator.h"

#include <gtest/gtest.h>

using ZEL::RT::UrnUtils;
using Parts = std::vector<std::string>;

extern const std::string earlyNames; // early_names.cpp

namespace {

// Format, user information, path, fragment and queries.
Parts parts(const std::string& name) {
    EXPECT_EQ(UrnUtils::GetHost(name) + std::to_string(UrnUtils::GetPort(name)), "0");
    return {UrnUtils::GetFormat(name), UrnUtils::GetUserInfo(name), UrnUtils::GetPath(name),
            UrnUtils::GetFragment(name), UrnUtils::GetQueries(name)};
}

TEST(Urn, Examples) {
    EXPECT_EQ(earlyNames, "f://h:/p#x?y@");
    EXPECT_EQ(UrnUtils::ToURN("f", "", 80, "/p", "", ""), "f:///p");
    EXPECT_EQ(UrnUtils::ToURN("f", "h", "p"), "f://h/p");
    EXPECT_EQ(parts("f://h/pqrstu"), (Parts{"f", "h/pqr", "pqrstu", "", ""}));
    EXPECT_EQ(parts("h/a?q#f"), (Parts{"", "h", "a?q", "f", "?q#f"})); // the fragment ends the path, not the query
    EXPECT_TRUE(UrnUtils::Matches("f://h/a", "f://o/ab#x?y") && !UrnUtils::Matches("f://o/ab", "f://h/a"));
}

// The operations step by step, in the words in which they are described.
Parts plainParts(const std::string& name) {
    constexpr std::size_t absent = std::string::npos;
    const std::size_t separator = name.find("://"), start = separator == absent ? 0 : separator + 3;
    const std::size_t slash = name.find("/", start), hash = name.find("#"), question = name.find("?");
    const std::size_t end = name.find("#", slash) != absent ? name.find("#", slash) : name.find("?", slash);
    return {separator == absent ? "" : name.substr(0, separator), slash == absent ? name : name.substr(start, slash),
            slash == absent ? "" : name.substr(slash + 1, end - slash - 1),
            hash == absent ? "" : name.substr(hash + 1, name.find("?", hash) - hash - 1),
            question == absent ? "" : name.substr(question)};
}

TEST(Urn, GeneratedNamesGiveWhatTheStepsGive) {
    Generator generated{{"://", "/", "#", "?", ":", "@", "f", "h", "p", "f://", "f://h/", "\xff"}};
    int counts[] = {0, 0};
    for (int round = 0; round < 50000; ++round) {
        const std::string name = generated(9);
        ASSERT_EQ(parts(name), plainParts(name)) << name;
        const std::string start = name.substr(0, generated.random() % (name.size() + 1));
        const std::string pattern = round % 2 == 0 ? generated(4) : start;
        const Parts wanted = plainParts(pattern), present = plainParts(name);
        const bool matches = (wanted[0].empty() || wanted[0] == present[0]) && present[2].find(wanted[2]) == 0 &&
                             (wanted[3].empty() || wanted[3] == present[3]);
        ASSERT_EQ(UrnUtils::Matches(pattern, name), matches) << pattern << ' ' << name;
        ++counts[matches];

        const std::string format = generated(2), host = generated(2), path = generated(2), query = generated(2);
        const std::string urn = (format.empty() ? "" : format + "://") + host +
                                (host.empty() || round % 3 == 1 ? "" : ":") +
                                (path.empty() || path[0] == '/' ? "" : "/") + path +
                                (pattern.empty() ? "" : "#" + pattern) + (query.empty() ? "" : "?" + query);
        ASSERT_EQ(UrnUtils::ToURN(format, host, round % 3 - 1, path, pattern, query), urn);
    }
    EXPECT_TRUE(counts[0] > 10000 && counts[1] > 10000);
}

} // namespace
