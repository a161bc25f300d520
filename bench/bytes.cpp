#include "bench.h"

#include <cstdlib>
#include <cstring>
#include <vector>

#include <string.h>
#include <zel/vor.h>
#include <zel/zel.h>

namespace {

using namespace bench;
using Bytes = std::vector<unsigned char>;

Bytes pattern(std::size_t size) {
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<unsigned char>(i * 37);
    return bytes;
}

// Clearing shreds.
Body setAndClear(std::size_t size) {
    return each([secret = pattern(size)] {
        VOR_ByteArray array = {0, nullptr};
        vor_setByteArray(&array, static_cast<unsigned int>(secret.size()), secret.data());
        keep(array);
        vor_clearByteArray(&array);
    });
}

Body copyIntoVector(std::size_t size) {
    return each([secret = pattern(size)] {
        Bytes copy(secret);
        keep(copy);
        ::explicit_bzero(copy.data(), copy.size());
    });
}

Body copyIntoHeap(std::size_t size) {
    return each([secret = pattern(size)] {
        void* const copy = std::malloc(secret.size() + 1);
        std::memcpy(copy, secret.data(), secret.size());
        keep(copy);
        ::explicit_bzero(copy, secret.size());
        std::free(copy);
    });
}

Body toReadable(std::size_t size) {
    return each([secret = ZEL::createByteArray(static_cast<unsigned int>(size), pattern(size).data())] {
        keep(secret->toReadable());
    });
}

const Rows rows([] {
    row("byte array, set and shred, 32 B", setAndClear(32))
        .peer("std::vector, explicit_bzero", copyIntoVector(32), 0.95)
        .limit("malloc, memcpy, explicit_bzero", copyIntoHeap(32), 1.5);
    row("byte array, set and shred, 1 MiB", setAndClear(1 << 20))
        .peer("std::vector, explicit_bzero", copyIntoVector(1 << 20), 1.0)
        .limit("malloc, memcpy, explicit_bzero", copyIntoHeap(1 << 20), 1.1);
    row("hexadecimal of 1 KiB", toReadable(1 << 10));
});

const Rows sizes([] {
    for (const std::size_t bytes : {32u, 1u << 10, 32u << 10, 1u << 20, 32u << 20}) {
        row("growth, set and shred " + std::to_string(bytes), setAndClear(bytes)).growth("set and shred", bytes);
        row("growth, hexadecimal " + std::to_string(bytes), toReadable(bytes)).growth("hexadecimal", bytes);
    }
});

} // namespace
