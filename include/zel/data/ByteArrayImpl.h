/// @file
/// Binary value.
#ifndef ZEL_DATA_BYTEARRAYIMPL_H
#define ZEL_DATA_BYTEARRAYIMPL_H

#include "zel/api/vor_bytearray.h"
#include "zel/data/IByteArray.h"
#include "zel/export.h"

#include <string>

namespace ZEL::DATA {

/// The byte array: a flat record and its functions as an object. Copies have bytes of their own.
class ZEL_API ByteArrayImpl : public IByteArray {
public:
    /// With a copy of \c size bytes, or zeros if \c data is null.
    ByteArrayImpl(const unsigned char* data, const unsigned int& size);

    /// Copies the bytes. What an array held that is assigned to is erased.
    /// @{
    ByteArrayImpl(const ByteArrayImpl& other);
    ByteArrayImpl& operator=(const ByteArrayImpl& other);
    /// @}

    std::string toString() const override;
    ~ByteArrayImpl() override;

    const unsigned char* getData(unsigned int* size) const override;
    unsigned char* getData(unsigned int* size) override;
    const VOR_ByteArray* toBinary() const override;
    VOR_ByteArray* toBinary() override;
    void setData(const unsigned int& size, const unsigned char* data) override;
    std::string toReadable() const override;
    unsigned int getSize() const override;
    bool operator<(const IByteArray& other) const override;
    bool operator==(const IByteArray& other) const override;
    ByteArrayImpl* clone() const override;

    /// Erases and frees the bytes: the array is empty afterwards.
    void clear();

private:
    struct Layout;

    VOR_ByteArray record_ = {0, nullptr};
};

} // namespace ZEL::DATA

#endif
