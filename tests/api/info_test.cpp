// What the library says about itself, in a program that another library with an information function comes first in.
#include "zel/vor.h"
#include "zel/zel.h"

#include "support/CapturedTrace.h"

#include <ctime>

#include <gtest/gtest.h>

TEST(LibraryInfo, ItsOwnIsMeantWhateverComesFirst) {
    zel_LibraryInfo info;
    zel_getLibraryInfo(&info);
    EXPECT_STREQ(info.libraryName, "Full"); // the other library's
    EXPECT_STREQ(zel_getVersionString(), "2.0.2.6");
    const CapturedTrace trace;
    const auto library = ZEL::RT::DllManager::loadLibrary("zel-rt", ZEL_TEST_FOLDER);
    EXPECT_NE(trace.text().find(": Loaded library version 2.0.2.6.1274432\n"), std::string::npos) << trace.text();
    reinterpret_cast<void (*)(zel_LibraryInfo*)>(library->getSymbol("zel_getLibraryInfo"))(&info);
    const char* const platform = sizeof(void*) == 4 ? "linux_gcc34_ia32_r" : "linux_gcc34_x86_64_r";
    const char* const expected[] = {"2.0.2.6", "1274432",      "77",           "Quorvane", "ZEL-RT",
                                    platform,  info.buildDate, info.buildTime, "N/A",      "Official Release"};
    for (std::size_t i = 0; i < 10; ++i)
        EXPECT_STREQ(reinterpret_cast<const char**>(&info)[i], expected[i]);
    tm built;
    const std::string time = info.buildDate + std::string(" ") + info.buildTime;
    EXPECT_STREQ(::strptime(time.c_str(), "%b %e %Y %H:%M:%S", &built), "") << time;
}
