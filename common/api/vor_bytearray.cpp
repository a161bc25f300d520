#include "zel/api/vor_bytearray.h"

#include "utils/Block.h"
#include "utils/Shred.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

constexpr int nullArgument = 1;

// The bytes and a zero behind them; null stands for zeros alone. The largest size of all has no room for the
// terminator on ia32.
unsigned char* allocate(unsigned int size, const unsigned char* data) {
    const std::size_t bytes = std::size_t{size} + 1;
    if (bytes == 0)
        return nullptr;
    if (data == nullptr)
        return static_cast<unsigned char*>(std::calloc(bytes, 1));
    auto* const buffer = static_cast<unsigned char*>(ZEL::allocateBlock(bytes));
    if (buffer != nullptr) {
        std::memcpy(buffer, data, size);
        buffer[size] = 0;
    }
    return buffer;
}

// Whether the bytes begin in the array's buffer, whose terminator counts.
bool isWithin(const VOR_ByteArray& array, const unsigned char* data) {
    return reinterpret_cast<std::uintptr_t>(data) - reinterpret_cast<std::uintptr_t>(array.data) <= array.size;
}

unsigned int lengthOf(const char* text) { return text == nullptr ? 0 : static_cast<unsigned int>(std::strlen(text)); }

const unsigned char* bytesOf(const char* text) { return reinterpret_cast<const unsigned char*>(text); }

} // namespace

int vor_initializeByteArray(VOR_ByteArray* array, unsigned int size, const unsigned char* data) {
    if (array == nullptr)
        return nullArgument;
    array->size = size;
    array->data = size == 0 ? nullptr : allocate(size, data);
    return 0;
}

int vor_initializeByteArrayFromString(VOR_ByteArray* array, const char* text) {
    return vor_initializeByteArray(array, lengthOf(text), bytesOf(text));
}

int vor_containsByteArray(const VOR_ByteArray* array) {
    return array != nullptr && array->data != nullptr && array->size != 0 ? 1 : 0;
}

void vor_shredByteArray(VOR_ByteArray* array) {
    if (vor_containsByteArray(array))
        ZEL::shred(array->data, array->size);
}

void vor_clearByteArray(VOR_ByteArray* array) {
    if (array == nullptr || array->data == nullptr)
        return;
    vor_shredByteArray(array);
    std::free(array->data);
    array->size = 0;
    array->data = nullptr;
}

int vor_setByteArray(VOR_ByteArray* array, unsigned int size, const unsigned char* data) {
    if (array == nullptr)
        return nullArgument;
    if (array->data == nullptr)
        return vor_initializeByteArray(array, size, data);
    // What lies in the array itself is erased, and perhaps freed, by the time it is copied.
    const unsigned char* const source = isWithin(*array, data) ? nullptr : data;
    if (size == 0 || size > array->size) {
        vor_clearByteArray(array);
        return vor_initializeByteArray(array, size, source);
    }
    // The copy erases what it covers.
    const unsigned int copied = source == nullptr ? 0 : size;
    if (source != nullptr)
        std::memcpy(array->data, source, size);
    ZEL::shred(array->data + copied, array->size - copied);
    array->size = size;
    return 0;
}

int vor_setByteArrayFromString(VOR_ByteArray* array, const char* text) {
    return vor_setByteArray(array, lengthOf(text), bytesOf(text));
}

int vor_copyByteArray(VOR_ByteArray* target, const VOR_ByteArray* source) {
    return source == nullptr ? nullArgument : vor_setByteArray(target, source->size, source->data);
}
