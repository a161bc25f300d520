#include "inputs.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

#include <fcntl.h>
#include <unistd.h>

namespace inputs {

namespace {

// Of each size one, made when it is first asked for.
template <class Value, class Make> const Value& madeOnce(std::size_t size, Make make) {
    static std::map<std::size_t, Value> made;
    const auto known = made.find(size);
    return known != made.end() ? known->second : made.emplace(size, make()).first->second;
}

void check(bool worked, const char* what) {
    if (!worked) {
        std::perror(what);
        std::exit(2);
    }
}

int setLock(int descriptor, short kind) {
    struct flock lock = {};
    lock.l_type = kind;
    lock.l_whence = SEEK_SET;
    return ::fcntl(descriptor, F_SETLK, &lock);
}

class Folder {
public:
    Folder() : path_((std::filesystem::temp_directory_path() / "bench.XXXXXX").string()) {
        check(::mkdtemp(path_.data()) != nullptr, "bench: no temporary folder");
    }
    ~Folder() { std::filesystem::remove_all(path_); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::string file(std::size_t bytes) const { return path_ + "/" + std::to_string(bytes); }

private:
    std::string path_;
};

std::string word(std::mt19937& random, std::size_t longest) {
    std::string letters(random() % (longest + 1), ' ');
    for (char& c : letters)
        c = static_cast<char>('a' + random() % 26);
    return letters;
}

} // namespace

const std::string longLine(120, 'x');
const std::string fileName = "/var/lib/suite/settings/providers.xml";

const std::array<std::string, 16> integers = {"7",        "42",    "-1085",  "65536", "2147483647", "19",
                                              "8080",     "-3",    "123456", "1000",  "31",         "-911000",
                                              "99999999", "12345", "5",      "640"};
const std::array<std::string, 16> doubles = {"3.14159", "0.5",    "-2.75",      "1e10",   "6.02214e23", "100.25",
                                             "1.5",     "-0.001", "299792.458", "1e-7",   "42.0",       "2.718281828",
                                             "0.1",     "98.6",   "1234.5678",  "-273.15"};
const std::array<int, 16> integerValues = {7,      42,   -1085, 65536,   2147483647, 19,    8080, -3,
                                           123456, 1000, 31,    -911000, 99999999,   12345, 5,    640};
const std::array<double, 16> doubleValues = {3.14159, 0.5,    -2.75,      1e10,   6.02214e23, 100.25,
                                             1.5,     -0.001, 299792.458, 1e-7,   42.0,       2.718281828,
                                             0.1,     98.6,   1234.5678,  -273.15};

std::string fields(std::size_t count, const std::string& delimiters) {
    std::mt19937 random(1);
    std::string text = word(random, 15);
    for (std::size_t i = 1; i < count; ++i)
        text.append(1, delimiters[i % delimiters.size()]).append(word(random, 15));
    return text;
}

const Map& properties(std::size_t count) {
    return madeOnce<Map>(count, [count] {
        std::mt19937 random(2);
        Map map;
        for (std::size_t i = 0; i < count; ++i)
            map.emplace_hint(map.end(), "setting" + std::to_string(10'000'000 + i), word(random, 20));
        return map;
    });
}

const std::string& text(std::size_t count) {
    return madeOnce<std::string>(count, [count] {
        std::string text;
        for (const auto& [name, value] : properties(count))
            text.append(name).append("=").append(value).append("\n");
        return text;
    });
}

const std::string& xml(std::size_t count) {
    return madeOnce<std::string>(count, [count] {
        std::string xml = "<properties>";
        for (const auto& [name, value] : properties(count))
            xml.append("<property  name=\"").append(name).append("\">").append(value).append("</property>");
        return xml.append("</properties>");
    });
}

std::string lines(std::size_t bytes, const std::string& end) {
    const std::string line = longLine + end;
    std::string text;
    while (text.size() < bytes)
        text += line;
    text.resize(bytes);
    return text;
}

const std::string& file(std::size_t bytes) {
    static const Folder folder;
    return madeOnce<std::string>(bytes, [bytes] {
        const std::string path = folder.file(bytes);
        std::ofstream out(path, std::ios::binary);
        const std::string piece = lines(std::min<std::size_t>(bytes, 1 << 20), "\n");
        for (std::size_t rest = bytes; rest != 0; rest -= std::min(rest, piece.size()))
            out.write(piece.data(), static_cast<std::streamsize>(std::min(rest, piece.size())));
        check(!!out.flush(), "bench: cannot write a file");
        return path;
    });
}

Lock::Lock(const std::string& path) : descriptor_(::open(path.c_str(), O_RDONLY)) {
    check(setLock(descriptor_, F_RDLCK) == 0, "bench: no lock");
}

Lock::~Lock() {
    setLock(descriptor_, F_UNLCK);
    ::close(descriptor_);
}

} // namespace inputs
