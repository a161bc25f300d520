#include "zel/library/FileUtils.h"

#include "zel/persistence/vor_file.h"
#include "zel/utils/StringUtils.h"

#include "utils/ErrnoKeeper.h"

namespace ZEL::RT {

// The system would see a path with a NUL in it only up to there.
bool FileUtils::Exists(const std::string& path) {
    const ErrnoKeeper keeper;
    VOR_FileStats stats;
    return path.find('\0') == std::string::npos && vor_safeFileStats(path.c_str(), &stats) == 0;
}

bool FileUtils::FindFileOnPath(const std::string& fileName, const std::string&, const std::string& path,
                               std::string& result) {
    for (const std::string& directory : StringUtils::Tokenize(path, ":")) {
        std::string candidate = directory;
        candidate.append("/").append(fileName);
        if (Exists(candidate)) {
            result.swap(candidate);
            return true;
        }
    }
    return false;
}

} // namespace ZEL::RT
