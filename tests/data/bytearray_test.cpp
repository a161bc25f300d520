#include "zel/data/ByteArrayImpl.h"

#include <gtest/gtest.h>

using std::string_literals::operator""s;
using ZEL::createByteArray;
using ZEL::DATA::ByteArrayImpl;

TEST(ByteArray, Renderings) {
    std::string all, readable;
    for (int byte = 0; byte < 256; ++byte) {
        all += static_cast<char>(byte);
        readable += {"0123456789abcdef"[byte / 16], "0123456789abcdef"[byte % 16]};
    }
    EXPECT_EQ(createByteArray(all)->toString() + createByteArray(all)->toReadable(), all + readable);
    EXPECT_EQ(createByteArray("")->toString() + createByteArray(2, nullptr)->toReadable(), "0000");
}

TEST(ByteArray, OrderedBySizeFirst) {
    const std::string ascending[] = {"", "\0"s, "\1", "\x7F", "\x80", "\xFF", "\0\0"s, "\0\1"s, "\1\0"s, "\xFF\xFF"};
    for (const std::string& first : ascending)
        for (const std::string& second : ascending) {
            const auto left = createByteArray(first), right = createByteArray(second);
            EXPECT_EQ(*left < *right, &first < &second) << left->toReadable() << ' ' << right->toReadable();
            EXPECT_EQ(*left == *right, &first == &second) << left->toReadable() << ' ' << right->toReadable();
        }
}

TEST(ByteArray, CopiesHaveBytesOfTheirOwn) {
    ByteArrayImpl original(reinterpret_cast<const unsigned char*>("abc"), 3), assigned(nullptr, 5);
    const ByteArrayImpl copy(original);
    assigned = original;
    assigned = *&assigned;
    original.getData(nullptr)[0] = 'x';
    EXPECT_EQ(original.toString() + copy.toString() + assigned.toString(), "xbcabcabc");
    unsigned int size = 3;
    original.clear();
    EXPECT_TRUE(original.getData(&size) == nullptr && size == 0 && original.getSize() == 0);
}
