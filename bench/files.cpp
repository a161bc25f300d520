#include "bench.h"
#include "inputs.h"

#include <cstdlib>
#include <cstring>
#include <fstream>

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>
#include <zel/vor.h>
#include <zel/zel.h>

namespace {

using namespace bench;

void check(bool worked, const char* what) {
    if (!worked) {
        std::perror(what);
        std::exit(2);
    }
}

Body readWhole(std::size_t bytes) {
    return each([bytes] {
        VOR_FileHandle* file = nullptr;
        char* buffer = nullptr;
        unsigned int length = 0;
        check(vor_safeOpenFile(inputs::file(bytes).c_str(), 1, 0, &file) == 0, "vor_safeOpenFile");
        check(vor_safeReadContents(file, 1, &buffer, &length) == 0 && length == bytes, "vor_safeReadContents");
        keep(buffer);
        vor_safeFreeBuffer(buffer);
        check(vor_safeCloseFile(file) == 0, "vor_safeCloseFile");
    });
}

Body readByObject(std::size_t bytes) {
    return each([bytes] { keep(ZEL::RT::getLocalFile(inputs::file(bytes))->retrieve()); });
}

Body readRaw(std::size_t bytes) {
    return each([bytes] {
        const inputs::Lock lock(inputs::file(bytes));
        const int descriptor = lock.descriptor();
        ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
        const auto size = static_cast<std::size_t>(::lseek(descriptor, 0, SEEK_END));
        ::lseek(descriptor, 0, SEEK_SET);
        char* const buffer = static_cast<char*>(std::malloc(size + 1));
        check(::read(descriptor, buffer, size) == static_cast<ssize_t>(bytes), "read");
        buffer[size] = '\0';
        keep(buffer);
        std::free(buffer);
    });
}

// A stream has no descriptor to lock: the lock is another one's.
Body readByStream(std::size_t bytes) {
    return each([bytes] {
        const inputs::Lock lock(inputs::file(bytes));
        std::ifstream stream(inputs::file(bytes), std::ios::binary);
        stream.seekg(0, std::ios::end);
        std::string contents(static_cast<std::size_t>(stream.tellg()), '\0');
        stream.seekg(0);
        check(!!stream.read(contents.data(), static_cast<std::streamsize>(bytes)), "std::ifstream");
        keep(contents);
    });
}

// The pass over the carriage returns alone: instead of a file, the library reads this text, from memory.
std::string* served = nullptr;

std::size_t dropByLibrary(std::string& text) {
    served = &text;
    char* buffer = nullptr;
    unsigned int length = 0;
    vor_safeReadContents(reinterpret_cast<VOR_FileHandle*>(&text), 1, &buffer, &length);
    served = nullptr;
    return length;
}

std::size_t dropByByte(std::string& text) {
    const char* from = text.data();
    const char* const end = from + text.size();
    char* kept = text.data();
    for (; from != end; ++from)
        if (*from != '\r' || from + 1 == end || from[1] != '\n')
            *kept++ = *from;
    return static_cast<std::size_t>(kept - text.data());
}

// Looks for each carriage return and leaves it.
std::size_t search(std::string& text) {
    const char* at = text.data();
    const char* const end = at + text.size();
    while (const void* found = std::memchr(at, '\r', static_cast<std::size_t>(end - at)))
        at = static_cast<const char*>(found) + 1;
    return static_cast<std::size_t>(at - text.data());
}

// Looks for each carriage return and moves the line before it, whatever comes behind.
std::size_t searchAndMove(std::string& text) {
    char* from = text.data();
    char* kept = from;
    const char* const end = from + text.size();
    while (void* found = std::memchr(from, '\r', static_cast<std::size_t>(end - from))) {
        const auto size = static_cast<std::size_t>(static_cast<char*>(found) - from);
        std::memmove(kept, from, size);
        kept += size;
        from += size + 1;
    }
    return static_cast<std::size_t>(kept - text.data());
}

// What drops carriage returns needs new ones each time.
template <class Drop> Body pass(Drop drop, std::size_t bytes, const std::string& end) {
    const bool drops = end.front() == '\r';
    return [drop, drops, original = inputs::lines(bytes, end)](std::size_t times) {
        std::string text = original;
        for (; times != 0; --times) {
            if (drops)
                std::memcpy(text.data(), original.data(), text.size());
            keep(drop(text));
        }
    };
}

const Rows rows([] {
    const std::size_t kilobytes = 4 << 10;
    const std::size_t megabyte = 1 << 20;
    const std::size_t large = 256 << 20;
    row("read under lock, 4 KiB", readWhole(kilobytes))
        .peer("std::ifstream", readByStream(kilobytes), 1.05)
        .limit("system calls", readRaw(kilobytes), 1.15);
    row("read under lock, 1 MiB", readWhole(megabyte))
        .peer("std::ifstream", readByStream(megabyte), 1.05)
        .limit("system calls", readRaw(megabyte), 1.35);
    row("read under lock, 256 MiB", readWhole(large))
        .peer("std::ifstream", readByStream(large), 1.05)
        .limit("system calls", readRaw(large), 1.3);
    row("read through ILocalFile, 4 KiB", readByObject(kilobytes));

    const std::size_t passed = 64 << 10;
    row("carriage returns, none", pass(dropByLibrary, passed, "\n"))
        .peer("byte loop", pass(dropByByte, passed, "\n"), 0.05)
        .limit("memchr", pass(search, passed, "\n"), 1.1);
    row("carriage returns, every line", pass(dropByLibrary, passed, "\r\n"))
        .peer("byte loop", pass(dropByByte, passed, "\r\n"), 0.25)
        .limit("memchr, memmove", pass(searchAndMove, passed, "\r\n"), 1.2);
});

const Rows sizes([] {
    for (const std::size_t bytes : {256u, 4u << 10, 64u << 10, 1u << 20, 16u << 20, 256u << 20})
        row("growth, read " + std::to_string(bytes), readWhole(bytes)).growth("read", bytes);
    for (const std::size_t bytes : {256u, 4u << 10, 64u << 10, 1u << 20, 16u << 20})
        row("growth, carriage returns " + std::to_string(bytes), pass(dropByLibrary, bytes, "\r\n"))
            .growth("carriage returns", bytes);
});

} // namespace

// Stands before the library's own.
int internal_readContents(VOR_FileHandle* handle, int readMode, char** buffer, unsigned int* length) {
    if (served == nullptr) {
        static const auto real =
            reinterpret_cast<decltype(&internal_readContents)>(::dlsym(RTLD_NEXT, "internal_readContents"));
        return real(handle, readMode, buffer, length);
    }
    *buffer = served->data();
    *length = static_cast<unsigned int>(served->size());
    return 0;
}
