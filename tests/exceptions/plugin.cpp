// A plugin with everything hidden but its one function, as the suite's libraries are built.
#include "zel/zel.h"

extern "C" __attribute__((visibility("default"))) void failToOpen(const char* file);

void failToOpen(const char* file) {
    using ZEL::EXCEPTIONS::IOException;
    ZEL::EXCEPTIONS::throwException(IOException(file, "ZEL", -1085, "code", "bad", nullptr, -1, nullptr), "plugin", 1,
                                    "failToOpen");
}
