// Resource names: they are composed, taken apart and matched as described, step by step. An input is a row with tabs
// between: name, format, host, path, fragment, query.
#include "zel/utils/UrnUtils.h"

#include "Target.h"

using ZEL::RT::UrnUtils;

namespace {

// Format, user information, path, fragment and queries, which are not compared.
Texts plainParts(const std::string& name) {
    constexpr std::size_t absent = std::string::npos;
    const std::size_t separator = name.find("://"), start = separator == absent ? 0 : separator + 3;
    const std::size_t slash = name.find("/", start), hash = name.find("#"), question = name.find("?");
    const std::size_t end = name.find("#", slash) != absent ? name.find("#", slash) : name.find("?", slash);
    return {separator == absent ? "" : name.substr(0, separator), slash == absent ? name : name.substr(start, slash),
            slash == absent ? "" : name.substr(slash + 1, end - slash - 1),
            hash == absent ? "" : name.substr(hash + 1, name.find("?", hash) - hash - 1),
            question == absent ? "" : name.substr(question)};
}

bool plainMatches(const Texts& wanted, const Texts& present) {
    return (wanted[0].empty() || wanted[0] == present[0]) && present[2].find(wanted[2]) == 0 &&
           (wanted[3].empty() || wanted[3] == present[3]);
}

Texts checkedParts(const std::string& name) {
    const Texts parts = plainParts(name);
    check("parts",
          Texts{UrnUtils::GetFormat(name), UrnUtils::GetUserInfo(name), UrnUtils::GetPath(name),
                UrnUtils::GetFragment(name), UrnUtils::GetQueries(name)},
          parts);
    check("host and port", UrnUtils::GetHost(name).empty() && UrnUtils::GetPort(name) == 0);
    return parts;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto [name, format, host, path, fragment, query] = fields<6>(data, size);
    const int port = static_cast<int>(size % 3) - 1;

    const std::string place = (format.empty() ? "" : format + "://") + host + (host.empty() || port == 0 ? "" : ":") +
                              (path.empty() || path[0] == '/' ? "" : "/") + path;
    const std::string urn = place + (fragment.empty() ? "" : "#" + fragment) + (query.empty() ? "" : "?" + query);
    check("ToURN", UrnUtils::ToURN(format, host, port, path, fragment, query), urn);
    check("short ToURN", UrnUtils::ToURN(format, host, path), UrnUtils::ToURN(format, host, 0, path, "", ""));

    const Texts present = checkedParts(name), composed = checkedParts(urn);
    check("Matches", UrnUtils::Matches(urn, name) == plainMatches(composed, present));
    check("Matches, the other way round", UrnUtils::Matches(name, urn) == plainMatches(present, composed));
    for (const std::string& pattern : {format, path, place})
        check("Matches a part", UrnUtils::Matches(pattern, name) == plainMatches(plainParts(pattern), present));
    check("Matches itself", UrnUtils::Matches(urn, urn));

    if ((format + host + path + fragment + query).find_first_of(":/#?") == std::string::npos) // then it is readable
        check("parts read back", Texts{composed[0], composed[2], composed[3], composed[4]},
              Texts{format, path, fragment, query.empty() ? "" : "?" + query});
    return 0;
}
