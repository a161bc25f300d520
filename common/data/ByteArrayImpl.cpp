#include "zel/data/ByteArrayImpl.h"

#include <cstddef>
#include <cstring>

namespace ZEL::DATA {

namespace {

// Arithmetic and no table: compilers make many digits at once of it, and no secret chooses the memory that is read.
char digit(unsigned int nibble) { return static_cast<char>(nibble + (nibble < 10 ? '0' : 'a' - 10)); }

// Below, equal to or above 0, by size first. Arrays whose memory ran out have a size but no bytes to compare.
int compare(const IByteArray& left, const IByteArray& right) {
    unsigned int leftSize = 0;
    unsigned int rightSize = 0;
    const unsigned char* const leftBytes = left.getData(&leftSize);
    const unsigned char* const rightBytes = right.getData(&rightSize);
    if (leftSize != rightSize)
        return leftSize < rightSize ? -1 : 1;
    if (leftBytes == nullptr || rightBytes == nullptr)
        return static_cast<int>(leftBytes != nullptr) - static_cast<int>(rightBytes != nullptr);
    return std::memcmp(leftBytes, rightBytes, leftSize);
}

} // namespace

// Code compiled against the class reads the record in place.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
struct ByteArrayImpl::Layout {
    static constexpr std::size_t word = sizeof(void*);
    static_assert(offsetof(ByteArrayImpl, record_) == word);
    static_assert(sizeof(ByteArrayImpl) == 4 * word);
};
#pragma GCC diagnostic pop

ByteArrayImpl::ByteArrayImpl(const unsigned char* data, const unsigned int& size) {
    vor_initializeByteArray(&record_, size, data);
}

ByteArrayImpl::ByteArrayImpl(const ByteArrayImpl& other) : ByteArrayImpl(other.record_.data, other.record_.size) {}

ByteArrayImpl& ByteArrayImpl::operator=(const ByteArrayImpl& other) {
    if (this != &other)
        vor_copyByteArray(&record_, &other.record_);
    return *this;
}

std::string ByteArrayImpl::toString() const {
    if (record_.data == nullptr)
        return std::string();
    return std::string(reinterpret_cast<const char*>(record_.data), record_.size);
}

ByteArrayImpl::~ByteArrayImpl() { clear(); }

const unsigned char* ByteArrayImpl::getData(unsigned int* size) const {
    if (size != nullptr)
        *size = record_.size;
    return record_.data;
}

unsigned char* ByteArrayImpl::getData(unsigned int* size) {
    if (size != nullptr)
        *size = record_.size;
    return record_.data;
}

const VOR_ByteArray* ByteArrayImpl::toBinary() const { return &record_; }

VOR_ByteArray* ByteArrayImpl::toBinary() { return &record_; }

void ByteArrayImpl::setData(const unsigned int& size, const unsigned char* data) {
    vor_setByteArray(&record_, size, data);
}

std::string ByteArrayImpl::toReadable() const {
    std::string text;
    if (record_.data == nullptr)
        return text;
    // In one piece: a string that grows would leave its digits behind wherever it was before.
    text.resize(std::size_t{2} * record_.size);
    char* at = text.data();
    const unsigned char* const end = record_.data + record_.size;
    for (const unsigned char* byte = record_.data; byte != end; ++byte) {
        *at++ = digit(*byte >> 4);
        *at++ = digit(*byte & 0xF);
    }
    return text;
}

unsigned int ByteArrayImpl::getSize() const { return record_.size; }

bool ByteArrayImpl::operator<(const IByteArray& other) const { return compare(*this, other) < 0; }

bool ByteArrayImpl::operator==(const IByteArray& other) const { return compare(*this, other) == 0; }

ByteArrayImpl* ByteArrayImpl::clone() const { return new ByteArrayImpl(*this); }

void ByteArrayImpl::clear() { vor_clearByteArray(&record_); }

} // namespace ZEL::DATA

namespace ZEL {

RT::SmartPointer<DATA::IByteArray> createByteArray(unsigned int size, const unsigned char* data) {
    return RT::SmartPointer<DATA::IByteArray>(new DATA::ByteArrayImpl(data, size));
}

RT::SmartPointer<DATA::IByteArray> createByteArray(const std::string& s) {
    return createByteArray(static_cast<unsigned int>(s.size()), reinterpret_cast<const unsigned char*>(s.data()));
}

} // namespace ZEL
