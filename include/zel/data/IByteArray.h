/// @file
/// Interface of binary values.
#ifndef ZEL_DATA_IBYTEARRAY_H
#define ZEL_DATA_IBYTEARRAY_H

#include "zel/api/vor_bytearray.h"
#include "zel/exceptions/Cloneable.h"
#include "zel/exceptions/Object.h"
#include "zel/export.h"
#include "zel/memory/SmartPointer.h"

#include <string>

namespace ZEL::DATA {

/// A value of bytes that may be secret, such as a key or a digest: its memory is overwritten with zeros before it is
/// given back or filled anew. What is copied out of it is the caller's to erase (StringUtils::shredString).
/// The size is that which was asked for, also when memory ran out: there is then no data, and nothing is thrown.
/// An object is used by one thread at a time. Virtual functions in slot order.
class ZEL_API IByteArray : public virtual Object, public virtual Cloneable {
public:
    /// @return the bytes as they are, zeros included; "" if there is no data.
    std::string toString() const override = 0;

    ~IByteArray() override;

    /// The bytes, followed by a zero byte that does not count. They stay the object's and stay valid until it is set,
    /// cleared or destroyed.
    /// @param size receives the number of bytes; may be null.
    /// @return null when empty.
    /// @{
    virtual const unsigned char* getData(unsigned int* size) const = 0;
    virtual unsigned char* getData(unsigned int* size) = 0;
    /// @}

    /// The object's own record for the flat functions. Never to be released, only cleared or set.
    /// @{
    virtual const VOR_ByteArray* toBinary() const = 0;
    virtual VOR_ByteArray* toBinary() = 0;
    /// @}

    /// Replaces the contents by a copy of \c size bytes, or zeros if \c data is null; size 0 clears.
    /// The old contents are erased first: setting an object from its own bytes leaves zeros.
    virtual void setData(const unsigned int& size, const unsigned char* data) = 0;

    /// @return two lower-case hexadecimal digits a byte and nothing else, such as "01ab"; "" if there is no data.
    virtual std::string toReadable() const = 0;

    /// The number of bytes asked for, whether or not there was memory for them.
    virtual unsigned int getSize() const = 0;

    /// Ordered by size first and by unsigned bytes then, unlike strings: FF comes before 0000.
    virtual bool operator<(const IByteArray& other) const = 0;

    /// Same size and same bytes.
    virtual bool operator==(const IByteArray& other) const = 0;

    IByteArray* clone() const override = 0;
};

} // namespace ZEL::DATA

namespace ZEL {

/// @return a new byte array with a copy of \c size bytes, or zeros if \c data is null, and with a count of 1.
ZEL_API RT::SmartPointer<DATA::IByteArray> createByteArray(unsigned int size, const unsigned char* data);

/// @return a new byte array with the characters of \c s, zeros included, and with a count of 1. Of the length the low
/// 32 bits count.
ZEL_API RT::SmartPointer<DATA::IByteArray> createByteArray(const std::string& s);

} // namespace ZEL

#endif
