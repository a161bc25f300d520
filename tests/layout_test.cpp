// What code compiled against the library takes for granted: slots of virtual functions and sizes of objects.
#include "zel/vor.h"
#include "zel/zel.h"

#include "support/Slots.h"

#include <type_traits>

#include <gtest/gtest.h>

using namespace ZEL;
using namespace ZEL::EXCEPTIONS;
using namespace ZEL::RT;
using DATA::ByteArrayImpl;
using DATA::IByteArray;

namespace {

TEST(Layout, SlotsOfTheRoots) {
    const struct {
        const char* function;
        std::size_t slot;
        std::size_t expected;
    } rows[] = {
        {"Object::toString", slotOf(&Object::toString), 0},
        {"Cloneable::clone", slotOf(&Cloneable::clone), 2},
        {"Marshallable::unmarshal", slotOf(&Marshallable::unmarshal), 2},
        {"Marshallable::marshal", slotOf(&Marshallable::marshal), 3},
        {"ILocalizable::getEntryCode", slotOf(&ILocalizable::getEntryCode), 2},
        {"ILocalizable::getEntryName", slotOf(&ILocalizable::getEntryName), 3},
        {"ILocalizable::getCatalogName", slotOf(&ILocalizable::getCatalogName), 4},
        {"ILocalizable::getEntryText", slotOf(&ILocalizable::getEntryText), 5},
        {"ILocalizable::getEntryLocale", slotOf(&ILocalizable::getEntryLocale), 6},
        {"LocalText::toString", slotOf(&LocalText::toString), 7},
        {"IExceptionData::toString", slotOf(&IExceptionData::toString), 0},
        {"IExceptionData::retrieveProperty", slotOf(&IExceptionData::retrieveProperty), 3},
        {"IExceptionData::assignProperty", slotOf(&IExceptionData::assignProperty), 4},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.slot, row.expected) << row.function;
}

TEST(Layout, SlotsOfByteArrays) {
    using A = IByteArray;
    const std::size_t slots[] = {
        slotOf(static_cast<const unsigned char* (A::*)(unsigned int*) const>(&A::getData)),
        slotOf(static_cast<unsigned char* (A::*)(unsigned int*)>(&A::getData)),
        slotOf(static_cast<const VOR_ByteArray* (A::*)() const>(&A::toBinary)),
        slotOf(static_cast<VOR_ByteArray* (A::*)()>(&A::toBinary)),
        slotOf(&A::setData),
        slotOf(&A::toReadable),
        slotOf(&A::getSize),
        slotOf(&A::operator<),
        slotOf(&A::operator==),
    };
    std::size_t expected = 3; // behind toString and the destructor's two
    for (const std::size_t slot : slots)
        EXPECT_EQ(slot, expected++);
    EXPECT_EQ(slotOf(&A::toString), 0u);
    EXPECT_EQ(slotOf(&ByteArrayImpl::clear), SIZE_MAX);
}

TEST(Layout, SlotsOfExceptions) {
    using E = ZelException;
    const std::size_t slots[] = {
        slotOf(&E::what),
        slotOf(&E::clone),
        slotOf(static_cast<bool (E::*)(int) const>(&E::instanceOf)),
        slotOf(static_cast<bool (E::*)(const std::string&) const>(&E::instanceOf)),
        slotOf(&E::getExceptionCode),
        slotOf(&E::getExceptionName),
        slotOf(&E::getEntryCode),
        slotOf(&E::getEntryName),
        slotOf(&E::getCatalogName),
        slotOf(&E::getEntryText),
        slotOf(&E::getErrorTime),
        slotOf(&E::getErrorText),
        slotOf(&E::getSourceFile),
        slotOf(&E::getSourceLine),
        slotOf(&E::getSourceFunction),
        slotOf(&E::getExecutionPoint),
        slotOf(&E::retrieveProperty),
        slotOf(&E::assignProperty),
    };
    std::size_t expected = 2; // behind the destructor's two
    for (const std::size_t slot : slots)
        EXPECT_EQ(slot, expected++);
    EXPECT_EQ(slotOf(&E::setSourceLocation), SIZE_MAX);
}

TEST(Layout, SlotsOfFunctionTables) {
    EXPECT_EQ(slotOf(&DynamicMethod::toString), 0u);
    EXPECT_EQ(slotOf(&DynamicMethod::assigned), 3u); // behind the destructor's two
    EXPECT_EQ(slotOf(&DynamicMethod::empty), 4u);
    EXPECT_EQ(slotOf(&FunctionTableImpl::toString), 0u);
    EXPECT_EQ(slotOf(&FunctionTableImpl::assigned), 3u);
    EXPECT_EQ(slotOf(&FunctionTableImpl::empty), 4u);
}

TEST(Layout, Sizes) {
    const bool ia32 = sizeof(void*) == 4;
    const struct {
        const char* type;
        std::size_t size;
        std::size_t onIa32;
        std::size_t onX86_64;
    } rows[] = {
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
        {"PassPhrasePolicyException", sizeof(PassPhrasePolicyException), 136, 208},
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

TEST(Layout, RootsAreHeldOnce) {
    PropertiesImpl store;
    I::IProperties& properties = store;
    EXPECT_EQ(dynamic_cast<void*>(static_cast<Object*>(&properties)),
              dynamic_cast<void*>(static_cast<Marshallable*>(&properties)));
    static_assert(std::is_base_of_v<Mixinable, ILocalizable>);
}

} // namespace
