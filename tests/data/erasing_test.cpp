// No block of memory goes back with a secret in it: this program's allocator stands before the C library's and looks
// through all that is given back, by operator delete too.
#include "zel/api/zel_password.h"
#include "zel/data/ByteArrayImpl.h"
#include "zel/utils/StringUtils.h"

#include "support/Sanitizers.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <vector>

#include <gtest/gtest.h>
#include <malloc.h>

using ZEL::createByteArray;
using ZEL::DATA::ByteArrayImpl;

namespace {

constexpr unsigned char secretByte = 0xB7;
constexpr int enoughToTell = 4; // secret bytes in a row; fewer may also be an address

// What the allocator does and sees while it is watching.
struct Allocator {
    bool watching = false;
    int failAfter = -1; // so many allocations succeed, then one fails
    std::uint64_t refusedFrom = UINT64_MAX, lastCalloc = 0;
    int made = 0, givenBack = 0, exposed = 0;
} allocator;

[[maybe_unused]] bool mayAllocate(std::size_t size) {
    if (!allocator.watching)
        return true;
    const bool refused = size >= allocator.refusedFrom || (allocator.failAfter >= 0 && allocator.failAfter-- == 0);
    allocator.made += !refused;
    return !refused;
}

[[maybe_unused]] void inspect(void* block) {
    if (!allocator.watching || block == nullptr)
        return;
    const unsigned char* const bytes = static_cast<const unsigned char*>(block);
    int row = 0;
    for (std::size_t i = 0; i < ::malloc_usable_size(block) && row < enoughToTell; ++i)
        row = bytes[i] == secretByte ? row + 1 : 0;
    allocator.exposed += row == enoughToTell;
    ++allocator.givenBack;
}

class Erasing : public testing::Test {
protected:
    void SetUp() override {
        if (addressSanitizer || threadSanitizer)
            GTEST_SKIP() << "the sanitizers have an allocator of their own";
    }
    void TearDown() override { allocator = Allocator(); }

    static void watch(int failAfter = -1) {
        allocator = Allocator();
        allocator.failAfter = failAfter;
        allocator.watching = true;
    }
};

} // namespace

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);

void* malloc(std::size_t size) noexcept { return mayAllocate(size) ? __libc_malloc(size) : nullptr; }

void* calloc(std::size_t count, std::size_t size) noexcept {
    allocator.lastCalloc = std::uint64_t{count} * size;
    return mayAllocate(count * size) ? __libc_calloc(count, size) : nullptr;
}

void* realloc(void* block, std::size_t size) noexcept {
    inspect(block);
    return mayAllocate(size) ? __libc_realloc(block, size) : nullptr;
}

void free(void* block) noexcept {
    inspect(block);
    __libc_free(block);
}
}
#endif

namespace {

const std::string secretText(65, static_cast<char>(secretByte));
const unsigned char* const secret = reinterpret_cast<const unsigned char*>(secretText.data());

TEST_F(Erasing, FlatArrays) {
    constexpr int own = 100; // a size: as the source, the array's own buffer
    const struct {
        const char* what;
        std::vector<int> sizes; // set one after the other in an array of 64 bytes
        int failAfter;
        int buffers; // that are made and given back
    } rows[] = {
        {"only cleared", {}, -1, 1},
        {"emptied", {0}, -1, 1},
        {"shrunk", {3}, -1, 1},
        {"grown", {65}, -1, 2},
        {"grown to less than the buffer once held", {4, 5}, -1, 2},
        {"grown from its own buffer", {own}, -1, 2},
        {"without the memory to grow", {65}, 1, 1},
    };
    for (const auto& row : rows) {
        VOR_ByteArray array, copy = {0, nullptr};
        watch(row.failAfter);
        vor_initializeByteArray(&array, 64, secret);
        for (const int size : row.sizes)
            vor_setByteArray(&array, static_cast<unsigned int>(size), size == own ? array.data : secret);
        vor_clearByteArray(&array);
        EXPECT_EQ(allocator.made, row.buffers) << row.what;
        vor_initializeByteArray(&array, 64, secret);
        vor_copyByteArray(&copy, &array);
        vor_copyByteArray(&array, &copy);
        vor_clearByteArray(&array);
        vor_clearByteArray(&copy);
        allocator.watching = false;
        EXPECT_TRUE(allocator.exposed == 0 && allocator.made == allocator.givenBack) << row.what;
    }
}

TEST_F(Erasing, ObjectsAlsoWhenMemoryRunsOut) {
    int refused = 0;
    for (bool done = false; !done; ++refused) {
        watch(refused);
        try {
            const auto array = createByteArray(secretText);
            ByteArrayImpl copy(static_cast<const ByteArrayImpl&>(*array));
            const std::unique_ptr<ZEL::Cloneable> clone(array->clone());
            const std::unique_ptr<ZEL::Object> object(new ByteArrayImpl(secret, 10));
            copy.setData(10, secret);
            copy.setData(20, secret);
            copy = static_cast<const ByteArrayImpl&>(*array);
            copy.clear();
            std::string text = array->toString();
            ZEL::RT::StringUtils::shredString(text);
            text = array->toReadable();
            done = allocator.failAfter >= 0;
        } catch (const std::bad_alloc&) {
        }
        EXPECT_TRUE(allocator.exposed == 0 && allocator.made == allocator.givenBack) << refused;
    }
    EXPECT_GT(refused, 10);
}

TEST_F(Erasing, SizesForWhichThereIsNoMemory) {
    for (const unsigned int size : {0x7FFFFFFFu, 0xFFFFFFFEu, 0xFFFFFFFFu}) {
        watch();
        allocator.refusedFrom = 0x7FFFFFFF;
        VOR_ByteArray array = {0, nullptr};
        EXPECT_EQ(vor_setByteArray(&array, size, secret), 0);
        EXPECT_EQ(allocator.lastCalloc, SIZE_MAX > size ? std::uint64_t{size} + 1 : 0)
            << size; // no call, rather than 0
        vor_clearByteArray(&array);
        EXPECT_TRUE(array.size == size && array.data == nullptr && !vor_containsByteArray(&array)) << size;
        const ByteArrayImpl object(secret, size), copy(object);
        EXPECT_TRUE(object.getSize() == size && object.toString().empty() && object.toReadable().empty()) << size;
        EXPECT_TRUE(object == copy && !(object < copy));
    }
    const ByteArrayImpl zeros(nullptr, 4);
    watch(0);
    const ByteArrayImpl none(secret, 4);
    EXPECT_TRUE(none < zeros && !(zeros < none) && !(none == zeros));
}

TEST_F(Erasing, PassPhrasesAreNotCopied) {
    const zel_PasswordPolicy policy = {0, 0, 1, 1, 1};
    watch();
    EXPECT_EQ(zel_verifyPassword("A-phrase-of-4-words", &policy), 1);
    EXPECT_EQ(allocator.made, 0);
}

TEST_F(Erasing, TheAllocatorSeesSecrets) {
    watch();
    char* volatile block = new char[64];
    std::memset(block + 60, secretByte, enoughToTell);
    delete[] block;
    EXPECT_EQ(allocator.exposed, 1);
}

} // namespace
