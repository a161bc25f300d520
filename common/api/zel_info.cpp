#include "zel/api/zel_info.h"

// A build that is to be reproducible sets its own.
#ifndef ZEL_BUILD_DATE
#define ZEL_BUILD_DATE __DATE__
#define ZEL_BUILD_TIME __TIME__
#endif

#if defined(__x86_64__)
#define ZEL_PROCESSOR "x86_64"
#elif defined(__i386__)
#define ZEL_PROCESSOR "ia32"
#else
#error "name the processor here"
#endif

namespace {

// The exported function may be another library's that was loaded first: inside this one, only this is called.
void fill(zel_LibraryInfo& info) {
    info.version = "2.0.2.6";
    info.buildNumber = "1274432";
    info.buildTag = "77";
    info.productName = "Quorvane";
    info.libraryName = "ZEL-RT";
    info.platformTag = "linux_gcc34_" ZEL_PROCESSOR "_r";
    info.buildDate = ZEL_BUILD_DATE;
    info.buildTime = ZEL_BUILD_TIME;
    info.note = "N/A";
    info.releaseKind = "Official Release";
}

} // namespace

void zel_getLibraryInfo(zel_LibraryInfo* info) { fill(*info); }

const char* zel_getVersionString() {
    zel_LibraryInfo info;
    fill(info);
    return info.version;
}
