// Loads libraries in main, in an exit handler, and while another comes and goes.
#include "zel/library/DllManager.h"
#include "zel/tracer/Tracer.h"

#include <cstdlib>

static void load(const char* name) { ZEL::RT::DllManager::loadLibrary(name, std::getenv("LIBRARIES")); }

extern "C" void hook(const char* event) {
    const ZEL::Tracer trace(event, true);
    load("first_info");
}

int main() {
    std::atexit([] { load("full_info"); });
    load("plain");
    load("hooked");
}
