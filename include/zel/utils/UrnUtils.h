/// @file
/// Resource names.
#ifndef ZEL_UTILS_URNUTILS_H
#define ZEL_UTILS_URNUTILS_H

#include "zel/export.h"

#include <string>

namespace ZEL::RT {

/// Static operations on resource names of the form `format://host:port/path#fragment?query`. The fragment comes
/// before the query, unlike in a URL.
///
/// Names are searched for separators and nothing else: no escapes are decoded, no letter case is folded, no name is
/// refused. A part that is missing reads as empty. What looks unfinished here (the port that is not written, the stubs,
/// the user information that runs on) is what callers rely on. Any thread may call.
class ZEL_API UrnUtils {
public:
    /// The separators may also be read by static initialisers of other libraries, in whatever order these run.
    static const std::string FormatSeparator;   ///< "://"
    static const std::string UserSeparator;     ///< "@", which no operation looks for
    static const std::string PortSeparator;     ///< ":"
    static const std::string PathSeparator;     ///< "/"
    static const std::string FragmentSeparator; ///< "#"
    static const std::string QuerySeparator;    ///< "?"

    /// Puts a name together. An empty part is left out together with its separator, and without a host the port is,
    /// too. Of a port other than 0 only the separator is written, never the number. A "/" is put before the path unless
    /// it has one: `f`, `h`, 80, `p`, `x`, `y` give `f://h:/p#x?y`.
    static std::string ToURN(const std::string& format, const std::string& host, const int& port,
                             const std::string& path, const std::string& fragment, const std::string& query);

    /// The same without port, fragment and query.
    static std::string ToURN(const std::string& format, const std::string& host, const std::string& path);

    /// What stands before the first "://".
    static std::string GetFormat(const std::string& name);

    /// What begins behind the first "://", or with the name if there is none. Its length is the position of the next
    /// "/" in the whole name, so that it runs on into the path by the length of the format and its separator:
    /// `f://h/pq` gives `h/pq`. A name without such a "/" is returned as it is.
    static std::string GetUserInfo(const std::string& name);

    /// Always empty.
    static std::string GetHost(const std::string& name);

    /// Always 0.
    static int GetPort(const std::string& name);

    /// What stands behind the first "/" after the format, up to the next "#", or the next "?" if there is no "#".
    static std::string GetPath(const std::string& name);

    /// What stands behind the first "#", wherever it is, up to the next "?".
    static std::string GetFragment(const std::string& name);

    /// All from the first "?" on, wherever it is, and with it.
    static std::string GetQueries(const std::string& name);

    /// Whether \c name has the format and the fragment of \c pattern and a path that begins with the pattern's, be it
    /// within a segment: `a/b` matches `a/bc`. What is empty in the pattern matches everything. Hosts, ports and
    /// queries are not compared.
    static bool Matches(const std::string& pattern, const std::string& name);
};

} // namespace ZEL::RT

#endif
