// What code compiled against the library takes for granted: slots of virtual functions and sizes of objects.
#include "zel/vor.h"
#include "zel/zel.h"

#include "support/Slots.h"

#include <cstddef>
#include <cstring>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

using namespace ZEL;
using namespace ZEL::EXCEPTIONS;
using namespace ZEL::RT;
using DATA::ByteArrayImpl;
using DATA::IByteArray;

namespace {

TEST(Layout, SlotsFollowEachOther) {
    using A = IByteArray;
    using E = ZelException;
    using P = I::IProperties;
    using T = LocalText;
    const auto constData = static_cast<const unsigned char* (A::*)(unsigned int*) const>(&A::getData);
    const auto data = static_cast<unsigned char* (A::*)(unsigned int*)>(&A::getData);
    const auto constRecord = static_cast<const VOR_ByteArray* (A::*)() const>(&A::toBinary);
    const auto record = static_cast<VOR_ByteArray* (A::*)()>(&A::toBinary);
    const auto hasCode = static_cast<bool (E::*)(int) const>(&E::instanceOf);
    const auto hasName = static_cast<bool (E::*)(const std::string&) const>(&E::instanceOf);
    // Behind the destructor's two and, in an Object, toString.
    const struct {
        const char* type;
        std::size_t first;
        std::vector<std::size_t> slots;
    } rows[] = {
        {"Object", 0, {slotOf(&Object::toString)}},
        {"Cloneable", 2, {slotOf(&Cloneable::clone)}},
        {"Marshallable", 2, {slotOf(&Marshallable::unmarshal), slotOf(&Marshallable::marshal)}},
        {"ILocalizable", 2, {slotOf(&ILocalizable::getEntryCode), slotOf(&ILocalizable::getEntryName)}},
        {"LocalText",
         4,
         {slotOf(&T::getCatalogName), slotOf(&T::getEntryText), slotOf(&T::getEntryLocale), slotOf(&T::toString)}},
        {"IExceptionData", 3, {slotOf(&IExceptionData::retrieveProperty), slotOf(&IExceptionData::assignProperty)}},
        {"IByteArray",
         3,
         {slotOf(constData), slotOf(data), slotOf(constRecord), slotOf(record), slotOf(&A::setData),
          slotOf(&A::toReadable), slotOf(&A::getSize), slotOf(&A::operator<), slotOf(&A::operator==)}},
        {"IProperties",
         3,
         {slotOf(&P::retrievePropertyNames), slotOf(&P::retrieveProperty), slotOf(&P::assignProperty),
          slotOf(&P::removeProperty), slotOf(&PropertiesImpl::assigned), slotOf(&PropertiesImpl::empty),
          slotOf(&PropertiesImpl::unmarshal), slotOf(&PropertiesImpl::marshal), slotOf(&PropertiesImpl::storeAsText)}},
        {"ZelException",
         2,
         {slotOf(&E::what), slotOf(&E::clone), slotOf(hasCode), slotOf(hasName), slotOf(&E::getExceptionCode),
          slotOf(&E::getExceptionName), slotOf(&E::getEntryCode), slotOf(&E::getEntryName), slotOf(&E::getCatalogName),
          slotOf(&E::getEntryText), slotOf(&E::getErrorTime), slotOf(&E::getErrorText), slotOf(&E::getSourceFile),
          slotOf(&E::getSourceLine), slotOf(&E::getSourceFunction), slotOf(&E::getExecutionPoint),
          slotOf(&E::retrieveProperty), slotOf(&E::assignProperty)}},
        {"DynamicMethod", 3, {slotOf(&DynamicMethod::assigned), slotOf(&DynamicMethod::empty)}},
        {"FunctionTableImpl", 3, {slotOf(&FunctionTableImpl::assigned), slotOf(&FunctionTableImpl::empty)}},
    };
    for (const auto& row : rows)
        for (std::size_t i = 0; i < row.slots.size(); ++i)
            EXPECT_EQ(row.slots[i], row.first + i) << row.type;
    for (const std::size_t notVirtual : {slotOf(&E::setSourceLocation), slotOf(&ByteArrayImpl::clear)})
        EXPECT_EQ(notVirtual, SIZE_MAX);
}

TEST(Layout, Sizes) {
    const bool ia32 = sizeof(void*) == 4;
    const struct {
        const char* type;
        std::size_t size;
        std::size_t onIa32;
        std::size_t onX86_64;
    } rows[] = {
        {"SmartPointer", sizeof(SmartPointer<Mutex>), 8, 16},
        {"Mutex", sizeof(Mutex), 24, 40},
        {"MutexGrabber", sizeof(MutexGrabber), 4, 8},
        {"Semaphore", sizeof(Semaphore), 16, 32},
        {"AtomicInt", sizeof(AtomicInt), 8, 16},
        {"Thread", sizeof(Thread), 16, 32},
        {"Tracer", sizeof(Tracer), 16, 32},
        {"TraceRecord", sizeof(TraceRecord), 44, 72},
        {"VOR_ByteArray", sizeof(VOR_ByteArray), 8, 16},
        {"ByteArrayImpl", sizeof(ByteArrayImpl), 16, 32},
        {"Date", sizeof(Date), 8, 16},
        {"ZelException", sizeof(ZelException), 136, 208},
        {"LocalText", sizeof(LocalText), 104, 144},
        {"PropertiesImpl", sizeof(PropertiesImpl), 32, 64},
        {"Library", sizeof(Library), 76, 104},
        {"DynamicLibraryImpl", sizeof(DynamicLibraryImpl), 80, 112},
        {"DllManager", sizeof(DllManager), 48, 88},
        {"DynamicMethod", sizeof(DynamicMethod), 56, 80},
        {"FunctionTableImpl", sizeof(FunctionTableImpl), 44, 72},
        {"zel_LibraryInfo", sizeof(zel_LibraryInfo), 40, 80},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.size, ia32 ? row.onIa32 : row.onX86_64) << row.type;
}

static_assert(offsetof(VOR_ByteArray, size) == 0 && offsetof(VOR_ByteArray, data) == sizeof(void*));
static_assert(offsetof(VOR_FileStats, size) == 0 && offsetof(VOR_FileStats, modificationTime) == 4 &&
              offsetof(VOR_FileStats, checkTime) == 8);
static_assert(offsetof(zel_PasswordPolicy, minLength) == 0 && offsetof(zel_PasswordPolicy, maxLength) == 4 &&
              offsetof(zel_PasswordPolicy, requireSpecial) == 8 &&
              offsetof(zel_PasswordPolicy, requireDigitAndLetter) == 12 &&
              offsetof(zel_PasswordPolicy, requireMixedCase) == 16);

TEST(Layout, SmartPointersBeginWithTheObject) {
    const SmartPointer<int> pointer(new int);
    const void* first;
    std::memcpy(&first, &pointer, sizeof first);
    EXPECT_EQ(first, pointer.get());
}

TEST(Layout, RootsAreHeldOnce) {
    PropertiesImpl store;
    I::IProperties& properties = store;
    EXPECT_EQ(dynamic_cast<void*>(static_cast<Object*>(&properties)),
              dynamic_cast<void*>(static_cast<Marshallable*>(&properties)));
    static_assert(std::is_base_of_v<Mixinable, ILocalizable>);
}

} // namespace
