// Traces before main, in it, in exit handlers and in destructors of static objects; what comes of it is read from the
// file that VOR_TRACE names, or from standard output when an argument asks for it.
#include "zel/zel.h"

#include <cstdlib>
#include <iostream>

#include <dlfcn.h>
#include <elf.h>

// Lets the program pass for one with raised privileges.
extern "C" ZEL_API unsigned long getauxval(unsigned long type) noexcept {
    if (type == AT_SECURE && std::getenv("ZEL_TEST_RAISED") != nullptr)
        return 1;
    return reinterpret_cast<unsigned long (*)(unsigned long)>(::dlsym(RTLD_NEXT, "getauxval"))(type);
}

namespace {

struct Early {
    Early() { ZEL::Tracer("static initialiser", false); }
    ~Early() { ZEL::Tracer("static destructor", false); }
} early;

} // namespace

int main(int count, char**) {
    std::atexit([] { ZEL::Tracer("exit handler", false); });
    ZEL::Tracer("main", false);
    if (count > 1)
        ZEL::TRACE::setTraceToStream(&std::cout);
    return 0;
}
