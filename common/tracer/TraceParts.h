#ifndef ZEL_COMMON_TRACER_TRACEPARTS_H
#define ZEL_COMMON_TRACER_TRACEPARTS_H

#include <string_view>

namespace ZEL::RT {

// What a record is made of, on its way from a tracer to the writer. In memory mode it goes from here straight into the
// slot of the ring that it replaces, so that no record is built only to be copied.
struct TraceParts {
    const char* functionName;
    const char* className;
    int line;
    std::string_view head; // the text is head followed by tail
    std::string_view tail;
    long time;  // 0 when not stamped
    int thread; // 0 when not stamped
};

} // namespace ZEL::RT

#endif
