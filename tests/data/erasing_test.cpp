// No block of memory goes back with a secret in it: this program's allocator stands before the C library's and looks
// through all that is given back, by operator delete too.
#include "zel/api/zel_password.h"
#include "zel/data/ByteArrayImpl.h"
#include "zel/utils/StringUtils.h"

#include "support/Sanitizers.h"

#include <algorithm>
#include <memory>

#include <gtest/gtest.h>
#include <malloc.h>

using ZEL::createByteArray;
using ZEL::DATA::ByteArrayImpl;

namespace {

constexpr bool sanitized = addressSanitizer || threadSanitizer; // these have an allocator of their own
constexpr unsigned char secretByte = 0xB7;
const std::string secretText(65, static_cast<char>(secretByte));
const unsigned char* const secret = reinterpret_cast<const unsigned char*>(secretText.data());

// What the allocator does and sees while it is watching.
struct Allocator {
    bool watching = false;
    int spared = -1; // so many allocations succeed, then one fails
    std::uint64_t refusedFrom = UINT64_MAX, lastCalloc = 0;
    int made = 0, failed = 0, givenBack = 0, exposed = 0;

    bool isClean() const { return exposed == 0 && made == givenBack; }
} allocator;

struct Erasing : testing::Test {
    ~Erasing() override { allocator = {}; }
    static void watch(int spared = -1) { allocator = {true, spared}; }
};

[[maybe_unused]] bool mayAllocate(std::uint64_t size) {
    const bool refused = allocator.watching && (size >= allocator.refusedFrom || allocator.spared-- == 0);
    ++(refused ? allocator.failed : allocator.made);
    return !refused;
}

[[maybe_unused]] void* inspect(void* block) {
    if (allocator.watching && block != nullptr) {
        const unsigned char* const begin = static_cast<const unsigned char*>(block);
        const unsigned char* const end = begin + ::malloc_usable_size(block);
        allocator.exposed += std::search_n(begin, end, 4, secretByte) != end; // fewer may also be an address
        ++allocator.givenBack;
    }
    return block;
}

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
    return mayAllocate(allocator.lastCalloc) ? __libc_calloc(count, size) : nullptr;
}
void* realloc(void* block, std::size_t size) noexcept {
    return mayAllocate(size) ? __libc_realloc(inspect(block), size) : nullptr;
}
void free(void* block) noexcept { __libc_free(inspect(block)); }
}
#endif

TEST_F(Erasing, ObjectsAlsoWhenMemoryRunsOut) {
    for (int spared = 0; spared == 0 || allocator.failed != 0; ++spared) {
        watch(spared);
        try {
            const auto array = createByteArray(secretText);
            ByteArrayImpl copy(static_cast<const ByteArrayImpl&>(*array));
            const std::unique_ptr<ZEL::Cloneable> clone(array->clone());
            for (const unsigned int size : {10u, 60u, 0u, 60u})
                copy.setData(size, secret);
            copy = static_cast<const ByteArrayImpl&>(*array);
            std::string text = array->toString();
            ZEL::RT::StringUtils::shredString(text);
        } catch (const std::bad_alloc&) {
        }
        EXPECT_TRUE(allocator.isClean()) << spared;
    }
    watch();
    createByteArray(secretText)->toString();
    EXPECT_EQ(allocator.exposed, sanitized ? 0 : 1) << "the allocator sees secrets";
    watch();
    const zel_PasswordPolicy policy = {0, 0, 1, 1, 1};
    EXPECT_EQ(zel_verifyPassword("A-phrase-of-4-words", &policy), 1);
    EXPECT_EQ(allocator.made, 0) << "pass phrases are not copied";
}

TEST_F(Erasing, SizesForWhichThereIsNoMemory) {
    if (sanitized)
        GTEST_SKIP() << "no allocation fails";
    for (const unsigned int size : {0x7FFFFFFFu, 0xFFFFFFFEu, 0xFFFFFFFFu}) {
        watch();
        allocator.refusedFrom = 0x7FFFFFFF;
        const ByteArrayImpl object(secret, size), copy(object);
        EXPECT_EQ(allocator.lastCalloc, std::size_t{size} + 1) << "no call, rather than 0";
        EXPECT_TRUE(object.getSize() == size && (object.toString() + object.toReadable()).empty()) << size;
        EXPECT_TRUE(object == copy && !(object < copy) && !vor_containsByteArray(object.toBinary())) << size;
    }
    const ByteArrayImpl zeros(nullptr, 4);
    watch(0);
    const ByteArrayImpl none(secret, 4);
    EXPECT_TRUE(none < zeros && !(zeros < none) && !(none == zeros));
}
