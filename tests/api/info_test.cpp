// What the library says about itself, in a program that another library with an information function comes first in.
#include "zel/vor.h"
#include "zel/zel.h"

#include "support/CapturedTrace.h"

#include <array>
#include <ctime>

#include <dlfcn.h>
#include <gtest/gtest.h>

namespace {

using Texts = std::array<std::string, 10>;

Texts texts(const zel_LibraryInfo& info) {
    return {info.version,     info.buildNumber, info.buildTag,  info.productName, info.libraryName,
            info.platformTag, info.buildDate,   info.buildTime, info.note,        info.releaseKind};
}

TEST(LibraryInfo, AnotherLibraryComesFirst) {
    zel_LibraryInfo info;
    zel_getLibraryInfo(&info);
    EXPECT_EQ(texts(info), (Texts{"7.1", "1234", "9", "Product", "Full", "linux_test_r", "Jan  1 2020", "00:00:01",
                                  "note", "Test Release"}));
    EXPECT_STREQ(zel_getVersionString(), "2.0.2.6");
}

TEST(LibraryInfo, ItsOwnIsMeantWhateverComesFirst) {
    Dl_info place;
    ASSERT_NE(::dladdr(reinterpret_cast<void*>(&zel_getVersionString), &place), 0);
    void* const handle = vor_loadLibrary(place.dli_fname);
    ASSERT_NE(handle, nullptr);
    zel_LibraryInfo info;
    reinterpret_cast<void (*)(zel_LibraryInfo*)>(vor_loadSymbol(handle, "zel_getLibraryInfo"))(&info);
    EXPECT_EQ(texts(info), (Texts{"2.0.2.6", "1274432", "77", "Quorvane", "ZEL-RT",
                                  sizeof(void*) == 4 ? "linux_gcc34_ia32_r" : "linux_gcc34_x86_64_r", info.buildDate,
                                  info.buildTime, "N/A", "Official Release"}));
    tm built;
    EXPECT_STREQ(::strptime(info.buildDate, "%b %e %Y", &built), "") << info.buildDate;
    EXPECT_STREQ(::strptime(info.buildTime, "%H:%M:%S", &built), "") << info.buildTime;
    EXPECT_EQ(std::string(info.buildDate).size() + std::string(info.buildTime).size(), 11u + 8u);
    EXPECT_EQ(vor_unloadLibrary(handle), 0);

    const std::string file = place.dli_fname;
    const CapturedTrace trace;
    ZEL::RT::DllManager::loadLibrary("zel-rt", file.substr(0, file.rfind('/')));
    EXPECT_NE(trace.text().find(": Loaded library version 2.0.2.6.1274432\n"), std::string::npos) << trace.text();
}

} // namespace
