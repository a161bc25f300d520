// Two byte arrays, changed by steps such as "b3abc": what to do, with the second array if it is a capital, a digit or
// any other byte as a size, and so many bytes. The arrays hold, compare and print what a plain model does, in all the
// memory that they ever used, and give nothing back but zeros.
#include "zel/data/ByteArrayImpl.h"

#include "Target.h"

#include <cctype>
#include <memory>

using ZEL::DATA::ByteArrayImpl;

namespace {

struct Array {
    std::unique_ptr<ByteArrayImpl> object = std::make_unique<ByteArrayImpl>(nullptr, 0u);
    const unsigned char* buffer = nullptr;
    std::string memory; // all of the buffer, the terminator included
    unsigned int size = 0;

    std::string bytes() const { return memory.substr(0, size); }

    void fill(const std::string& bytes) {
        size = static_cast<unsigned int>(bytes.size());
        memory = bytes.empty() ? "" : bytes + '\0';
        buffer = object->getData(nullptr);
    }

    // What fits stays in the buffer, and the rest of it is erased.
    void set(const std::string& bytes) {
        if (bytes.empty() || bytes.size() > size)
            return fill(bytes);
        check("buffer", static_cast<const void*>(object->toBinary()->data), static_cast<const void*>(buffer));
        size = static_cast<unsigned int>(bytes.size());
        memory = bytes + std::string(memory.size() - bytes.size(), '\0');
    }

    void compare() const {
        std::string readable;
        for (const char c : bytes())
            for (const int nibble : {c >> 4 & 0xF, c & 0xF})
                readable += "0123456789abcdef"[nibble];
        unsigned int given = size + 1;
        const unsigned char* const data = object->getData(&given);
        check("size", given == size && object->getSize() == size);
        check("presence", (data != nullptr) == (size != 0) && vor_containsByteArray(object->toBinary()) == (size != 0));
        check("memory", std::string(data, data + memory.size()), memory);
        check("toString", object->toString(), bytes());
        check("toReadable", object->toReadable(), readable);
    }
};

Array arrays[2];

// Returns what the array is to hold then.
std::string step(Array& array, const Array& other, int letter, const std::string& bytes) {
    VOR_ByteArray* const record = array.object->toBinary();
    const auto size = static_cast<unsigned int>(bytes.size());
    const auto* const data = reinterpret_cast<const unsigned char*>(bytes.data());
    const std::string zeros(letter == 'y' || letter == 'h' ? array.size : size, '\0');
    switch (letter) {
    case 'b':
        return array.object->setData(size, data), bytes;
    case 'z':
        return vor_setByteArray(record, size, nullptr), zeros;
    case 'o': // its own bytes, which are erased before they are read
        return vor_setByteArray(record, size,
                                record->data == nullptr ? nullptr : record->data + other.size % (array.size + 1)),
               zeros;
    case 't':
        return vor_setByteArrayFromString(record, bytes.c_str()), bytes.c_str();
    case 'c':
        return vor_copyByteArray(record, other.object->toBinary()), other.bytes();
    case 'y':
        return vor_copyByteArray(record, record), zeros;
    case 'a':
        return *array.object = *other.object, other.bytes();
    case 'i':
        return *array.object = *&*array.object, array.bytes();
    case 'h':
        return vor_shredByteArray(record), zeros;
    case 'e':
        return array.object->clear(), "";
    case 'n':
        return array.object = std::make_unique<ByteArrayImpl>(data, size), array.fill(""), bytes;
    case 'k':
        return array.object.reset(other.object->clone()), array.fill(""), other.bytes();
    default:
        return vor_setByteArrayFromString(record, nullptr), "";
    }
}

} // namespace

// The sanitizers call it with all that is about to be freed.
extern "C" void __sanitizer_free_hook(const volatile void* block) {
    for (const Array& array : arrays)
        if (block == array.buffer && block != nullptr)
            check("given back", std::string(array.buffer, array.buffer + array.memory.size()),
                  std::string(array.memory.size(), '\0'));
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string row(reinterpret_cast<const char*>(data), size);
    check("from a string", ZEL::createByteArray(row)->toString(), row);
    Array &first = arrays[0], &second = arrays[1];
    for (Array& array : arrays)
        array.set(step(array, array, 'e', ""));
    for (std::size_t at = 0; at + 1 < size;) {
        const bool capital = row[at] >= 'A' && row[at] <= 'Z';
        const std::string bytes = row.substr(at + 2, static_cast<std::uint8_t>(row[at + 1] - '0'));
        arrays[capital].set(step(arrays[capital], arrays[!capital], std::tolower(data[at]), bytes));
        at += 2 + bytes.size();
        first.compare();
        second.compare();
        check("equal", *first.object == *second.object, first.bytes() == second.bytes());
        check("below", *first.object < *second.object,
              first.size < second.size || (first.size == second.size && first.bytes() < second.bytes()));
    }
    return 0;
}
