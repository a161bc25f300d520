// Traces, also when it comes and when it goes, under names of its own text. Has no information function.
#include "zel/tracer/Tracer.h"

extern "C" __attribute__((visibility("default"))) void traceOnce() {
    ZEL::Tracer("traceOnce", "Traced", 7, true).printf("called");
}

namespace {

struct Static {
    Static() { ZEL::Tracer("initialiser of traced", true); }
    ~Static() { ZEL::Tracer("finaliser of traced", true); }
} traced;

} // namespace
