#include "zel/api/vor_bytearray.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using Bytes = std::string;

const unsigned char* raw(const char* text) { return reinterpret_cast<const unsigned char*>(text); }

// What the array's memory holds from its first byte on.
Bytes memory(const VOR_ByteArray& array, std::size_t size) {
    return array.data == nullptr ? "no buffer" : Bytes(reinterpret_cast<const char*>(array.data), size);
}

TEST(FlatByteArray, Setting) {
    for (const unsigned int size : {0u, 1u, 3u, 7u, 8u, 9u, 100u})
        for (const bool zeros : {false, true}) {
            VOR_ByteArray array;
            ASSERT_EQ(vor_initializeByteArray(&array, 8, raw("\1\2\3\4\5\6\7\xff")), 0);
            const unsigned char* const buffer = array.data;
            const Bytes fresh(size, zeros ? '\0' : 'n');
            EXPECT_EQ(vor_setByteArray(&array, size, zeros ? nullptr : raw(fresh.c_str())), 0);
            EXPECT_EQ(array.size, size);
            EXPECT_TRUE(array.data == buffer || size == 0 || size > 8) << size;
            const std::size_t seen = size <= 8 ? 9 : size + 1; // with what the old contents left, and the terminator
            EXPECT_EQ(memory(array, seen), size == 0 ? "no buffer" : fresh + Bytes(seen - size, '\0')) << size;
            vor_clearByteArray(&array);
            EXPECT_TRUE(array.size == 0 && array.data == nullptr);
        }
}

TEST(FlatByteArray, OwnBufferIsErasedBeforeItIsCopied) {
    const struct {
        unsigned int shrunkTo, offset, size;
    } rows[] = {{8, 0, 8}, {8, 0, 3}, {8, 3, 5}, {8, 7, 1}, {8, 8, 1}, {8, 0, 9}, {3, 0, 8}, {3, 3, 4}};
    for (const auto& row : rows) {
        VOR_ByteArray array;
        vor_initializeByteArray(&array, 8, raw("12345678"));
        vor_setByteArray(&array, row.shrunkTo, raw("12345678"));
        EXPECT_EQ(vor_setByteArray(&array, row.size, array.data + row.offset), 0);
        EXPECT_EQ(memory(array, array.size), Bytes(row.size, '\0')) << row.offset << ' ' << row.size;
        vor_clearByteArray(&array);
    }
    unsigned char block[] = {'a', 'b', 0, 'c', 'd', 0};
    VOR_ByteArray array = {2, block};
    EXPECT_EQ(vor_setByteArray(&array, 2, block + 3), 0); // a neighbour is copied as ever
    EXPECT_EQ(memory(array, sizeof block), Bytes("cd\0cd\0", 6));
    EXPECT_EQ(vor_copyByteArray(&array, &array), 0);
    EXPECT_EQ(memory(array, sizeof block), Bytes("\0\0\0cd\0", 6));
}

TEST(FlatByteArray, TextsAndNulls) {
    VOR_ByteArray array, copy;
    EXPECT_EQ(vor_initializeByteArrayFromString(&array, "abc"), 0);
    EXPECT_EQ(vor_initializeByteArrayFromString(&copy, nullptr), 0);
    EXPECT_FALSE(vor_containsByteArray(&copy) || copy.data != nullptr);
    EXPECT_EQ(vor_copyByteArray(&copy, &array), 0);
    EXPECT_EQ(vor_copyByteArray(&copy, nullptr), 1);
    EXPECT_TRUE(vor_containsByteArray(&copy) && copy.size == 3);
    EXPECT_EQ(memory(copy, 4), Bytes("abc\0", 4));
    vor_shredByteArray(&copy);
    EXPECT_EQ(memory(copy, 4), Bytes(4, '\0'));
    EXPECT_EQ(vor_setByteArrayFromString(&copy, "xy"), 0);
    EXPECT_EQ(memory(copy, 4), Bytes("xy\0\0", 4));
    EXPECT_EQ(vor_setByteArrayFromString(&copy, nullptr) + vor_setByteArray(&array, 0, nullptr), 0);
    EXPECT_TRUE(array.data == nullptr && copy.data == nullptr);

    EXPECT_EQ(vor_initializeByteArray(nullptr, 1, raw("x")), 1);
    EXPECT_EQ(vor_initializeByteArrayFromString(nullptr, "x"), 1);
    EXPECT_EQ(vor_setByteArray(nullptr, 1, raw("x")), 1);
    EXPECT_EQ(vor_copyByteArray(nullptr, &array), 1);
    EXPECT_EQ(vor_containsByteArray(nullptr), 0);
    vor_shredByteArray(nullptr);
    vor_clearByteArray(nullptr);
}

} // namespace
