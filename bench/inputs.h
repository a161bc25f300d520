/// @file
/// What the library and its peers are given to work on: the same to each.
#ifndef ZEL_BENCH_INPUTS_H
#define ZEL_BENCH_INPUTS_H

#include <array>
#include <cstddef>
#include <functional>
#include <map>
#include <string>

namespace inputs {

/// The name that scopes are traced under, and a line of 120 characters.
constexpr const char* scope = "FileLockImpl::readContents()";
extern const std::string longLine;

/// What a failure is reported with.
constexpr const char* message = "Could not open file for reading";
constexpr const char* source = "common/persistence/FileLock";
constexpr const char* operation = "obtainLock";
constexpr int sourceLine = 58;
constexpr int code = -1085;
extern const std::string fileName;

/// Numbers as texts and the texts' values.
extern const std::array<std::string, 16> integers;
extern const std::array<std::string, 16> doubles;
extern const std::array<int, 16> integerValues;
extern const std::array<double, 16> doubleValues;

/// Fields of 0 to 15 letters between the delimiters, which take turns.
std::string fields(std::size_t count, const std::string& delimiters);

using Map = std::map<std::string, std::string, std::less<>>;

/// So many properties, with names of 15 characters and values of 0 to 20, and their text and XML form; each made at
/// first use and kept.
const Map& properties(std::size_t count);
const std::string& text(std::size_t count);
const std::string& xml(std::size_t count);

/// A text in lines of 120 characters, each with the given end.
std::string lines(std::size_t bytes, const std::string& end);

/// A file of such lines without carriage returns, which is gone when the program ends; made at first use.
const std::string& file(std::size_t bytes);

/// Holds a shared lock on a whole file, which it opens for that. Ends the program if there is none to be had.
class Lock {
public:
    explicit Lock(const std::string& path);
    ~Lock();
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

    int descriptor() const { return descriptor_; }

private:
    int descriptor_;
};

} // namespace inputs

#endif
