#include "zel/data/ByteArrayImpl.h"

#include <gtest/gtest.h>

using ZEL::createByteArray;
using ZEL::DATA::ByteArrayImpl;

namespace {

using namespace std::string_literals;

TEST(ByteArray, Renderings) {
    std::string all, readable;
    for (int byte = 0; byte < 256; ++byte) {
        all += static_cast<char>(byte);
        readable += {"0123456789abcdef"[byte / 16], "0123456789abcdef"[byte % 16]};
    }
    EXPECT_EQ(createByteArray(all)->toString(), all);
    EXPECT_EQ(createByteArray(all)->toReadable(), readable);
    EXPECT_EQ(createByteArray("")->toString() + createByteArray("")->toReadable(), "");
    EXPECT_EQ(createByteArray(2, nullptr)->toReadable(), "0000");
}

TEST(ByteArray, OrderedBySizeFirst) {
    const std::string ascending[] = {"",     "\0"s,   "\x01",    "\x7F",    "\x80",
                                     "\xFF", "\0\0"s, "\0\x01"s, "\x01\0"s, "\xFF\xFF"};
    for (std::size_t i = 0; i < std::size(ascending); ++i)
        for (std::size_t k = 0; k < std::size(ascending); ++k) {
            const auto left = createByteArray(ascending[i]), right = createByteArray(ascending[k]);
            EXPECT_EQ(*left < *right, i < k) << left->toReadable() << ' ' << right->toReadable();
            EXPECT_EQ(*left == *right, i == k) << left->toReadable() << ' ' << right->toReadable();
        }
}

TEST(ByteArray, CopiesHaveBytesOfTheirOwn) {
    ByteArrayImpl original(nullptr, 3);
    original.setData(3, reinterpret_cast<const unsigned char*>("abc"));
    const ByteArrayImpl copy(original);
    ByteArrayImpl assigned(nullptr, 5);
    assigned = original;
    assigned = *&assigned;
    unsigned int size = 0;
    original.getData(&size)[0] = 'x';
    EXPECT_EQ(original.toString() + copy.toString() + assigned.toString(), "xbcabcabc");
    original.setData(size, original.getData(nullptr)); // erased before it is copied
    EXPECT_EQ(original.toReadable(), "000000");
    original.clear();
    EXPECT_TRUE(original.getData(&size) == nullptr && size == 0 && original.getSize() == 0);
}

} // namespace
