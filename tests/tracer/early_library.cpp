// A library that is initialised ahead of the one it uses, since it does not say that it uses it.
#include "zel/zel.h"

namespace {

struct Early {
    Early() {
        ZEL::Tracer tracer("early library", false);
        try {
            ZEL::RT::checkDeref(nullptr);
        } catch (const ZEL::EXCEPTIONS::NullPointerException&) {
            tracer.write(ZEL::Date::getShortString(-1).empty() ? "no date" : "caught", 0);
        }
    }
} early;

} // namespace
