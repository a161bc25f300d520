// Uses the manager from everywhere on its way out. Status 0, or 9 when something did not work.
#include "zel/zel.h"

#include <cstdlib>

#include <unistd.h>

namespace {

// Outlives main, the exit handlers and the register.
ZEL::RT::SmartPointer<const ZEL::RT::DynamicLibraryImpl> kept;

void load(const char* name) {
    if (ZEL::RT::DllManager::loadLibrary(name, std::getenv("EARLY_PATH"))->getLibraryName().empty())
        ::_exit(9);
}

} // namespace

extern "C" void finaliserHook() { load("first_info"); } // while the register is being emptied

int main() {
    std::atexit([] { load("full_info"); });
    kept = ZEL::RT::DllManager::loadLibrary("plain", std::getenv("EARLY_PATH"));
    load("hooked");
    load("traced");
    return 0;
}
