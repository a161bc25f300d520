// Calls the manager before the manager's own library is initialised and after it has finished. Does not depend on that
// library by name, which is why it comes so early and so late; a program that links both resolves it.
#include "zel/exceptions/IOException.h"
#include "zel/library/DllManager.h"
#include "zel/tracer/Tracer.h"

#include <cstdlib>

#include <unistd.h>

static void use(const char* when) {
    const ZEL::Tracer trace(when, true);
    const auto plain = ZEL::RT::DllManager::loadLibrary("plain", std::getenv("LIBRARIES"));
    const auto answer = reinterpret_cast<int (*)()>(plain->getSymbol("answer"));
    try {
        if (answer != nullptr && answer() == 42)
            ZEL::RT::DllManager::loadLibrary("missing", "/nowhere");
        ::_exit(9);
    } catch (const ZEL::EXCEPTIONS::IOException&) {
    }
}

// Exit handlers that belong to no library come last.
__attribute__((constructor)) static void before() {
    ::on_exit([](int, void*) { use("after everything"); }, nullptr);
    use("before everything");
}
__attribute__((destructor)) static void meanwhile() { use("finaliser"); }
