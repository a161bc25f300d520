// A library to be loaded at run time. Functions that are to be found by name have C linkage and are visible; everything
// else stays hidden (see CMakeLists.txt).
#include "plugin.h"

#include <zel/api/zel_info.h>
#include <zel/tracer/Tracer.h>

int plugin_add(int a, int b) {
    ZEL::Tracer trace("plugin_add", true); // goes into the same trace as everything else in the process
    trace.printf("%d + %d", a, b);
    return a + b;
}

const char* plugin_greeting() { return "Hello from the plugin"; }

// Every library of the suite has this function. The one who loads the library puts version and build number into the
// trace; fields that are left out stay null.
void zel_getLibraryInfo(zel_LibraryInfo* info) {
    info->version = "1.0";
    info->buildNumber = "1";
    info->productName = "Examples";
    info->libraryName = "plugin";
    info->buildDate = __DATE__;
    info->buildTime = __TIME__;
}
