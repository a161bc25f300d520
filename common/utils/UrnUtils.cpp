#include "zel/utils/UrnUtils.h"

#include <cstddef>
#include <string_view>

namespace {

// A std::string that holds a short text, as it lies in memory.
struct StringImage {
    const char* text;
    std::size_t size;
    char buffer[16];
};
static_assert(sizeof(StringImage) == sizeof(std::string));
static_assert(alignof(StringImage) == alignof(std::string));

} // namespace

// The separators lie ready in the library's data, under the names that the header's constants have. Strings that are
// constructed would still be missing when another library's initialisers run before ours. Nothing is left to destroy:
// the texts lie within the objects.
// NOLINTBEGIN(bugprone-macro-parentheses): a name that is declared has none.
#define ZEL_SEPARATOR(name, symbol, text)                                                                              \
    extern "C" ZEL_API const StringImage name __asm__("_ZN3ZEL2RT8UrnUtils" symbol "B5cxx11E");                        \
    const StringImage name = {name.buffer, sizeof text - 1, text}
// NOLINTEND(bugprone-macro-parentheses)

ZEL_SEPARATOR(formatSeparator, "15FormatSeparator", "://");
ZEL_SEPARATOR(userSeparator, "13UserSeparator", "@");
ZEL_SEPARATOR(portSeparator, "13PortSeparator", ":");
ZEL_SEPARATOR(pathSeparator, "13PathSeparator", "/");
ZEL_SEPARATOR(fragmentSeparator, "17FragmentSeparator", "#");
ZEL_SEPARATOR(querySeparator, "14QuerySeparator", "?");

namespace ZEL::RT {

namespace {

using View = std::string_view;

constexpr std::size_t absent = View::npos;

// Where the rest begins once the format is taken off.
std::size_t behindFormat(View name) {
    const std::size_t format = name.find(UrnUtils::FormatSeparator);
    return format == absent ? 0 : format + UrnUtils::FormatSeparator.size();
}

View formatOf(View name) {
    const std::size_t end = name.find(UrnUtils::FormatSeparator);
    return end == absent ? View() : name.substr(0, end);
}

View pathOf(View name) {
    const std::size_t separator = name.find(UrnUtils::PathSeparator, behindFormat(name));
    if (separator == absent)
        return View();
    const View rest = name.substr(separator + UrnUtils::PathSeparator.size());
    const std::size_t fragment = rest.find(UrnUtils::FragmentSeparator);
    return rest.substr(0, fragment != absent ? fragment : rest.find(UrnUtils::QuerySeparator));
}

View fragmentOf(View name) {
    const std::size_t separator = name.find(UrnUtils::FragmentSeparator);
    if (separator == absent)
        return View();
    const View rest = name.substr(separator + UrnUtils::FragmentSeparator.size());
    return rest.substr(0, rest.find(UrnUtils::QuerySeparator));
}

bool isEmptyOrEqual(View pattern, View text) { return pattern.empty() || pattern == text; }

} // namespace

std::string UrnUtils::ToURN(const std::string& format, const std::string& host, const int& port,
                            const std::string& path, const std::string& fragment, const std::string& query) {
    std::string name;
    if (!format.empty())
        name.append(format).append(FormatSeparator);
    if (!host.empty()) {
        name.append(host);
        if (port != 0)
            name.append(PortSeparator);
    }
    if (!path.empty()) {
        if (path.compare(0, PathSeparator.size(), PathSeparator) != 0)
            name.append(PathSeparator);
        name.append(path);
    }
    if (!fragment.empty())
        name.append(FragmentSeparator).append(fragment);
    if (!query.empty())
        name.append(QuerySeparator).append(query);
    return name;
}

std::string UrnUtils::ToURN(const std::string& format, const std::string& host, const std::string& path) {
    return ToURN(format, host, 0, path, std::string(), std::string());
}

std::string UrnUtils::GetFormat(const std::string& name) { return std::string(formatOf(name)); }

std::string UrnUtils::GetUserInfo(const std::string& name) {
    const std::size_t start = behindFormat(name);
    const std::size_t separator = name.find(PathSeparator, start);
    return separator == absent ? name : name.substr(start, separator); // a position for a length: callers rely on it
}

std::string UrnUtils::GetHost(const std::string&) { return std::string(); }

int UrnUtils::GetPort(const std::string&) { return 0; }

std::string UrnUtils::GetPath(const std::string& name) { return std::string(pathOf(name)); }

std::string UrnUtils::GetFragment(const std::string& name) { return std::string(fragmentOf(name)); }

std::string UrnUtils::GetQueries(const std::string& name) {
    const std::size_t separator = name.find(QuerySeparator);
    return separator == absent ? std::string() : name.substr(separator);
}

bool UrnUtils::Matches(const std::string& pattern, const std::string& name) {
    if (!isEmptyOrEqual(formatOf(pattern), formatOf(name)))
        return false;
    const View path = pathOf(pattern);
    if (pathOf(name).substr(0, path.size()) != path)
        return false;
    return isEmptyOrEqual(fragmentOf(pattern), fragmentOf(name));
}

} // namespace ZEL::RT
