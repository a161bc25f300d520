// Calls the manager before the manager's own library is initialised and after it has finished. Does not depend on that
// library by name, which is why it comes so early and so late; a program that links both resolves it.
#include "zel/library/DllManager.h"
#include "zel/tracer/Tracer.h"

#include <cstdlib>

#include <unistd.h>

namespace {

void use(const char* when) {
    ZEL::Tracer trace(when, true);
    const char* path = std::getenv("EARLY_PATH");
    const auto library = ZEL::RT::DllManager::loadLibrary("plain", path != nullptr ? path : "");
    const auto answer = reinterpret_cast<int (*)()>(library->getSymbol("plainAnswer"));
    bool missed = false;
    try {
        ZEL::RT::DllManager::loadLibrary("missing", "/nowhere");
    } catch (...) {
        missed = true;
    }
    if (answer == nullptr || answer() != 42 || !missed)
        ::_exit(9);
}

// Exit handlers that belong to no library come last.
__attribute__((constructor)) void before() {
    ::on_exit([](int, void*) { use("after everything"); }, nullptr);
    use("before everything");
}
__attribute__((destructor)) void meanwhile() { use("finaliser"); }

} // namespace
